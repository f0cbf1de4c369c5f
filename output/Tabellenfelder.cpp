#include "output/Tabellenfelder.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

bool isNumber(Type type) {
    return type != Type::Text && type != Type::Date && type != Type::Null && type != Type::Bool;
}

}  // namespace

Tabellenfelder::Tabellenfelder(const Table& table, const QStringList& names, Betraege amounts)
    : m_table(table), m_amounts(amounts) {
    for (const QString& name : names) m_fields.push_back(table.columnOf(name));
}

bool Tabellenfelder::withDecimals(int field) const {
    const Type type = m_table.field(field).type;
    return type == Type::Single || (type == Type::Currency && m_amounts == Betraege::ZweiStellen);
}

Column Tabellenfelder::column(int index) const {
    const int number = m_fields[static_cast<size_t>(index)];
    const Field& field = m_table.field(number);
    Column column{.key = field.name, .title = field.name};
    if (isNumber(field.type)) column.align = Align::Right, column.sort = Sort::Number;
    if (field.type == Type::Date) column.sort = Sort::Date;
    if (withDecimals(number)) column.decimals = 2;
    return column;
}

void Tabellenfelder::append(Grid::Row& cells, int row) const {
    cells.reserve(cells.size() + count() + 1);  // an age may follow
    for (const int field : m_fields) {
        if (m_table.isNull(row, field))
            cells.append(withDecimals(field) ? Value(0) : Value());
        else if (m_table.field(field).type == Type::Text)
            cells.append(Hochkomma_ersetzen(m_table.text(row, field)));
        else
            cells.append(m_table.value(row, field));
    }
}

}  // namespace koben
