#pragma once
// What becomes of the bookings of the barn device in this herd: judged one after the other, each with those before it,
// before anything is written. Reads the database and writes nothing.
#include <functional>

#include "exchange/Geraetedatei.h"

namespace koben {

enum class Geraeteurteil {
    Neu,
    Doppelt,        ///< the animal has a booking of the kind on the day, or the farm one where no animal is named
    Unvollständig,  ///< no day, or no animal
    Ausgelassen     ///< the user leaves it out
};

/// What the user wants of a booking of the file, by its place there.
enum class Geraetewunsch {
    Geprüft,    ///< as its verdict says
    Auslassen,  ///< it counts for nothing: another one of its kind, animal and day comes in instead
    Trotzdem    ///< also where it is doubled
};
using Geraetewahl = std::function<Geraetewunsch(size_t booking)>;

/// Animals of a plan: the ID of one of the herd, 0 for none, -1 for the first animal that the plan adds, -2 for the
/// second ...
using Plantier = qint64;

struct Geplant {
    const Geraetebuchung* booking;
    Geraeteurteil urteil = Geraeteurteil::Neu;
    Plantier animal = 0;
    bool mirrored = false;  ///< a cross-fostering with a row at the partner
    Plantier partner = 0;
    qint64 firstPiglet = 0;  ///< of those that go into the pen, among the plan's animals, from 0
};

/// Points into the file that it was made of.
struct Geraeteplan {
    std::vector<Geplant> entries;  ///< one a booking of the file, in its order
    QStringList numbers;           ///< of the animals that the plan adds, in the order of adding
    int count(Geraeteurteil urteil) const;
};

/// `onceADay`: an animal has one booking of a kind on a day. `add` is asked for each unknown number, as often as it
/// comes: whether she becomes a sow of the herd; a booking without her is one of no animal. Without `wanted` all are
/// judged alike.
Geraeteplan planDeviceBookings(const Database& db, const Geraetedatei& file, bool onceADay,
                               const std::function<bool(const QString& number)>& add, const Geraetewahl& wanted = {});

}  // namespace koben
