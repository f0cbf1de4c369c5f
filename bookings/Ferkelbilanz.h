#pragma once
// The balance of a sow's piglets over all time: born alive, less lost, less sold. Cross-fostering plays no part in it.
#include "forms/Koben.h"

namespace koben {

/// The ID of the animal with this number, 0 where there is none.
qint64 Muttersau_ID(const Database& db, const QString& number);
qint64 Ferkelrest(const Database& db, qint64 sow);
/// True where the rest is not below 0 or the user books all the same; `sow` is what the question calls her.
bool Ferkelrest_bestaetigt(Koben& koben, double rest, const QString& sow);

}  // namespace koben
