#pragma once
// What the systems do differently with files: bodies in System_posix.cpp and System_windows.cpp, and in System.cpp what
// is the same for both. Above it nothing knows which system it runs on.
#include <QString>

namespace koben::system {

/// Why a call on a file failed, as far as it matters to a user.
enum class Trouble {
    Full,      ///< no room left, or a file larger than the disk can hold
    Denied,    ///< it may not be written there
    Missing,   ///< no such folder or file
    Occupied,  ///< a folder is in the way
    InUse,     ///< another program has it open
    Disk       ///< anything else
};

/// Forgets what failed so far: before a step whose failure is asked for, since not every success wipes it out.
void clearTrouble();
/// Of the last call on a file that failed, whether ours or a library's.
Trouble trouble();
/// Of a number as C's errno has it, which a library kept.
Trouble troubleOf(int code);

/// The following give false where it was not done; trouble() tells why.

/// Waits until a file's content is on the disk.
bool flushFile(const QString& path);
/// The same for a folder's list of files; true, too, where the system or the disk sees to that by itself.
bool flushFolder(const QString& path);
/// A file takes the name of another, or a folder one that is free, on the same disk, in one step. With `flush` the step
/// is on the disk afterwards, where the system can tell; otherwise flushFolder() does it.
bool replaceFile(const QString& from, const QString& to, bool flush);
/// A second name of a file on the same disk, which must not exist.
enum class Link { Made, NameTaken, Impossible };
Link linkFile(const QString& path, const QString& name);

/// A hold on a file that one process has at a time. The system lets go of it when the process ends, however it ends:
/// what a dead one left behind holds nothing, and there is no moment at which two could both have it.
class FileLock {
public:
    FileLock() = default;
    ~FileLock() { release(); }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Makes the file where it is missing. True also where this object has it already; false where a living process
    /// has it or it cannot be made, and then a hold on another file stays.
    bool take(const QString& path);
    /// Removes the file, too.
    void release();

private:
    bool holds(const QString& path) const;

    // the system's part
    static qintptr grab(const QString& path);             ///< the file, made and held; -1 where that cannot be
    static bool lies(qintptr file, const QString& path);  ///< whether the held file is still the one of that path
    static void drop(qintptr file, const QString& path);  ///< lets go of it, and removes it where it lies

    qintptr m_file = -1;
    QString m_path;
};

/// Standard input and output carry bytes as they are.
void plainStreams();

}  // namespace koben::system
