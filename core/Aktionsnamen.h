#pragma once
// The names of actions as an undo list and a history show them: what was done, to whom, and when.
#include <QString>

#include "core/Buchungen.h"

namespace koben {

/// A number with its noun: "1 Sau", "3 Sauen". Both forms stand in the case that the sentence asks for.
QString counted(qint64 count, const char* one, const char* many);

/// Animals of one kind by its name in the herd list, "Sau" or "Mast"; any other name, or none: "12 Tiere".
QString countedAnimals(qint64 count, const QString& art = {});

/// A new booking: "Belegung 123, 17.07.2026". Dates are dd.mm.yyyy; without a number the booking stands alone.
QString Buchungsname(Buchungsart art, const QString& number, const QString& date);
/// What became of a booking: "Belegung 123 vom 17.07.2026 gelöscht"; `done` is the end of it.
QString Buchungsname(Buchungsart art, const QString& number, const QString& date, const QString& done);

/// The same of the piglet trade, whose bookings are purchases and sales: a purchase is called "Ferkeleinkauf".
QString Handelsname(const QString& name, bool bought, bool sold);

/// Several actions by the name of one: "Belegung 123, 17.07.2026 und 2 weitere".
QString andOthers(const QString& name, size_t actions);

}  // namespace koben
