#pragma once
#include <QString>

namespace koben {

/// Looks at the first bytes of a file, without SQLite and without writing. Throws unless it is a database of this
/// program and of a version it knows.
void checkDatabaseFile(const QString& path);
/// Flushes a file or folder to the disk; throws.
void flushToDisk(const QString& path);
/// Removes a database file that was left half done, with what SQLite put beside it.
void removeDatabaseFile(const QString& path);
/// Puts a finished file into place, replacing one there. Throws, and the file at `to` is then as before.
void renameDatabaseFile(const QString& from, const QString& to);

}  // namespace koben
