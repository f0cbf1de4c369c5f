#pragma once
// The numbers of an animal's litters: over her life, and within the calendar year.
#include "store/Database.h"

namespace koben {

/// Numbers the litters of one animal after the other, within the caller's transaction; prepared once. A litter whose
/// numbers are right is not written.
class Wurfnummern {
public:
    explicit Wurfnummern(const Database& db);
    void number(qint64 animal);

private:
    Statement m_litters, m_update;
};

/// The animals whose litters bear other numbers than they would get, ascending. Those whose litters bear none at all,
/// as the barn device books them, are left out: they get theirs with the next booking.
std::vector<qint64> misnumbered(const Database& db);

}  // namespace koben
