#pragma once
// A copy of the database for each day of use, beside the data folder: one for each of the last seven days of use, and
// for each of four weeks before them the last one.
#include <QDate>
#include <QStringList>

#include "store/Database.h"

namespace koben {

/// The folder of the copies of a data folder, with a separator at the end. It need not exist.
QString Tageskopienordner(const QString& dataFolder);
/// "koben2_2026-07-15.mdb"
QString Tageskopiename(QDate day);
/// The day of a copy by its name; invalid for any other file.
QDate Tageskopietag(const QString& path);
/// The names of the copies in a folder, the oldest first.
QStringList Tageskopien(const QString& folder);

/// Puts a copy of the database into the folder, in the place of an earlier one of that day once its pages have been
/// looked at and it is on the disk, and removes what is no longer kept. "" or what went wrong, as a whole sentence with
/// what to do; the earlier one stands then, and nothing half is left.
QString Tageskopie_machen(const QString& database, const QString& folder, QDate day);

/// The copy as the program ends: on a thread of its own, with half a second's patience. No connection of this process
/// is open on the database. What went wrong stands in the file `note` afterwards, which is gone when all went well; as
/// long as the copy is in the making it says that it was cut off, so that a killed program leaves that behind.
/// The process's end waits for the thread.
struct Tageskopieauftrag {
    QString database, folder;
    QDate day;
    QString note;
    bool alone = true;  ///< the folder's lock is ours; otherwise another run still makes its copy, and is waited for
};
void Tageskopie_beginnen(const Tageskopieauftrag& job);
/// Until no copy of this process is in the making.
void Tageskopie_abwarten();
/// What went wrong with the last copy, "" where nothing did or another program is still making it; told once.
QString Tageskopie_meldung(const QString& folder, const QString& note);

}  // namespace koben
