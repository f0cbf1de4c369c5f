#include "store/Convert.h"
#include "store/sql/Emitter.h"

namespace koben::sql {
namespace {

std::string textLiteral(const QString& text) {
    QString copy = text;
    return "'" + copy.replace(u'\'', QStringLiteral("''")).toStdString() + "'";
}

}  // namespace

std::string Emitter::checked(const Sql& sql, Type from, const ColumnInfo& column) const {
    Sql result = std::string("koben_assign('") + typeLetter(from) + "'," + sql + ",'" + typeLetter(column.type) + "'," +
                 std::to_string(column.size) + "," + textLiteral(column.name) + ")";
    return column.counter ? "koben_counter(" + result + ")" : result;
}

std::string Emitter::assigned(const Expr& value, const ColumnInfo& column) {
    if (value.kind == ExprKind::Parameter || (value.kind == ExprKind::Literal && value.index >= 0)) {
        const auto from = value.kind == ExprKind::Parameter ? Slot::From::Parameter : Slot::From::Literal;
        return slot({from, value.index, column.type, &column, false, value.position});
    }
    if (value.kind == ExprKind::Literal && !column.counter) {
        const bool exact = column.type == Type::Currency && !value.literal.digits.isEmpty();
        const Value written = exact ? Value(QString::fromLatin1(value.literal.digits)) : value.literal.value;
        try {
            return constant(assign(written, column.type, column.size, column.name));
        } catch (const ConversionError& e) {
            m_text.fail(e.kind, value.position, e.what);
        }
    }
    const Expr& e = behind(value);
    // An amount with a sign is read digit by digit, as one without.
    if (column.type == Type::Currency && e.kind == ExprKind::Negate && e.args[0]->kind == ExprKind::Literal &&
        !e.args[0]->literal.digits.isEmpty())
        return "(-" + literalAs(*e.args[0], Type::Currency) + ")";
    const bool sameField = e.kind == ExprKind::Name && e.type == column.type && !column.counter &&
                           (column.size == 0 || (e.size > 0 && e.size <= column.size));
    const bool safe =
        sameField || ((column.type == Type::Date || column.type == Type::Currency) && e.type == column.type);
    return safe ? raw(e) : checked(as(e, e.type), e.type, column);
}

std::string Emitter::assignedKey(const Expr& value, const ColumnInfo& column, const Sql& sql) {
    if (value.kind == ExprKind::Parameter || (value.kind == ExprKind::Literal && value.index >= 0)) {
        const auto from = value.kind == ExprKind::Parameter ? Slot::From::Parameter : Slot::From::Literal;
        return slot({from, value.index, column.type, &column, true, value.position});
    }
    return "koben_key(" + sql + ")";
}

void Emitter::insert(const Insert& insert, const TableInfo& table, const std::vector<int>& columns) {
    m_plan.kind = Plan::Kind::Write;
    std::vector<Sql> names, values, keyNames, keys;
    for (size_t i = 0; i < columns.size(); ++i) {
        const ColumnInfo& column = table.columns[static_cast<size_t>(columns[i])];
        names.push_back(column.sqlName);
        if (insert.select) {
            values.push_back(checked("c" + std::to_string(i), insert.select->outputs[i].field.type, column));
        } else {
            values.push_back(assigned(*insert.values[i], column));
        }
        if (column.keyName.empty()) continue;
        keyNames.push_back(column.keyName);
        keys.push_back(insert.select ? "koben_key(" + values.back() + ")"
                                     : assignedKey(*insert.values[i], column, values.back()));
    }
    names.insert(names.end(), keyNames.begin(), keyNames.end());
    values.insert(values.end(), keys.begin(), keys.end());
    m_plan.sql = "INSERT INTO " + table.sqlName + " (" + joined(names, ", ") + ") ";
    if (!insert.select) {
        m_plan.sql += "VALUES (" + joined(values, ", ") + ")";
        return;
    }
    Sql rows = subSelect(*insert.select, true);
    if (insert.select->top < 0) {
        const std::vector<Sql> order = orderTerms(*insert.select);
        if (!order.empty()) rows += " ORDER BY " + joined(order, ", ");
    }
    m_plan.sql += "SELECT " + joined(values, ", ") + " FROM (" + rows + ")";
}

void Emitter::update(const Update& update, const std::vector<int>& columns) {
    m_plan.kind = Plan::Kind::Write;
    std::vector<Sql> sets;
    for (size_t i = 0; i < columns.size(); ++i) {
        const ColumnInfo& column = update.source->table->columns[static_cast<size_t>(columns[i])];
        const Sql value = assigned(*update.sets[i].value, column);
        sets.push_back(column.sqlName + " = " + value);
        if (!column.keyName.empty())
            sets.push_back(column.keyName + " = " + assignedKey(*update.sets[i].value, column, value));
    }
    m_plan.updated = update.source->table;
    m_plan.sets = columns;
    m_plan.sql = "UPDATE " + source(*update.source) + " SET " + joined(sets, ", ");
    if (update.where) m_plan.sql += " WHERE " + truth(*update.where);
}

void Emitter::remove(const Delete& remove) {
    m_plan.kind = Plan::Kind::Write;
    m_plan.sql = "DELETE FROM " + source(*remove.source);
    if (remove.where) m_plan.sql += " WHERE " + truth(*remove.where);
}

}  // namespace koben::sql
