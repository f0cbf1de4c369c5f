#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMutex>
#include <algorithm>

#include "store/Connection.h"
#include "store/Draft.h"
#include "store/FileCheck.h"
#include "store/Files.h"
#include "store/PageCheck.h"
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

TableCounts counts(sqlite3* file) {
    TableCounts result;
    const auto catalog = loadCatalog(file);
    for (const auto& table : catalog->tables)
        result.emplace_back(table->name, number(file, "SELECT count(*) FROM " + table->sqlName));
    return result;
}

// Of the time that a copy takes, writing is the first third and checking the rest.
constexpr int WritingShare = 30;

/// A copy is worth its name only when it is whole, ours and has every row. False where the check was given up.
bool checkCopy(sqlite3* source, const QString& path, const FileProgress& go) {
    const FileHandle copy = openRaw(path, SQLITE_OPEN_READONLY);
    const auto found = checkPages(copy.get(), Check::Full, go, WritingShare);
    if (!found) return false;
    if (!found->isEmpty() || static_cast<quint32>(number(copy.get(), "PRAGMA application_id")) != kApplicationId ||
        counts(source) != counts(copy.get()))
        throw DatabaseError(
            Kind::Io,
            QStringLiteral("Die Kopie %1 der Datenbank ist nicht vollständig. Die Datenbank selbst ist unverändert. "
                           "Bitte prüfen Sie den Datenträger, und versuchen Sie es dann erneut.")
                .arg(path));
    return true;
}

/// Makes a checked copy of `from` at `to` with `work(source, path of the draft)`, which answers false where it was
/// given up; `to` appears whole or not at all. One that is not checked is a working copy, and is not flushed either.
template <typename Work>
bool makeCopy(const QString& from, const QString& to, const FileProgress& go, bool checked, Work work) {
    checkSource(from);
    Draft draft(to);
    {
        const FileHandle source = openRaw(from, SQLITE_OPEN_READWRITE);
        execute(source.get(), "BEGIN; SELECT count(*) FROM sqlite_master; COMMIT");
        if (!work(source.get(), draft.path())) return false;
        if (checked && !checkCopy(source.get(), draft.path(), go)) return false;
    }
    checked ? draft.finishChecked() : draft.finishUnflushed();
    return true;
}

bool backup(sqlite3* source, const QString& path, const FileProgress& go) {
    constexpr int pagesAtOnce = 4096;
    const FileHandle target = openRaw(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    execute(target.get(), "PRAGMA synchronous = OFF");  // the draft is flushed as it is finished
    sqlite3_backup* work = sqlite3_backup_init(target.get(), "main", source, "main");
    if (work == nullptr) throwSqlite(target.get(), QString());
    int code = SQLITE_OK;
    bool on = true;
    while (on && (code = sqlite3_backup_step(work, go ? pagesAtOnce : -1)) == SQLITE_OK) {
        const int all = std::max(sqlite3_backup_pagecount(work), 1);
        on = go(static_cast<int>(qint64{all - sqlite3_backup_remaining(work)} * WritingShare / all));
    }
    sqlite3_backup_finish(work);
    if (!on) return false;
    if (code != SQLITE_DONE) throwSqlite(target.get(), QString(), code);
    // The copy stands alone, without a log beside it.
    execute(target.get(), "PRAGMA journal_mode = DELETE");
    return true;
}

/// A file with an empty catalogue.
void makeEmpty(const QString& path) {
    const FileHandle file = openRaw(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    execute(file.get(), "PRAGMA page_size = 4096; PRAGMA encoding = 'UTF-8'; PRAGMA application_id = " +
                            std::to_string(kApplicationId) + "; PRAGMA user_version = " + std::to_string(kFileVersion));
    execute(file.get(), "BEGIN");
    createCatalog(file.get());
    execute(file.get(), "COMMIT");
}

}  // namespace

Workspace::Workspace(std::function<QDateTime()> now) : m_now(std::move(now)) {}

Workspace::~Workspace() = default;

Database Workspace::create(const QString& path, const std::function<void(Database&)>& fill) {
    make(path, fill);
    return open(path);
}

void Workspace::make(const QString& path, const std::function<void(Database&)>& fill) {
    requireFree(path);
    removeDatabaseFile(path);  // the log of a file that somebody took away would be read into the new one
    Draft draft(path);
    fillDraft(draft.path(), fill);
    draft.finish();
}

void Workspace::makeInstead(const QString& path, const std::function<void(Database&)>& fill,
                            const std::function<void()>& keep) {
    Draft draft(path);
    fillDraft(draft.path(), fill);
    requireWhole(draft.path());
    keep();
    // a log that is not this file's would be read into the new one
    for (const char* suffix : {"-journal", "-wal", "-shm"}) QFile::remove(path + QString::fromLatin1(suffix));
    draft.finishChecked();
}

/// Makes a file with what `fill` puts into it, and closes it.
void Workspace::fillDraft(const QString& path, const std::function<void(Database&)>& fill) {
    makeEmpty(path);
    if (!fill) return;
    Database db = open(path);
    Transaction action(db);
    fill(db);
    action.commit();
    db.m_connection->closeWithoutLog();
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
    connection->setObserver(m_observer);
    connection->setWindow(m_window);
    std::erase_if(m_connections, [&](const auto& weak) { return weak.expired() || weak.lock() == connection; });
    m_connections.push_back(connection);
    return Database(connection);
}

bool Workspace::compact(const QString& from, const QString& to, const FileProgress& go) {
    requireFree(to);
    return makeCopy(from, to, go, true, [&](sqlite3* source, const QString& path) {
        const StatementHandle vacuum = prepare(source, "VACUUM INTO ?1");
        bindValue(vacuum.get(), 1, path);
        const qint64 size = std::max<qint64>(QFileInfo(from).size(), 1);
        const Watched watched(source, go, [&](qint64) {
            return static_cast<int>(std::min(QFileInfo(path).size(), size) * WritingShare / size);
        });
        return finish(source, vacuum.get(), QStringLiteral("VACUUM INTO"));
    });
}

void Workspace::replace(const QString& from, const QString& to) {
    // A log of the old file must never be read into the new one. A closed database has an empty one or none.
    if (QFileInfo(to + QStringLiteral("-wal")).size() > 0)
        throw DatabaseError(Kind::State,
                            QStringLiteral("Die Datenbank %1 ist noch in Benutzung, oder ihr Protokoll passt nicht "
                                           "mehr auf den Datenträger, und sie kann nicht ersetzt werden. Bitte beenden "
                                           "Sie alle Programme, die sie geöffnet haben, und schaffen Sie Platz.")
                                .arg(to));
    for (const char* suffix : {"-wal", "-shm"}) QFile::remove(to + QString::fromLatin1(suffix));
    if (const QString reason = replaceFile(from, to); !reason.isEmpty())
        throw DatabaseError(
            Kind::Io,
            fileFailure(QStringLiteral("Die Datei %1 kann nicht an die Stelle von %2 treten").arg(from, to), reason));
}

bool Workspace::copy(const QString& from, const QString& to, const FileProgress& go, bool checked) {
    if (QFileInfo(from).canonicalFilePath() == QFileInfo(to).canonicalFilePath() && QFileInfo::exists(to))
        throw DatabaseError(Kind::Io,
                            QStringLiteral("Die Datenbank %1 kann nicht auf sich selbst kopiert werden.").arg(from));
    return makeCopy(from, to, go, checked,
                    [&](sqlite3* source, const QString& path) { return backup(source, path, go); });
}

std::optional<Database> Workspace::view(const QString& from, const QString& to, const QString& refusal,
                                        const std::function<bool(Database&, const FileProgress&)>& shape,
                                        const FileProgress& go) {
    if (!copy(from, to, go, false)) return std::nullopt;
    Database view = open(to);
    view.m_connection->relax();
    const auto rest = [&](int percent) { return !go || go(WritingShare + percent * (100 - WritingShare) / 100); };
    if (!shape(view, rest)) return std::nullopt;
    view.m_connection->lookOnly(refusal);
    return view;
}

TableCounts Workspace::rowCounts(const QString& path) {
    checkSource(path);
    return counts(openRaw(path, SQLITE_OPEN_READONLY).get());
}

std::optional<QString> Workspace::check(const QString& path, Check check, const FileProgress& go) {
    checkSource(path);
    const FileHandle file = openRaw(path, SQLITE_OPEN_READWRITE);
    return checkPages(file.get(), check, go);
}

void Workspace::removeLeftovers(const QString& path) { Draft::removeLeftovers(path); }

bool Workspace::setUnfinishedAside(const QString& path) { return koben::setUnfinishedAside(path); }

void Workspace::closeAll() {
    for (const auto& weak : m_connections)
        if (const auto connection = weak.lock()) connection->close();
    m_connections.clear();
}

void Workspace::setFaultHook(std::function<void(const QString& sql)> hook) {
    Connection::setFaultHook(std::move(hook));
}

}  // namespace koben
