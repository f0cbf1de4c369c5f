#pragma once
#include <QString>

namespace koben {

/// Looks at the first bytes of a file, without SQLite and without writing. Throws unless it is a database of this
/// program and of a version it knows.
void checkDatabaseFile(const QString& path);

/// Whether a file is one of the old engine's successor (ACCDB), which is not read, by its first bytes.
bool isAccdb(const QString& path);

}  // namespace koben
