#include "store/ChangeLog.h"

#include "store/Connection.h"

namespace koben {
namespace {

struct Trigger {
    std::string name;
    std::string table;
    std::string event;  ///< "AFTER INSERT", "AFTER UPDATE OF a, b"
    std::string when;   ///< "" for always
    std::string body;
};

/// The fields that a result hangs on, by table; the first is the one that names the animal. The numbers of boars are
/// not among them: each derivation compares the counts of all boars, who are few.
struct Watched {
    const char* log;
    const char* table;
    std::vector<const char*> fields;
};

const std::vector<Watched>& watched() {
    static const std::vector<Watched> result = {
        {"koben_log_werte", "Belegung", {"Kennung", "Datum"}},
        {"koben_log_werte", "Ferkelung", {"Kennung", "Datum", "Ferkel_Gesamt", "Ferkel_Lebendig"}},
        {"koben_log_werte", "Trächtigkeit", {"Kennung", "Datum", "Trächtig"}},
        {"koben_log_werte", "Absetzung", {"Kennung", "Datum"}},
        {"koben_log_werte",
         "Sauen",
         {"ID", "Art", "Anz_Belegungen", "Anz_Ferkelungen", "Anz_Ferkel_Gesamt", "Anz_Ferkel_Lebend", "L_Belegung",
          "L_Ferkelung", "L_Trächtigkeit", "L_Absetzung", "N_Belegung", "N_Ferkelung"}},
        {"koben_log_status", "Trächtigkeit", {"Kennung", "Datum", "Trächtig", "ID"}},
        {"koben_log_status",
         "Sauen",
         {"ID", "Art", "Abgangsdatum", "Statusabfrage", "Status", "L_Belegung", "L_Ferkelung", "L_Absetzung"}},
    };
    return result;
}

std::string field(const char* row, const std::string& name) { return std::string(row) + ".\"" + name + "\""; }

/// Not "OR IGNORE": the conflict rule of the statement that fires a trigger would override it. And the log is not asked
/// in the statement that fills it, for which SQLite would gather the answer in a table made for each row.
Trigger noting(const Watched& w, const std::string& name, const std::string& event, const std::string& id,
               const std::string& when) {
    return {name, w.table, event,
            when + id + " IS NOT NULL AND NOT EXISTS (SELECT 1 FROM " + w.log + " WHERE id = " + id + ")",
            std::string("INSERT INTO ") + w.log + " VALUES (" + id + ");"};
}

std::string count(const std::string& boar, const char* by) {
    return "UPDATE koben_log_deckungen SET anzahl = anzahl + " + (by + (" WHERE ebernr = " + boar)) +
           "; INSERT INTO koben_log_deckungen SELECT " + boar + ", " + by + " WHERE " + boar +
           " IS NOT NULL AND changes() = 0;";
}

/// For a row that takes another one's ID. Whether OR REPLACE pushes that out, with a delete trigger or without, or OR
/// IGNORE leaves it, cannot be told beforehand: all counts as changed.
void addCollision(std::vector<Trigger>& result, const Watched& w, const std::string& name) {
    const std::string taken = std::string("EXISTS (SELECT 1 FROM \"") + w.table + "\" WHERE ID = new.ID)";
    const std::string forget =
        std::string("UPDATE koben_log_stand SET basis = NULL WHERE zweck = '") + (w.log + 10) + "';";
    result.push_back({name + "_r", w.table, "BEFORE INSERT", "new.ID IS NOT NULL AND " + taken, forget});
    result.push_back({name + "_v", w.table, "BEFORE UPDATE OF ID", "new.ID IS NOT old.ID AND " + taken, forget});
}

void addTriggers(std::vector<Trigger>& result, const Watched& w) {
    const std::string name = std::string("koben_log_") + (w.log + 10) + "_" + w.table, id = w.fields[0];
    std::string fields, changed;
    for (const char* f : w.fields) {
        fields += (fields.empty() ? "" : ", ") + ("\"" + std::string(f) + "\"");
        changed += (changed.empty() ? "" : " OR ") + field("new", f) + " IS NOT " + field("old", f);
    }
    const std::string before = field("old", id), after = field("new", id), update = "AFTER UPDATE OF " + fields;
    result.push_back(noting(w, name + "_i", "AFTER INSERT", after, ""));
    result.push_back(noting(w, name + "_u", update, before, "(" + changed + ") AND "));
    result.push_back(noting(w, name + "_n", update, after, after + " IS NOT " + before + " AND "));
    result.push_back(noting(w, name + "_d", "AFTER DELETE", before, ""));
    addCollision(result, w, name);
}

std::vector<Trigger> makeTriggers() {
    std::vector<Trigger> result;
    for (const Watched& w : watched()) addTriggers(result, w);
    const std::string before = field("old", "Ebernr"), after = field("new", "Ebernr");
    const std::string name = "koben_log_deckungen_";
    result.push_back({name + "i", "Belegung", "AFTER INSERT", "", count(after, "1")});
    result.push_back({name + "u", "Belegung", "AFTER UPDATE OF \"Ebernr\"", after + " IS NOT " + before,
                      count(before, "-1") + count(after, "1")});
    result.push_back({name + "d", "Belegung", "AFTER DELETE", "", count(before, "-1")});
    return result;
}

const std::vector<Trigger>& triggers() {
    static const std::vector<Trigger> result = makeTriggers();
    return result;
}

std::string text(const Trigger& t) {
    return "CREATE TRIGGER \"" + t.name + "\" " + t.event + " ON \"" + t.table + "\"" +
           (t.when.empty() ? "" : " WHEN " + t.when) + " BEGIN " + t.body + " END";
}

bool hasFields(const sql::Catalog& catalog, const char* table, const std::vector<const char*>& fields) {
    const sql::TableInfo* info = catalog.find(QString::fromUtf8(table));
    return info != nullptr && std::all_of(fields.begin(), fields.end(),
                                          [&](const char* f) { return info->columnOf(QString::fromUtf8(f)) >= 0; });
}

bool watchable(const sql::Catalog& catalog) {
    return hasFields(catalog, "Belegung", {"ID", "Ebernr"}) && hasFields(catalog, "Ferkelung", {"ID"}) &&
           hasFields(catalog, "Absetzung", {"ID"}) &&
           std::all_of(watched().begin(), watched().end(),
                       [&](const Watched& w) { return hasFields(catalog, w.table, w.fields); });
}

/// The texts of the log's triggers in the file, by name.
QHash<QString, QString> present(sqlite3* file) {
    QHash<QString, QString> result;
    const StatementHandle s = prepare(
        file, "SELECT name, sql FROM sqlite_master WHERE type = 'trigger' AND name LIKE 'koben\\_log\\_%' ESCAPE '\\'");
    while (sqlite3_step(s.get()) == SQLITE_ROW)
        result.insert(columnValue(s.get(), 0, Type::Text).toText(), columnValue(s.get(), 1, Type::Text).toText());
    return result;
}

bool complete(const QHash<QString, QString>& found) {
    return found.size() == static_cast<qsizetype>(triggers().size()) &&
           std::all_of(triggers().begin(), triggers().end(), [&](const Trigger& t) {
               return found.value(QString::fromStdString(t.name)) == QString::fromStdString(text(t));
           });
}

struct LogTable {
    const char* name;
    const char* sql;
};
constexpr LogTable tables[] = {
    {"koben_log_stand",
     "CREATE TABLE koben_log_stand(zweck TEXT PRIMARY KEY, basis TEXT, offen INTEGER NOT NULL) WITHOUT ROWID"},
    {"koben_log_werte", "CREATE TABLE koben_log_werte(id INTEGER PRIMARY KEY) WITHOUT ROWID"},
    {"koben_log_status", "CREATE TABLE koben_log_status(id INTEGER PRIMARY KEY) WITHOUT ROWID"},
    {"koben_log_deckungen",
     "CREATE TABLE koben_log_deckungen(ebernr TEXT PRIMARY KEY, anzahl INTEGER NOT NULL) WITHOUT ROWID"}};

/// Whether the log's tables are there, made as they are today.
bool tablesPresent(sqlite3* file) {
    static const std::string look = [] {
        std::string wanted;
        for (const LogTable& t : tables)
            wanted += (wanted.empty() ? "('" : ", ('") + std::string(t.name) + "', '" + t.sql + "')";
        return "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND (name, sql) IN (VALUES " + wanted + ")";
    }();
    return number(file, look) == static_cast<qint64>(std::size(tables));
}

}  // namespace

void addChangeLog(Connection& connection) {
    sqlite3* file = connection.file();
    const auto found = present(file);
    if ((complete(found) && tablesPresent(file)) || !watchable(*connection.catalog())) return;
    const auto write = [&](const std::string& sql) { connection.writeNative(sql, QString::fromStdString(sql)); };
    write("SAVEPOINT koben_log");
    try {
        for (const QString& name : found.keys()) write("DROP TRIGGER " + sql::quoted(name));
        for (const LogTable& t : tables) {
            write(std::string("DROP TABLE IF EXISTS ") + t.name);
            write(t.sql);
        }
        write("INSERT INTO koben_log_stand VALUES ('werte', NULL, 0), ('status', NULL, 0)");
        for (const Trigger& t : triggers()) write(text(t));
        write("RELEASE koben_log");
    } catch (...) {
        sqlite3_exec(file, "ROLLBACK TO koben_log; RELEASE koben_log", nullptr, nullptr, nullptr);
        throw;
    }
}

const char* ChangeLog::row() const { return m_purpose == Purpose::Values ? "werte" : "status"; }
const char* ChangeLog::table() const { return m_purpose == Purpose::Values ? "koben_log_werte" : "koben_log_status"; }

bool ChangeLog::everything(const QString& basis) const {
    sqlite3* file = m_connection->file();
    if (!tablesPresent(file) || present(file).size() < static_cast<qsizetype>(triggers().size())) return true;
    const StatementHandle s = prepare(file, "SELECT basis IS ?1 FROM koben_log_stand WHERE zweck = ?2");
    bindValue(s.get(), 1, basis);
    bindValue(s.get(), 2, QString::fromLatin1(row()));
    return sqlite3_step(s.get()) != SQLITE_ROW || sqlite3_column_int(s.get(), 0) == 0;
}

std::vector<qint64> ChangeLog::animals(int most) const {
    std::vector<qint64> result;
    const StatementHandle s =
        prepare(m_connection->file(), std::string("SELECT id FROM ") + table() + " LIMIT " + std::to_string(most + 1));
    while (sqlite3_step(s.get()) == SQLITE_ROW) result.push_back(sqlite3_column_int64(s.get(), 0));
    return result;
}

void ChangeLog::settle(const QString& basis) {
    sqlite3* file = m_connection->file();
    if (!tablesPresent(file)) return;
    const bool anew = everything(basis);
    const auto write = [&](const std::string& sql) { m_connection->writeNative(sql, QString::fromStdString(sql)); };
    if (number(file, std::string("SELECT EXISTS (SELECT 1 FROM ") + table() + ")") != 0)
        write(std::string("DELETE FROM ") + table());
    if (anew && m_purpose == Purpose::Values)
        write(
            "DELETE FROM koben_log_deckungen; INSERT INTO koben_log_deckungen SELECT Ebernr, count(*) FROM Belegung "
            "WHERE Ebernr IS NOT NULL GROUP BY Ebernr COLLATE BINARY");
    if (anew || expected())
        write("UPDATE koben_log_stand SET offen = 0, basis = '" +
              QString(basis).replace(u'\'', QStringLiteral("''")).toStdString() + "' WHERE zweck = '" + row() + "'");
}

void ChangeLog::forget() {
    if (!tablesPresent(m_connection->file())) return;
    m_connection->writeNative(std::string("UPDATE koben_log_stand SET basis = NULL WHERE zweck = '") + row() + "'",
                              QStringLiteral("update koben_log_stand"));
}

void ChangeLog::expect() {
    if (!tablesPresent(m_connection->file()) || expected()) return;
    const std::string sql = std::string("UPDATE koben_log_stand SET offen = 1 WHERE zweck = '") + row() + "'";
    m_connection->writeNative(sql, QString::fromStdString(sql));
}

ChangeLog::Silence::Silence(const Database& database) : m_connection(database.m_connection) {
    sqlite3_db_config(m_connection->file(), SQLITE_DBCONFIG_ENABLE_TRIGGER, -1, &m_before);
    sqlite3_db_config(m_connection->file(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
}

ChangeLog::Silence::~Silence() {
    if (!m_connection->isClosed())
        sqlite3_db_config(m_connection->file(), SQLITE_DBCONFIG_ENABLE_TRIGGER, m_before, nullptr);
}

bool ChangeLog::expected() const {
    sqlite3* file = m_connection->file();
    return tablesPresent(file) &&
           number(file,
                  std::string("SELECT ifnull(max(offen), 0) FROM koben_log_stand WHERE zweck = '") + row() + "'") > 0;
}

std::vector<std::pair<QString, qint64>> servicesByBoar(const Database& database) {
    std::vector<std::pair<QString, qint64>> result;
    const StatementHandle s =
        prepare(database.m_connection->file(), "SELECT ebernr, anzahl FROM koben_log_deckungen WHERE anzahl > 0");
    while (sqlite3_step(s.get()) == SQLITE_ROW)
        result.emplace_back(columnValue(s.get(), 0, Type::Text).toText(), sqlite3_column_int64(s.get(), 1));
    return result;
}

}  // namespace koben
