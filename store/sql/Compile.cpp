#include "store/sql/Emitter.h"
#include "store/sql/Parser.h"
#include "store/sql/Plan.h"

namespace koben::sql {
namespace {

using Kind = DatabaseError::Kind;

class Compiler {
public:
    Compiler(const Text& text, const Lexed& lexed, const std::shared_ptr<const Catalog>& catalog)
        : m_text(text),
          m_lexed(lexed),
          m_resolver(text, *catalog),
          m_plan(std::make_shared<Plan>()),
          m_emitter(text, *m_plan) {
        m_plan->catalog = catalog;
        m_plan->parameters = lexed.parameters;
    }

    std::shared_ptr<Plan> statement() {
        Statement s = parse(m_text, m_lexed);
        if (s.query) {
            m_resolver.query(*s.query);
            m_emitter.query(*s.query);
        } else if (s.insert) {
            insert(*s.insert);
        } else if (s.update) {
            update(*s.update);
        } else if (s.remove) {
            remove(*s.remove);
        } else {
            m_plan->kind = Plan::Kind::Ddl;
            m_plan->ddl = std::move(s.ddl);
        }
        return m_plan;
    }

    std::shared_ptr<Plan> criteria(Source& source, bool rows) {
        const ExprPtr condition = parseCriteria(m_text, m_lexed);
        const std::vector<Source*> sources = {&source};
        m_resolver.condition(*condition, Scope{nullptr, &sources, nullptr, 0, false, false});
        rows ? m_emitter.rowsWhere(source, *condition) : m_emitter.snapshotWhere(source, *condition);
        return m_plan;
    }

private:
    void insert(Insert& i) {
        const TableInfo& table = m_resolver.table(i.table, i.position);
        std::vector<int> columns;
        for (const auto& [name, position] : i.columns) {
            columns.push_back(m_resolver.column(table, name, position));
            twice(columns, name, position);
        }
        for (size_t c = 0; i.columns.empty() && c < table.columns.size(); ++c) columns.push_back(static_cast<int>(c));
        if (i.select) m_resolver.select(*i.select);
        const std::vector<Source*> none;
        for (const auto& v : i.values) m_resolver.expression(*v, Scope{nullptr, &none, nullptr, 0, false, false});
        const size_t given = i.select ? i.select->outputs.size() : i.values.size();
        if (given != columns.size())
            m_text.fail(Kind::Syntax, i.valuesPosition,
                        QStringLiteral("Die Anzahl der Werte (%1) passt nicht zur Anzahl der Felder (%2)")
                            .arg(given)
                            .arg(columns.size()));
        m_emitter.insert(i, table, columns);
    }

    void update(Update& u) {
        m_resolver.source(*u.source, nullptr);
        const TableInfo& table = plainTable(*u.source);
        const std::vector<Source*> sources = {u.source.get()};
        const Scope scope{nullptr, &sources, nullptr, 0, false, false};
        std::vector<int> columns;
        for (const Update::Set& s : u.sets) {
            if (!s.qualifier.isEmpty() && !sameName(s.qualifier, u.source->label()))
                m_text.fail(Kind::UnknownName, s.position,
                            QStringLiteral("Die Tabelle \"%1\" ist unbekannt").arg(s.qualifier));
            columns.push_back(m_resolver.column(table, s.column, s.position));
            twice(columns, s.column, s.position);
            if (table.columns[static_cast<size_t>(columns.back())].counter)
                m_text.fail(Kind::Constraint, s.position,
                            QStringLiteral("Das Zählerfeld \"%1\" kann nicht geändert werden").arg(s.column));
            m_resolver.expression(*s.value, scope);
        }
        if (u.where) m_resolver.condition(*u.where, scope);
        m_emitter.update(u, columns);
    }

    void remove(Delete& d) {
        m_resolver.source(*d.source, nullptr);
        plainTable(*d.source);
        const std::vector<Source*> sources = {d.source.get()};
        if (d.where) m_resolver.condition(*d.where, Scope{nullptr, &sources, nullptr, 0, false, false});
        m_emitter.remove(d);
    }

    const TableInfo& plainTable(const Source& source) const {
        if (source.table == nullptr)
            m_text.fail(Kind::Syntax, source.position, QStringLiteral("Hier gehört der Name einer Tabelle hin"));
        return *source.table;
    }

    void twice(const std::vector<int>& columns, const QString& name, int position) const {
        for (size_t i = 0; i + 1 < columns.size(); ++i)
            if (columns[i] == columns.back())
                m_text.fail(Kind::Syntax, position, QStringLiteral("Das Feld \"%1\" steht zweimal da").arg(name));
    }

    const Text& m_text;
    const Lexed& m_lexed;
    Resolver m_resolver;
    std::shared_ptr<Plan> m_plan;
    Emitter m_emitter;
};

}  // namespace

std::shared_ptr<const Plan> compile(const Text& text, const Lexed& lexed,
                                    const std::shared_ptr<const Catalog>& catalog) {
    return Compiler(text, lexed, catalog).statement();
}

std::shared_ptr<const Plan> compileCriteria(const Text& text, const Lexed& lexed,
                                            const std::shared_ptr<const Catalog>& catalog, const TableInfo& table,
                                            const std::vector<std::pair<QString, int>>& names) {
    // Aliases of the cursor are further names of the table's columns.
    TableInfo named = table;
    Source source;
    source.name = table.name;
    source.table = &named;
    for (const ColumnInfo& c : table.columns) source.fields.push_back({c.name, c.type, c.size});
    for (const auto& [name, column] : names) {
        if (named.columnOf(name) >= 0) continue;
        named.columns.push_back(table.columns[static_cast<size_t>(column)]);
        named.columns.back().name = name;
        source.fields.push_back({name, named.columns.back().type, named.columns.back().size});
    }
    return Compiler(text, lexed, catalog).criteria(source, true);
}

std::shared_ptr<const Plan> compileSnapshotCriteria(const Text& text, const Lexed& lexed,
                                                    const std::shared_ptr<const Catalog>& catalog,
                                                    const std::vector<Field>& fields) {
    Source source;
    source.fields = fields;
    return Compiler(text, lexed, catalog).criteria(source, false);
}

}  // namespace koben::sql
