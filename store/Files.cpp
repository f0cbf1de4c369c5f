#include "store/Files.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <cstdio>

namespace koben {

namespace {

QString folderOf(const QString& path) { return QFileInfo(path).absolutePath(); }

/// Some file systems know no flush of a folder: their lists of files are always on the disk.
QString flushFolder(const QString& path) {
    const QString reason = flushFile(path);
    return errno == EINVAL || errno == ENOTSUP ? QString() : reason;
}

}  // namespace

QString fileReason() {
    switch (errno) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return QStringLiteral("der Datenträger ist voll");
        case EROFS:
        case EACCES:
        case EPERM:
            return QStringLiteral("dort darf nicht geschrieben werden");
        case ENOENT:
        case ENOTDIR:
            return QStringLiteral("den Ordner oder die Datei gibt es nicht");
        case EISDIR:
        case ENOTEMPTY:
        case EEXIST:
            return QStringLiteral("an dieser Stelle liegt ein Ordner");
        default:
            return QStringLiteral("der Datenträger ist gestört oder nicht mehr verbunden");
    }
}

QString flushFile(const QString& path) {
    errno = 0;
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return fileReason();
    const int result = ::fsync(descriptor);
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return result == 0 ? QString() : fileReason();
}

QString replaceFile(const QString& from, const QString& to, bool flush) {
    errno = 0;
    if (flush)
        if (const QString reason = flushFile(from); !reason.isEmpty()) return reason;
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) return fileReason();
    if (flush) flushFolder(folderOf(to));  // in place it is; a disk that now fails tells so with the next write
    return {};
}

QString keepFile(const QString& path, const QString& name) {
    errno = 0;
    if (::link(QFile::encodeName(path).constData(), QFile::encodeName(name).constData()) != 0) {
        if (errno == EEXIST) return fileReason();
        QFile file(path);
        if (!file.copy(name) || QFileInfo(name).size() != file.size()) {
            const QString reason = fileReason();
            QFile::remove(name);
            return reason;
        }
        if (const QString reason = flushFile(name); !reason.isEmpty()) return reason;
    }
    flushFolder(folderOf(name));
    return {};
}

QString writeFile(const QString& path, const QByteArray& bytes) {
    // unbuffered, since the last flush of a buffer takes a half-done write for a whole one
    QSaveFile file(path);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(bytes) != bytes.size() || !file.commit())
        return fileReason();
    flushFolder(folderOf(path));
    return {};
}

QString writeFileThrough(const QString& draft, const QString& path, const QByteArray& bytes) {
    const QFileInfo before(path);
    const QString target = before.exists() ? before.canonicalFilePath() : path;
    errno = EACCES;
    if (before.exists() && !before.isWritable()) return fileReason();
    QFile::remove(draft);
    QString reason;
    {
        QFile file(draft);
        errno = 0;
        if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(bytes) != bytes.size())
            reason = fileReason();
        else if (before.exists())
            file.setPermissions(before.permissions());
    }
    if (reason.isEmpty()) reason = replaceFile(draft, target);
    if (!reason.isEmpty()) QFile::remove(draft);
    return reason;
}

QString fileFailure(const QString& what, const QString& reason) {
    return what + QStringLiteral(
                      ": %1. Bitte prüfen Sie Platz, Schreibrechte und Verbindung des Datenträgers, und "
                      "versuchen Sie es dann erneut.")
                      .arg(reason);
}

}  // namespace koben
