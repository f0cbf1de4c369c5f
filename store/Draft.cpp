#include "store/Draft.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include "store/FileCheck.h"
#include "store/Files.h"
#include "store/PageCheck.h"

namespace koben {

namespace {

QString draftOf(const QString& target) { return target + QStringLiteral(".neu"); }

enum class Content { Herd, Nothing, Unreadable };

/// Nothing: not one table of the program's. With `doubtful` every page is looked at.
Content contentOf(const QString& path, bool doubtful) {
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &raw, SQLITE_OPEN_READONLY, nullptr);
    const FileHandle file(raw);
    try {
        if (code != SQLITE_OK || (doubtful && checkPages(raw, Check::Quick, {}) != QString()))
            return Content::Unreadable;
        return number(raw, "SELECT count(*) FROM koben_tables") == 0 ? Content::Nothing : Content::Herd;
    } catch (const DatabaseError&) {
        return Content::Unreadable;
    }
}

qint64 bigEndian(const QByteArray& bytes, qsizetype at) {
    return at + 4 <= bytes.size() ? qFromBigEndian<quint32>(bytes.constData() + at) : 0;
}

QByteArray bytesOf(const QString& path, qint64 most) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(most) : QByteArray();
}

/// Whether the file is to have as many pages as the log leaves it with: so it is the draft to which the log belongs.
/// A herd that has grown since has more.
bool belongsTo(const QString& path, const QString& log) {
    constexpr qsizetype page = 4096, head = 32, frameHead = 24, pagesAfter = 4, pagesInFile = 28;
    constexpr qint64 most = 8'000'000;  // a draft's log is well under a megabyte
    const QByteArray frames = bytesOf(log, most);
    qint64 pages = 0;
    for (qsizetype at = head; at + frameHead + page <= frames.size(); at += frameHead + page)
        if (const qint64 count = bigEndian(frames, at + pagesAfter); count != 0) pages = count;
    return pages != 0 && pages == bigEndian(bytesOf(path, page), pagesInFile);
}

bool isOurs(const QString& path) {
    try {
        checkDatabaseFile(path);
        return true;
    } catch (const DatabaseError&) {
        return false;
    }
}

}  // namespace

void removeDatabaseFile(const QString& path) {
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) QFile::remove(path + QString::fromLatin1(suffix));
}

Draft::Draft(const QString& target) : m_target(target), m_path(draftOf(target)) { removeLeftovers(target); }

Draft::~Draft() { removeDatabaseFile(m_path); }

void Draft::finish() {
    flush();
    requireWhole(m_path);
    putInPlace();
}

void Draft::finishChecked() {
    flush();
    putInPlace();
}

void Draft::finishUnflushed() { putInPlace(false); }

void Draft::flush() const { require(flushFile(m_path)); }

void Draft::putInPlace(bool flush) const {
    for (const char* suffix : {"-wal", "-shm"}) QFile::remove(m_path + QString::fromLatin1(suffix));
    require(replaceFile(m_path, m_target, flush));
}

void Draft::require(const QString& reason) const {
    if (!reason.isEmpty())
        throw DatabaseError(
            DatabaseError::Kind::Io,
            fileFailure(
                QStringLiteral("Die Datei %1 kann nicht angelegt werden").arg(QDir::toNativeSeparators(m_target)),
                reason));
}

void Draft::removeLeftovers(const QString& target) {
    removeDatabaseFile(draftOf(target));
    removeDatabaseFile(draftOf(draftOf(target)));
}

bool setUnfinishedAside(const QString& path) {
    if (!isOurs(path) || QFileInfo(path + QStringLiteral("-wal")).size() > 0) return false;
    // a database at work has a log of its own name; only that of a draft still bears the draft's
    const QString log = draftOf(path) + QStringLiteral("-wal");
    const bool draftsLog = QFileInfo(log).size() > 0;
    const Content content = contentOf(path, draftsLog);
    if (content == Content::Herd || (content == Content::Unreadable && !(draftsLog && belongsTo(path, log))))
        return false;
    const QString aside = path + QStringLiteral(".unfertig");
    QFile::remove(aside);
    if (!QFile::rename(path, aside)) return false;
    removeDatabaseFile(path);
    Draft::removeLeftovers(path);
    return true;
}

}  // namespace koben
