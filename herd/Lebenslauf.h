#pragma once
// An animal's life in the order of time: birth, arrival, what was booked for her and by her number, moves, changes of
// her fields, departure.
#include <QDateTime>
#include <vector>

#include "store/Database.h"

namespace koben {

/// A field of the animal's row as it was changed, or the writing of a booking, as a history knows it.
struct Aenderung {
    QString table;
    qint64 row = 0;  ///< ID in the table
    QDateTime when;
    enum class What { Added, Changed, Removed } what = What::Changed;
    QString field = {};               ///< of a change; "" otherwise
    QString before = {}, after = {};  ///< in the user's words, "leer" for nothing
};

struct Lebensereignis {
    qint32 tag = 0;  ///< Julian; 0 for a booking without a day, which stands first
    QString was;
    QString einzelheiten;
    QDateTime geschrieben = {};  ///< when it was entered; invalid where no history tells
    qint64 sau = 0;              ///< ID of the sow whom a boar served, 0 for the animal itself
};

/// What the file's journal knows of an animal and its bookings, up to and including a day; an invalid one: all. Without
/// what was taken back, and without what the program derives.
std::vector<Aenderung> Aenderungen_lesen(const Database& db, qint64 animal, QDate until);

/// `changes` of the animal and of its bookings, as far as a history is kept; in any order.
std::vector<Lebensereignis> Lebenslauf_lesen(const Database& db, qint64 animal, const std::vector<Aenderung>& changes);

}  // namespace koben
