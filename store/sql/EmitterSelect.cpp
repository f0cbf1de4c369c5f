#include "store/sql/Emitter.h"

namespace koben::sql {

std::string Emitter::source(const Source& source) {
    const Sql alias = " AS t" + std::to_string(source.number);
    if (&source == m_leapSource) return leaps(source, m_leapColumn) + alias;
    if (source.table != nullptr) return source.table->sqlName + alias;
    return "(" + subSelect(*source.select, true) + ")" + alias;
}

std::string Emitter::join(const Join& tree) {
    if (tree.kind == Join::Kind::Leaf) return source(*tree.source);
    const char* word = tree.kind == Join::Kind::Inner  ? " JOIN "
                       : tree.kind == Join::Kind::Left ? " LEFT JOIN "
                                                       : " RIGHT JOIN ";
    const bool nested = tree.right->kind != Join::Kind::Leaf;
    return join(*tree.left) + word + (nested ? "(" : "") + join(*tree.right) + (nested ? ")" : "") + " ON " +
           truth(*tree.on);
}

std::string Emitter::from(const Select& select) {
    std::vector<Sql> parts;
    for (const auto& j : select.from) parts.push_back(join(*j));
    return parts.empty() ? Sql() : " FROM " + joined(parts, ", ");
}

namespace {

/// A number, with signs or without: bare in a list of keys it would name a column.
bool isConstant(const Expr& expr) {
    const Expr& e = behind(expr);
    return e.kind == ExprKind::Literal || (e.kind == ExprKind::Negate && isConstant(*e.args[0]));
}

bool holdsExtreme(const Expr& expr) {
    const Expr& e = behind(expr);
    if (e.aggregate && e.function != nullptr &&
        (QStringView(e.function->name) == u"max" || QStringView(e.function->name) == u"min"))
        return true;
    for (const auto& a : e.args)
        if (holdsExtreme(*a)) return true;
    return false;
}

/// Beside max() or min() SQLite takes the other columns from the row of the extreme; a text key shall be that of the
/// first row of its group.
bool needsFirst(const Select& select, const Expr& expr) {
    if (select.groupBy.empty() || expr.hasAggregate || expr.type != Type::Text) return false;
    for (const Output& o : select.outputs)
        if (holdsExtreme(*o.expr)) return true;
    return false;
}

}  // namespace

std::string Emitter::output(const Output& output) {
    return as(*output.expr, output.emitAs == Type::Null ? output.expr->type : output.emitAs);
}

std::string Emitter::sortExpression(const Expr& e) {
    if (hasKey(e)) return key(e);
    const Sql sql = raw(e);
    if (isConstant(e)) return "+" + sql + "||''";
    // -1 is true and sorts before 0.
    return e.type == Type::Text ? sql + kCollate : e.type == Type::Bool ? "(-" + sql + ")" : sql;
}

std::string Emitter::groupBy(const Select& select, const Expr* further) {
    std::vector<Sql> keys;
    for (const auto& k : select.groupBy) keys.push_back(sortExpression(*k));
    if (further != nullptr) keys.push_back(sortExpression(*further));
    return keys.empty() ? Sql() : " GROUP BY " + joined(keys, ", ");
}

std::string Emitter::tail(const Select& select) {
    Sql sql = from(select);
    if (select.where) sql += " WHERE " + truth(*select.where);
    // A crosstab without group by, or aggregates alone: all rows are one.
    sql += select.groupBy.empty() && m_plan.kind == Plan::Kind::Pivot ? " GROUP BY NULL" : groupBy(select, nullptr);
    if (select.having) sql += " HAVING " + truth(*select.having);
    return sql;
}

std::string Emitter::orderTerm(const Select& select, const OrderKey& key) {
    const char* direction = key.descending ? " DESC" : "";
    if (key.output >= 0 && (select.distinct || compound(select))) return std::to_string(key.output + 1) + direction;
    const Expr& e = key.output >= 0 ? *select.outputs[static_cast<size_t>(key.output)].expr : *key.expr;
    return sortExpression(e) + direction;
}

/// The asked order, then what makes it complete: the group keys, the columns of a distinct, the order of entry.
std::vector<std::string> Emitter::orderTerms(const Select& select) {
    std::vector<Sql> terms;
    for (const OrderKey& k : select.orderBy) terms.push_back(orderTerm(select, k));
    if (select.distinct || (compound(select) && !select.unionAll)) {
        for (size_t i = 0; i < select.outputs.size(); ++i) terms.push_back(std::to_string(i + 1));
    } else if (compound(select)) {
        return terms;
    } else if (select.grouped) {
        for (const auto& k : select.groupBy) terms.push_back(sortExpression(*k));
    } else {
        for (const Source* s : select.sources)
            if (s->table != nullptr) terms.push_back("t" + std::to_string(s->number) + "." + s->table->rowId);
    }
    return terms;
}

namespace {

/// Whether an expression speaks of no other field than this one.
bool onlyOf(const Expr& expr, const Source* source, int column) {
    const Expr& e = behind(expr);
    if (e.select != nullptr) return false;
    if (e.kind == ExprKind::Name) return e.source == source && e.column == column;
    return std::all_of(e.args.begin(), e.args.end(), [&](const auto& a) { return onlyOf(*a, source, column); });
}

}  // namespace

/// The field of a table whose different values are all that a select asks for, and that has an index for them; or -1.
int Emitter::leapField(const Select& select) {
    if (!select.distinct || select.grouped || select.sources.size() != 1 || select.outputs.size() != 1) return -1;
    const Source* source = select.sources[0];
    const Expr& e = behind(*select.outputs[0].expr);
    if (source->table == nullptr || e.kind != ExprKind::Name || e.source != source) return -1;
    const ColumnInfo& column = source->table->columns[static_cast<size_t>(e.column)];
    if (!column.leaps) return -1;
    if (select.where == nullptr) return e.column;
    // conditions on an indexed field are emitted on its sort keys
    return column.keyName.empty() && onlyOf(*select.where, source, e.column) ? e.column : -1;
}

/// The different spellings of a field, each found behind the one before it, in the order in which they were first
/// entered, which decides how texts are shown that differ by case alone.
std::string Emitter::leaps(const Source& source, int column) {
    const ColumnInfo& info = source.table->columns[static_cast<size_t>(column)];
    const Sql from =
                  " FROM " + source.table->sqlName + " INDEXED BY " + quoted(leapIndex(source.table->name, info.name)),
              value = leapExpression(info), row = source.table->rowId;
    const auto least = [&](const Sql& which) {
        return "(SELECT " + value + from + " WHERE " + value + which + " ORDER BY " + value + " LIMIT 1)";
    };
    const auto first = [&](const Sql& which) {
        return "(SELECT min(" + row + ")" + from + " WHERE " + value + which + ")";
    };
    return "(WITH RECURSIVE v(x) AS (SELECT " + least(" IS NOT NULL") + " UNION ALL SELECT " + least(" > v.x") +
           " FROM v WHERE v.x IS NOT NULL) SELECT x AS " + info.sqlName + " FROM (SELECT x, " + first(" = x") +
           " AS n FROM v WHERE x IS NOT NULL UNION ALL SELECT NULL, n FROM (SELECT " + first(" IS NULL") +
           " AS n) WHERE n IS NOT NULL) ORDER BY n LIMIT -1)";
}

/// "select outputs from ...", without order; `further` are more columns.
std::string Emitter::core(const Select& select, bool named, Type single, const Sql& further) {
    m_leapColumn = leapField(select);
    m_leapSource = m_leapColumn < 0 ? nullptr : select.sources[0];
    // Texts that differ byte by byte are told apart first: few of them are left for the dear comparison.
    const bool text = std::any_of(select.outputs.begin(), select.outputs.end(),
                                  [](const Output& o) { return o.field.type == Type::Text; });
    const bool twice = select.distinct && text && further.empty() && m_leapSource == nullptr;
    std::vector<Sql> columns, spelled;
    for (size_t i = 0; i < select.outputs.size(); ++i) {
        const Output& o = select.outputs[i];
        const Sql name = "c" + std::to_string(i);
        Sql sql = single == Type::Null ? output(o) : as(*o.expr, single);
        if (needsFirst(select, *o.expr)) sql = "koben_first(" + sql + ")";
        if (twice) {
            spelled.push_back(sql + (o.field.type == Type::Text ? " COLLATE BINARY" : "") + " AS " + name);
            sql = name;
        }
        if (o.field.type == Type::Text && (select.distinct || compound(select))) sql += kCollate;
        if (named) sql += " AS " + name;
        columns.push_back(std::move(sql));
    }
    if (!further.empty()) columns.push_back(further);
    Sql rest = tail(select);
    m_leapSource = nullptr;
    if (twice) rest = " FROM (SELECT DISTINCT " + joined(spelled, ", ") + rest + ")";
    return std::string("SELECT ") + (select.distinct ? "DISTINCT " : "") + joined(columns, ", ") + rest;
}

std::string Emitter::subSelect(const Select& select, bool named, Type single) {
    if (select.top >= 0 && !select.orderBy.empty()) return rankedSubSelect(select, single);
    Sql sql = core(select, named, single);
    for (const Select* part = &select; part->unionWith; part = part->unionWith.get()) {
        const Select& next = *part->unionWith;
        const Sql inner =
            next.top >= 0 ? "SELECT * FROM (" + subSelect(next, true, single) + ")" : core(next, named, single);
        sql += (part->unionAll ? " UNION ALL " : " UNION ") + inner;
        if (next.top >= 0) break;
    }
    if (select.top < 0) return sql;
    return compound(select) ? "SELECT * FROM (" + sql + ") LIMIT " + std::to_string(select.top)
                            : sql + " LIMIT " + std::to_string(select.top);
}

/// `top n` with all rows equal to the n-th, inside another statement.
std::string Emitter::rankedSubSelect(const Select& select, Type single) {
    std::vector<Sql> keys, columns;
    const bool outer = select.distinct || compound(select);
    for (const OrderKey& k : select.orderBy) {
        if (!outer) {
            keys.push_back(orderTerm(select, k));
            continue;
        }
        const bool text = select.outputs[static_cast<size_t>(k.output)].field.type == Type::Text;
        keys.push_back("c" + std::to_string(k.output) + (text ? kCollate : "") + (k.descending ? " DESC" : ""));
    }
    for (size_t i = 0; i < select.outputs.size(); ++i) columns.push_back("c" + std::to_string(i));
    const Sql list = joined(columns, ", ");
    const Sql rank = "rank() OVER (ORDER BY " + joined(keys, ", ") + ") AS koben_rank";
    Sql inner;
    if (outer) {
        Sql parts = core(select, true, single);
        for (const Select* p = &select; p->unionWith; p = p->unionWith.get())
            parts += (p->unionAll ? " UNION ALL " : " UNION ") + core(*p->unionWith, true, single);
        inner = "SELECT " + list + ", " + rank + " FROM (" + parts + ")";
    } else {
        inner = core(select, true, single, rank);
    }
    return "SELECT " + list + " FROM (" + inner + ") WHERE koben_rank <= " + std::to_string(select.top);
}

void Emitter::select(const Select& select) {
    std::vector<Sql> hidden;
    const bool ties = select.top >= 0 && !select.orderBy.empty();
    if (ties) {
        m_plan.top = select.top;
        for (const OrderKey& k : select.orderBy) {
            const auto column = static_cast<int>(select.outputs.size() + hidden.size());
            m_plan.topKeys.push_back(
                {k.output >= 0 ? k.output : column,
                 k.output >= 0 ? select.outputs[static_cast<size_t>(k.output)].field.type : k.expr->type});
            if (k.output < 0) hidden.push_back(raw(*k.expr));
        }
    }
    Sql sql = core(select, false, Type::Null, joined(hidden, ", "));
    for (const Select* part = &select; part->unionWith; part = part->unionWith.get()) {
        const Select& next = *part->unionWith;
        sql += part->unionAll ? " UNION ALL " : " UNION ";
        sql += next.top >= 0 ? "SELECT * FROM (" + subSelect(next, true) + ")" : core(next, false, Type::Null);
        if (next.top >= 0) break;
    }
    std::vector<Sql> order = orderTerms(select);
    // Rows that a condition leaves are sorted sooner than they are looked up one by one along an index of all rows,
    // which SQLite would prefer; the sign keeps it from that.
    const bool plain = !select.distinct && !select.grouped && !compound(select);
    if (select.where && select.top < 0 && plain)
        for (size_t i = 0; i < select.orderBy.size(); ++i) order[i].insert(0, "+");
    if (!order.empty()) sql += " ORDER BY " + joined(order, ", ");
    if (select.top >= 0 && !ties) sql += " LIMIT " + std::to_string(select.top);
    m_plan.sql = std::move(sql);
    for (const Output& o : select.outputs) m_plan.fields.push_back(o.field);
}

void Emitter::liveCursor(const Select& select) {
    if (select.distinct || select.grouped || compound(select) || select.sources.size() != 1 ||
        select.sources[0]->table == nullptr)
        return;
    const Source& source = *select.sources[0];
    m_plan.table = source.table;
    const Sql rowId = "t" + std::to_string(source.number) + "." + source.table->rowId;
    std::vector<Sql> columns = {rowId};
    if (m_plan.top >= 0) {
        for (const OrderKey& k : select.orderBy) {
            const Expr& e = k.output >= 0 ? *select.outputs[static_cast<size_t>(k.output)].expr : *k.expr;
            m_plan.idKeys.push_back({static_cast<int>(columns.size()), e.type});
            columns.push_back(raw(e));
        }
    }
    m_plan.idSql = "SELECT " + joined(columns, ", ") + tail(select) + " ORDER BY " + joined(orderTerms(select), ", ");
    if (select.top >= 0 && m_plan.top < 0) m_plan.idSql += " LIMIT " + std::to_string(select.top);
    std::vector<Sql> values;
    for (const Output& o : select.outputs) {
        values.push_back(output(o));
        const Expr& e = behind(*o.expr);
        m_plan.columns.push_back(e.kind == ExprKind::Name && e.source == &source ? e.column : -1);
    }
    m_plan.rowSql = "SELECT " + joined(values, ", ") + from(select) + " WHERE " + rowId + " = ?" +
                    std::to_string(m_plan.slots.size() + 1);
}

void Emitter::pivot(const Query& query) {
    const Select& s = *query.select;
    m_plan.kind = Plan::Kind::Pivot;
    auto plan = std::make_unique<PivotPlan>();
    std::vector<Sql> keys, outputs;
    for (const auto& k : s.groupBy) {
        keys.push_back(raw(*k));
        plan->keys.push_back({QString(), k->type, k->size});
    }
    outputs = keys;
    for (const Output& o : s.outputs) {
        outputs.push_back(output(o));
        m_plan.fields.push_back(o.field);
    }
    if (outputs.empty()) outputs.push_back("NULL");
    m_plan.sql = "SELECT " + joined(outputs, ", ") + tail(s);
    const std::vector<Sql> order = orderTerms(s);
    if (!order.empty()) m_plan.sql += " ORDER BY " + joined(order, ", ");
    if (s.top >= 0) m_plan.sql += " LIMIT " + std::to_string(s.top);

    plan->pivot = {QString(), query.pivot->type, query.pivot->size};
    plan->cell = {QString(), query.transform->type, query.transform->size};
    keys.push_back(raw(*query.pivot));
    keys.push_back(raw(*query.transform));
    plan->cellSql = "SELECT " + joined(keys, ", ") + from(s);
    if (s.where) plan->cellSql += " WHERE " + truth(*s.where);
    plan->cellSql += groupBy(s, query.pivot.get());
    plan->fixed = !query.pivotIn.empty();
    for (const auto& v : query.pivotIn) plan->columns.push_back(v->literal.value);
    m_plan.pivot = std::move(plan);
}

void Emitter::query(const Query& query) {
    if (query.transform) return pivot(query);
    select(*query.select);
    liveCursor(*query.select);
}

void Emitter::rowsWhere(const Source& source, const Expr& condition) {
    const Sql rowId = "t" + std::to_string(source.number) + "." + source.table->rowId;
    m_plan.sql = "SELECT " + rowId + " FROM " + this->source(source) + " WHERE " + truth(condition);
}

void Emitter::snapshotWhere(const Source& source, const Expr& condition) {
    const Sql test = truth(condition);
    std::vector<Sql> columns;
    for (size_t i = 0; i < source.fields.size(); ++i)
        columns.push_back("?" + std::to_string(m_plan.slots.size() + i + 1) + " AS c" + std::to_string(i));
    m_plan.sql =
        "SELECT 1 FROM (SELECT " + joined(columns, ", ") + ") AS t" + std::to_string(source.number) + " WHERE " + test;
}

}  // namespace koben::sql
