#include "store/sql/Resolver.h"

namespace koben::sql {

bool isWhole(Type type) { return type == Type::Short || type == Type::Long || type == Type::Bool; }

bool isNumber(Type type) {
    return isWhole(type) || type == Type::Single || type == Type::Double || type == Type::Currency;
}

Type commonType(Type a, Type b) {
    if (a == b || b == Type::Null) return a;
    if (a == Type::Null) return b;
    if (!isNumber(a) || !isNumber(b)) return Type::Text;
    if (a == Type::Currency || b == Type::Currency) return Type::Currency;
    return isWhole(a) && isWhole(b) ? Type::Long : Type::Double;
}

Type comparisonType(const Expr& a, const Expr& b) {
    const Type x = a.type, y = b.type;
    if (x == y || y == Type::Null) return x;
    if (x == Type::Null) return y;
    if (x == Type::Text || y == Type::Text) return Type::Null;
    if (x == Type::Date || y == Type::Date) return Type::Double;
    const auto constant = [](const Expr& e) { return e.kind == ExprKind::Literal || e.kind == ExprKind::Negate; };
    if ((x == Type::Single && constant(b)) || (y == Type::Single && constant(a)))
        return x == Type::Double || y == Type::Double ? Type::Single : Type::Double;
    return commonType(x, y);
}

const Expr& behind(const Expr& expr) { return expr.kind == ExprKind::Alias ? behind(*expr.target) : expr; }

bool sameExpression(const Expr& x, const Expr& y) {
    const Expr& a = behind(x);
    const Expr& b = behind(y);
    if (a.kind != b.kind || a.args.size() != b.args.size() || a.negated != b.negated) return false;
    if (a.kind == ExprKind::Name) return a.source == b.source && a.column == b.column;
    if (a.kind == ExprKind::Literal)
        return (a.index >= 0) == (b.index >= 0) &&
               (a.index >= 0 ? a.type == b.type : a.literal.value == b.literal.value);
    if (a.function != b.function || a.select || b.select) return false;
    for (size_t i = 0; i < a.args.size(); ++i)
        if (!sameExpression(*a.args[i], *b.args[i])) return false;
    return true;
}

const TableInfo& Resolver::table(const QString& name, int position) const {
    const TableInfo* found = m_catalog.find(name);
    if (found == nullptr)
        fail(Kind::UnknownName, position, QStringLiteral("Die Tabelle \"%1\" ist unbekannt").arg(name));
    return *found;
}

int Resolver::column(const TableInfo& table, const QString& name, int position) const {
    const int found = table.columnOf(name);
    if (found < 0)
        fail(Kind::UnknownName, position,
             QStringLiteral("Das Feld \"%1\" gibt es in der Tabelle \"%2\" nicht").arg(name, table.name));
    return found;
}

void Resolver::source(Source& source, const Scope* outer) {
    source.number = m_sources++;
    if (source.select) {
        this->select(*source.select, outer);
        for (const Output& o : source.select->outputs) source.fields.push_back(o.field);
        return;
    }
    source.table = &table(source.name, source.position);
    for (const ColumnInfo& c : source.table->columns) source.fields.push_back({c.name, c.type, c.size});
}

void Resolver::join(Join& join, Select& select, const Scope* outer) {
    if (join.kind != Join::Kind::Leaf) {
        this->join(*join.left, select, outer);
        this->join(*join.right, select, outer);
        return;
    }
    source(*join.source, outer);
    for (const Source* other : select.sources)
        if (!join.source->label().isEmpty() && sameName(other->label(), join.source->label()))
            fail(Kind::Syntax, join.source->position,
                 QStringLiteral("Die Tabelle \"%1\" steht zweimal da").arg(join.source->label()));
    select.sources.push_back(join.source.get());
}

void Resolver::joinConditions(Join& join, const Scope& scope) {
    if (join.kind == Join::Kind::Leaf) return;
    joinConditions(*join.left, scope);
    joinConditions(*join.right, scope);
    condition(*join.on, scope);
}

void Resolver::select(Select& select, const Scope* outer) {
    for (const auto& j : select.from) join(*j, select, outer);
    Scope scope{outer, &select.sources, &select, 0, false, false};
    items(select, scope);
    scope.aliases = 0;
    for (const auto& j : select.from) joinConditions(*j, scope);
    if (select.where) condition(*select.where, scope);
    groupKeys(select, scope);
    if (select.having) {
        select.grouped = true;
        scope.aliases = select.outputs.size();
        scope.aggregates = true;
        condition(*select.having, scope);
    }
    for (const Output& o : select.outputs) select.grouped = select.grouped || o.expr->hasAggregate;
    nameOutputs(select);
    if (select.unionWith) unite(select, outer);
    orderKeys(select, scope);
    if (!select.grouped) return;
    for (const Output& o : select.outputs) checkGrouped(select, *o.expr);
    if (select.having) checkGrouped(select, *select.having);
    for (const OrderKey& k : select.orderBy)
        if (k.expr && k.output < 0) checkGrouped(select, *k.expr);
}

void Resolver::items(Select& select, Scope& scope) {
    scope.aggregates = true;
    for (SelectItem& item : select.items) {
        if (!item.expr) {
            star(select, item);
            continue;
        }
        scope.aliases = select.outputs.size();
        expression(*item.expr, scope);
        const Expr& e = behind(*item.expr);
        Output output;
        output.expr = item.expr.get();
        output.plain = e.kind == ExprKind::Name;
        output.field = {item.alias, item.expr->type, item.expr->size};
        if (item.alias.isEmpty() && item.expr->kind == ExprKind::Name) {
            output.field.name = e.source->fields[static_cast<size_t>(e.column)].name;
        } else if (item.alias.isEmpty()) {
            output.field.name = QStringLiteral("Expr%1").arg(1000 + select.outputs.size());
        }
        select.outputs.push_back(std::move(output));
    }
    scope.aggregates = false;
}

void Resolver::star(Select& select, const SelectItem& item) {
    bool found = false;
    for (const Source* source : select.sources) {
        if (!item.starOf.isEmpty() && !sameName(source->label(), item.starOf)) continue;
        found = true;
        for (size_t i = 0; i < source->fields.size(); ++i) {
            auto expr = std::make_unique<Expr>(ExprKind::Name, item.position);
            expr->source = source;
            expr->column = static_cast<int>(i);
            expr->type = source->fields[i].type;
            expr->size = source->fields[i].size;
            select.outputs.push_back({expr.get(), source->fields[i], true, Type::Null});
            select.spread.push_back(std::move(expr));
        }
    }
    if (found) return;
    if (item.starOf.isEmpty()) fail(Kind::Syntax, item.position, QStringLiteral("\"*\" braucht eine Tabelle"));
    fail(Kind::UnknownName, item.position, QStringLiteral("Die Tabelle \"%1\" ist unbekannt").arg(item.starOf));
}

/// Plain fields of the same name from different tables are told apart as Table.Field.
void Resolver::nameOutputs(Select& select) {
    const auto qualifiable = [](const Output& o) {
        return o.expr->kind == ExprKind::Name && o.expr->source != nullptr;
    };
    if (select.sources.size() < 2) return;
    std::vector<bool> twice(select.outputs.size(), false);
    for (size_t i = 0; i < select.outputs.size(); ++i)
        for (size_t j = 0; j < i; ++j)
            if (qualifiable(select.outputs[i]) && qualifiable(select.outputs[j]) &&
                select.outputs[i].expr->source != select.outputs[j].expr->source &&
                sameName(select.outputs[i].field.name, select.outputs[j].field.name))
                twice[i] = twice[j] = true;
    for (size_t i = 0; i < select.outputs.size(); ++i)
        if (Output& o = select.outputs[i]; twice[i]) o.field.name = o.expr->source->label() + u'.' + o.field.name;
}

void Resolver::groupKeys(Select& select, Scope scope) {
    scope.aliases = select.outputs.size();
    scope.aggregates = false;
    for (const auto& key : select.groupBy) {
        select.grouped = true;
        expression(*key, scope);
        if (behind(*key).hasAggregate)
            fail(Kind::Syntax, key->position,
                 QStringLiteral("Nach einer Summe oder Anzahl kann nicht gruppiert werden"));
    }
}

void Resolver::orderKeys(Select& select, Scope scope) {
    scope.aliases = select.outputs.size();
    scope.aliasesFirst = true;
    scope.aggregates = select.grouped;
    for (OrderKey& key : select.orderBy) orderKey(select, key, scope);
}

void Resolver::orderKey(Select& select, OrderKey& key, const Scope& scope) {
    if (key.expr->kind == ExprKind::Literal && std::holds_alternative<qint32>(key.expr->literal.value.variant())) {
        const qint64 place = key.expr->literal.value.toInt();
        if (place < 1 || place > static_cast<qint64>(select.outputs.size()))
            fail(Kind::UnknownName, key.expr->position, QStringLiteral("Eine Spalte %1 gibt es nicht").arg(place));
        key.output = static_cast<int>(place) - 1;
        return;
    }
    expression(*key.expr, scope);
    for (size_t i = 0; i < select.outputs.size() && key.output < 0; ++i)
        if (sameExpression(*key.expr, *select.outputs[i].expr)) key.output = static_cast<int>(i);
    if (key.output < 0 && (select.distinct || select.unionWith))
        fail(Kind::Syntax, key.expr->position,
             QStringLiteral("\"order by\" passt nicht zu distinct oder union: die Spalte steht nicht in der Auswahl"));
}

/// Outside an aggregate only the group keys have one value.
void Resolver::checkGrouped(const Select& select, const Expr& expr) const {
    const Expr& e = behind(expr);
    if (e.aggregate || e.kind == ExprKind::CountStar) return;
    for (const auto& key : select.groupBy)
        if (sameExpression(*key, e)) return;
    if (e.kind == ExprKind::Name) {
        bool own = false;
        for (const Source* s : select.sources) own = own || s == e.source;
        if (own)
            fail(Kind::Syntax, expr.position,
                 QStringLiteral("Das Feld \"%1\" steht weder in \"group by\" noch in einer Summe oder Anzahl")
                     .arg(e.source->fields[static_cast<size_t>(e.column)].name));
    }
    for (const auto& a : e.args) checkGrouped(select, *a);
}

void Resolver::unite(Select& select, const Scope* outer) {
    Select& other = *select.unionWith;
    this->select(other, outer);
    if (other.outputs.size() != select.outputs.size())
        fail(Kind::Syntax, other.position, QStringLiteral("Die Teile von \"union\" haben verschieden viele Spalten"));
    for (size_t i = 0; i < select.outputs.size(); ++i) {
        Output& a = select.outputs[i];
        Output& b = other.outputs[i];
        const Type type = commonType(a.field.type, b.field.type);
        a.emitAs = b.emitAs = a.field.type = b.field.type = type;
        const bool sized = type == Type::Text && a.field.size > 0 && b.field.size > 0;
        a.field.size = b.field.size = sized ? std::max(a.field.size, b.field.size) : 0;
    }
    for (Select* s = other.unionWith.get(); s != nullptr; s = s->unionWith.get())
        for (size_t i = 0; i < select.outputs.size(); ++i) s->outputs[i].emitAs = select.outputs[i].emitAs;
}

void Resolver::query(Query& query) {
    select(*query.select);
    if (!query.transform) return;
    Select& s = *query.select;
    s.grouped = true;
    Scope scope{nullptr, &s.sources, &s, s.outputs.size(), false, true};
    expression(*query.transform, scope);
    if (!query.transform->hasAggregate)
        fail(Kind::Syntax, query.transform->position,
             QStringLiteral("Hinter \"transform\" gehört eine Summe, Anzahl oder dergleichen"));
    scope.aggregates = false;
    expression(*query.pivot, scope);
    for (const Output& o : s.outputs) checkGrouped(s, *o.expr);
    for (const auto& v : query.pivotIn) {
        expression(*v, scope);
        if (v->kind != ExprKind::Literal)
            fail(Kind::Syntax, v->position, QStringLiteral("Hinter \"pivot ... in\" gehören feste Werte"));
    }
}

}  // namespace koben::sql
