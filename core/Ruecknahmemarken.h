#pragma once
// The marks on the animals' cards ("Geändert") when actions are taken back. Deriving sets one where a latest day of the
// animal becomes another and never takes one away, so how they came to be is gone through anew with the actions that
// count: on the days of the bookings, and on what each entry keeps of the animals.
#include <array>

#include "store/Journal.h"

namespace koben {

class Kartenmarken {
public:
    using Counts = std::function<bool(const Journal::Entry& entry)>;

    /// For actions that count no more, or again; `counts` says of every action whether it does now.
    Kartenmarken(const Database& db, const Journal& journal, const std::vector<qint64>& deeds, const Counts& counts);
    /// Within the caller's action, after deriving.
    void restore() const;

private:
    static constexpr size_t DayCount = 3;
    using Days = std::array<qint32, DayCount>;                        ///< the latest of each kind, 0 for none
    using Bookings = std::array<std::map<qint64, qint32>, DayCount>;  ///< days by row
    struct Booking {
        size_t kind;
        qint64 row;
        RowChange::Kind change;
        qint32 before, after;
    };
    struct Kept {
        Value mark;
        Days days;
    };
    /// What an entry did to one animal.
    struct Step {
        bool action = false, counts = false;
        bool made = false;                            ///< the animal herself
        std::optional<Kept> kept;                     ///< as she was before it
        std::optional<std::pair<Value, Value>> mark;  ///< before and after, where it wrote the mark itself
        std::vector<Booking> bookings;
    };
    using Steps = std::map<qint64, Step>;  ///< by entry

    void read(qint64 number, const Counts& counts);
    void readBooking(const RowChange& row, size_t kind, const std::function<Step*(qint64 animal)>& step);
    qint64 ownerOf(const RowChange& row);
    Bookings bookingsNow(qint64 animal) const;
    std::optional<Value> mark(qint64 animal, const Steps& steps) const;
    static void apply(const Booking& booking, Bookings& bookings, bool back);
    static bool derivedBehind(Steps::const_iterator at, const Steps& steps);

    const Database& m_db;
    const Journal& m_journal;
    std::map<qint64, Steps> m_animals;
    std::map<std::pair<QString, qint64>, qint64> m_owners;  ///< of bookings that are gone
};

}  // namespace koben
