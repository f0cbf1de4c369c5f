#include <QDateTime>
#include <QFileInfo>
#include <QHash>
#include <QMutex>
#include <algorithm>
#include <cmath>

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

/// Tells how far SQLite's work on a file has come while it lives, and gives it up where it is told to.
class Watched {
public:
    /// `percent` of `instructions` done so far.
    Watched(sqlite3* file, const FileProgress& go, std::function<int(qint64 instructions)> percent)
        : m_file(file), m_go(go), m_percent(std::move(percent)) {
        if (m_go) sqlite3_progress_handler(m_file, Every, &Watched::look, this);
    }
    ~Watched() { sqlite3_progress_handler(m_file, 0, nullptr, nullptr); }
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;

private:
    static int look(void* self) { return static_cast<Watched*>(self)->goOn() ? 0 : 1; }
    bool goOn() {
        m_done += Every;
        return m_go(std::min(m_percent(m_done), 100));
    }

    static constexpr int Every = 100'000;  // instructions of SQLite's machine, a few milliseconds
    sqlite3* m_file;
    const FileProgress& m_go;
    std::function<int(qint64)> m_percent;
    qint64 m_done = 0;
};

/// Steps a statement to its end; false where it was given up.
bool finish(sqlite3* file, sqlite3_stmt* statement, const QString& text) {
    const int code = sqlite3_step(statement);
    if (code != SQLITE_DONE && code != SQLITE_ROW && code != SQLITE_INTERRUPT) throwSqlite(file, text, code);
    return code != SQLITE_INTERRUPT;
}

// Of the time that a copy takes, writing is the first third and checking the rest.
constexpr int WritingShare = 30;
constexpr double CheckPerPage = 1200;  // instructions, as measured on large herds

/// How far the check has come. Where it takes longer than expected the rest is told in ever smaller steps: a bar that
/// stands at its end looks like a program that hangs.
int checked(qint64 instructions, qint64 pages) {
    constexpr double sure = 0.9;
    double share = static_cast<double>(instructions) / (CheckPerPage * static_cast<double>(std::max<qint64>(pages, 1)));
    if (share > sure) share = 1 - (1 - sure) * std::exp((sure - share) / (1 - sure));
    return WritingShare + static_cast<int>(share * (100 - WritingShare));
}

/// A copy is worth its name only when it is whole, ours and has every row. False where the check was given up.
bool checkCopy(sqlite3* source, const QString& path, const FileProgress& go) {
    const FileHandle copy = openRaw(path, SQLITE_OPEN_READONLY);
    bool whole = static_cast<quint32>(number(copy.get(), "PRAGMA application_id")) == kApplicationId;
    const qint64 pages = number(copy.get(), "PRAGMA page_count");
    const QString text = QStringLiteral("PRAGMA integrity_check(1)");
    const StatementHandle check = prepare(copy.get(), text.toStdString());
    {
        const Watched watched(copy.get(), go, [&](qint64 done) { return checked(done, pages); });
        if (!finish(copy.get(), check.get(), text)) return false;
    }
    whole = whole && columnValue(check.get(), 0, Type::Text).toText() == u"ok";
    if (!whole || rowCounts(source) != rowCounts(copy.get()))
        throw DatabaseError(
            Kind::Io,
            QStringLiteral("Die Kopie %1 der Datenbank ist nicht vollständig. Die Datenbank selbst ist unverändert.")
                .arg(path));
    return true;
}

/// Makes a checked copy of `from` at `to` with `work(source, path beside)`, which answers false where it was given up;
/// `to` appears whole or not at all.
template <typename Work>
bool makeCopy(const QString& from, const QString& to, const FileProgress& go, Work work) {
    checkSource(from);
    const QString beside = besideName(to);
    removeDatabaseFile(beside);
    try {
        const FileHandle source = openRaw(from, SQLITE_OPEN_READWRITE);
        execute(source.get(), "BEGIN; SELECT count(*) FROM sqlite_master; COMMIT");
        const bool made = work(source.get(), beside) && checkCopy(source.get(), beside, go);
        if (made)
            renameDatabaseFile(beside, to);
        else
            removeDatabaseFile(beside);
        return made;
    } catch (...) {
        removeDatabaseFile(beside);
        throw;
    }
}

bool backup(sqlite3* source, const QString& path, const FileProgress& go) {
    constexpr int pagesAtOnce = 4096;
    const FileHandle target = openRaw(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
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
    connection->setObserver(m_observer);
    std::erase_if(m_connections, [&](const auto& weak) { return weak.expired() || weak.lock() == connection; });
    m_connections.push_back(connection);
    return Database(connection);
}

bool Workspace::compact(const QString& from, const QString& to, const FileProgress& go) {
    requireFree(to);
    return makeCopy(from, to, go, [&](sqlite3* source, const QString& path) {
        const StatementHandle vacuum = prepare(source, "VACUUM INTO ?1");
        bindValue(vacuum.get(), 1, path);
        const qint64 size = std::max<qint64>(QFileInfo(from).size(), 1);
        const Watched watched(source, go, [&](qint64) {
            return static_cast<int>(std::min(QFileInfo(path).size(), size) * WritingShare / size);
        });
        return finish(source, vacuum.get(), QStringLiteral("VACUUM INTO"));
    });
}

bool Workspace::copy(const QString& from, const QString& to, const FileProgress& go) {
    if (QFileInfo(from).canonicalFilePath() == QFileInfo(to).canonicalFilePath() && QFileInfo::exists(to))
        throw DatabaseError(Kind::Io,
                            QStringLiteral("Die Datenbank %1 kann nicht auf sich selbst kopiert werden.").arg(from));
    return makeCopy(from, to, go, [&](sqlite3* source, const QString& path) { return backup(source, path, go); });
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
