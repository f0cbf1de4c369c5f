#pragma once
// Weanings that booked as lost what was missing of the litter: how many that were hangs on the bookings before them.
#include <map>
#include <set>

#include "store/Journal.h"

namespace koben {

/// Bookings of an action by which litters have become more or fewer piglets.
class Ferkelbewegungen {
public:
    explicit Ferkelbewegungen(const Database& db) : m_db(db) {}
    void take(const RowChange& row);
    /// Whether one of them is of the litter that was weaned on this day.
    bool concern(qint64 animal, qint32 weaned) const;

private:
    struct Movement {
        qint32 day;
        bool litter;  ///< the farrowing itself
    };
    qint32 litterOf(qint64 animal, qint32 day) const;

    const Database& m_db;
    std::map<qint64, std::vector<Movement>> m_days;
};

/// The weanings of an action that booked losses with them.
class Absetzverlust {
public:
    void take(const RowChange& row);
    bool restsOn(const Ferkelbewegungen& movements) const;

private:
    std::set<std::pair<qint64, qint32>> m_weaned, m_lost;  ///< by animal and day
};

}  // namespace koben
