#pragma once
// SQLite's own things: owners for its handles, values in and out by type, errors in German.
// What an action changes is heard from SQLite itself (JournalRecorder); the library is built with it.
#ifndef SQLITE_ENABLE_PREUPDATE_HOOK
#define SQLITE_ENABLE_PREUPDATE_HOOK
#endif
#include <sqlite3.h>

#include <memory>

#include "store/Convert.h"

namespace koben {

struct StatementCloser {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, StatementCloser>;

/// Closed even while statements live on; SQLite then lets go with the last of them.
struct FileCloser {
    void operator()(sqlite3* file) const { sqlite3_close_v2(file); }
};
using FileHandle = std::unique_ptr<sqlite3, FileCloser>;

/// A number from the fields of a Value as SQLite holds it; dates as ISO texts, money as ten-thousandths, true as 1.
void bindValue(sqlite3_stmt* statement, int place, const Value& value);
void resultValue(sqlite3_context* context, const Value& value);
Value columnValue(sqlite3_stmt* statement, int column, Type type);
Value argumentValue(sqlite3_value* value, Type type);

/// The last error of a connection as DatabaseError; `statement` is quoted where it is not empty.
[[noreturn]] void throwSqlite(sqlite3* file, const QString& statement, int code = SQLITE_OK);
/// Runs SQLite's own SQL without values; throws.
void execute(sqlite3* file, const std::string& sql);
StatementHandle prepare(sqlite3* file, const std::string& sql, bool keep = false);
/// The only value of a one-row result; 0 where there is none.
qint64 number(sqlite3* file, const std::string& sql);

}  // namespace koben
