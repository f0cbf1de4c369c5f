#pragma once
// Between the database and the function of the cycle (core/Zyklus.h): reads what goes in, writes what came out and
// differs. Within the caller's transaction; where the user cancels, that is given up with all that was written.
#include <functional>
#include <optional>

#include "core/Umfang.h"
#include "core/Zyklus.h"

namespace koben {

/// Called now and then with how far the work has come, 0 to 100; false gives it up. May be empty.
using CycleProgress = std::function<bool(int percent)>;
inline bool goesOn(const CycleProgress& go, int percent) { return !go || go(percent); }

/// Which checks are read: the newest positive one of each animal, or all.
enum class Checks { LatestPositive, All };

/// Gathers the bookings of the scope up to and including the last day. The boars are among them where the scope is the
/// whole herd.
Zyklusbuchungen readBookings(const Database& db, const Umfang& umfang, qint32 lastDay,
                             Checks checks = Checks::LatestPositive);

/// A boar with the services under his present number, and how many are stored.
struct CountedBoar {
    Zyklusbuchungen::Eber eber;
    qint64 stored;
};
/// All boars; `services`: how often each spelling of a number stands in the services.
std::vector<CountedBoar> readBoars(const Database& db, const std::vector<std::pair<QString, qint64>>& services);

/// Counters and dates as they are stored, by ID; without animals that have the empty ones where the scope is all.
std::vector<Tierwerte> readStored(const Database& db, const Umfang& umfang);
enum class CardMarks { Set, Kept };
/// Writes the values that differ from the stored ones, both by ID. A latest day that becomes another one marks the
/// animal's card, unless marks are kept as they are. Tells `go` the way from 50 to 100 percent; false where it was
/// given up.
bool writeValues(const Database& db, const std::vector<Tierwerte>& stored, const std::vector<Tierwerte>& now,
                 const CycleProgress& go, CardMarks marks = CardMarks::Set);

/// An animal's status as stored, and what the present one hangs on.
struct StoredStatus {
    qint64 tier = 0;
    Zyklusstatus stored = Zyklusstatus::Unknown;
    Statuslage lage;
};
/// From the stored days and the checks. Without animals that have neither service nor farrowing, and therefore no
/// status, where the scope is all; but with those of them that bear one.
std::vector<StoredStatus> readStatus(const Database& db, const Umfang& umfang);
/// Writes what differs. False where it was given up.
bool writeStatus(const Database& db, const std::vector<StoredStatus>& animals, const CycleProgress& go);

/// All that bookings say of an animal.
struct Tierstand {
    qint64 tier = 0;
    Zykluswerte werte;
    Zyklusstatus status = Zyklusstatus::Ohne;
};
/// The derived state of every animal of the herd as of the last day, by ID: as it would be stored had nothing been
/// booked and no animal left since. Writes nothing.
std::vector<Tierstand> readCycle(const Database& db, const Zyklusvorgaben& vorgaben);

}  // namespace koben
