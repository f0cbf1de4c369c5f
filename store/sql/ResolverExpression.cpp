#include "store/sql/Resolver.h"

namespace koben::sql {
namespace {

Type typeOfValue(const Value& value) {
    struct {
        Type operator()(std::monostate) const { return Type::Null; }
        Type operator()(bool) const { return Type::Bool; }
        Type operator()(qint32) const { return Type::Long; }
        Type operator()(qint64) const { return Type::Long; }
        Type operator()(float) const { return Type::Single; }
        Type operator()(double) const { return Type::Double; }
        Type operator()(Money) const { return Type::Currency; }
        Type operator()(DateTime) const { return Type::Date; }
        Type operator()(const QString&) const { return Type::Text; }
    } const type;
    return std::visit(type, value.variant());
}

/// A parameter has no type of its own: it takes that of what it meets.
bool untyped(const Expr& e) { return e.kind == ExprKind::Parameter && e.type == Type::Null; }

void meet(Expr& a, Expr& b) {
    if (untyped(a)) a.type = b.type;
    if (untyped(b)) b.type = a.type;
}

}  // namespace

void Resolver::condition(Expr& expr, const Scope& scope) {
    expression(expr, scope);
    if (untyped(expr)) expr.type = Type::Bool;
    if (expr.type == Type::Text || expr.type == Type::Date)
        fail(Kind::Type, expr.position, QStringLiteral("Ein Text oder Datum ist keine Bedingung"));
}

void Resolver::expression(Expr& e, const Scope& scope) {
    if (e.kind == ExprKind::Name) return name(e, scope);
    if (e.kind == ExprKind::Call) return call(e, scope);
    if (e.select) return subSelect(e, scope);
    for (const auto& a : e.args) {
        expression(*a, scope);
        e.hasAggregate = e.hasAggregate || a->hasAggregate;
    }
    switch (e.kind) {
        case ExprKind::Literal:
            e.type = typeOfValue(e.literal.value);
            break;
        case ExprKind::Now:
        case ExprKind::Today:
            e.type = Type::Date;
            break;
        case ExprKind::CountStar:
            if (!scope.aggregates) fail(Kind::Syntax, e.position, QStringLiteral("\"count\" ist hier nicht erlaubt"));
            e.type = Type::Long;
            e.hasAggregate = e.aggregate = true;
            break;
        case ExprKind::Parameter:
            break;
        case ExprKind::Equal:
        case ExprKind::NotEqual:
        case ExprKind::Less:
        case ExprKind::LessEqual:
        case ExprKind::Greater:
        case ExprKind::GreaterEqual:
        case ExprKind::InList:
        case ExprKind::Between:
            for (size_t i = 1; i < e.args.size(); ++i) comparison(*e.args[0], *e.args[i], e.args[i]->position);
            e.type = Type::Bool;
            break;
        case ExprKind::Like:
            for (const auto& a : e.args)
                if (untyped(*a)) a->type = Type::Text;
            e.type = Type::Bool;
            break;
        case ExprKind::IsNull:
            e.type = Type::Bool;
            break;
        default:
            arithmetic(e);
    }
}

void Resolver::comparison(Expr& a, Expr& b, int position) const {
    meet(a, b);
    if (comparisonType(a, b) == Type::Null && a.type != b.type && a.type != Type::Null && b.type != Type::Null)
        fail(Kind::Type, position,
             QStringLiteral("Ein Text wird mit einem Wert anderer Art verglichen (Datentypen unverträglich)"));
}

void Resolver::requireNumber(const Expr& e, const Expr& operation) const {
    if (e.type == Type::Date)
        fail(Kind::Type, operation.position, QStringLiteral("Mit einem Datum kann hier nicht gerechnet werden"));
}

void Resolver::arithmetic(Expr& e) const {
    Expr& a = *e.args[0];
    Expr& b = *e.args.back();
    if (e.kind == ExprKind::And || e.kind == ExprKind::Or || e.kind == ExprKind::Xor || e.kind == ExprKind::Not) {
        for (const auto& arg : e.args) {
            if (untyped(*arg)) arg->type = Type::Bool;
            if (arg->type == Type::Text || arg->type == Type::Date)
                fail(Kind::Type, arg->position, QStringLiteral("Ein Text oder Datum ist keine Bedingung"));
        }
        const bool logical =
            a.type == Type::Bool || b.type == Type::Bool || a.type == Type::Null || b.type == Type::Null;
        e.type = logical ? Type::Bool : Type::Long;
        return;
    }
    if (e.kind == ExprKind::Concat) {
        e.type = Type::Text;
        return;
    }
    meet(a, b);
    const auto textual = [](const Expr& x) { return x.type == Type::Text || x.type == Type::Null; };
    const bool texts = textual(a) && textual(b);
    const bool dates = a.type == Type::Date || b.type == Type::Date;
    switch (e.kind) {
        case ExprKind::Add:
            e.type = texts ? commonType(a.type, b.type) : dates ? Type::Date : commonType(a.type, b.type);
            if (!texts && e.type == Type::Text) e.type = Type::Double;
            break;
        case ExprKind::Subtract:
            e.type = a.type == Type::Date && b.type == Type::Date ? Type::Double
                     : dates                                      ? Type::Date
                                                                  : commonType(a.type, b.type);
            if (e.type == Type::Text) e.type = Type::Double;
            break;
        case ExprKind::Multiply:
            requireNumber(a, e), requireNumber(b, e);
            e.type = commonType(a.type, b.type);
            if (e.type == Type::Text) e.type = Type::Double;
            // Money times a whole number or money stays money, times a float it is a float.
            if (e.type == Type::Currency)
                for (const Expr* x : {&a, &b})
                    if (x->type == Type::Single || x->type == Type::Double) e.type = Type::Double;
            break;
        case ExprKind::Negate:
            requireNumber(a, e);
            e.type = a.type == Type::Text ? Type::Double : a.type;
            break;
        case ExprKind::IntDivide:
        case ExprKind::Modulo:
            requireNumber(a, e), requireNumber(b, e);
            e.type = Type::Long;
            break;
        default:
            requireNumber(a, e), requireNumber(b, e);
            e.type = Type::Double;
    }
    if (e.type == Type::Bool || e.type == Type::Short) e.type = Type::Long;
}

void Resolver::subSelect(Expr& e, const Scope& scope) {
    for (const auto& a : e.args) expression(*a, scope);
    select(*e.select, &scope);
    if (e.kind == ExprKind::Exists) {
        e.type = Type::Bool;
        return;
    }
    if (e.select->outputs.size() != 1)
        fail(Kind::Syntax, e.select->position, QStringLiteral("Die Unterabfrage muss genau eine Spalte haben"));
    const Output& output = e.select->outputs[0];
    if (e.kind == ExprKind::Scalar) {
        e.type = output.field.type;
        e.size = output.field.size;
        return;
    }
    if (untyped(*e.args[0])) e.args[0]->type = output.field.type;
    Expr column(ExprKind::Name, e.position);
    column.type = output.field.type;
    comparison(*e.args[0], column, e.position);
    e.type = Type::Bool;
}

bool Resolver::findColumn(Expr& e, const Scope& scope) const {
    for (const Source* source : *scope.sources) {
        if (!e.qualifier.isEmpty() && !sameName(source->label(), e.qualifier)) continue;
        for (size_t i = 0; i < source->fields.size(); ++i) {
            if (!sameName(source->fields[i].name, e.name)) continue;
            if (e.source != nullptr)
                fail(Kind::UnknownName, e.position,
                     QStringLiteral("Der Name \"%1\" ist mehrdeutig: er steht in \"%2\" und \"%3\"")
                         .arg(e.name, e.source->label(), source->label()));
            e.source = source;
            e.column = static_cast<int>(i);
            break;
        }
    }
    if (e.source == nullptr) return false;
    const Field& field = e.source->fields[static_cast<size_t>(e.column)];
    e.type = field.type;
    e.size = field.size;
    return true;
}

bool Resolver::findAlias(Expr& e, const Scope& scope) const {
    if (!e.qualifier.isEmpty() || scope.select == nullptr) return false;
    for (size_t i = 0; i < scope.aliases; ++i) {
        const Output& output = scope.select->outputs[i];
        if (!sameName(output.field.name, e.name)) continue;
        if (output.expr->hasAggregate && !scope.aggregates)
            fail(Kind::Syntax, e.position,
                 QStringLiteral("\"%1\" ist eine Summe oder Anzahl und hier nicht erlaubt").arg(e.name));
        e.kind = ExprKind::Alias;
        e.target = output.expr;
        e.type = output.expr->type;
        e.size = output.expr->size;
        e.hasAggregate = output.expr->hasAggregate;
        return true;
    }
    return false;
}

void Resolver::name(Expr& e, const Scope& scope) {
    for (const Scope* s = &scope; s != nullptr; s = s->outer) {
        if (s->aliasesFirst ? findAlias(e, *s) || findColumn(e, *s) : findColumn(e, *s) || findAlias(e, *s)) return;
    }
    const QString full = e.qualifier.isEmpty() ? e.name : e.qualifier + u'.' + e.name;
    fail(Kind::UnknownName, e.position, QStringLiteral("Der Name \"%1\" ist unbekannt").arg(full));
}

void Resolver::call(Expr& e, const Scope& scope) {
    e.function = e.name.endsWith(u'_') ? nullptr : findFunction(e.name);
    if (e.function == nullptr)
        fail(Kind::UnknownName, e.position, QStringLiteral("Die Funktion \"%1\" ist unbekannt").arg(e.name));
    const auto count = static_cast<int>(e.args.size());
    if (count < e.function->minArgs || count > e.function->maxArgs)
        fail(Kind::Syntax, e.position,
             QStringLiteral("Die Funktion \"%1\" hat eine falsche Anzahl von Argumenten").arg(e.name));
    e.aggregate = e.function->rule == Function::Rule::Aggregate;
    if (e.aggregate && !scope.aggregates)
        fail(Kind::Syntax, e.position, QStringLiteral("\"%1\" ist hier nicht erlaubt").arg(e.name));
    Scope inner = scope;
    inner.aggregates = scope.aggregates && !e.aggregate;
    for (const auto& a : e.args) {
        expression(*a, inner);
        e.hasAggregate = e.hasAggregate || a->hasAggregate;
    }
    e.hasAggregate = e.hasAggregate || e.aggregate;
    switch (e.function->rule) {
        case Function::Rule::Aggregate:
            return aggregate(e);
        case Function::Rule::Special:
            return special(e);
        case Function::Rule::AsFirst:
            e.type = e.args[0]->type;
            break;
        case Function::Rule::Fixed:
            e.type = e.function->result;
            break;
    }
    if (e.function->rule == Function::Rule::AsFirst && (e.type == Type::Text || e.type == Type::Date))
        e.type = Type::Double;
    if (e.type == Type::Bool && e.function->rule == Function::Rule::AsFirst) e.type = Type::Long;
}

void Resolver::aggregate(Expr& e) const {
    const Expr& arg = *e.args[0];
    const QStringView function(e.function->name);
    e.type = function == u"count" ? Type::Long : arg.type;
    e.size = function == u"count" ? 0 : arg.size;
    if (function != u"sum" && function != u"avg") return;
    if (arg.type == Type::Text || arg.type == Type::Date)
        fail(Kind::Type, e.position, QStringLiteral("\"%1\" braucht Zahlen").arg(e.name));
    const bool money = arg.type == Type::Currency;
    const bool whole = isWhole(arg.type) && function == u"sum";
    e.type = money ? Type::Currency : whole ? Type::Long : Type::Double;
}

void Resolver::special(Expr& e) const {
    if (e.function->result != Type::Null) {
        e.type = e.function->result;
        return;
    }
    const bool iif = e.args.size() == 3;
    if (iif) {
        if (untyped(*e.args[0])) e.args[0]->type = Type::Bool;
        if (e.args[0]->type == Type::Text || e.args[0]->type == Type::Date)
            fail(Kind::Type, e.args[0]->position, QStringLiteral("Ein Text oder Datum ist keine Bedingung"));
    }
    const Expr& first = *e.args[iif ? 1 : 0];
    const Expr& second = *e.args.back();
    e.type = commonType(first.type, second.type);
    e.size = std::max(first.size, second.size);
    if (first.kind == ExprKind::Literal || second.kind == ExprKind::Literal) e.size = 0;
}

}  // namespace koben::sql
