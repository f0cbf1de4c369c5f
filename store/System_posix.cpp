#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <cstdio>

#include "store/System.h"

namespace koben::system {

namespace {

bool flush(const QString& path) {
    errno = 0;
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return false;
    const int result = ::fsync(descriptor);
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return result == 0;
}

bool liesThere(int file, const QByteArray& path) {
    struct stat ours {
    }, there{};
    return ::fstat(file, &ours) == 0 && ::stat(path.constData(), &there) == 0 && ours.st_ino == there.st_ino &&
           ours.st_dev == there.st_dev;
}

/// The file of this path, locked; -1 where another holds it or it cannot be made.
int locked(const QByteArray& path) {
    for (;;) {
        const int file = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (file < 0) return -1;
        // a file system that knows no locks guards nobody, but must not bar the program
        const bool taken = ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno == ENOLCK || errno == EOPNOTSUPP;
        if (taken && liesThere(file, path)) return file;
        ::close(file);
        if (!taken) return -1;
        // its last holder took it away between our opening and locking it: once more, with the one that is there now
    }
}

}  // namespace

void clearTrouble() { errno = 0; }

Trouble trouble() { return troubleOf(errno); }

Trouble troubleOf(int code) {
    switch (code) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return Trouble::Full;
        case EROFS:
        case EACCES:
        case EPERM:
            return Trouble::Denied;
        case ENOENT:
        case ENOTDIR:
            return Trouble::Missing;
        case EISDIR:
        case ENOTEMPTY:
        case EEXIST:
            return Trouble::Occupied;
        default:
            return Trouble::Disk;
    }
}

bool flushFile(const QString& path) { return flush(path); }

bool flushFolder(const QString& path) { return flush(path) || errno == EINVAL || errno == ENOTSUP; }

bool replaceFile(const QString& from, const QString& to, bool) {
    errno = 0;
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

Link linkFile(const QString& path, const QString& name) {
    errno = 0;
    if (::link(QFile::encodeName(path).constData(), QFile::encodeName(name).constData()) == 0) return Link::Made;
    return errno == EEXIST ? Link::NameTaken : Link::Impossible;
}

bool FileLock::holds(const QString& path) const {
    return m_file >= 0 && m_path == path && liesThere(static_cast<int>(m_file), QFile::encodeName(path));
}

bool FileLock::take(const QString& path) {
    if (holds(path)) return true;
    const int file = locked(QFile::encodeName(path));
    if (file < 0) return false;
    release();
    m_file = file;
    m_path = path;
    return true;
}

void FileLock::release() {
    if (m_file < 0) return;
    const int file = static_cast<int>(m_file);
    if (holds(m_path)) ::unlink(QFile::encodeName(m_path).constData());
    ::flock(file, LOCK_UN);  // for copies of the descriptor in child processes too
    ::close(file);
    m_file = -1;
}

void plainStreams() {}

}  // namespace koben::system
