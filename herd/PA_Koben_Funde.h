#pragma once
// What a start finds in the data folder that the user should know of, worded for the notice line.
#include "forms/Koben.h"

namespace koben {

/// A name that no file bears: `stem` and `ending`, with a number between them where need be.
QString Freier_Dateiname(const QString& stem, const QString& ending);

/// Moves the logs of a database that is gone to names of their own; these names.
QStringList Protokolle_aufheben(const QString& database, QDate today);

/// To be called where there is no database and before one is made: keeps the log of the one that is gone under a name
/// of its own. "" where there never was one, otherwise what happened and which copy is the newest.
QString Fehlende_Datenbank(Koben& koben);

/// The newest copy of the database: a backup or what a compaction left, in the data folder or the backups' other
/// folder. With its day; "" where there is none.
QString Neueste_Kopie(const QString& folder);

/// What is wrong with the day: before the last start's, or more than a year after it. "" where it is likely.
QString Fragliches_Datum(QDate last, QDate today);

/// The copy of the day, as the program ends; what keeps it from being made is told at the next start, once.
void Tageskopie_ablegen(Koben& koben);
/// Why the last one could not be made, worded for the notice line; "" where it was. Asked once.
QString Fehlende_Tageskopie(Koben& koben);

}  // namespace koben
