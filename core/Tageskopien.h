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

/// Puts a copy of the database into the folder, in the place of an earlier one of that day once it is whole and on the
/// disk, and removes what is no longer kept. "" or the reason as fileReason() words it; the earlier one stands then.
QString Tageskopie_machen(Workspace& workspace, const QString& database, const QString& folder, QDate day);

}  // namespace koben
