#include <QDateTime>

#include "store/CollationUtf8.h"
#include "store/Database.h"
#include "store/IsoDate.h"
#include "store/StatementImpl.h"

namespace koben {

using Kind = DatabaseError::Kind;

bool TopCut::keeps(sqlite3_stmt* row) {
    if (m_top < 0) return true;
    if (++m_seen < m_top) return true;
    std::vector<Value> keys;
    for (const sql::TopKey& k : *m_keys) keys.push_back(columnValue(row, k.column, k.type));
    if (m_seen == m_top) {
        m_last = std::move(keys);
        return true;
    }
    if (m_top == 0) return false;
    for (size_t i = 0; i < keys.size(); ++i) {
        const bool texts = keys[i].isText() && m_last[i].isText();
        const auto utf8 = [](const Value& v) { return std::get<QString>(v.variant()).toStdString(); };
        if (texts ? compareTexts(utf8(keys[i]), utf8(m_last[i])) != 0 : keys[i] != m_last[i]) return false;
    }
    return true;
}

sqlite3_stmt* StatementImpl::get() {
    sqlite3* file = connection->file();
    if (statement == nullptr || schemaNumber != connection->schemaNumber()) {
        if (statement != nullptr) command = connection->command(command.text);
        statement = prepare(file, command.plan->sql, true);
        schemaNumber = connection->schemaNumber();
        onRow = false;
    }
    return statement.get();
}

void StatementImpl::bind(const std::vector<Value>& newValues) {
    sqlite3_stmt* s = get();
    sqlite3_reset(s);
    onRow = false;
    connection->bind(s, command, newValues);
    cut = TopCut(command.plan->top, command.plan->topKeys);
    bound = true;
}

bool StatementImpl::next() {
    sqlite3_stmt* s = get();
    if (!bound) bind({});
    onRow = connection->step(s, command.text) && cut.keeps(s);
    if (!onRow) {
        sqlite3_reset(s);
        bound = false;
    }
    return onRow;
}

namespace {

sqlite3_stmt* row(StatementImpl& impl) {
    if (!impl.onRow || impl.statement == nullptr)
        throw DatabaseError::ofStatement(Kind::State, QStringLiteral("Kein aktueller Datensatz"), impl.command.text);
    return impl.statement.get();
}

const Field& fieldAt(const StatementImpl& impl, int column) {
    return impl.command.plan->fields.at(static_cast<size_t>(column));
}

}  // namespace

int Statement::run(const std::vector<Value>& values) {
    if (m_impl->command.plan->kind != sql::Plan::Kind::Write)
        throw DatabaseError::ofStatement(
            Kind::State, QStringLiteral("Eine Auswahlabfrage kann nicht ausgeführt werden"), m_impl->command.text);
    m_impl->bind(values);
    m_impl->connection->stepWrite(m_impl->statement.get(), m_impl->command);
    sqlite3_reset(m_impl->statement.get());
    m_impl->bound = false;
    return sqlite3_changes(m_impl->connection->file());
}

void Statement::bind(const std::vector<Value>& values) { m_impl->bind(values); }

bool Statement::next() { return m_impl->next(); }

bool Statement::isNull(int column) const { return sqlite3_column_type(row(*m_impl), column) == SQLITE_NULL; }

qint64 Statement::integer(int column) const {
    sqlite3_stmt* s = row(*m_impl);
    switch (fieldAt(*m_impl, column).type) {
        case Type::Short:
        case Type::Long:
            return sqlite3_column_int64(s, column);
        case Type::Text:
            return value(column).toInt();
        case Type::Currency:
            return sqlite3_column_int64(s, column);
        case Type::Date:
            return day(column);
        default:
            return value(column).toInt();
    }
}

qint32 Statement::day(int column) const {
    sqlite3_stmt* s = row(*m_impl);
    const auto* text = static_cast<const char*>(sqlite3_column_blob(s, column));  // not copied to be ended by 0
    const auto date = text == nullptr ? std::nullopt : parseIso(text, sqlite3_column_bytes(s, column));
    return date ? date->julianDay : 0;
}

QString Statement::text(int column) const {
    sqlite3_stmt* s = row(*m_impl);
    if (fieldAt(*m_impl, column).type != Type::Text) return value(column).toText();
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(s, column));
    return QString::fromUtf8(text, sqlite3_column_bytes(s, column));
}

Value Statement::value(int column) const { return columnValue(row(*m_impl), column, fieldAt(*m_impl, column).type); }

int Statement::fieldCount() const { return static_cast<int>(m_impl->command.plan->fields.size()); }

const Field& Statement::field(int index) const { return fieldAt(*m_impl, index); }

}  // namespace koben
