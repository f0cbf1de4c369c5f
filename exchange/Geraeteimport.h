#pragma once
// Writes what was planned for the bookings of the barn device.
#include "exchange/Geraeteplan.h"

namespace koben {

/// Writes the new bookings of the plan with what goes with them - new sows, piglets in pens, rows at the partner,
/// medicines, keywords - within the action. Litters are not numbered; the cycle is derived when the booking frame
/// closes. What does not fit throws DatabaseError.
void bookDevicePlan(const Action& action, const Geraeteplan& plan);

/// The lines of the import's list: what was written.
QString Importliste(const Geraeteplan& plan);

}  // namespace koben
