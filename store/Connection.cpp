#include "store/Connection.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include "store/Collation.h"
#include "store/IsoDate.h"

namespace koben {
namespace {

using Kind = DatabaseError::Kind;

constexpr int kBusyMilliseconds = 5000;
constexpr qsizetype kMaxPlans = 1000;
constexpr size_t kMaxStock = 1000;

std::function<void(const QString&)>& faultHook() {
    static std::function<void(const QString&)> hook;
    return hook;
}

/// A value for a comparison or an argument: only its kind is changed, never its amount.
Value compared(const Value& value, Type target) {
    if (value.isNull()) return value;
    switch (target) {
        case Type::Null:
            return value;
        case Type::Short:
        case Type::Long:
        case Type::Double:
            if (value.isText()) return convert(value, Type::Double);
            if (std::holds_alternative<bool>(value.variant())) return value.toInt();
            if (value.isDate() || std::holds_alternative<Money>(value.variant())) return value.toDouble();
            return value;
        default:
            return convert(value, target);
    }
}

}  // namespace

Loan::Loan(Connection& connection, const std::string& sql) : m_connection(connection), m_sql(sql) {
    sqlite3* file = connection.file();
    if (const auto found = connection.m_stock.find(sql); found != connection.m_stock.end() && !found->second.empty()) {
        m_statement = std::move(found->second.back());
        found->second.pop_back();
    } else {
        m_statement = prepare(file, sql, true);
    }
}

Loan::~Loan() {
    if (m_connection.isClosed()) return;
    sqlite3_reset(m_statement.get());
    if (m_connection.m_stock.size() > kMaxStock) m_connection.m_stock.clear();
    m_connection.m_stock[m_sql].push_back(std::move(m_statement));
}

Connection::Connection(const QString& path, std::function<QDateTime()> now) : m_path(path), m_now(std::move(now)) {
    sqlite3* raw = nullptr;
    const int code =
        sqlite3_open_v2(path.toUtf8().constData(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    m_file.reset(raw);
    if (code != SQLITE_OK) throwSqlite(raw, QString());
    sqlite3_extended_result_codes(raw, 1);
    sqlite3_busy_timeout(raw, kBusyMilliseconds);
    sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    m_functions = std::make_unique<SqliteFunctions>(raw);
    if (sqlite3_db_readonly(raw, "main") == 1)
        throw DatabaseError(Kind::Io,
                            QStringLiteral("Die Datenbank %1 ist schreibgeschützt. Bitte die Rechte der Datei prüfen.")
                                .arg(QDir::toNativeSeparators(path)));
    // a file that turns out to be damaged keeps its bytes and its log
    sqlite3_db_config(raw, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    koben::execute(raw,
                   "PRAGMA cache_size = -65536; PRAGMA temp_store = MEMORY; PRAGMA foreign_keys = OFF;"
                   "PRAGMA trusted_schema = OFF");
    m_catalog = loadCatalog(raw);
    koben::execute(raw, "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL");
    sqlite3_db_config(raw, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
    repairKeys(raw);
}

Connection::~Connection() { close(); }

sqlite3* Connection::file() const {
    if (m_file == nullptr)
        throw DatabaseError(Kind::State, QStringLiteral("Die Datenbank %1 ist geschlossen.").arg(m_path));
    return m_file.get();
}

void Connection::releaseStatements() {
    for (const auto& weak : m_streams)
        if (const auto stream = weak.lock()) stream->release();
    m_streams.clear();
    m_stock.clear();
    m_plans.clear();
}

void Connection::close() {
    if (m_file == nullptr) return;
    releaseStatements();
    if (m_depth > 0) sqlite3_exec(m_file.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    m_depth = 0;
    m_listener.reset();
    m_file.reset();
}

void Connection::closeWithoutLog() {
    releaseStatements();
    const auto answer = [this](const char* sql, int column) {
        const StatementHandle s = koben::prepare(file(), sql);
        if (sqlite3_step(s.get()) != SQLITE_ROW) throwSqlite(file(), QString::fromUtf8(sql));
        return columnValue(s.get(), column, Type::Text).toText();
    };
    if (answer("PRAGMA wal_checkpoint(TRUNCATE)", 0) != u"0" || answer("PRAGMA journal_mode = DELETE", 0) != u"delete")
        throwSqlite(file(), QString(), SQLITE_BUSY);
    close();
}

void Connection::relax() {
    setListener(nullptr);  // nobody takes anything back there
    koben::execute(file(), "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF");
}

void Connection::lookOnly(const QString& refusal) {
    koben::execute(file(), "PRAGMA query_only = 1");
    m_refusal = refusal;
}

void Connection::requireWritable() const {
    if (looksOnly()) throw DatabaseError(Kind::LookOnly, m_refusal);
}

void Connection::keep(const std::shared_ptr<Stream>& statement) {
    std::erase_if(m_streams, [](const auto& weak) { return weak.expired(); });
    m_streams.push_back(statement);
}

const std::shared_ptr<const sql::Catalog>& Connection::catalog() {
    if (m_catalog == nullptr) m_catalog = loadCatalog(file());
    return m_catalog;
}

void Connection::schemaChanged(const QString& table) {
    m_catalog = table.isEmpty() || m_catalog == nullptr ? nullptr : loadCatalog(file(), m_catalog.get(), table);
    m_plans.clear();
    m_stock.clear();
    watchesLost();
    ++m_schemaNumber;
}

void Connection::watch(const std::shared_ptr<WatchState>& state) {
    std::erase_if(m_watches, [](const auto& weak) { return weak.expired(); });
    m_watches.push_back(state);
    sqlite3_update_hook(file(), &Connection::rowTouched, this);
}

void Connection::rowTouched(void* connection, int, const char*, const char* table, sqlite3_int64 row) {
    constexpr size_t most = 10'000;
    for (const auto& weak : static_cast<Connection*>(connection)->m_watches) {
        const auto state = weak.lock();
        if (state == nullptr || state->lost || state->table != table) continue;
        state->rows.insert(row);
        if (state->rows.size() > most) state->lost = true, state->rows.clear();
    }
}

void Connection::watchesLost() {
    for (const auto& weak : m_watches)
        if (const auto state = weak.lock()) state->lost = true;
}

Command Connection::cached(
    const QString& prefix, const QString& text,
    const std::function<std::shared_ptr<const sql::Plan>(const sql::Text&, const sql::Lexed&)>& make) {
    file();
    const sql::Text source(text);
    sql::Lexed lexed = sql::lex(source);
    if (!prefix.isEmpty()) lexed.key.prepend(prefix);
    Command command{text, m_plans.value(lexed.key), {}};
    if (command.plan == nullptr) {
        command.plan = make(source, lexed);
        if (m_plans.size() >= kMaxPlans) m_plans.clear();
        m_plans.insert(lexed.key, command.plan);
    }
    command.literals = std::move(lexed.literals);
    return command;
}

Command Connection::command(const QString& text) {
    return cached(QString(), text, [this](const sql::Text& source, const sql::Lexed& lexed) {
        return sql::compile(source, lexed, catalog());
    });
}

Value Connection::slotValue(const sql::Slot& slot, const Command& command, const std::vector<Value>& parameters,
                            const QDateTime& now) const {
    using From = sql::Slot::From;
    if (slot.from == From::Now || slot.from == From::Today) {
        DateTime value = DateTime::of(now.date());
        if (slot.from == From::Now) value.second = now.time().msecsSinceStartOfDay() / 1000;
        return value;
    }
    const auto index = static_cast<size_t>(slot.index);
    Value value;
    if (slot.from == From::Literal) {
        const sql::Literal& literal = command.literals[index];
        const bool exact = slot.target == Type::Currency && !literal.digits.isEmpty();
        value = exact ? Value(QString::fromLatin1(literal.digits)) : literal.value;
    } else {
        value = parameters[index];
    }
    if (slot.column == nullptr) return compared(value, slot.target);
    const sql::ColumnInfo& column = *slot.column;
    value = assign(value, column.type, column.size, column.name);
    if (column.counter && !value.isNull() && value.toInt() == 0)
        throw ConversionError{Kind::Constraint,
                              QStringLiteral("Das Zählerfeld \"%1\" kann nicht 0 sein").arg(column.name)};
    return value;
}

void Connection::bind(sqlite3_stmt* statement, const Command& command, const std::vector<Value>& parameters) {
    const sql::Plan& plan = *command.plan;
    if (static_cast<int>(parameters.size()) != plan.parameters)
        throw DatabaseError::ofStatement(Kind::State,
                                         QStringLiteral("Die Anweisung braucht %1 Werte, übergeben wurden %2")
                                             .arg(plan.parameters)
                                             .arg(parameters.size()),
                                         command.text);
    const int count = sqlite3_bind_parameter_count(statement);
    QDateTime now;
    for (size_t i = 0; i < plan.slots.size() && static_cast<int>(i) < count; ++i) {
        const sql::Slot& slot = plan.slots[i];
        if (slot.from >= sql::Slot::From::Now && !now.isValid()) now = this->now();
        try {
            const Value value = slotValue(slot, command, parameters, now);
            const int place = static_cast<int>(i) + 1;
            if (slot.key && !value.isNull()) {
                const QByteArray key = sortKey(std::get<QString>(value.variant()));
                sqlite3_bind_blob(statement, place, key.constData(), static_cast<int>(key.size()), SQLITE_TRANSIENT);
            } else {
                bindValue(statement, place, value);
            }
        } catch (const ConversionError& e) {
            sql::Text(command.text).fail(e.kind, slot.position, e.what);
        }
    }
}

bool Connection::step(sqlite3_stmt* statement, const QString& text) {
    const int code = sqlite3_step(statement);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    sqlite3_reset(statement);
    if (const auto error = m_functions->takeError()) sql::Text(text).fail(error->kind, -1, error->what);
    throwSqlite(file(), text, code);
}

void Connection::setFaultHook(std::function<void(const QString&)> hook) { faultHook() = std::move(hook); }

void Connection::aboutToWrite(const QString& text) {
    requireWritable();
    ++m_writes;
    if (faultHook()) faultHook()(text);
}

int Connection::write(const Command& command, const std::vector<Value>& parameters) {
    Loan loan(*this, command.plan->sql);
    bind(loan.get(), command, parameters);
    stepWrite(loan.get(), command);
    return sqlite3_changes(file());
}

void Connection::stepWrite(sqlite3_stmt* statement, const Command& command) {
    struct Heard {
        ChangeListener* listener;
        ~Heard() {
            if (listener) listener->ends();
        }
    } const heard{m_listener.get()};
    if (m_listener) m_listener->begins(*command.plan);
    aboutToWrite(command.text);
    while (step(statement, command.text)) {
    }
}

void Connection::writeNative(const std::string& sql, const QString& text) {
    aboutToWrite(text);
    koben::execute(file(), sql);
}

int Connection::execute(const QString& text) {
    const Command command = this->command(text);
    if (command.plan->kind == sql::Plan::Kind::Write) return write(command, {});
    if (command.plan->kind != sql::Plan::Kind::Ddl)
        sql::Text(text).fail(Kind::State, 0,
                             QStringLiteral("Eine Auswahlabfrage kann nicht ausgeführt, nur geöffnet werden"));
    ddl(*command.plan->ddl, text);
    return 0;
}

void Connection::ddl(const sql::Ddl& ddl, const QString& text) {
    aboutToWrite(text);
    if (m_listener) m_listener->lost();
    const auto tables = catalog();  // `ddl` and its plan live in the caller's command
    koben::execute(file(), "SAVEPOINT koben_ddl");
    try {
        runDdl(file(), *tables, ddl, sql::Text(text));
        koben::execute(file(), "RELEASE koben_ddl");
    } catch (...) {
        sqlite3_exec(file(), "ROLLBACK TO koben_ddl; RELEASE koben_ddl", nullptr, nullptr, nullptr);
        schemaChanged();
        throw;
    }
    m_schemaTouched = m_depth > 0;
    schemaChanged(ddl.table);
}

void Connection::begin() {
    requireWritable();
    if (m_depth == 0) {
        koben::execute(file(), "BEGIN IMMEDIATE");
        m_doomed = m_schemaTouched = false;
    }
    ++m_depth;
}

void Connection::commit() {
    file();
    if (m_depth > 1) {
        --m_depth;
        return;
    }
    if (m_doomed || sqlite3_get_autocommit(file()) != 0)
        throw DatabaseError(
            Kind::State,
            QStringLiteral("Die Änderungen können nicht gespeichert werden, weil ein Teil davon fehlgeschlagen ist."));
    // The system lets a deleted file be written to; what is confirmed must be in one that can be found again.
    if (!QFile::exists(m_path))
        throw DatabaseError(
            Kind::Io,
            QStringLiteral("Die Datenbank %1 ist nicht mehr da. Die letzte Eingabe wurde nicht gespeichert. Bitte "
                           "prüfen Sie, ob der Datenträger noch verbunden ist, und starten Sie KOBEN dann neu.")
                .arg(m_path));
    aboutToWrite(QStringLiteral("commit"));
    koben::execute(file(), "COMMIT");
    m_depth = 0;
}

void Connection::rollback() {
    if (m_depth == 0 || m_file == nullptr) return;
    if (--m_depth > 0) {
        m_doomed = true;
        return;
    }
    ++m_writes;
    watchesLost();
    if (m_listener) m_listener->rolledBack();
    if (sqlite3_get_autocommit(m_file.get()) == 0) sqlite3_exec(m_file.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    if (m_schemaTouched) schemaChanged();
}

}  // namespace koben
