#pragma once
// Long work of SQLite on a file, told and given up on the way; above all the check of every page.
#include "store/Database.h"
#include "store/Sqlite.h"

namespace koben {

/// Tells how far SQLite's work on a file has come while it lives, and gives it up where it is told to.
class Watched {
public:
    /// `percent` of `instructions` done so far.
    Watched(sqlite3* file, const FileProgress& go, std::function<int(qint64 instructions)> percent);
    ~Watched();
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;

private:
    static int look(void* self);

    sqlite3* m_file;
    const FileProgress& m_go;
    std::function<int(qint64)> m_percent;
    qint64 m_done = 0;
};

/// Steps a statement to its end; false where it was given up.
bool finish(sqlite3* file, sqlite3_stmt* statement, const QString& text);

/// Looks at every page of a file. "" where all is whole, otherwise what was found; nothing where it was given up.
/// `go` hears percents from `from` to 100.
std::optional<QString> checkPages(sqlite3* file, Check check, const FileProgress& go, int from = 0);

/// A finished database file, closed and without a log: throws unless every page of it can be read back and is whole.
void requireWhole(const QString& path);

}  // namespace koben
