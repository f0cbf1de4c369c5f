#include "store/Files.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "store/System.h"

namespace koben {

namespace {

QString folderOf(const QString& path) { return QFileInfo(path).absolutePath(); }

QString worded(system::Trouble trouble) {
    switch (trouble) {
        case system::Trouble::Full:
            return QStringLiteral("der Datenträger ist voll");
        case system::Trouble::Denied:
            return QStringLiteral("dort darf nicht geschrieben werden");
        case system::Trouble::Missing:
            return QStringLiteral("den Ordner oder die Datei gibt es nicht");
        case system::Trouble::Occupied:
            return QStringLiteral("an dieser Stelle liegt ein Ordner");
        case system::Trouble::InUse:
            return QStringLiteral("die Datei ist gerade in einem anderen Programm geöffnet");
        case system::Trouble::Disk:
            break;
    }
    return QStringLiteral("der Datenträger ist gestört oder nicht mehr verbunden");
}

}  // namespace

QString fileReason() { return worded(system::trouble()); }

QString fileReason(int code) { return worded(system::troubleOf(code)); }

void clearFileReason() { system::clearTrouble(); }

QString flushFile(const QString& path) { return system::flushFile(path) ? QString() : fileReason(); }

QString flushFolder(const QString& path) { return system::flushFolder(path) ? QString() : fileReason(); }

QString replaceFile(const QString& from, const QString& to, bool flush) {
    if (flush)
        if (const QString reason = flushFile(from); !reason.isEmpty()) return reason;
    if (!system::replaceFile(from, to, flush)) return fileReason();
    if (flush) system::flushFolder(folderOf(to));  // in place it is; a disk that now fails tells so with the next write
    return {};
}

QString renameFolder(const QString& from, const QString& to) {
    if (QFileInfo::exists(to)) return worded(system::Trouble::Occupied);
    return system::replaceFile(from, to, false) ? QString() : fileReason();
}

QString keepFile(const QString& path, const QString& name) {
    const system::Link link = system::linkFile(path, name);
    if (link == system::Link::NameTaken) return worded(system::Trouble::Occupied);
    if (link == system::Link::Impossible) {
        QFile file(path);
        if (!file.copy(name) || QFileInfo(name).size() != file.size()) {
            const QString reason = fileReason();
            QFile::remove(name);
            return reason;
        }
        if (const QString reason = flushFile(name); !reason.isEmpty()) return reason;
    }
    system::flushFolder(folderOf(name));
    return {};
}

QString writeFile(const QString& path, const QByteArray& bytes) {
    // unbuffered, since the last flush of a buffer takes a half-done write for a whole one
    QSaveFile file(path);
    system::clearTrouble();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(bytes) != bytes.size() || !file.commit())
        return fileReason();
    system::flushFolder(folderOf(path));
    return {};
}

QString writeFileThrough(const QString& draft, const QString& path, const QByteArray& bytes) {
    const QFileInfo before(path);
    const QString target = before.exists() ? before.canonicalFilePath() : path;
    if (before.exists() && !before.isWritable()) return worded(system::Trouble::Denied);
    QFile::remove(draft);
    QString reason;
    {
        QFile file(draft);
        system::clearTrouble();
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
