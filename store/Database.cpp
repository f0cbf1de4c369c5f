#include "store/Database.h"

#include "store/RecordsetImpl.h"
#include "store/StatementImpl.h"

namespace koben {
namespace {

Connection& opened(const std::shared_ptr<Connection>& connection) {
    if (connection == nullptr)
        throw DatabaseError(DatabaseError::Kind::State, QStringLiteral("Die Datenbank ist geschlossen."));
    connection->file();
    return *connection;
}

void requireSelect(const Command& command) {
    if (command.plan->kind != sql::Plan::Kind::Select && command.plan->kind != sql::Plan::Kind::Pivot)
        sql::Text(command.text)
            .fail(DatabaseError::Kind::State, 0, QStringLiteral("Geöffnet werden kann nur eine Auswahlabfrage"));
}

}  // namespace

bool Database::looksOnly() const { return opened(m_connection).looksOnly(); }

int Database::execute(const QString& sql) { return opened(m_connection).execute(sql); }

Recordset Database::open(const QString& sql) const {
    Command command = opened(m_connection).command(sql);
    requireSelect(command);
    return Recordset(std::make_shared<RecordsetImpl>(m_connection, std::move(command)));
}

Table Database::table(const QString& sql) const {
    Connection& connection = opened(m_connection);
    return Table(readTable(connection, connection.command(sql)));
}

std::optional<Table> Database::table(const QString& sql, const std::function<bool(qint64 rows)>& go) const {
    Connection& connection = opened(m_connection);
    auto data = readTable(connection, connection.command(sql), go);
    if (data == nullptr) return std::nullopt;
    return Table(std::move(data));
}

Statement Database::prepare(const QString& sql) const {
    Command command = opened(m_connection).command(sql);
    if (command.plan->kind != sql::Plan::Kind::Select && command.plan->kind != sql::Plan::Kind::Write)
        koben::sql::Text(sql).fail(DatabaseError::Kind::State, 0,
                                   QStringLiteral("Diese Anweisung kann nicht vorbereitet werden"));
    auto impl = std::make_shared<StatementImpl>(m_connection, std::move(command));
    impl->get();
    m_connection->keep(impl);
    return Statement(std::move(impl));
}

QStringList Database::tables() const {
    QStringList result;
    for (const auto& t : opened(m_connection).catalog()->tables) result.push_back(t->name);
    return result;
}

std::vector<Field> Database::fields(const QString& table) const {
    const sql::TableInfo* found = opened(m_connection).catalog()->find(table);
    if (found == nullptr)
        throw DatabaseError(DatabaseError::Kind::UnknownName,
                            QStringLiteral("Die Tabelle \"%1\" ist unbekannt.").arg(table));
    std::vector<Field> result;
    for (const sql::ColumnInfo& c : found->columns) result.push_back({c.name, c.type, c.size});
    return result;
}

Transaction::Transaction(const Database& database) : m_connection(database.m_connection) {
    opened(m_connection).begin();
}

Transaction::~Transaction() {
    if (m_open) m_connection->rollback();
}

void Transaction::commit() {
    m_connection->commit();
    m_open = false;
}

}  // namespace koben
