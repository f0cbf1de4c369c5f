#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <QDir>
#include <cerrno>
#include <cstdio>

#include "store/System.h"

namespace koben::system {

namespace {

constexpr DWORD quotaExceeded = 1295;           // ERROR_DISK_QUOTA_EXCEEDED, which the compiler's headers lack
constexpr DWORD pause = 40;                     // milliseconds before the next try
constexpr int patience = 25, lockPatience = 5;  // how often what another program holds for a moment is tried

/// As the wide calls take it; beyond 247 characters they want the long form.
std::wstring wide(const QString& path) {
    constexpr qsizetype longest = 247;
    QString native = QDir::toNativeSeparators(QDir(path).absolutePath());
    if (native.size() > longest && !native.startsWith(QLatin1String("\\\\"))) native.prepend(QLatin1String("\\\\?\\"));
    return native.toStdWString();
}

/// Virus scanners and indexers open what has just been written. They are soon done.
bool isPassing(DWORD code) {
    return code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION || code == ERROR_ACCESS_DENIED;
}

/// Does a step again while another program is in the way.
template <class Step>
bool persistently(int times, const Step& step) {
    while (!step()) {
        const DWORD code = GetLastError();
        if (--times <= 0 || !isPassing(code)) {
            SetLastError(code);
            return false;
        }
        Sleep(pause);
    }
    return true;
}

bool replace(const std::wstring& from, const std::wstring& to, DWORD how) {
    const DWORD there = GetFileAttributesW(to.c_str());
    if (there != INVALID_FILE_ATTRIBUTES && there & FILE_ATTRIBUTE_DIRECTORY) {
        SetLastError(ERROR_DIRECTORY);
        return false;
    }
    const bool guarded = there != INVALID_FILE_ATTRIBUTES && there & FILE_ATTRIBUTE_READONLY;
    const auto step = [&] { return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | how) != 0; };
    return persistently(guarded ? 1 : patience, step);
}

/// Compiled patterns keep a stack for each thread, and what MinGW's threads free as they end is gone by then: a thread
/// of our own that has matched a pattern, for a list of files even, would take the program with it. Before the first
/// match.
const bool patternsAreInterpreted = qputenv("QT_ENABLE_REGEXP_JIT", "0");

}  // namespace

void clearTrouble() {
    errno = 0;
    SetLastError(ERROR_SUCCESS);
}

Trouble trouble() {
    switch (GetLastError()) {
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
        case quotaExceeded:
        case ERROR_FILE_TOO_LARGE:
            return Trouble::Full;
        case ERROR_ACCESS_DENIED:
        case ERROR_WRITE_PROTECT:
        case ERROR_PRIVILEGE_NOT_HELD:
            return Trouble::Denied;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_DRIVE:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_NETPATH:
            return Trouble::Missing;
        case ERROR_DIRECTORY:
        case ERROR_DIR_NOT_EMPTY:
        case ERROR_ALREADY_EXISTS:
        case ERROR_FILE_EXISTS:
            return Trouble::Occupied;
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_USER_MAPPED_FILE:
            return Trouble::InUse;
        case ERROR_SUCCESS:
            return troubleOf(errno);
        default:
            return Trouble::Disk;
    }
}

Trouble troubleOf(int code) {
    switch (code) {
        case ENOSPC:
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
        case EBUSY:
            return Trouble::InUse;
        default:
            return Trouble::Disk;
    }
}

bool flushFile(const QString& path) {
    const std::wstring name = wide(path);
    HANDLE file = INVALID_HANDLE_VALUE;
    const auto opened = [&] {
        file = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0, nullptr);
        return file != INVALID_HANDLE_VALUE;
    };
    if (!persistently(patience, opened)) return false;
    const bool done = FlushFileBuffers(file) != 0;
    const DWORD code = GetLastError();
    CloseHandle(file);
    SetLastError(code);
    return done;
}

/// The file systems here keep a log of their own of names that change.
bool flushFolder(const QString&) { return true; }

bool replaceFile(const QString& from, const QString& to, bool flush) {
    return replace(wide(from), wide(to), flush ? MOVEFILE_WRITE_THROUGH : 0);
}

Link linkFile(const QString& path, const QString& name) {
    if (CreateHardLinkW(wide(name).c_str(), wide(path).c_str(), nullptr) != 0) return Link::Made;
    return GetLastError() == ERROR_ALREADY_EXISTS ? Link::NameTaken : Link::Impossible;
}

qintptr FileLock::grab(const QString& path) {
    const std::wstring name = wide(path);
    HANDLE file = INVALID_HANDLE_VALUE;
    const auto taken = [&] {
        file = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                           FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        return file != INVALID_HANDLE_VALUE;
    };
    return persistently(lockPatience, taken) ? reinterpret_cast<qintptr>(file) : -1;
}

/// Nobody can move or remove the file meanwhile: what was taken stays held.
bool FileLock::lies(qintptr, const QString&) { return true; }

/// The system removes the file with its last handle.
void FileLock::drop(qintptr file, const QString&) { CloseHandle(reinterpret_cast<HANDLE>(file)); }

void plainStreams() {
    for (FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
}

}  // namespace koben::system
