#include <QSet>
#include <algorithm>

#include "store/Connection.h"

// The catalogue in the file:
//   koben_tables(position, name)                    the tables in the order of their creation
//   koben_columns(table_name, position, name, type, size, counter)
//   koben_indexes(table_name, name, sqlite_name, columns)
//   koben_state(stale)                              1: sort keys were left behind by another tool
namespace koben {
namespace {

using sql::Catalog;
using sql::ColumnInfo;
using sql::TableInfo;

QString text(sqlite3_stmt* s, int column) { return columnValue(s, column, Type::Text).toText(); }

std::vector<QString> names(sqlite3* file, const char* sql) {
    std::vector<QString> result;
    const StatementHandle s = prepare(file, sql);
    while (sqlite3_step(s.get()) == SQLITE_ROW) result.push_back(text(s.get(), 0));
    return result;
}

/// What a field declared by another tool is in the dialect.
Type declaredType(const QString& declaration) {
    const QString d = declaration.toUpper();
    if (d.contains(QLatin1String("INT"))) return Type::Long;
    if (d.contains(QLatin1String("DATE")) || d.contains(QLatin1String("TIME"))) return Type::Date;
    if (d.contains(QLatin1String("REAL")) || d.contains(QLatin1String("FLOA")) || d.contains(QLatin1String("DOUB")))
        return Type::Double;
    return Type::Text;
}

/// The columns that really are in the table; types from the catalogue where it knows them.
void loadColumns(sqlite3* file, TableInfo& table) {
    const StatementHandle s = prepare(
        file,
        "SELECT i.name, i.type, i.pk, c.type, c.size, c.counter, c.name, i.\"notnull\" FROM pragma_table_info(?1) AS i "
        "LEFT JOIN koben_columns AS c ON c.table_name = ?1 AND c.name = i.name ORDER BY i.cid");
    bindValue(s.get(), 1, table.name);
    QSet<QString> keys;
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        const QString name = text(s.get(), 0);
        if (!sql::fieldOfKey(name).isEmpty()) {
            keys.insert(name);
            continue;
        }
        if (name.startsWith(QLatin1String("koben_"))) continue;
        ColumnInfo column;
        column.name = name;
        column.sqlName = sql::quoted(name);
        const bool known = sqlite3_column_type(s.get(), 6) != SQLITE_NULL;
        column.type = known ? sql::typeOfName(text(s.get(), 3).toStdString()) : declaredType(text(s.get(), 1));
        column.size = known ? sqlite3_column_int(s.get(), 4) : 0;
        column.counter = known && sqlite3_column_int(s.get(), 5) != 0;
        column.notNull = sqlite3_column_int(s.get(), 7) != 0;
        if (column.counter) table.counter = static_cast<int>(table.columns.size());
        table.columns.push_back(std::move(column));
    }
    for (ColumnInfo& c : table.columns)
        if (const QString key = sql::keyColumn(c.name); keys.contains(key)) c.keyName = sql::quoted(key);
}

/// Fields with an index of their different values, named koben_werte_TABLE_FIELD.
void loadLeaps(sqlite3* file, TableInfo& table) {
    const StatementHandle s = prepare(file,
                                      "SELECT name FROM sqlite_master WHERE type = 'index' AND tbl_name = ?1 AND name "
                                      "LIKE 'koben\\_werte\\_%' ESCAPE '\\'");
    bindValue(s.get(), 1, table.name);
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        const QString prefix = sql::leapIndex(table.name, QString());
        const int column = table.columnOf(QStringView(text(s.get(), 0)).mid(prefix.size()));
        if (column >= 0) table.columns[static_cast<size_t>(column)].leaps = true;
    }
}

void loadIndexes(sqlite3* file, TableInfo& table) {
    const StatementHandle s =
        prepare(file, "SELECT name, sqlite_name, columns FROM koben_indexes WHERE table_name = ?1 ORDER BY rowid");
    bindValue(s.get(), 1, table.name);
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        sql::IndexInfo& index = table.indexes.emplace_back();
        index.name = text(s.get(), 0);
        index.sqlName = text(s.get(), 1);
        for (const QString& column : text(s.get(), 2).split(u'\n')) index.columns.push_back(column);
    }
}

void chooseRowId(TableInfo& table) {
    for (const char* name : {"rowid", "_rowid_", "oid"}) {
        if (table.columnOf(QString::fromLatin1(name)) >= 0) continue;
        table.rowId = name;
        return;
    }
}

}  // namespace

std::shared_ptr<const Catalog> loadCatalog(sqlite3* file, const Catalog* before, const QString& changed) {
    auto catalog = std::make_shared<Catalog>();
    for (const QString& name :
         names(file,
               "SELECT m.name FROM sqlite_master AS m LEFT JOIN koben_tables AS k ON k.name = m.name "
               "WHERE m.type = 'table' AND m.name NOT LIKE 'koben\\_%' ESCAPE '\\' AND m.name NOT LIKE 'sqlite\\_%' "
               "ESCAPE '\\' "
               "ORDER BY k.position IS NULL, k.position, m.rowid")) {
        if (before != nullptr && !sql::sameName(name, changed)) {
            const auto known = std::find_if(before->tables.begin(), before->tables.end(),
                                            [&](const auto& t) { return t->name == name; });
            if (known != before->tables.end()) {
                catalog->tables.push_back(*known);
                continue;
            }
        }
        auto table = std::make_shared<TableInfo>();
        table->name = name;
        table->sqlName = sql::quoted(name);
        loadColumns(file, *table);
        loadLeaps(file, *table);
        loadIndexes(file, *table);
        chooseRowId(*table);
        catalog->tables.push_back(std::move(table));
    }
    return catalog;
}

void createCatalog(sqlite3* file) {
    execute(file,
            "CREATE TABLE koben_tables(position INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL UNIQUE);"
            "CREATE TABLE koben_columns(table_name TEXT NOT NULL, position INTEGER NOT NULL, name TEXT NOT NULL, type "
            "TEXT NOT NULL,"
            " size INTEGER NOT NULL, counter INTEGER NOT NULL, PRIMARY KEY(table_name, name)) WITHOUT ROWID;"
            "CREATE TABLE koben_indexes(table_name TEXT NOT NULL, name TEXT NOT NULL, sqlite_name TEXT NOT NULL, "
            "columns TEXT NOT NULL);"
            "CREATE TABLE koben_state(stale INTEGER NOT NULL);"
            "INSERT INTO koben_state VALUES (0);");
}

void repairKeys(sqlite3* file) {
    if (number(file, "SELECT stale FROM koben_state") == 0) return;
    execute(file, "BEGIN IMMEDIATE");
    try {
        const auto catalog = loadCatalog(file);
        for (const auto& table : catalog->tables) {
            for (const ColumnInfo& c : table->columns) {
                if (c.keyName.empty()) continue;
                execute(file, "UPDATE " + table->sqlName + " SET " + c.keyName + " = koben_key(" + c.sqlName +
                                  ") WHERE " + c.keyName + " IS NOT koben_key(" + c.sqlName + ")");
            }
        }
        execute(file, "UPDATE koben_state SET stale = 0; COMMIT");
    } catch (...) {
        sqlite3_exec(file, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

}  // namespace koben
