#pragma once
// What a visit to the sample farm needs of the program.
#include <QDate>

#include "forms/Koben.h"

namespace koben {

/// The forms that work on a herd alone: none that reads or writes in places of the user's (backups, devices, files to
/// import, another program's data) or asks the update server.
const Catalogue& musterkatalog();

/// Makes the database of a farm as it would stand on this day, with work that is due. Throws DatabaseError.
void Musterbetrieb_anlegen(const QString& path, QDate today);

}  // namespace koben
