#include "store/Pivot.h"

#include <algorithm>
#include <numeric>

#include "store/Collation.h"
#include "store/IsoDate.h"
#include "store/StatementImpl.h"

namespace koben {
namespace {

/// Appends the current value of a column without detours.
/// A text is taken as it lies in the page: asked for as text, it would first be copied to be ended by 0. Its length
/// comes first, since a file in another encoding is converted then.
void appendCell(ColumnStore& store, sqlite3_stmt* s, int column, Type type) {
    sqlite3_value* const cell = sqlite3_column_value(s, column);
    switch (sqlite3_value_type(cell)) {
        case SQLITE_NULL:
            return store.appendNull();
        case SQLITE_INTEGER:
            return store.appendWhole(sqlite3_value_int64(cell));
        case SQLITE_FLOAT:
            return store.appendReal(sqlite3_value_double(cell));
        default:
            break;
    }
    const int length = sqlite3_value_bytes(cell);
    const auto* text = static_cast<const char*>(sqlite3_value_blob(cell));
    if (type != Type::Date) return store.appendText({text, static_cast<size_t>(length)});
    const auto date = parseIso(text, length);
    date ? store.appendDate(*date) : store.appendNull();
}

template <typename T>
int order(const T& a, const T& b) {
    return a < b ? -1 : b < a ? 1 : 0;
}

/// Values of one column: Null first, texts as Collation.h orders them.
int compareValues(const Value& a, const Value& b) {
    if (a.isNull() || b.isNull()) return order(!a.isNull(), !b.isNull());
    if (a.isText() && b.isText()) return compareTexts(std::get<QString>(a.variant()), std::get<QString>(b.variant()));
    if (a.isDate() && b.isDate()) return order(std::get<DateTime>(a.variant()), std::get<DateTime>(b.variant()));
    return order(a.toDouble(), b.toDouble());
}

QString columnName(const Value& value) {
    return value.isNull() ? QStringLiteral("<>") : value.toText().replace(u'.', u'_');
}

struct Cell {
    int pivot;
    Value value;
};

/// The cells of a crosstab, gathered by row and then written column by column.
class PivotReader {
public:
    PivotReader(Connection& connection, const Command& command)
        : m_connection(connection), m_command(command), m_plan(*command.plan), m_pivot(*m_plan.pivot) {}

    std::shared_ptr<TableData> read() {
        readRows();
        readCells();
        return assemble();
    }

private:
    void readRows() {
        std::vector<Field> fields = m_pivot.keys;
        fields.insert(fields.end(), m_plan.fields.begin(), m_plan.fields.end());
        m_rows = std::make_shared<TableData>(fields);
        Loan loan(m_connection, m_plan.sql);
        m_connection.bind(loan.get(), m_command, {});
        while (m_connection.step(loan.get(), m_command.text)) {
            for (size_t i = 0; i < fields.size(); ++i)
                appendCell((*m_rows->columns)[i], loan.get(), static_cast<int>(i), fields[i].type);
            ++m_rows->rows;
        }
        m_cells.resize(m_rows->rows);
        m_byKey.resize(m_rows->rows);
        std::iota(m_byKey.begin(), m_byKey.end(), size_t{0});
        std::sort(m_byKey.begin(), m_byKey.end(), [this](size_t a, size_t b) {
            for (size_t k = 0; k < m_pivot.keys.size(); ++k)
                if (const int c = (*m_rows->columns)[k].compare(a, b); c != 0) return c < 0;
            return false;
        });
    }

    int compareKeys(size_t row, const std::vector<Value>& keys) const {
        for (size_t k = 0; k < keys.size(); ++k)
            if (const int c = compareValues((*m_rows->columns)[k].value(row), keys[k]); c != 0) return c;
        return 0;
    }

    void readCells() {
        Loan loan(m_connection, m_pivot.cellSql);
        m_connection.bind(loan.get(), m_command, {});
        const auto keyCount = static_cast<int>(m_pivot.keys.size());
        std::vector<Value> keys(m_pivot.keys.size());
        while (m_connection.step(loan.get(), m_command.text)) {
            for (int k = 0; k < keyCount; ++k)
                keys[static_cast<size_t>(k)] = columnValue(loan.get(), k, m_pivot.keys[static_cast<size_t>(k)].type);
            const auto row =
                std::lower_bound(m_byKey.begin(), m_byKey.end(), keys,
                                 [this](size_t r, const std::vector<Value>& k) { return compareKeys(r, k) < 0; });
            if (row == m_byKey.end() || compareKeys(*row, keys) != 0) continue;  // dropped by having or top
            const Value pivot = columnValue(loan.get(), keyCount, m_pivot.pivot.type);
            m_cells[*row].push_back({numberOf(pivot), columnValue(loan.get(), keyCount + 1, m_pivot.cell.type)});
        }
    }

    int numberOf(const Value& pivot) {
        const auto at = std::lower_bound(m_sorted.begin(), m_sorted.end(), pivot, [this](int number, const Value& v) {
            return compareValues(m_values[static_cast<size_t>(number)], v) < 0;
        });
        if (at != m_sorted.end() && compareValues(m_values[static_cast<size_t>(*at)], pivot) == 0) return *at;
        m_values.push_back(pivot);
        return *m_sorted.insert(at, static_cast<int>(m_values.size()) - 1);
    }

    /// Column of the result for each pivot value found, -1 where the list leaves it out; and the columns' names.
    std::vector<int> placeColumns(std::vector<Field>& fields) {
        std::vector<int> places(m_values.size(), -1);
        if (!m_pivot.fixed) {
            for (const int number : m_sorted) {
                places[static_cast<size_t>(number)] = static_cast<int>(fields.size());
                fields.push_back(
                    {columnName(m_values[static_cast<size_t>(number)]), m_pivot.cell.type, m_pivot.cell.size});
            }
            return places;
        }
        for (const Value& listed : m_pivot.columns) {
            for (size_t i = 0; i < m_values.size(); ++i)
                if (compareValues(m_values[i], listed) == 0) places[i] = static_cast<int>(fields.size());
            fields.push_back({columnName(listed), m_pivot.cell.type, m_pivot.cell.size});
        }
        return places;
    }

    std::shared_ptr<TableData> assemble() {
        std::vector<Field> fields = m_plan.fields;
        const std::vector<int> places = placeColumns(fields);
        auto result = std::make_shared<TableData>(fields);
        result->rows = m_rows->rows;
        auto& columns = *result->columns;
        for (size_t c = 0; c < m_plan.fields.size(); ++c) columns[c] = (*m_rows->columns)[m_pivot.keys.size() + c];
        std::vector<size_t> filled(fields.size(), 0);
        for (size_t row = 0; row < m_cells.size(); ++row) {
            for (const Cell& cell : m_cells[row]) {
                if (places[static_cast<size_t>(cell.pivot)] < 0) continue;
                const auto c = static_cast<size_t>(places[static_cast<size_t>(cell.pivot)]);
                for (; filled[c] < row; ++filled[c]) columns[c].appendNull();
                columns[c].append(cell.value);
                ++filled[c];
            }
        }
        for (size_t c = m_plan.fields.size(); c < fields.size(); ++c)
            for (; filled[c] < m_rows->rows; ++filled[c]) columns[c].appendNull();
        return result;
    }

    Connection& m_connection;
    const Command& m_command;
    const sql::Plan& m_plan;
    const sql::PivotPlan& m_pivot;
    std::shared_ptr<TableData> m_rows;       // row keys, then row columns
    std::vector<size_t> m_byKey;             // rows in the order of their keys
    std::vector<std::vector<Cell>> m_cells;  // by row
    std::vector<Value> m_values;             // the different pivot values as they came
    std::vector<int> m_sorted;               // their numbers in order
};

}  // namespace

namespace {

/// While it lives `go` is asked within the steps of a statement too: sorting and grouping come before the first row.
class Asking {
public:
    Asking(sqlite3* file, const std::function<bool(qint64 rows)>& go) : m_file(go ? file : nullptr), m_go(go) {
        constexpr int instructionsPerQuestion = 200000;
        if (m_file) sqlite3_progress_handler(m_file, instructionsPerQuestion, &Asking::ask, this);
    }
    ~Asking() {
        if (m_file) sqlite3_progress_handler(m_file, 0, nullptr, nullptr);
    }
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;

    bool on(qint64 rows) {
        m_rows = rows;
        m_stopped = m_stopped || (m_go && !m_go(rows));
        return !m_stopped;
    }
    bool stopped() const { return m_stopped; }

private:
    static int ask(void* self) {
        auto& asking = *static_cast<Asking*>(self);
        if (asking.m_stopped) return 0;  // what tidies up afterwards runs through
        return asking.on(asking.m_rows) ? 0 : 1;
    }
    sqlite3* const m_file;
    const std::function<bool(qint64 rows)>& m_go;
    qint64 m_rows = 0;
    bool m_stopped = false;
};

std::shared_ptr<TableData> readRows(Connection& connection, const Command& command, Asking& asking) {
    constexpr size_t rowsPerQuestion = 4096;
    const sql::Plan& plan = *command.plan;
    if (plan.kind == sql::Plan::Kind::Pivot) return readPivot(connection, command);
    if (plan.kind != sql::Plan::Kind::Select)
        sql::Text(command.text)
            .fail(DatabaseError::Kind::State, 0, QStringLiteral("Geöffnet werden kann nur eine Auswahlabfrage"));
    auto data = std::make_shared<TableData>(plan.fields);
    Loan loan(connection, plan.sql);
    connection.bind(loan.get(), command, {});
    TopCut cut(plan.top, plan.topKeys);
    while (connection.step(loan.get(), command.text) && cut.keeps(loan.get())) {
        for (size_t i = 0; i < plan.fields.size(); ++i)
            appendCell((*data->columns)[i], loan.get(), static_cast<int>(i), plan.fields[i].type);
        ++data->rows;
        if (data->rows % rowsPerQuestion == 0 && !asking.on(static_cast<qint64>(data->rows))) return nullptr;
    }
    return data;
}

}  // namespace

std::shared_ptr<TableData> readTable(Connection& connection, const Command& command,
                                     const std::function<bool(qint64 rows)>& go) {
    Asking asking(connection.file(), go);
    try {
        return readRows(connection, command, asking);
    } catch (const DatabaseError&) {
        if (!asking.stopped()) throw;
        return nullptr;
    }
}

std::shared_ptr<TableData> readPivot(Connection& connection, const Command& command) {
    // Rows and cells are read from one state of the file.
    const bool alone = sqlite3_get_autocommit(connection.file()) != 0;
    if (alone) execute(connection.file(), "BEGIN");
    std::shared_ptr<TableData> result;
    try {
        result = PivotReader(connection, command).read();
    } catch (...) {
        if (alone) sqlite3_exec(connection.file(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
    if (alone) execute(connection.file(), "COMMIT");
    return result;
}

}  // namespace koben
