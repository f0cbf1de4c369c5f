#include <QDateTime>
#include <QFileInfo>
#include <QHash>
#include <QMutex>

#include "store/Connection.h"
#include "store/FileCheck.h"
#include "store/Schema.h"

namespace koben {
namespace {

using Kind = DatabaseError::Kind;

/// The open connections of the process by canonical path.
struct Registry {
    QMutex mutex;
    QHash<QString, std::weak_ptr<Connection>> connections;
};

Registry& registry() {
    static Registry instance;
    return instance;
}

std::shared_ptr<Connection> openAlready(const QString& canonical) {
    const auto connection = registry().connections.value(canonical).lock();
    return connection != nullptr && !connection->isClosed() ? connection : nullptr;
}

QString besideName(const QString& path) { return path + QStringLiteral(".neu"); }

void requireFree(const QString& path) {
    if (QFileInfo::exists(path)) throw DatabaseError(Kind::Io, QStringLiteral("Die Datei %1 gibt es schon.").arg(path));
}

FileHandle openRaw(const QString& path, int flags) {
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &raw, flags, nullptr);
    FileHandle file(raw);
    if (code != SQLITE_OK) throwSqlite(raw, QString());
    sqlite3_busy_timeout(raw, 5000);
    return file;
}

/// Checks a file that is to be copied. An open one is not touched with file calls: closing it would let go of
/// SQLite's locks on it.
void checkSource(const QString& path) {
    const QMutexLocker lock(&registry().mutex);
    if (openAlready(QFileInfo(path).canonicalFilePath()) == nullptr) checkDatabaseFile(path);
}

QByteArray rowCounts(sqlite3* file) {
    QByteArray result;
    const auto catalog = loadCatalog(file);
    for (const auto& table : catalog->tables)
        result += table->name.toUtf8() + '=' +
                  QByteArray::number(number(file, "SELECT count(*) FROM " + table->sqlName)) + '\n';
    return result;
}

/// A copy is worth its name only when it is whole, ours and has every row.
void checkCopy(sqlite3* source, const QString& path) {
    const FileHandle copy = openRaw(path, SQLITE_OPEN_READONLY);
    bool whole = static_cast<quint32>(number(copy.get(), "PRAGMA application_id")) == kApplicationId;
    const StatementHandle check = prepare(copy.get(), "PRAGMA integrity_check(1)");
    whole =
        whole && sqlite3_step(check.get()) == SQLITE_ROW && columnValue(check.get(), 0, Type::Text).toText() == u"ok";
    if (!whole || rowCounts(source) != rowCounts(copy.get()))
        throw DatabaseError(
            Kind::Io,
            QStringLiteral("Die Kopie %1 der Datenbank ist nicht vollständig. Die Datenbank selbst ist unverändert.")
                .arg(path));
}

/// Makes a checked copy of `from` at `to` with `work(source, path beside)`; `to` appears whole or not at all.
template <typename Work>
void makeCopy(const QString& from, const QString& to, Work work) {
    checkSource(from);
    const QString beside = besideName(to);
    removeDatabaseFile(beside);
    try {
        const FileHandle source = openRaw(from, SQLITE_OPEN_READWRITE);
        execute(source.get(), "BEGIN; SELECT count(*) FROM sqlite_master; COMMIT");
        work(source.get(), beside);
        checkCopy(source.get(), beside);
        renameDatabaseFile(beside, to);
    } catch (...) {
        removeDatabaseFile(beside);
        throw;
    }
}

void backup(sqlite3* source, const QString& path) {
    const FileHandle target = openRaw(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    sqlite3_backup* work = sqlite3_backup_init(target.get(), "main", source, "main");
    if (work == nullptr) throwSqlite(target.get(), QString());
    const int code = sqlite3_backup_step(work, -1);
    sqlite3_backup_finish(work);
    if (code != SQLITE_DONE) throwSqlite(target.get(), QString(), code);
    // The copy stands alone, without a log beside it.
    execute(target.get(), "PRAGMA journal_mode = DELETE");
}

}  // namespace

Workspace::Workspace(std::function<QDateTime()> now) : m_now(std::move(now)) {}

Workspace::~Workspace() = default;

Database Workspace::create(const QString& path) {
    requireFree(path);
    removeDatabaseFile(path);  // the log of a file that somebody took away would be read into the new one
    const QString beside = besideName(path);
    removeDatabaseFile(beside);
    try {
        {
            const FileHandle file = openRaw(beside, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
            execute(file.get(), "PRAGMA page_size = 4096; PRAGMA encoding = 'UTF-8'; PRAGMA application_id = " +
                                    std::to_string(kApplicationId) +
                                    "; PRAGMA user_version = " + std::to_string(kFileVersion));
            execute(file.get(), "BEGIN");
            createCatalog(file.get());
            execute(file.get(), "COMMIT");
        }
        renameDatabaseFile(beside, path);
    } catch (...) {
        removeDatabaseFile(beside);
        throw;
    }
    return open(path);
}

Database Workspace::open(const QString& path) {
    const QMutexLocker lock(&registry().mutex);
    const QString canonical = QFileInfo(path).canonicalFilePath();
    auto connection = canonical.isEmpty() ? nullptr : openAlready(canonical);
    if (connection == nullptr) {
        checkDatabaseFile(path);
        connection = std::make_shared<Connection>(canonical, m_now);
        addHelpers(*connection);
        registry().connections.insert(canonical, connection);
    }
    std::erase_if(m_connections, [&](const auto& weak) { return weak.expired() || weak.lock() == connection; });
    m_connections.push_back(connection);
    return Database(connection);
}

void Workspace::compact(const QString& from, const QString& to) {
    requireFree(to);
    makeCopy(from, to, [](sqlite3* source, const QString& path) {
        const StatementHandle vacuum = prepare(source, "VACUUM INTO ?1");
        bindValue(vacuum.get(), 1, path);
        if (const int code = sqlite3_step(vacuum.get()); code != SQLITE_DONE)
            throwSqlite(source, QStringLiteral("VACUUM INTO"), code);
    });
}

void Workspace::copy(const QString& from, const QString& to) {
    if (QFileInfo(from).canonicalFilePath() == QFileInfo(to).canonicalFilePath() && QFileInfo::exists(to))
        throw DatabaseError(Kind::Io,
                            QStringLiteral("Die Datenbank %1 kann nicht auf sich selbst kopiert werden.").arg(from));
    makeCopy(from, to, backup);
}

void Workspace::closeAll() {
    for (const auto& weak : m_connections)
        if (const auto connection = weak.lock()) connection->close();
    m_connections.clear();
}

void Workspace::setFaultHook(std::function<void(const QString& sql)> hook) {
    Connection::setFaultHook(std::move(hook));
}

}  // namespace koben
