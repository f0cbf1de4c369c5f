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

qintptr FileLock::grab(const QString& path) {
    for (;;) {
        const int file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (file < 0) return -1;
        // a file system that knows no locks guards nobody, but must not bar the program
        const bool taken = ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno == ENOLCK || errno == EOPNOTSUPP;
        if (taken && lies(file, path)) return file;
        ::close(file);
        if (!taken) return -1;
        // its last holder took it away between our opening and locking it: once more, with the one that is there now
    }
}

bool FileLock::lies(qintptr file, const QString& path) {
    struct stat ours {
    }, there{};
    return ::fstat(static_cast<int>(file), &ours) == 0 && ::stat(QFile::encodeName(path).constData(), &there) == 0 &&
           ours.st_ino == there.st_ino && ours.st_dev == there.st_dev;
}

void FileLock::drop(qintptr file, const QString& path) {
    if (lies(file, path)) ::unlink(QFile::encodeName(path).constData());
    ::flock(static_cast<int>(file), LOCK_UN);  // for copies of the descriptor in child processes too
    ::close(static_cast<int>(file));
}

void plainStreams() {}

}  // namespace koben::system
