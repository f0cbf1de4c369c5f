#pragma once
// The tables of a database file, their fields with the dialect's types, and their indexes.
#include <memory>
#include <string>
#include <vector>

#include "store/Value.h"

namespace koben::sql {

struct ColumnInfo {
    QString name;
    Type type = Type::Text;
    int size = 0;
    bool counter = false;
    bool notNull = false;
    std::string sqlName;  ///< quoted, as SQLite knows it
    /// A helper index holds the field as it is written: its different values can be found by leaps.
    bool leaps = false;
    std::string keyName;  ///< quoted name of the hidden column that holds the sort key; empty where there is none
};

struct IndexInfo {
    QString name;
    QString sqlName;  ///< not quoted
    std::vector<QString> columns;
};

struct TableInfo {
    QString name;
    std::string sqlName;
    std::string rowId = "rowid";  ///< a name of SQLite's row number that no column hides
    std::vector<ColumnInfo> columns;
    std::vector<IndexInfo> indexes;
    int counter = -1;  ///< column of the counter

    /// Case-insensitive; -1 where there is none.
    int columnOf(QStringView columnName) const;
    const IndexInfo* index(QStringView indexName) const;
};

struct Catalog {
    std::vector<std::shared_ptr<const TableInfo>> tables;
    const TableInfo* find(QStringView name) const;
};

/// Case never counts in names, umlauts included.
bool sameName(QStringView a, QStringView b);
/// The hidden column that holds the sort keys of a text field, and back: the field's name, or "" where `column` is
/// none.
QString keyColumn(const QString& field);
QString fieldOfKey(const QString& column);
/// The index for the different values of a field, and what it holds: an expression, so that SQLite uses the index for
/// nothing else. A scan along it would show groups in another spelling than that of their first row.
QString leapIndex(const QString& table, const QString& field);
std::string leapExpression(const ColumnInfo& column);
/// "name" with quotes for SQLite.
std::string quoted(const QString& name);

/// The type's name in the file's catalogue, and back (Text for an unknown one).
const char* typeName(Type type);
Type typeOfName(std::string_view name);

}  // namespace koben::sql
