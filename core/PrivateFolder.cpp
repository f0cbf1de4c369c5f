#include "core/PrivateFolder.h"

#include <QDir>

#include "store/DatabaseError.h"

namespace koben {

PrivateFolder::PrivateFolder(const QString& userFolder, const QString& stem)
    : m_folder(QDir().mkpath(userFolder) ? userFolder + stem + QStringLiteral("XXXXXX") : QString()) {
    if (m_folder.isValid() && m_lock.nehmen(m_folder.path())) return;
    throw DatabaseError(DatabaseError::Kind::Io,
                        QStringLiteral("Im Ordner \"%1\" kann nicht geschrieben werden. Bitte prüfen Sie, ob auf dem "
                                       "Datenträger noch Platz ist und ob Sie dort Schreibrechte haben.")
                            .arg(QDir::toNativeSeparators(userFolder)));
}

void PrivateFolder::removeLeft(const QString& userFolder, const QString& stem) {
    const QDir folder(userFolder);
    for (const QString& name : folder.entryList({stem + u'*'}, QDir::Dirs | QDir::NoSymLinks)) {
        QDir left(folder.filePath(name));
        {
            Ordnersperre lock;
            if (!lock.nehmen(left.path())) continue;
            left.removeRecursively();
        }
        folder.rmdir(name);  // where an open file, the lock's, held it
    }
}

}  // namespace koben
