#pragma once
// How the journal writes numbers, values and runs of row numbers into its fields: few bytes for what is small or empty.
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/Sqlite.h"

namespace koben::journal {

using Bytes = std::string;

void putNumber(Bytes& out, quint64 value);
/// Small ones of either sign are short.
void putSigned(Bytes& out, qint64 value);
void putText(Bytes& out, std::string_view utf8);
/// As SQLite hands it over; `real`: of a field of floats, in which SQLite may keep whole numbers.
void putValue(Bytes& out, sqlite3_value* value, bool real);
bool sameValues(sqlite3_value* a, sqlite3_value* b);

/// Reads what was put, in its order. Throws DatabaseError (State) where it is not what was put there.
class Reader {
public:
    explicit Reader(std::string_view bytes) : m_left(bytes) {}
    bool atEnd() const { return m_left.empty(); }
    char byte() { return take(1)[0]; }
    quint64 number();
    qint64 signedNumber();
    std::string_view text();
    /// With the types in which SQLite's own values are read.
    Value value();
    /// The bytes of the next value.
    std::string_view rawValue();

private:
    std::string_view take(size_t count);
    std::string_view m_left;
};

/// A set of row numbers as runs.
class Runs {
public:
    static Runs of(std::vector<qint64> rows);
    bool empty() const { return m_runs.empty(); }
    bool contains(qint64 row) const;
    bool meets(const Runs& other) const;
    void put(Bytes& out) const;
    static Runs read(Reader& in);

private:
    std::vector<std::pair<qint64, qint64>> m_runs;  // first and last, ascending
};

/// The field of which no two rows of a table are to have the same text, "" for none.
QString nameField(const QString& table);

/// Packed where that pays.
Bytes packed(Bytes plain);
Bytes unpacked(std::string_view bytes);

}  // namespace koben::journal
