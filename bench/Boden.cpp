#include "bench/Boden.h"

#include <sqlite3.h>

#include <QDate>
#include <memory>
#include <stdexcept>
#include <string>

namespace koben {
namespace {

const char* const listenfelder =
    "Art, Nummer, Gruppe, Stallnr, BoxDatum, Selektiert, Ohrmarke, Tätowierung, Geburtsdatum, Anz_Belegungen, "
    "Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, Status, Statusabfrage, Rasse, Belegungsart, N_Belegung, "
    "N_Ferkelung, L_Belegung, L_Ferkelung, L_Trächtigkeit, L_Absetzung, Mechanische_Amme, Zugangsdatum, "
    "Zugangsgewicht_kg, Einkaufspreis, Zugangsgrund, Lieferant, Abgangsdatum, Abgangsgewicht_kg, Verkaufspreis, "
    "Abgangsgrund, Abnehmer, Infos, Aenderung, ID";

/// All derived values of all animals that bookings or stored values name.
const char* const neueWerte =
    "CREATE TEMP TABLE neu AS WITH "
    "f AS (SELECT Kennung k, count(*) n, sum(Ferkel_Gesamt) g, sum(Ferkel_Lebendig) l, max(Datum) d FROM Ferkelung "
    "GROUP BY 1), "
    "b AS (SELECT Belegung.Kennung k, max(Datum) d, sum(f.d IS NULL OR Datum >= f.d) n FROM Belegung LEFT JOIN f ON "
    "f.k = "
    "Belegung.Kennung GROUP BY 1), "
    "t AS (SELECT Kennung k, max(Datum) d FROM Trächtigkeit WHERE Trächtig = 'J' GROUP BY 1), "
    "a AS (SELECT Kennung k, max(Datum) d FROM Absetzung GROUP BY 1), "
    "e AS (SELECT Ebernr nr, count(*) n FROM Belegung GROUP BY 1), "
    "tiere AS (SELECT k FROM f UNION SELECT k FROM b UNION SELECT k FROM t UNION SELECT k FROM a UNION SELECT ID FROM "
    "Sauen "
    "WHERE Art = 'Eber') "
    "SELECT s.ID id, CASE WHEN s.Art = 'Eber' THEN ifnull(e.n, 0) ELSE ifnull(b.n, 0) END ab, ifnull(f.n, 0) af, f.g "
    "g, f.l l, "
    "b.d lb, f.d lf, t.d lt, a.d la, "
    "CASE WHEN b.d > f.d THEN NULL ELSE date(f.d, '+36 days') END nb, "
    "CASE WHEN b.d <= f.d THEN NULL ELSE date(b.d, '+116 days') END nf "
    "FROM tiere JOIN Sauen s ON s.ID = tiere.k LEFT JOIN f ON f.k = s.ID LEFT JOIN b ON b.k = s.ID LEFT JOIN t ON t.k "
    "= s.ID "
    "LEFT JOIN a ON a.k = s.ID LEFT JOIN e ON e.nr = s.Nummer";

const char* const geaenderteWerte =
    "UPDATE Sauen SET Aenderung = CASE WHEN L_Belegung <> lb OR L_Ferkelung <> lf OR L_Absetzung <> la THEN 'X' ELSE "
    "Aenderung END, "
    "Anz_Belegungen = ab, Anz_Ferkelungen = af, Anz_Ferkel_Gesamt = g, Anz_Ferkel_Lebend = l, L_Belegung = lb, "
    "L_Ferkelung = lf, "
    "L_Trächtigkeit = lt, L_Absetzung = la, N_Belegung = nb, N_Ferkelung = nf FROM neu WHERE Sauen.ID = neu.id AND "
    "(Anz_Belegungen IS NOT ab OR Anz_Ferkelungen IS NOT af OR Anz_Ferkel_Gesamt IS NOT g OR Anz_Ferkel_Lebend IS NOT "
    "l OR "
    "L_Belegung IS NOT lb OR L_Ferkelung IS NOT lf OR L_Trächtigkeit IS NOT lt OR L_Absetzung IS NOT la OR N_Belegung "
    "IS NOT nb OR "
    "N_Ferkelung IS NOT nf)";

/// The status of the sows in stock; animals that left keep "".
const char* const statusWerte =
    "UPDATE Sauen SET Status = s.neu FROM (SELECT ID id, CASE WHEN ifnull(Statusabfrage, '') = 'N' THEN '' "
    "WHEN ifnull(L_Ferkelung, '') > ifnull(L_Belegung, '') AND ifnull(L_Ferkelung, '') > ifnull(L_Absetzung, '') THEN "
    "'S' "
    "WHEN L_Absetzung > L_Belegung THEN 'G' WHEN ifnull(L_Belegung, '') > ifnull(L_Ferkelung, '') THEN "
    "ifnull((SELECT CASE WHEN Datum <= L_Belegung THEN 'B' WHEN Trächtig = 'N' THEN 'B_NTG' ELSE 'B_T' END FROM "
    "Trächtigkeit "
    "WHERE Kennung = Sauen.ID ORDER BY Datum DESC LIMIT 1), 'B') ELSE '' END neu "
    "FROM Sauen INDEXED BY boden_bestand WHERE Abgangsdatum IS NULL AND Art = 'Sau') s WHERE Sauen.ID = s.id AND "
    "Sauen.Status IS NOT s.neu";

class Datei {
public:
    explicit Datei(const QString& path) {
        if (sqlite3_open(path.toUtf8().constData(), &m_file) != SQLITE_OK) scheitern("open");
        // the same promises as the program's file: a write-ahead log, on the disk with each commit
        ausfuehren("PRAGMA journal_mode = WAL");
        ausfuehren("PRAGMA synchronous = FULL");
        ausfuehren("PRAGMA cache_size = -65536");
        ausfuehren("PRAGMA mmap_size = 1073741824");
        ausfuehren("PRAGMA temp_store = MEMORY");
    }
    ~Datei() { sqlite3_close(m_file); }
    Datei(const Datei&) = delete;
    Datei& operator=(const Datei&) = delete;

    void ausfuehren(const std::string& sql) {
        if (sqlite3_exec(m_file, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) scheitern(sql);
    }

    /// Reads all rows into one block of memory, each value as it lies in the file. The number of rows.
    qint64 lesen(const std::string& sql) {
        sqlite3_stmt* raw = nullptr;
        if (sqlite3_prepare_v2(m_file, sql.c_str(), -1, &raw, nullptr) != SQLITE_OK) scheitern(sql);
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(raw, sqlite3_finalize);
        const int columns = sqlite3_column_count(raw);
        std::string inhalt;
        qint64 rows = 0;
        for (; sqlite3_step(raw) == SQLITE_ROW; ++rows)
            for (int c = 0; c < columns; ++c) aufnehmen(raw, c, inhalt);
        return rows;
    }

private:
    static void aufnehmen(sqlite3_stmt* statement, int column, std::string& inhalt) {
        inhalt += static_cast<char>(sqlite3_column_type(statement, column));
        if (inhalt.back() == SQLITE_TEXT) {
            inhalt.append(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                          static_cast<size_t>(sqlite3_column_bytes(statement, column)));
        } else {
            const double number = sqlite3_column_double(statement, column);
            inhalt.append(reinterpret_cast<const char*>(&number), sizeof number);
        }
    }
    [[noreturn]] void scheitern(const std::string& sql) const {
        throw std::runtime_error(std::string(sqlite3_errmsg(m_file)) + ": " + sql);
    }
    sqlite3* m_file = nullptr;
};

std::string iso(QDate date) { return "'" + date.toString(Qt::ISODate).toStdString() + "'"; }

class Boden {
public:
    Boden(const QString& path, QDate heute, const Vorlage& vorlage) : m_path(path), m_heute(heute), m_vorlage(vorlage) {
        Datei datei(path);
        datei.ausfuehren("CREATE INDEX boden_bestand ON Sauen(ID) WHERE Abgangsdatum IS NULL");
        datei.ausfuehren("CREATE INDEX boden_nummer ON Sauen(Nummer, ID) WHERE Abgangsdatum IS NULL");
        datei.ausfuehren("CREATE INDEX boden_eber ON Sauen(ID) WHERE Art = 'Eber'");
        datei.ausfuehren("CREATE INDEX boden_kontrolle ON Trächtigkeit(Kennung, Datum)");
    }

    Messung messen() {
        for (int i = 0; i <= m_vorlage.wiederholungen; ++i) starten(i > 0);
        Datei datei(m_path);
        for (int i = 0; i <= m_vorlage.wiederholungen; ++i) {
            messe(i > 0, Arbeit::Liste, [&] { return liste(datei); });
            for (int zeichen = 1; zeichen <= m_vorlage.nummer.size(); ++zeichen)
                messe(i > 0, Arbeit::Suche, [&] { return suche(datei, m_vorlage.nummer.left(zeichen)); });
            messe(i > 0, Arbeit::Belegung, [&] { return belegung(datei); });
            messe(i > 0, Arbeit::Schliessen, [&] { return schliessen(datei); });
            messe(i > 0, Arbeit::Arbeitsplan, [&] { return arbeitsplan(datei); });
        }
        const qint64 last = datei.lesen("SELECT ID FROM Sauen");  // as many rows as IDs: none was ever deleted
        const std::string ferkel = " WHERE ID > " + std::to_string(last - MastFerkel);
        for (int i = 0; i <= m_vorlage.wiederholungen; ++i) {
            datei.ausfuehren("UPDATE Sauen SET Art = 'Ferkel', Abgangsdatum = NULL" + ferkel);
            messe(i > 0, Arbeit::Mast, [&] {
                datei.ausfuehren("UPDATE Sauen SET Art = 'Mast'" + ferkel);
                datei.ausfuehren(statusWerte);
                return liste(datei);
            });
        }
        return m_messung;
    }

private:
    template <class Work>
    void messe(bool zaehlt, Arbeit arbeit, const Work& work) {
        const Uhr uhr;
        const qint64 zeilen = work();
        if (zaehlt) m_messung.eintragen(arbeit, uhr.ms(), zeilen);
    }

    void starten(bool zaehlt) {
        messe(zaehlt, Arbeit::Start, [&] {
            Datei datei(m_path);
            datei.ausfuehren(statusWerte);
            return liste(datei);
        });
    }

    static qint64 liste(Datei& datei) {
        return datei.lesen(std::string("SELECT ") + listenfelder +
                           " FROM Sauen INDEXED BY boden_bestand WHERE Abgangsdatum IS NULL");
    }

    static qint64 suche(Datei& datei, const QString& anfang) {
        return datei.lesen(
            "SELECT min(ID) FROM Sauen INDEXED BY boden_nummer WHERE Abgangsdatum IS NULL AND Nummer GLOB '" +
            anfang.toStdString() + "*'");
    }

    qint64 belegung(Datei& datei) {
        const std::string sau = std::to_string(m_vorlage.sau);
        datei.ausfuehren("BEGIN IMMEDIATE");
        datei.ausfuehren(
            "INSERT INTO Belegung (Datum, Ebernr, Deckanzahl, Belegungart, Belegungsstation, Kosten, Kommentar, "
            "Bemerkung, "
            "Kennung) VALUES (" +
            iso(m_heute) + ", 'Pi 4711', 1, 'K', '', 0, '', '', " + sau + ")");
        datei.ausfuehren("COMMIT");
        return datei.lesen("SELECT * FROM Belegung WHERE Kennung = " + sau + " ORDER BY Datum") > 0;
    }

    static qint64 schliessen(Datei& datei) {
        datei.ausfuehren("BEGIN IMMEDIATE");
        datei.ausfuehren(neueWerte);
        datei.ausfuehren(geaenderteWerte);
        datei.ausfuehren("DROP TABLE neu");
        datei.ausfuehren(statusWerte);
        datei.ausfuehren("COMMIT");
        return liste(datei);
    }

    /// One arm for each of the four tasks of a new database: the window of a task touches the period where its
    /// reference date lies between two days that are known beforehand.
    qint64 arbeitsplan(Datei& datei) const {
        const auto arm = [&](const char* name, const char* bezug, int von, int bis, const char* erledigt) {
            const std::string b = bezug;
            return "SELECT date(" + b + ", '+" + std::to_string(von) + " days') vom, date(" + b + ", '+" +
                   std::to_string(bis) + " days') bis, '" + name +
                   "', Nummer, Art, Stallnr, Gruppe FROM Sauen INDEXED BY boden_bestand WHERE "
                   "Abgangsdatum IS NULL AND " +
                   b + " BETWEEN " + iso(m_heute.addDays(-bis)) + " AND " + iso(m_heute.addDays(27 - von)) +
                   " AND NOT ifnull(" + erledigt + ", '') > " + b;
        };
        return datei.lesen(arm("Belegung", "L_Absetzung", 4, 8, "L_Belegung") + " UNION ALL " +
                           arm("Ferkelung", "L_Belegung", 113, 119, "L_Ferkelung") + " UNION ALL " +
                           arm("Absetzung", "L_Ferkelung", 28, 32, "L_Absetzung") + " UNION ALL " +
                           arm("Trächtigkeitskontr.", "L_Belegung", 20, 24, "L_Trächtigkeit") +
                           " ORDER BY vom, bis, Nummer");
    }

    const QString m_path;
    const QDate m_heute;
    const Vorlage m_vorlage;
    Messung m_messung;
};

}  // namespace

Messung Boden_messen(const QString& path, QDate heute, const Vorlage& vorlage) {
    return Boden(path, heute, vorlage).messen();
}

}  // namespace koben
