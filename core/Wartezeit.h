#pragma once
// The waiting time after treatments: until when an animal may not go to slaughter.
#include <QString>

#include "store/Database.h"

namespace koben {

/// The warning that a sale on `verkaufsdatum` (dd.mm.yyyy) falls inside the waiting time of a treatment; "" where none
/// runs. A waiting time that ends on the day of the sale still runs; of several the latest end is named.
QString Wartezeit_pruefen(const Database& db, qint64 kennung, const QString& nummer, const QString& verkaufsdatum);

}  // namespace koben
