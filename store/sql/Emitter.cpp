#include "store/sql/Emitter.h"

#include "store/Collation.h"
#include "store/Convert.h"
#include "store/IsoDate.h"

namespace koben::sql {
namespace {

const char* compareSign(ExprKind kind) {
    switch (kind) {
        case ExprKind::Equal:
            return " = ";
        case ExprKind::NotEqual:
            return " <> ";
        case ExprKind::Less:
            return " < ";
        case ExprKind::LessEqual:
            return " <= ";
        case ExprKind::Greater:
            return " > ";
        default:
            return " >= ";
    }
}

std::string hex(const QByteArray& bytes) { return "x'" + bytes.toHex().toStdString() + "'"; }

std::string quotedText(const QString& text) {
    std::string result = "'";
    for (const char c : text.toUtf8()) {
        if (c == '\'') result += '\'';
        result += c;
    }
    return result + '\'';
}

bool constantLiteral(const Expr& e) { return e.kind == ExprKind::Literal && e.index < 0; }

bool emptyText(const Expr& e) {
    return constantLiteral(e) && e.literal.value.isText() && std::get<QString>(e.literal.value.variant()).isEmpty();
}

bool bindable(const Expr& e) { return e.kind == ExprKind::Parameter || (e.kind == ExprKind::Literal && e.index >= 0); }

Slot slotOf(const Expr& e, Type target) {
    Slot slot;
    slot.from = e.kind == ExprKind::Parameter ? Slot::From::Parameter : Slot::From::Literal;
    slot.index = e.index;
    slot.target = target;
    slot.position = e.position;
    return slot;
}

}  // namespace

std::string joined(const std::vector<std::string>& parts, const char* separator) {
    std::string result;
    for (const std::string& p : parts) {
        if (!result.empty()) result += separator;
        result += p;
    }
    return result;
}

std::string Emitter::slot(const Slot& wanted) {
    for (size_t i = 0; i < m_plan.slots.size(); ++i) {
        const Slot& s = m_plan.slots[i];
        if (s.from == wanted.from && s.index == wanted.index && s.target == wanted.target &&
            s.column == wanted.column && s.key == wanted.key)
            return "?" + std::to_string(i + 1);
    }
    m_plan.slots.push_back(wanted);
    return "?" + std::to_string(m_plan.slots.size());
}

std::string Emitter::constant(const Value& value) const {
    if (value.isNull()) return "NULL";
    if (value.isText()) return quotedText(std::get<QString>(value.variant()));
    if (value.isDate()) {
        char iso[32];
        formatIso(std::get<DateTime>(value.variant()), iso);
        return "'" + std::string(iso) + "'";
    }
    if (const auto* truthValue = std::get_if<bool>(&value.variant())) return *truthValue ? "1" : "0";
    if (const auto* money = std::get_if<Money>(&value.variant())) return std::to_string(money->tenThousandths);
    if (std::holds_alternative<double>(value.variant()) || std::holds_alternative<float>(value.variant())) {
        const QByteArray digits = QByteArray::number(value.toDouble(), 'g', 17);
        return digits.contains('.') || digits.contains('e') ? digits.toStdString() : digits.toStdString() + ".0";
    }
    return std::to_string(value.toInt());
}

std::string Emitter::literalAs(const Expr& e, Type target) {
    if (bindable(e)) return slot(slotOf(e, target == Type::Null ? e.type : target));
    Value value = e.literal.value;
    if (value.isNull() || target == Type::Null || target == e.type) return constant(value);
    if (isNumber(target) && isNumber(e.type) && target != Type::Currency && target != Type::Single)
        return constant(e.type == Type::Bool ? Value(value.toInt()) : value);
    if (target == Type::Currency && !e.literal.digits.isEmpty()) value = Value(QString::fromLatin1(e.literal.digits));
    try {
        return constant(convert(value, target));
    } catch (const ConversionError& error) {
        m_text.fail(error.kind, e.position, error.what);
    }
}

std::string Emitter::name(const Expr& e) const {
    const std::string table = "t" + std::to_string(e.source->number) + ".";
    const auto column = static_cast<size_t>(e.column);
    return table +
           (e.source->table != nullptr ? e.source->table->columns[column].sqlName : "c" + std::to_string(column));
}

bool Emitter::hasKey(const Expr& expr) const {
    const Expr& e = behind(expr);
    return e.kind == ExprKind::Name && e.source->table != nullptr &&
           !e.source->table->columns[static_cast<size_t>(e.column)].keyName.empty();
}

std::string Emitter::key(const Expr& expr) {
    const Expr& e = behind(expr);
    if (hasKey(e))
        return "t" + std::to_string(e.source->number) + "." +
               e.source->table->columns[static_cast<size_t>(e.column)].keyName;
    if (bindable(e)) {
        Slot s = slotOf(e, Type::Text);
        s.key = true;
        return slot(s);
    }
    if (constantLiteral(e) && e.literal.value.isText())
        return hex(sortKey(std::get<QString>(e.literal.value.variant())));
    return "koben_key(" + as(e, Type::Text) + ")";
}

std::string Emitter::cast(const Sql& sql, Type from, Type to) const {
    if (from == to || from == Type::Null || to == Type::Null) return sql;
    if (from == Type::Bool && isNumber(to)) return cast("(-" + sql + ")", Type::Long, to);
    if (to == Type::Bool && isNumber(from)) return "(" + sql + "<>0)";
    if (to == Type::Currency && isWhole(from)) return "(" + sql + "*10000)";
    if (from == Type::Currency && (to == Type::Double || to == Type::Single)) return "(" + sql + "/10000.0)";
    if (isNumber(from) && isNumber(to) && from != Type::Currency && to != Type::Currency) return sql;
    if (isWhole(from) && to == Type::Text) return "CAST(" + sql + " AS TEXT)";
    return std::string("koben_cast('") + typeLetter(from) + "','" + typeLetter(to) + "'," + sql + ")";
}

std::string Emitter::as(const Expr& expr, Type target) {
    const Expr& e = behind(expr);
    if (e.kind == ExprKind::Literal || e.kind == ExprKind::Parameter) return literalAs(e, target);
    // A number with a sign is converted as a whole, so that money stays exact.
    if (e.kind == ExprKind::Negate && e.args[0]->kind == ExprKind::Literal && isNumber(target) && isNumber(e.type))
        return "(-" + literalAs(*e.args[0], target) + ")";
    return cast(raw(e), e.type, target);
}

std::string Emitter::truth(const Expr& e) {
    const Sql sql = raw(e);
    return sql;
}

std::string Emitter::real(const Expr& e) { return "(" + as(e, Type::Double) + "*1.0)"; }

std::string Emitter::raw(const Expr& expr) {
    const Expr& e = behind(expr);
    switch (e.kind) {
        case ExprKind::Literal:
        case ExprKind::Parameter:
            return literalAs(e, e.type);
        case ExprKind::Name:
            return name(e);
        case ExprKind::Now:
            return slot({Slot::From::Now, 0, Type::Date, nullptr, false, -1});
        case ExprKind::Today:
            return slot({Slot::From::Today, 0, Type::Date, nullptr, false, -1});
        case ExprKind::CountStar:
            return "count(*)";
        case ExprKind::Call:
            return call(e);
        case ExprKind::Negate:
            return "(-" + as(e.args.front() ? *e.args[0] : e, e.type) + ")";
        case ExprKind::Not:
            return std::string(e.type == Type::Bool ? "(NOT " : "(~") + as(*e.args[0], e.type) + ")";
        case ExprKind::Add:
            return addition(e, "+");
        case ExprKind::Subtract:
            return addition(e, "-");
        case ExprKind::Multiply:
            return product(e);
        case ExprKind::Divide:
            return "(" + real(*e.args[0]) + "/" + real(*e.args[1]) + ")";
        case ExprKind::IntDivide:
            return callOf(kIntDivide, {e.args[0].get(), e.args[1].get()});
        case ExprKind::Modulo:
            return callOf(kModulo, {e.args[0].get(), e.args[1].get()});
        case ExprKind::Power:
            return callOf(kPower, {e.args[0].get(), e.args[1].get()});
        case ExprKind::Concat:
            return "koben_concat(" + as(*e.args[0], Type::Text) + "," + as(*e.args[1], Type::Text) + ")";
        case ExprKind::And:
            return e.type == Type::Bool ? "(" + truth(*e.args[0]) + " AND " + truth(*e.args[1]) + ")"
                                        : arithmetic(e, "&");
        case ExprKind::Or:
            return e.type == Type::Bool ? "(" + truth(*e.args[0]) + " OR " + truth(*e.args[1]) + ")"
                                        : arithmetic(e, "|");
        case ExprKind::Xor: {
            const Sql a = as(*e.args[0], e.type), b = as(*e.args[1], e.type);
            return e.type == Type::Bool ? "(" + a + "<>" + b + ")" : "((" + a + "|" + b + ")-(" + a + "&" + b + "))";
        }
        case ExprKind::Like:
            return std::string(e.negated ? "(NOT " : "(") + "koben_like(" + as(*e.args[0], Type::Text) + "," +
                   as(*e.args[1], Type::Text) + "))";
        case ExprKind::IsNull:
            return "(" + raw(*e.args[0]) + (e.negated ? " IS NOT NULL)" : " IS NULL)");
        case ExprKind::Between:
            return std::string(e.negated ? "(NOT (" : "((") + compare(*e.args[0], " >= ", *e.args[1]) + " AND " +
                   compare(*e.args[0], " <= ", *e.args[2]) + "))";
        case ExprKind::InList:
            return inList(e);
        case ExprKind::InSelect:
            return inSelect(e);
        case ExprKind::Exists:
            return "EXISTS (" + subSelect(*e.select, false) + ")";
        case ExprKind::Scalar:
            return "(" + subSelect(*e.select, false) + ")";
        default:
            return compare(*e.args[0], compareSign(e.kind), *e.args[1]);
    }
}

std::string Emitter::compare(const Expr& a, const char* op, const Expr& b) {
    const Type type = comparisonType(a, b);
    if (type == Type::Text) {
        if (hasKey(a) || hasKey(b)) return "(" + key(a) + op + key(b) + ")";
        // A text equals the empty one where it is blanks only: the built-in collation says the same, and can stand in
        // an index that any SQLite tool may write.
        const bool blank = emptyText(a) || emptyText(b);
        return "(" + as(a, type) + op + as(b, type) + (blank ? " COLLATE RTRIM" : kCollate) + ")";
    }
    return "(" + as(a, type) + op + as(b, type) + ")";
}

std::string Emitter::inList(const Expr& e) {
    const Expr& left = *e.args[0];
    const bool keys = hasKey(left);
    Type type = left.type;
    for (size_t i = 1; i < e.args.size(); ++i) {
        const Type pair = comparisonType(left, *e.args[i]);
        if (pair != type) type = commonType(type, pair);
    }
    std::vector<Sql> parts;
    for (size_t i = 1; i < e.args.size(); ++i) parts.push_back(keys ? key(*e.args[i]) : as(*e.args[i], type));
    const Sql what = keys ? key(left) : as(left, type) + (type == Type::Text ? kCollate : "");
    return "(" + what + (e.negated ? " NOT IN (" : " IN (") + joined(parts, ",") + "))";
}

std::string Emitter::inSelect(const Expr& e) {
    const Expr& left = *e.args[0];
    Expr column(ExprKind::Name, 0);
    column.type = e.select->outputs[0].field.type;
    const Type type = comparisonType(left, column);
    const Sql what = as(left, type) + (type == Type::Text ? kCollate : "");
    return "(" + what + (e.negated ? " NOT IN (" : " IN (") + subSelect(*e.select, false, type) + "))";
}

std::string Emitter::arithmetic(const Expr& e, const char* op) {
    return "(" + as(*e.args[0], e.type) + op + as(*e.args[1], e.type) + ")";
}

std::string Emitter::addition(const Expr& e, const char* op) {
    const Expr& a = *e.args[0];
    const Expr& b = *e.args[1];
    if (e.type == Type::Text) return "(" + as(a, Type::Text) + "||" + as(b, Type::Text) + ")";
    const bool days = a.type == Type::Date || b.type == Type::Date;
    const Sql sum = "(" + as(a, days ? Type::Double : e.type) + op + as(b, days ? Type::Double : e.type) + ")";
    return e.type == Type::Date ? cast(sum, Type::Double, Type::Date) : sum;
}

std::string Emitter::product(const Expr& e) {
    const Expr& a = *e.args[0];
    const Expr& b = *e.args[1];
    if (e.type != Type::Currency) return arithmetic(e, "*");
    if (a.type == Type::Currency && b.type == Type::Currency) return callOf(kMoneyProduct, {&a, &b});
    const auto factor = [this](const Expr& x) { return as(x, x.type == Type::Bool ? Type::Long : x.type); };
    return "(" + factor(a) + "*" + factor(b) + ")";
}

std::string Emitter::callOf(const Function& function, const std::vector<const Expr*>& args) {
    Sql letters, list;
    const char* wanted = function.arguments;
    for (const Expr* arg : args) {
        Type type = arg->type;
        if (*wanted == 't') type = Type::Text;
        if (*wanted == 'n') type = Type::Double;
        if (*wanted == 'i') type = isWhole(arg->type) ? Type::Long : Type::Double;
        if (*wanted == 'd') type = Type::Date;
        letters += typeLetter(type);
        list += "," + as(*arg, type);
        if (wanted[1] != 0) ++wanted;
    }
    return "koben_" + QStringView(function.name).toUtf8().toStdString() + "('" + letters + "'" + list + ")";
}

std::string Emitter::call(const Expr& e) {
    if (e.function->rule == Function::Rule::Aggregate) return aggregate(e);
    if (e.function->rule == Function::Rule::Special) return special(e);
    std::vector<const Expr*> args;
    for (const auto& a : e.args) args.push_back(&behind(*a));
    const Sql sql = callOf(*e.function, args);
    return sql;
}

std::string Emitter::aggregate(const Expr& e) {
    const QStringView function(e.function->name);
    const Expr& arg = *e.args[0];
    if (function == u"count") return "count(" + raw(arg) + ")";
    if (function == u"sum") return "sum(" + as(arg, e.type) + ")";
    if (function == u"avg") {
        const Sql sql = as(arg, e.type);
        return e.type == Type::Currency ? "koben_moneyavg(sum(" + sql + "),count(" + sql + "))" : "avg(" + sql + ")";
    }
    if (function == u"first" || function == u"last")
        return "koben_" + function.toUtf8().toStdString() + "(" + raw(arg) + ")";
    return function.toUtf8().toStdString() + "(" + raw(arg) + (arg.type == Type::Text ? kCollate : "") + ")";
}

std::string Emitter::special(const Expr& e) {
    if (e.args.size() == 3)
        return "(CASE WHEN " + truth(*e.args[0]) + " THEN " + as(*e.args[1], e.type) + " ELSE " +
               as(*e.args[2], e.type) + " END)";
    if (e.type == Type::Bool && e.function->result == Type::Bool) return "(" + raw(*e.args[0]) + " IS NULL)";
    const Sql fallback = e.args.size() == 2 ? as(*e.args[1], e.type) : isNumber(e.type) ? "0" : "''";
    return "ifnull(" + as(*e.args[0], e.type) + "," + fallback + ")";
}

}  // namespace koben::sql
