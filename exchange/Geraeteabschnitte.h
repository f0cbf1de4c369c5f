#pragma once
// The bookings in the two files that the barn device and the program exchange: their sections, in the order of the
// files, and where each field stands. Both files are Windows-1252 with CR LF: a line with the number of lines, then the
// lines, fields parted by one tab.
#include <vector>

#include "core/Buchungen.h"

namespace koben {

extern const QString DateiZumGeraet;  ///< names in the data folder
extern const QString DateiVomGeraet;

/// What the text of a field becomes.
enum class Geraetewert {
    Text,         ///< its first characters, as many as the field holds
    Count,        ///< the number that it begins with, up to a comma; 16 bits
    LongCount,    ///< the same in 32 bits
    WholeWeight,  ///< the same as a weight
    Weight,       ///< with a decimal comma; also doses
    Amount,       ///< money with a decimal comma
    Service,      ///< N, otherwise K
    Check,        ///< N, otherwise J
    Day
};

struct Geraetefeld {
    const char* column;
    Geraetewert kind;
    int width = 0;  ///< of a text, characters
};

/// A section. A line holds the animal's number, the day, the fields; behind them the device keeps two fields of its
/// own, of which the last that counts is the mark of a booking made there.
struct Geraeteabschnitt {
    Buchungsart art;
    const char* word;                 ///< in the import's list, eleven characters
    std::vector<Geraetefeld> fields;  ///< position 2 and on
    int listed;                       ///< last position that the import's list shows
    bool mother = false;              ///< may belong to no animal, and keeps the number as the mother's
    bool pen = false;                 ///< before the mark stands the pen that the piglets go into

    int penAt() const { return 2 + static_cast<int>(fields.size()); }
    int markAt() const { return penAt() + (pen ? 1 : 0); }
};

const std::vector<Geraeteabschnitt>& Geraeteabschnitte();

}  // namespace koben
