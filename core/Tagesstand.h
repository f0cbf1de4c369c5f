#pragma once
// The herd as it stood at the end of a day, taken back from the bookings. Works on a copy of the database, which is
// only looked at afterwards.
#include <QDate>

#include "core/Zyklusdaten.h"

namespace koben {

/// How the folders of such copies begin, in the user's own folder.
inline const QString Standordner = QStringLiteral("Stand-");

/// Takes out of a copy what came after the day: bookings, animals that arrived or were born since, departures with what
/// was written with them; then derives counters, dates and status with that day as the last one. What no booking tells
/// (pens, names, kinds of animal that were changed since) stays as it is now, and so does what bears no date. A day
/// that is still to come takes out what is dated beyond it. False where it was given up: the copy is worth nothing
/// then.
bool Tagesstand_bilden(const Database& copy, const Variablen& v, QDate day, const CycleProgress& go = {});

}  // namespace koben
