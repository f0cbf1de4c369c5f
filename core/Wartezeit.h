#pragma once
// The waiting time after treatments: until when an animal may not go to slaughter.
#include <QHash>
#include <QString>

#include "store/Database.h"

namespace koben {

/// The warning that a sale on `verkaufsdatum` (dd.mm.yyyy) falls inside the waiting time of a treatment; "" where none
/// runs. A waiting time that ends on the day of the sale still runs; of several the latest end is named.
QString Wartezeit_pruefen(const Database& db, qint64 kennung, const QString& nummer, const QString& verkaufsdatum);

/// Last day of the withdrawal period by animal id, for animals whose period ends at `first` or later.
QHash<qint64, qint32> Wartezeiten_lesen(const Database& db, qint32 first);

/// All animals whose latest block ends on `heute` (dd.mm.yyyy) or later, those that have left too, by number: Nummer,
/// Art, Gruppe, Stallnr, xdatum (the last day), tier (the ID), Abgangsdatum.
Table readWartezeittiere(const Database& db, const QString& heute);

}  // namespace koben
