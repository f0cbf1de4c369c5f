#include "store/sql/Catalog.h"

#include <array>

namespace koben::sql {
namespace {

struct Named {
    Type type;
    const char* name;
};
const QString keyPrefix = QStringLiteral("koben_key_");

constexpr std::array kTypeNames = {Named{Type::Bool, "BIT"},      Named{Type::Short, "SHORT"},
                                   Named{Type::Long, "LONG"},     Named{Type::Single, "SINGLE"},
                                   Named{Type::Double, "DOUBLE"}, Named{Type::Currency, "CURRENCY"},
                                   Named{Type::Date, "DATETIME"}, Named{Type::Text, "TEXT"}};

}  // namespace

bool sameName(QStringView a, QStringView b) { return a.size() == b.size() && a.compare(b, Qt::CaseInsensitive) == 0; }

QString keyColumn(const QString& field) { return keyPrefix + field; }

QString fieldOfKey(const QString& column) {
    return column.startsWith(keyPrefix) ? column.mid(keyPrefix.size()) : QString();
}

QString leapIndex(const QString& table, const QString& field) {
    return QStringLiteral("koben_werte_%1_%2").arg(table, field);
}

std::string leapExpression(const ColumnInfo& column) { return "(" + column.sqlName + " || '')"; }

std::string quoted(const QString& name) {
    std::string result = "\"";
    for (const char c : name.toUtf8()) {
        if (c == '"') result += '"';
        result += c;
    }
    return result + '"';
}

const char* typeName(Type type) {
    for (const Named& n : kTypeNames)
        if (n.type == type) return n.name;
    return "TEXT";
}

Type typeOfName(std::string_view name) {
    for (const Named& n : kTypeNames)
        if (name == n.name) return n.type;
    return Type::Text;
}

int TableInfo::columnOf(QStringView columnName) const {
    for (size_t i = 0; i < columns.size(); ++i)
        if (sameName(columns[i].name, columnName)) return static_cast<int>(i);
    return -1;
}

const IndexInfo* TableInfo::index(QStringView indexName) const {
    for (const IndexInfo& i : indexes)
        if (sameName(i.name, indexName)) return &i;
    return nullptr;
}

const TableInfo* Catalog::find(QStringView name) const {
    for (const auto& t : tables)
        if (sameName(t->name, name)) return t.get();
    return nullptr;
}

}  // namespace koben::sql
