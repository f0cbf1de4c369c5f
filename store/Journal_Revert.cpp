// Rows back to where they were: looked at first, then written with their sort keys by statements made once a table.
#include <algorithm>

#include "store/Connection.h"
#include "store/Journal.h"
#include "store/JournalCoding.h"

namespace koben {

using journal::Reader;

namespace {

bool same(const Value& a, const Value& b) {
    if (a == b) return true;
    return !a.isNull() && !b.isNull() && !a.isText() && !b.isText() && a.toDouble() == b.toDouble();
}

/// Reverts the rows of one table as it is today.
class TableReverter {
public:
    TableReverter(Connection& connection, const QString& table, const QStringList& fields, const Journal::Roles& roles)
        : m_connection(connection), m_table(connection.catalog()->find(table)) {
        if (m_table == nullptr) return;
        for (const QString& field : fields) {
            const int column = m_table->columnOf(field);
            m_columns.push_back(column < 0 ? nullptr : &m_table->columns[static_cast<size_t>(column)]);
            m_roles.push_back(roles(table, field));
            m_apart = m_apart || m_roles.back() == Journal::Role::Apart;
        }
        m_whole = std::all_of(m_columns.begin(), m_columns.end(), [](const auto* c) { return c != nullptr; });
        if (m_whole) makeStatements();
    }

    /// False where the row is not as the entry left it.
    bool revert(const RowChange& row) {
        if (m_apart) return true;
        if (!m_whole) return false;
        const bool there = readRow(row.row);
        switch (row.kind) {
            case RowChange::Kind::Inserted:
                return there && matches(row) && (write(m_delete, {row.row}), true);
            case RowChange::Kind::Deleted:
                return !there && (insert(row), true);
            case RowChange::Kind::Changed:
                return there ? change(row) : std::all_of(row.cells.begin(), row.cells.end(), [&](const auto& cell) {
                    return role(cell) != Journal::Role::Own;
                });
        }
        return false;
    }

private:
    Journal::Role role(const RowChange::Cell& cell) const { return m_roles[static_cast<size_t>(cell.field)]; }
    const Value& present(const RowChange::Cell& cell) const { return m_row[static_cast<size_t>(cell.field)]; }

    void makeStatements() {
        std::string names, all, marks;
        int place = 1;
        for (const sql::ColumnInfo* c : m_columns) {
            const std::string mark = "?" + std::to_string(++place);
            names += (names.empty() ? "" : ", ") + c->sqlName;
            if (c->counter) continue;
            all += ", " + c->sqlName, marks += ", " + mark;
            if (!c->keyName.empty()) all += ", " + c->keyName, marks += ", koben_key(" + mark + ")";
        }
        const std::string& row =
            m_table->counter < 0 ? m_table->rowId : m_table->columns[static_cast<size_t>(m_table->counter)].sqlName;
        m_select = "SELECT " + names + " FROM " + m_table->sqlName + " WHERE " + row + " = ?1";
        m_insert = "INSERT INTO " + m_table->sqlName + " (" + row + all + ") VALUES (?1" + marks + ")";
        m_delete = "DELETE FROM " + m_table->sqlName + " WHERE " + row + " = ?1";
        m_update = "UPDATE " + m_table->sqlName + " SET ";
        m_where = " WHERE " + row + " = ?1";
    }

    bool readRow(qint64 row) {
        const Loan loan(m_connection, m_select);
        sqlite3_bind_int64(loan.get(), 1, row);
        if (!m_connection.step(loan.get(), m_table->name)) return false;
        m_row.resize(m_columns.size());
        for (size_t i = 0; i < m_row.size(); ++i) m_row[i] = columnValue(loan.get(), static_cast<int>(i), Type::Null);
        return true;
    }

    bool matches(const RowChange& row) const {
        return std::all_of(row.cells.begin(), row.cells.end(), [&](const auto& cell) {
            return role(cell) != Journal::Role::Own || same(present(cell), cell.after);
        });
    }

    void insert(const RowChange& row) {
        const Loan loan(m_connection, m_insert);
        sqlite3_bind_int64(loan.get(), 1, row.row);
        for (const auto& cell : row.cells)
            if (!m_columns[static_cast<size_t>(cell.field)]->counter)
                bindValue(loan.get(), cell.field + 2, cell.before);
        run(loan);
    }

    /// What the program derives is left as it is where it has become another value since.
    bool change(const RowChange& row) {
        std::string sets;
        std::vector<const RowChange::Cell*> cells;
        for (const auto& cell : row.cells) {
            if (!same(present(cell), cell.after)) {
                if (role(cell) != Journal::Role::Own) continue;
                return false;
            }
            const sql::ColumnInfo& c = *m_columns[static_cast<size_t>(cell.field)];
            const std::string mark = "?" + std::to_string(cells.size() + 2);
            sets += (sets.empty() ? "" : ", ") + c.sqlName + " = " + mark;
            if (!c.keyName.empty()) sets += ", " + c.keyName + " = koben_key(" + mark + ")";
            cells.push_back(&cell);
        }
        if (cells.empty()) return true;
        const std::string text = m_update + sets + m_where;
        const Loan loan(m_connection, text);
        sqlite3_bind_int64(loan.get(), 1, row.row);
        for (size_t i = 0; i < cells.size(); ++i) bindValue(loan.get(), static_cast<int>(i) + 2, cells[i]->before);
        run(loan);
        return true;
    }

    void write(const std::string& text, const std::vector<qint64>& values) {
        const Loan loan(m_connection, text);
        for (size_t i = 0; i < values.size(); ++i) sqlite3_bind_int64(loan.get(), static_cast<int>(i) + 1, values[i]);
        run(loan);
    }

    void run(const Loan& loan) {
        m_connection.aboutToWrite(m_table->name);
        m_connection.step(loan.get(), m_table->name);
    }

    Connection& m_connection;
    const sql::TableInfo* m_table;
    std::vector<const sql::ColumnInfo*> m_columns;
    std::vector<Journal::Role> m_roles;
    std::vector<Value> m_row;
    std::string m_select, m_insert, m_delete, m_update, m_where;
    bool m_whole = false, m_apart = false;
};

struct Counter {
    std::string table;
    qint64 before = 0, after = 0;
};

std::vector<Counter> countersIn(std::string_view bytes) {
    std::vector<Counter> result;
    for (Reader in(bytes); !in.atEnd();) {
        Counter& c = result.emplace_back();
        c.table = in.text();
        c.before = static_cast<qint64>(in.number());
        c.after = static_cast<qint64>(in.number());
    }
    return result;
}

std::string literal(const std::string& text) {
    return "'" + QString::fromStdString(text).replace(u'\'', QStringLiteral("''")).toStdString() + "'";
}

qint64 highest(sqlite3* file, const std::string& table) {
    return number(file, "SELECT ifnull(max(seq), 0) FROM sqlite_sequence WHERE name = " + literal(table));
}

void setHighest(Connection& connection, const std::string& table, qint64 value) {
    const std::string name = literal(table);
    if (value == highest(connection.file(), table)) return;
    const std::string sql = value == 0
                                ? "DELETE FROM sqlite_sequence WHERE name = " + name
                                : "UPDATE sqlite_sequence SET seq = " + std::to_string(value) + " WHERE name = " + name;
    connection.writeNative(sql, QString::fromStdString(sql));
}

/// The counter of a table once all that was reverted is gone from its end; nothing is given back below a row.
qint64 givenBack(sqlite3* file, const std::string& table, const std::vector<qint64>& reverted) {
    qint64 value = highest(file, table);
    const StatementHandle s = prepare(file,
                                      "SELECT nr, zaehler, zurueck IS NULL FROM koben_verlauf WHERE art = 0 AND "
                                      "zaehler IS NOT NULL ORDER BY nr DESC");
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        const auto counters = countersIn({static_cast<const char*>(sqlite3_column_blob(s.get(), 1)),
                                          static_cast<size_t>(sqlite3_column_bytes(s.get(), 1))});
        const auto own =
            std::find_if(counters.begin(), counters.end(), [&](const auto& c) { return c.table == table; });
        if (own == counters.end()) continue;
        const bool counts =
            sqlite3_column_int(s.get(), 2) != 0 &&
            std::find(reverted.begin(), reverted.end(), sqlite3_column_int64(s.get(), 0)) == reverted.end();
        if (counts || own->after < value) break;
        if (own->after == value) value = own->before;  // a higher one was given back before
    }
    return std::max(value,
                    number(file, "SELECT ifnull(max(rowid), 0) FROM " + sql::quoted(QString::fromStdString(table))));
}

}  // namespace

std::optional<Journal::Conflict> Journal::revert(const Action& action, qint64 number, const Roles& roles) const {
    Q_UNUSED(action)
    std::map<const QString*, TableReverter> tables;
    std::optional<Conflict> conflict;
    read(number, [&](const RowChange& row) {
        TableReverter& table =
            tables.try_emplace(row.table, *m_connection, *row.table, *row.fields, roles).first->second;
        if (!table.revert(row)) conflict = {*row.table, row.row};
        return !conflict;
    });
    return conflict;
}

Journal::Texts Journal::texts(const QString& table) const {
    Texts result;
    const sql::TableInfo* info = m_connection->catalog()->find(table);
    if (info == nullptr) return result;
    const StatementHandle s =
        prepare(m_connection->file(),
                "SELECT " + info->rowId + ", " + info->columns.front().sqlName + " FROM " + info->sqlName);
    while (sqlite3_step(s.get()) == SQLITE_ROW)
        result.emplace(sqlite3_column_int64(s.get(), 0), columnValue(s.get(), 1, Type::Null));
    return result;
}

void Journal::setTexts(const Action& action, const QString& table, const Texts& texts) const {
    Q_UNUSED(action)
    const sql::TableInfo* info = m_connection->catalog()->find(table);
    if (info == nullptr) return;
    const QStringList fields(info->columns.front().name);
    TableReverter rows(*m_connection, table, fields, [](const QString&, const QString&) { return Role::Own; });
    const auto set = [&](qint64 row, RowChange::Kind undone, const Value& to, const Value& from) {
        rows.revert({&table, &fields, row, undone, {{0, to, from}}});
    };
    const Texts now = this->texts(table);
    for (const auto& [row, text] : now)
        if (!texts.contains(row)) set(row, RowChange::Kind::Inserted, {}, text);
    for (const auto& [row, text] : texts) {
        const auto known = now.find(row);
        if (known == now.end())
            set(row, RowChange::Kind::Deleted, text, {});
        else if (!(known->second == text))
            set(row, RowChange::Kind::Changed, text, known->second);
    }
}

void Journal::settleCounters(const std::vector<qint64>& reverted, const std::vector<qint64>& revived) const {
    sqlite3* file = m_connection->file();
    const auto each = [&](const std::vector<qint64>& numbers, const auto& work) {
        for (const qint64 entry : numbers) {
            const std::string bytes = blob("zaehler", entry);
            for (const Counter& c : countersIn(bytes)) work(c);
        }
    };
    each(revived, [&](const Counter& c) {
        if (highest(file, c.table) < c.after) setHighest(*m_connection, c.table, c.after);
    });
    each(reverted, [&](const Counter& c) { setHighest(*m_connection, c.table, givenBack(file, c.table, reverted)); });
}

}  // namespace koben
