#pragma once
// Where a made herd goes: a database of the program with all bookings, or a CSV file for the import.
#include "core/Variablen.h"
#include "tools/herdengenerator/Herde.h"

namespace koben {

/// Makes the database file, which must not exist, with derived data and status up to date. Throws DatabaseError.
void writeDatabase(const Herde& herde, const QString& path);

/// Writes the animals in stock and those that left in the last year, Windows-1252 with CR LF and the heads of the
/// import; false where the file cannot be written.
bool writeCsv(const Herde& herde, const QString& path);

}  // namespace koben
