#pragma once
// What a start finds in the data folder that the user should know of, worded for the notice line.
#include "forms/Koben.h"

namespace koben {

/// To be called where there is no database and before one is made: keeps the log of the one that is gone under a name
/// of its own. "" where there never was one, otherwise what happened and which copy is the newest.
QString Fehlende_Datenbank(Koben& koben);

/// The newest copy of the database: a backup or what a compaction left, in the data folder or the backups' other
/// folder. With its day; "" where there is none.
QString Neueste_Kopie(const QString& folder);

/// What is wrong with the day: before the last start's, or more than a year after it. "" where it is likely.
QString Fragliches_Datum(QDate last, QDate today);

}  // namespace koben
