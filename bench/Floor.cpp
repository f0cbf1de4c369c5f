#include "bench/Floor.h"

#include <QFile>
#include <stdexcept>

namespace koben {
namespace {

const char* const listFields =
    "Art, Nummer, Gruppe, Stallnr, BoxDatum, Selektiert, Ohrmarke, Tätowierung, Geburtsdatum, Anz_Belegungen, "
    "Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, Status, Statusabfrage, Rasse, Belegungsart, N_Belegung, "
    "N_Ferkelung, L_Belegung, L_Ferkelung, L_Trächtigkeit, L_Absetzung, Mechanische_Amme, Zugangsdatum, "
    "Zugangsgewicht_kg, Einkaufspreis, Zugangsgrund, Lieferant, Abgangsdatum, Abgangsgewicht_kg, Verkaufspreis, "
    "Abgangsgrund, Abnehmer, Infos, Aenderung, ID";

/// Beside those that the file has: for the filters, the search, the counters, the selection and the lists of choice.
const char* const indexes[] = {
    "boden_bestand ON Sauen(ID) WHERE Abgangsdatum IS NULL",
    "boden_nummer ON Sauen(Nummer, ID) WHERE Abgangsdatum IS NULL",
    "boden_gruppe ON Sauen(Art, Status) WHERE Abgangsdatum IS NULL",
    "boden_art ON Sauen(Art)",
    "boden_wahl1 ON Sauen(Gruppe)",
    "boden_wahl2 ON Sauen(Rasse)",
    "boden_wahl3 ON Sauen(Stallnr)",
    "boden_plan1 ON Sauen(L_Absetzung) WHERE Abgangsdatum IS NULL",
    "boden_plan2 ON Sauen(L_Belegung) WHERE Abgangsdatum IS NULL",
    "boden_plan3 ON Sauen(L_Ferkelung) WHERE Abgangsdatum IS NULL",
    "boden_ohrmarke ON Sauen(Ohrmarke) WHERE Ohrmarke <> ''",
    "boden_selektiert ON Sauen(ID) WHERE Selektiert = 'X'",
    "boden_zaehlung ON Sauen(Art, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, Selektiert) "
    "WHERE Abgangsdatum IS NULL",
    "boden_sperre ON Behandlung(Wartezeit_Datum, Kennung)",
    "boden_eber ON Belegung(Ebernr)",
    "boden_station ON Belegung(Belegungsstation)",
    "boden_grund ON Verluste(Grund)",
    "boden_behandlung ON Behandlung(Behandlungsart)",
    "boden_verabreichung ON Behandlung(Verabreichungsart)",
    "boden_tierarzt ON Behandlung(Tierarzt)",
    "boden_kommentar1 ON Belegung(Kommentar)",
    "boden_kommentar2 ON Trächtigkeit(Kommentar)",
    "boden_kommentar3 ON Ferkelung(Kommentar)",
    "boden_kommentar4 ON Absetzung(Kommentar)",
    "boden_kommentar5 ON Verschiebung(Kommentar)",
    "boden_kommentar6 ON Verluste(Kommentar)",
    "boden_kommentar7 ON Ferkelverkauf(Kommentar)",
    "boden_kommentar8 ON Behandlung(Kommentar)"};

void take(sqlite3_stmt* statement, int column, std::string& content) {
    content += static_cast<char>(sqlite3_column_type(statement, column));
    if (content.back() == SQLITE_TEXT) {
        content.append(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                       static_cast<size_t>(sqlite3_column_bytes(statement, column)));
    } else {
        const double number = sqlite3_column_double(statement, column);
        content.append(reinterpret_cast<const char*>(&number), sizeof number);
    }
}

}  // namespace

SqliteFile::SqliteFile(const QString& path) {
    if (sqlite3_open(path.toUtf8().constData(), &m_file) != SQLITE_OK) fail("open");
    // the same promises as the program's file: a write-ahead log, on the disk with each commit
    for (const char* pragma : {"journal_mode = WAL", "synchronous = FULL", "cache_size = -65536",
                               "mmap_size = 1073741824", "temp_store = MEMORY"})
        execute(std::string("PRAGMA ") + pragma);
}

void SqliteFile::execute(const std::string& sql) {
    if (sqlite3_exec(m_file, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) fail(sql);
}

void SqliteFile::commit(const std::vector<std::string>& statements) {
    execute("BEGIN IMMEDIATE");
    for (const std::string& sql : statements) execute(sql);
    execute("COMMIT");
}

SqliteFile::Statement SqliteFile::prepare(const std::string& sql) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(m_file, sql.c_str(), -1, &raw, nullptr) != SQLITE_OK) fail(sql);
    return {raw, sqlite3_finalize};
}

void SqliteFile::step(sqlite3_stmt* statement) {
    if (sqlite3_step(statement) != SQLITE_DONE) fail(sqlite3_sql(statement));
    sqlite3_reset(statement);
}

void SqliteFile::each(const std::string& sql, const std::vector<qint64>& values) {
    const Statement statement = prepare(sql);
    for (const qint64 value : values) {
        sqlite3_bind_int64(statement.get(), 1, value);
        step(statement.get());
    }
}

void SqliteFile::each(const std::string& sql, const std::vector<std::vector<std::string>>& rows) {
    const Statement statement = prepare(sql);
    for (const auto& row : rows) {
        for (size_t i = 0; i < row.size(); ++i)
            sqlite3_bind_text(statement.get(), static_cast<int>(i) + 1, row[i].data(), static_cast<int>(row[i].size()),
                              SQLITE_STATIC);
        step(statement.get());
    }
}

qint64 SqliteFile::read(const std::string& sql) {
    const Statement statement = prepare(sql);
    const int columns = sqlite3_column_count(statement.get());
    std::string content;
    qint64 rows = 0;
    for (; sqlite3_step(statement.get()) == SQLITE_ROW; ++rows)
        for (int c = 0; c < columns; ++c) take(statement.get(), c, content);
    return rows;
}

std::vector<qint64> SqliteFile::numbers(const std::string& sql) {
    const Statement statement = prepare(sql);
    std::vector<qint64> result;
    while (sqlite3_step(statement.get()) == SQLITE_ROW) result.push_back(sqlite3_column_int64(statement.get(), 0));
    return result;
}

std::vector<std::string> SqliteFile::texts(const std::string& sql) {
    const Statement statement = prepare(sql);
    std::vector<std::string> result;
    while (sqlite3_step(statement.get()) == SQLITE_ROW)
        result.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)));
    return result;
}

qint64 SqliteFile::write(const std::string& sql, const QString& path) {
    const Statement statement = prepare(sql);
    const int columns = sqlite3_column_count(statement.get());
    std::string lines;
    qint64 rows = 0;
    for (; sqlite3_step(statement.get()) == SQLITE_ROW; ++rows) {
        for (int c = 0; c < columns; ++c) {
            if (const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), c)))
                lines += text;
            lines += " | ";
        }
        lines += "\r\n";
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(lines.data(), static_cast<qint64>(lines.size())) < 0)
        fail("write");
    return rows;
}

void SqliteFile::fail(const std::string& sql) const {
    throw std::runtime_error(std::string(sqlite3_errmsg(m_file)) + ": " + sql);
}

void prepareFloor(const QString& path) {
    SqliteFile file(path);
    for (const std::string& trigger : file.texts("SELECT name FROM sqlite_master WHERE type = 'trigger'"))
        file.execute("DROP TRIGGER \"" + trigger + "\"");
    for (const char* index : indexes) file.execute(std::string("CREATE INDEX ") + index);
}

namespace sqlfloor {

namespace {

/// Counters and days from the row `w` of what the bookings give.
std::string derived(int tageFerkelungBelegung) {
    return ", Anz_Ferkelungen = w.n, Anz_Ferkel_Gesamt = w.g, Anz_Ferkel_Lebend = w.l, L_Belegung = w.lb, "
           "L_Ferkelung = w.lf, L_Trächtigkeit = w.lt, L_Absetzung = w.la, N_Belegung = CASE WHEN w.lb > w.lf THEN "
           "NULL ELSE date(w.lf, '+" +
           std::to_string(tageFerkelungBelegung) +
           " days') END, N_Ferkelung = CASE WHEN w.lb <= w.lf THEN NULL ELSE date(w.lb, '+116 days') END";
}

}  // namespace

std::string list(const std::string& where) {
    return std::string("SELECT ") + listFields + " FROM Sauen" + (where.empty() ? "" : " WHERE " + where);
}

std::string stockList() {
    return std::string("SELECT ") + listFields + " FROM Sauen INDEXED BY boden_bestand WHERE " + inStock;
}

std::string derive(qint64 id) {
    const std::string n = std::to_string(id);
    const auto latest = [&](const char* table, const char* where) {
        return std::string("(SELECT max(Datum) FROM ") + table + " WHERE Kennung = " + n + where + ")";
    };
    return "UPDATE Sauen SET Anz_Belegungen = (SELECT count(*) FROM Belegung WHERE Kennung = " + n +
           " AND Datum >= ifnull(w.lf, ''))" + derived(36) +
           " FROM (SELECT count(*) n, sum(Ferkel_Gesamt) g, sum(Ferkel_Lebendig) l, max(Datum) lf, " +
           latest("Belegung", "") + " lb, " + latest("Trächtigkeit", " AND Trächtig = 'J'") + " lt, " +
           latest("Absetzung", "") + " la FROM Ferkelung WHERE Kennung = " + n + ") w WHERE ID = " + n;
}

std::string deriveAll(int tageFerkelungBelegung) {
    const auto latest = [](const char* table, const char* where, const char* name) {
        return std::string(" LEFT JOIN (SELECT Kennung, max(Datum) ") + name + " FROM " + table + where +
               " GROUP BY Kennung) " + name + " ON " + name + ".Kennung = t.ID";
    };
    return "UPDATE Sauen SET Anz_Belegungen = w.b" + derived(tageFerkelungBelegung) +
           " FROM (SELECT t.ID id, n, g, l, lf, lb, lt, la, (SELECT count(*) FROM Belegung WHERE Kennung = t.ID AND "
           "Datum >= ifnull(lf, '')) b FROM Sauen t LEFT JOIN (SELECT Kennung, count(*) n, sum(Ferkel_Gesamt) g, "
           "sum(Ferkel_Lebendig) l, max(Datum) lf FROM Ferkelung GROUP BY Kennung) f ON f.Kennung = t.ID" +
           latest("Belegung", "", "lb") + latest("Trächtigkeit", " WHERE Trächtig = 'J'", "lt") +
           latest("Absetzung", "", "la") +
           " WHERE t.Art = 'Sau') w WHERE Sauen.ID = w.id AND (lb IS NOT NULL OR lf IS NOT NULL)";
}

std::string status(const std::string& where) {
    return "UPDATE Sauen SET Status = s.neu FROM (SELECT ID id, CASE WHEN ifnull(Statusabfrage, '') = 'N' THEN '' "
           "WHEN ifnull(L_Ferkelung, '') > ifnull(L_Belegung, '') AND ifnull(L_Ferkelung, '') > ifnull(L_Absetzung, "
           "'') THEN 'S' WHEN L_Absetzung > L_Belegung THEN 'G' WHEN ifnull(L_Belegung, '') > ifnull(L_Ferkelung, '') "
           "THEN ifnull((SELECT CASE WHEN Datum <= L_Belegung THEN 'B' WHEN Trächtig = 'N' THEN 'B_NTG' ELSE 'B_T' END "
           "FROM Trächtigkeit WHERE Kennung = Sauen.ID ORDER BY Datum DESC LIMIT 1), 'B') ELSE '' END neu FROM Sauen "
           "WHERE Abgangsdatum IS NULL AND Art = 'Sau' AND " +
           where + ") s WHERE Sauen.ID = s.id AND Sauen.Status IS NOT s.neu";
}

std::string iso(QDate date) { return "'" + date.toString(Qt::ISODate).toStdString() + "'"; }

std::string distinctValues(const std::string& table, const std::string& field) {
    return "WITH RECURSIVE v(x) AS (SELECT min(" + field + ") FROM " + table + " UNION ALL SELECT (SELECT min(" +
           field + ") FROM " + table + " WHERE " + field +
           " > x) FROM v WHERE x IS NOT NULL) SELECT x FROM v WHERE x "
           "IS NOT NULL";
}

}  // namespace sqlfloor
}  // namespace koben
