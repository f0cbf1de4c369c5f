// The journal against the tables: what the newest entry of each row left, and what stands there now.
#include <algorithm>
#include <unordered_map>

#include "store/Connection.h"
#include "store/IsoDate.h"
#include "store/Journal.h"

namespace koben {
namespace {

using Departure = Journal::Departure;
using Kind = RowChange::Kind;

/// A table of today, and of which of its rows and fields a newer entry has told already.
class TableComparer {
public:
    TableComparer(Connection& connection, const sql::TableInfo& table) : m_connection(connection), m_table(table) {
        std::string names;
        for (const sql::ColumnInfo& column : table.columns) names += (names.empty() ? "" : ", ") + column.sqlName;
        m_select = "SELECT " + names + " FROM " + table.sqlName + " WHERE " +
                   table.columns[static_cast<size_t>(table.counter)].sqlName + " = ?1";
    }

    /// `columns`: that of each field of the entry, -1 for one that is gone or not to be compared.
    std::optional<Departure> compare(const RowChange& row, const std::vector<int>& columns) {
        quint64& told = m_told[row.row];
        const bool first = told == 0;
        std::vector<const RowChange::Cell*> open;
        if ((told & Whole) == 0 && row.kind != Kind::Deleted)
            for (const RowChange::Cell& cell : row.cells)
                if (const quint64 bit = bitOf(columns, cell); bit != 0 && (told & bit) == 0) open.push_back(&cell);
        for (const RowChange::Cell* cell : open) told |= bitOf(columns, *cell);
        told |= row.kind == Kind::Changed ? Touched : Touched | Whole;
        return first || !open.empty() ? look(row, columns, open, told) : std::nullopt;
    }

private:
    static constexpr quint64 Whole = quint64{1} << 63, Touched = quint64{1} << 62;

    static quint64 bitOf(const std::vector<int>& columns, const RowChange::Cell& cell) {
        const int column = columns[static_cast<size_t>(cell.field)];
        return column < 0 || column >= 62 ? 0 : quint64{1} << column;
    }

    std::optional<Departure> look(const RowChange& row, const std::vector<int>& columns,
                                  const std::vector<const RowChange::Cell*>& open, quint64& told) {
        const Loan loan(m_connection, m_select);
        sqlite3_bind_int64(loan.get(), 1, row.row);
        const bool there = m_connection.step(loan.get(), m_table.name);
        if (there == (row.kind == Kind::Deleted)) {
            told |= Whole;
            return Departure{m_table.name, row.row, there ? Kind::Inserted : Kind::Deleted};
        }
        Departure departure{m_table.name, row.row};
        for (const RowChange::Cell* cell : open) {
            const int place = columns[static_cast<size_t>(cell->field)];
            const sql::ColumnInfo& column = m_table.columns[static_cast<size_t>(place)];
            const Value left = Journal::typed(cell->after, column.type);
            const Value present = Journal::typed(columnValue(loan.get(), place, Type::Null), column.type);
            if (left != present) departure.cells.push_back({column.name, left, present});
        }
        return departure.cells.empty() ? std::nullopt : std::optional(departure);
    }

    Connection& m_connection;
    const sql::TableInfo& m_table;
    std::string m_select;
    std::unordered_map<qint64, quint64> m_told;  // a bit for each field
};

/// All tables that entries name. A field list of an entry is met with its table once.
class Comparison {
public:
    Comparison(Connection& connection, const Journal::Roles& roles)
        : m_connection(connection), m_catalog(connection.catalog()), m_roles(roles) {}

    void compare(const RowChange& row) {
        const Layout& layout = layoutOf(row);
        auto departure = layout.table ? layout.table->compare(row, layout.columns) : std::nullopt;
        if (!departure) return;
        Departure& kept =
            m_found.try_emplace({departure->table, departure->row}, Departure{departure->table, departure->row})
                .first->second;
        kept.kind = departure->kind;
        kept.cells.insert(kept.cells.end(), departure->cells.begin(), departure->cells.end());
    }

    std::vector<Departure> found() {
        std::vector<Departure> result;
        for (auto& [place, each] : m_found) result.push_back(std::move(each));
        return result;
    }

private:
    struct Layout {
        TableComparer* table = nullptr;
        std::vector<int> columns = {};
    };

    Layout& layoutOf(const RowChange& row) {
        const auto [found, fresh] = m_layouts.try_emplace(row.fields);
        Layout& layout = found->second;
        const sql::TableInfo* table = fresh ? m_catalog->find(*row.table) : nullptr;
        if (table == nullptr || table->counter < 0) return layout;
        layout.table = &m_tables.try_emplace(table, m_connection, *table).first->second;
        for (const QString& field : *row.fields)
            layout.columns.push_back(m_roles(*row.table, field) == Journal::Role::Own ? table->columnOf(field) : -1);
        return layout;
    }

    Connection& m_connection;
    std::shared_ptr<const sql::Catalog> m_catalog;
    const Journal::Roles& m_roles;
    std::map<const QStringList*, Layout> m_layouts;
    std::map<const sql::TableInfo*, TableComparer> m_tables;
    std::map<std::pair<QString, qint64>, Departure> m_found;
};

}  // namespace

Value Journal::typed(const Value& kept, Type type) {
    if (kept.isNull()) return kept;
    switch (type) {
        case Type::Date: {
            const QByteArray iso = kept.isText() ? kept.toText().toLatin1() : QByteArray();
            const auto day = parseIso(iso.constData(), static_cast<int>(iso.size()));
            return day ? Value(*day) : kept;
        }
        case Type::Currency:
            return kept.isText() ? kept : Value(Money{kept.toInt()});
        case Type::Single:
            return static_cast<float>(kept.toDouble());
        case Type::Double:
            return kept.toDouble();
        default:
            return kept;
    }
}

std::optional<std::vector<Journal::Departure>> Journal::departures(const Roles& roles, const FileProgress& go) const {
    std::vector<qint64> numbers;
    {
        const StatementHandle s =
            prepare(m_connection->file(), "SELECT nr, daten IS NULL FROM koben_verlauf ORDER BY nr DESC");
        // what was before an entry without states may have been changed by it
        while (sqlite3_step(s.get()) == SQLITE_ROW && sqlite3_column_int(s.get(), 1) == 0)
            numbers.push_back(sqlite3_column_int64(s.get(), 0));
    }
    constexpr int rowsAtOnce = 2000;
    Comparison comparison(*m_connection, roles);
    int rows = 0;
    bool on = true;
    for (size_t i = 0; on && i < numbers.size(); ++i) {
        const auto goesOn = [&] { return !go || go(static_cast<int>(100 * i / numbers.size())); };
        on = goesOn();
        if (on)
            read(numbers[i], [&](const RowChange& row) {
                comparison.compare(row);
                return ++rows % rowsAtOnce != 0 || (on = goesOn());
            });
    }
    return on ? std::optional(comparison.found()) : std::nullopt;
}

}  // namespace koben
