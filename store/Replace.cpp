// Putting one closed database file in the place of another, in one step that a power cut cannot halve.
#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <cstdio>

#include "store/Database.h"

namespace koben {

namespace {

void flushFolder(const QString& path) {
    const int folder = ::open(QFile::encodeName(QFileInfo(path).absolutePath()).constData(), O_RDONLY | O_DIRECTORY);
    if (folder < 0) return;
    ::fsync(folder);
    ::close(folder);
}

}  // namespace

void Workspace::replace(const QString& from, const QString& to) {
    // A log of the old file must never be read into the new one. A closed database has an empty one or none.
    for (const char* suffix : {"-wal", "-shm"}) {
        const QString log = to + QString::fromLatin1(suffix);
        if (QFileInfo(log).size() > 0 && suffix[1] == 'w')
            throw DatabaseError(DatabaseError::Kind::State,
                                QStringLiteral("Die Datenbank %1 ist noch in Benutzung und kann nicht ersetzt werden. "
                                               "Bitte beenden Sie alle Programme, die sie geöffnet haben.")
                                    .arg(to));
        QFile::remove(log);
    }
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        throw DatabaseError(DatabaseError::Kind::Io,
                            QStringLiteral("Die Datei %1 kann nicht an die Stelle von %2 treten. Bitte prüfen Sie, ob "
                                           "Sie im Datenordner schreiben dürfen.")
                                .arg(from, to));
    flushFolder(to);
}

}  // namespace koben
