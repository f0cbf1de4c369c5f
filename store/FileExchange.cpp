#include "store/FileExchange.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <algorithm>

#include "store/DatabaseError.h"
#include "store/Files.h"

namespace koben {

namespace {

QString workIn(const QString& folder) { return QDir(folder).filePath(QStringLiteral("koben-arbeit")); }
QString decidedIn(const QString& folder) { return QDir(folder).filePath(QStringLiteral("koben-tausch")); }

/// Of the folder and those within it, by their paths from there.
QStringList filesIn(const QString& folder) {
    constexpr auto filter = QDir::Files | QDir::Hidden | QDir::System;
    QStringList names;
    for (QDirIterator it(folder, filter, QDirIterator::Subdirectories); it.hasNext();)
        names += QDir(folder).relativeFilePath(it.next());
    std::sort(names.rbegin(), names.rend());
    return names;
}

/// "" where no log of a database is left beside its place.
QString removeLogs(const QString& path) {
    for (const char* suffix : {"-wal", "-shm", "-journal"}) {
        QFile log(path + QString::fromLatin1(suffix));
        clearFileReason();
        if (log.exists() && !log.remove()) return fileReason();
    }
    return {};
}

}  // namespace

WorkFolder::WorkFolder(const QString& folder) : m_path(workIn(folder) + u'/') {
    QDir(m_path).removeRecursively();
    clearFileReason();
    if (!QDir().mkpath(m_path))
        throw DatabaseError(
            DatabaseError::Kind::Io,
            fileFailure(
                QStringLiteral("Im Ordner %1 kann nicht gearbeitet werden").arg(QDir::toNativeSeparators(folder)),
                fileReason()));
}

WorkFolder::~WorkFolder() { QDir(m_path).removeRecursively(); }

QString WorkFolder::file(const QString& name) const {
    if (name.contains(u'/')) QDir().mkpath(QFileInfo(m_path + name).path());
    return m_path + name;
}

void WorkFolder::clear(const QString& folder) { QDir(workIn(folder)).removeRecursively(); }

QString FileExchange::decide() {
    for (const QString& name : filesIn(m_gathered.m_path))
        if (const QString reason = flushFile(file(name)); !reason.isEmpty()) return reason;
    for (QDirIterator it(m_gathered.m_path, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
         it.hasNext();)
        flushFolder(it.next());
    flushFolder(m_gathered.m_path);
    if (const QString reason = renameFolder(workIn(m_folder), decidedIn(m_folder)); !reason.isEmpty()) return reason;
    flushFolder(m_folder);
    return {};
}

QString FileExchange::carryOut(const QString& folder) {
    const QDir decided(decidedIn(folder)), places(folder);
    for (const QString& name : filesIn(decided.path())) {
        const QString place = places.filePath(name);
        if (const QString reason = removeLogs(place); !reason.isEmpty()) return reason;
        flushFolder(folder);  // an old log must not outlive the file that it belongs to
        places.mkpath(QFileInfo(name).path());
        if (const QString reason = replaceFile(decided.filePath(name), place); !reason.isEmpty()) return reason;
    }
    QDir(decided).removeRecursively();
    return {};
}

bool FileExchange::isPending(const QString& folder, const QString& name) {
    return QFile::exists(QDir(decidedIn(folder)).filePath(name));
}

QString FileExchange::recover(const QString& folder) {
    const QString reason = QDir(decidedIn(folder)).exists() ? carryOut(folder) : QString();
    WorkFolder::clear(folder);
    return reason;
}

}  // namespace koben
