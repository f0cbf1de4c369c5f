#pragma once
// The backup: a ZIP of the data folder's files with the database as a consistent copy, proved by reading it back, and
// the way back from it.
#include <QDate>
#include <optional>

#include "exchange/Zip.h"
#include "forms/Koben.h"

namespace koben {

/// The file name of a day's backup, and the pattern of all.
QString Sicherungsname(QDate day);
extern const QString Sicherungsmuster;
/// The day that a backup's file name bears (2026_07_15 or 2026-07-15); invalid where it bears none.
QDate Sicherungstag(const QString& path);

/// The files of the data folder, by name, but those that the running program keeps for itself.
QStringList Ordnerdateien(const QString& folder);
/// Whether a file goes into the backup, by its ending.
bool wirdGesichert(const QString& name);

/// What a packed database is compared with before it counts as a backup: its bytes alone, or also each of its pages and
/// the number of its rows.
enum class Proof { Bytes, Database };

/// Packs the data folder of the run into `target`, which takes its place once it is proved. False where it was given
/// up; throws a DatabaseError where it failed. Then the file that was there still is.
bool Sicherung_erstellen(Koben& koben, const QString& target, Proof proof, const ShareDone& go);

/// Why a backup with these files would not be read back, whatever the room; "" where it would.
QString Einwand(const std::vector<ZipEntry>& entries);

/// What a backup holds, as its database tells.
struct Sicherungsinhalt {
    QDate day;  ///< of its making
    qint64 animals = 0, bookings = 0;
};
Sicherungsinhalt Inhalt_zaehlen(const TableCounts& tables);
/// Opens the database of a backup beside the data. Nothing where it was given up; throws a DatabaseError where the
/// backup would be refused.
std::optional<Sicherungsinhalt> Sicherung_ansehen(const QString& zip, const QString& folder, const ShareDone& go);
/// The same of the database at work.
Sicherungsinhalt Bestand_jetzt(const Koben& koben);
/// In a sentence what would change if it were read back: "3 Tage älter, 41 Buchungen und 2 Tiere weniger als jetzt".
QString Unterschied(const Sicherungsinhalt& backup, const Sicherungsinhalt& now, const QDate& today);

/// Puts the files of a backup in the places of those in the data folder, all of them or none, after the present state
/// was kept as a ZIP in the user's own folder. All connections are closed then, and the program must end. False where
/// it was given up; throws a DatabaseError where it is refused or failed, and all is as before. In `left` the reason
/// why something is left to do for the next start, "" for nothing.
bool Sicherung_zurueckholen(Koben& koben, const QString& zip, const ShareDone& go, QString& left);

/// Copies a finished file, whole or not at all. "" where it was done, the reason (as fileReason() words it) where not;
/// nothing where it was given up. What a killed program left of such a copy in that folder goes.
std::optional<QString> Datei_uebertragen(const QString& from, const QString& to, const ShareDone& go);

}  // namespace koben
