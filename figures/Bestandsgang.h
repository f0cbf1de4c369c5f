#pragma once
// How many animals of each kind were in stock on any day. Read once from all animals that can matter; afterwards only
// those that have changed are looked at.
#include <array>
#include <memory>
#include <vector>

#include "store/Database.h"

namespace koben {

inline constexpr std::array Tierarten{"Sau", "Eber", "Mast", "Ferkel"};
using Bestand = std::array<int, Tierarten.size()>;

class Bestandsgang {
public:
    /// Knows the stock from this day (Julian) on.
    Bestandsgang(const Database& db, qint32 from);
    qint32 from() const { return m_from; }
    /// Reads these animals again; those that are gone from the table count no more.
    void update(const Database& db, const std::vector<qint64>& ids);
    /// On each of these days (Julian, ascending, none before from()): arrived by then or without a day of arrival, not
    /// left or left later.
    std::vector<Bestand> on(const std::vector<qint32>& days) const;

private:
    struct Tier {
        qint32 id;
        qint32 from, to;  ///< in stock from the first day to before the second
        qint8 kind;       ///< -1 for none of the four, and for one that is gone from the table
    };
    Tier tierOf(const Statement& row);
    void count(const Tier& animal, int sign);

    const qint32 m_from;
    QString m_art;  ///< that was read last, and its kind: neighbours mostly share it
    qint8 m_kind = -1;
    std::vector<Tier> m_animals;  ///< by ID
    std::vector<Bestand> m_changes;
};

/// Of a file as it stands now, from this day on.
std::shared_ptr<const Bestandsgang> Bestandsgang_holen(const Database& db, qint32 from);

}  // namespace koben
