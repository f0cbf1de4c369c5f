#include "core/Ordnersperre.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>

namespace koben {

namespace {

bool liegtDort(int file, const QByteArray& path) {
    struct stat ours {
    }, there{};
    return fstat(file, &ours) == 0 && stat(path.constData(), &there) == 0 && ours.st_ino == there.st_ino &&
           ours.st_dev == there.st_dev;
}

/// The file of this path, locked; -1 where another holds it or it cannot be made.
int gesperrt(const QByteArray& path) {
    for (;;) {
        const int file = open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (file < 0) return -1;
        // a file system that knows no locks guards nobody, but must not bar the program
        const bool locked = flock(file, LOCK_EX | LOCK_NB) == 0 || errno == ENOLCK || errno == EOPNOTSUPP;
        if (locked && liegtDort(file, path)) return file;
        close(file);
        if (!locked) return -1;
        // its last holder took it away between our opening and locking it: once more, with the one that is there now
    }
}

}  // namespace

QString Ordnersperre::hindernis(const QString& folder) {
    const QFileInfo file(QDir(folder).filePath(QStringLiteral("koben.lock")));
    const QString remedy = QStringLiteral(
        " KOBEN läuft nicht ein zweites Mal. Bitte löschen oder verschieben Sie \"%1\", und starten Sie KOBEN neu.");
    const auto told = [&](const char* problem) {
        return QString::fromUtf8(problem) + remedy.arg(QDir::toNativeSeparators(file.filePath()));
    };
    if (file.isDir())
        return told("Die Sperrdatei des Datenordners kann nicht angelegt werden, weil dort ein Ordner liegt.");
    if (file.isSymLink() && !file.exists())
        return told("Die Sperrdatei des Datenordners ist ein Verweis auf eine Datei, die es nicht gibt.");
    if (file.exists() && (!file.isFile() || !file.isReadable() || !file.isWritable()))
        return told(
            "Die Sperrdatei des Datenordners gehört einem anderen Benutzer oder System und lässt sich nicht öffnen.");
    return {};
}

bool Ordnersperre::nehmen(const QString& folder) {
    const QByteArray path = QFile::encodeName(QDir(folder).filePath(QStringLiteral("koben.lock")));
    if (m_file >= 0 && m_path == path && liegtDort(m_file, path)) return true;
    const int file = gesperrt(path);
    if (file < 0) return false;
    loslassen();
    m_file = file;
    m_path = path;
    return true;
}

void Ordnersperre::loslassen() {
    if (m_file < 0) return;
    if (liegtDort(m_file, m_path)) unlink(m_path.constData());
    flock(m_file, LOCK_UN);  // for copies of the descriptor in child processes too
    close(m_file);
    m_file = -1;
}

}  // namespace koben
