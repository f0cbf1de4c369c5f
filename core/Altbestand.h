#pragma once
// A herd in a database file of the old engine: what lies in it, and its way into this program's database. The file is
// read by store/OldFile, whose errors come through; it is never written.
#include <QDate>
#include <functional>
#include <optional>

#include "store/Action.h"

namespace koben {

/// Whose file it is: the predecessor's `koben.mdb`, or a genuine `koben2.mdb`.
enum class Altversion { Koben1, Koben2 };

/// Called now and then with how far the work has come, 0 to 100; false gives it up. May be empty.
using TakeoverProgress = std::function<bool(int percent)>;

/// What was found: a kind of animal or booking, or another table.
struct Altfund {
    QString was;
    qint64 anzahl = 0;
    QDate von, bis;   ///< of a kind of booking; invalid without a date
    QString hinweis;  ///< what could not be read, or does not come with it; "" where all is well
};

/// Reads the whole file and writes nothing. `db` says what there is a place for. Nothing where it was given up.
std::optional<std::vector<Altfund>> findAltbestand(const Database& db, const QString& path, Altversion version,
                                                   const TakeoverProgress& go);

struct Altuebernahme {
    qint64 tiere = 0, buchungen = 0;
    QStringList tierzeilen;  ///< each animal as "NUMMER / STALLNR", in the order of reading
    QStringList tabellen;    ///< copied whole, in that order
    QStringList hinweise;    ///< what could not be read, or had to be cut
    bool ganz = true;        ///< nothing but times of day was lost
};

/// Replaces everything in the database, within the caller's action. Nothing where it was given up: the action must not
/// be committed then, nor after an error.
///
/// From the predecessor each animal gets a new ID in the order of reading, and its bookings follow it, animal by animal
/// in the order of reading; litters are numbered anew, a loss bears its animal's number. Bookings of no animal stay
/// behind, but for the farm's own trade in piglets.
std::optional<Altuebernahme> takeOverKoben1(const Action& action, const QString& path, const TakeoverProgress& go);
/// From a `koben2.mdb` every row comes as it is, with its ID; counters go on where they stood.
std::optional<Altuebernahme> takeOverKoben2(const Database& db, const QString& path, const TakeoverProgress& go);

/// Makes the tables in an empty database as a `koben2.mdb` has them, with indexes and without first rows: a text field
/// as wide as the wider of both, further tables and fields of the file too. Columns that a start adds to older files
/// are left to it. False where it was given up.
bool makeTablesOf(const Database& db, const QString& path, const TakeoverProgress& go);

}  // namespace koben
