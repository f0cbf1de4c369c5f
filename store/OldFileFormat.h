#pragma once
// What koben-altdaten, which reads a database file of the old engine, writes to its standard output: a head and then
// messages of a type byte, a length of four bytes and so many bytes. Numbers are those of the machine. All tables are
// described first, then come the rows, table by table in the same order, and at last the end. Both sides include this.
#include <cstdint>

namespace koben::oldfile {

inline constexpr char Head[] = "KOBEN-Altdaten 1\n";  ///< without its closing 0

enum class Message : char {
    Failure = 'X',  ///< a Failure byte, and nothing follows
    Table =
        'T',  ///< rows by the table's own count (4), last number of its counter (4), readable (1), name, columns (2);
              ///< a column is its type (1), characters (2), counter or not (1), name; a name a length byte and UTF-8
    Rows = 'B',  ///< the rows of the next table begin
    Row = 'R',   ///< a cell a column
    End = 'E',   ///< of a table's rows: how many (4), how many could not be read (4)
    Done = 'Z'
};
enum class Failure : char { Unreadable = 'u', NotOld = 'f', NoCatalogue = 'k' };

/// A cell is a byte of its State and, for a value, so many bytes as its type has; a text four bytes of length and
/// UTF-8.
enum class State : char { Null = 0, Value = 1, Damaged = 2 };
enum class Type : char {
    Bool = 1,
    Byte,
    Short,
    Long,
    Money,  ///< ten-thousandths
    Single,
    Double,
    Date,  ///< days since 30.12.1899, the time as fraction
    Text,
    Memo,
    Other  ///< pictures and the like: told, but every cell is Null
};

/// Bytes of a value, 0 for those that tell their length.
constexpr uint32_t widthOf(Type type) {
    switch (type) {
        case Type::Bool:
        case Type::Byte:
            return 1;
        case Type::Short:
            return 2;
        case Type::Long:
        case Type::Single:
            return 4;
        case Type::Money:
        case Type::Double:
        case Type::Date:
            return 8;
        default:
            return 0;
    }
}

inline constexpr uint32_t MostTables = 2000, MostColumns = 255, MostRow = 32'000'000;
inline constexpr uint32_t MostMemo = 800'000;  ///< bytes of a text in UTF-8

}  // namespace koben::oldfile
