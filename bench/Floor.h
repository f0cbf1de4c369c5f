#pragma once
// The floor: the same results by hand-written SQLite statements on a copy of the file, with indexes made for them.
#include <sqlite3.h>

#include <QDate>
#include <QString>
#include <memory>
#include <string>
#include <vector>

namespace koben {

/// An open file, read and written through SQLite alone.
class SqliteFile {
public:
    explicit SqliteFile(const QString& path);
    ~SqliteFile() { sqlite3_close(m_file); }
    SqliteFile(const SqliteFile&) = delete;
    SqliteFile& operator=(const SqliteFile&) = delete;

    void execute(const std::string& sql);
    /// Several statements as one transaction.
    void commit(const std::vector<std::string>& statements);
    /// Runs one statement for each value of its parameter.
    void each(const std::string& sql, const std::vector<qint64>& values);
    /// Runs one statement for each row of texts, which are its parameters.
    void each(const std::string& sql, const std::vector<std::vector<std::string>>& rows);
    /// Reads all rows into one block of memory, each value as it lies in the file. The number of rows.
    qint64 read(const std::string& sql);
    /// The whole numbers of the first column.
    std::vector<qint64> numbers(const std::string& sql);
    /// The texts of the first column.
    std::vector<std::string> texts(const std::string& sql);
    /// Writes all rows as lines of text. The number of rows.
    qint64 write(const std::string& sql, const QString& path);

    using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;
    Statement prepare(const std::string& sql);
    /// Runs a writing statement and rewinds it.
    void step(sqlite3_stmt* statement);
    qint64 lastId() const { return sqlite3_last_insert_rowid(m_file); }

private:
    [[noreturn]] void fail(const std::string& sql) const;
    sqlite3* m_file = nullptr;
};

/// Gives the copy the floor's indexes, and takes away the triggers by which the program follows changes.
void prepareFloor(const QString& path);

namespace sqlfloor {

/// The herd list: all shown fields of the animals that meet the condition, "" for all.
std::string list(const std::string& where);
inline const std::string inStock = "Abgangsdatum IS NULL";
/// The animals in stock, by their own index.
std::string stockList();
/// Counters, latest and next days of one animal.
std::string derive(qint64 id);
/// The same for all sows, with so many days from a farrowing to the next service.
std::string deriveAll(int tageFerkelungBelegung);
/// The status of the sows in stock that meet the condition; animals that left keep "".
std::string status(const std::string& where);
std::string iso(QDate date);
/// The different values of an indexed field, found by leaps.
std::string distinctValues(const std::string& table, const std::string& field);

}  // namespace sqlfloor
}  // namespace koben
