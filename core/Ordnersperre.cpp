#include "core/Ordnersperre.h"

#include <QDir>

namespace koben {

bool Ordnersperre::nehmen(const QString& folder) {
    const QString path = QDir(folder).filePath(QStringLiteral("koben.lock"));
    if (m_lock && m_lock->isLocked() && m_lock->fileName() == path) return true;
    m_lock = std::make_unique<QLockFile>(path);
    m_lock->setStaleLockTime(0);  // no age makes it stale, only a process that is gone
    if (m_lock->tryLock(0)) return true;
    // A lock that names nobody was cut off while it was written; nobody would ever give it back.
    qint64 holder = 0;
    QString host, program;
    return m_lock->error() == QLockFile::LockFailedError && !m_lock->getLockInfo(&holder, &host, &program) &&
           m_lock->removeStaleLockFile() && m_lock->tryLock(0);
}

}  // namespace koben
