#pragma once
// The file that goes to the barn device: animals, work plan, bookings, and the values that its lists of choice offer.
// Reads the database and makes bytes; writes nothing.
#include <QByteArray>
#include <QDate>
#include <functional>

#include "store/Database.h"

namespace koben {

/// What the user chose.
struct Exportauswahl {
    bool nurSauen = false;
    int sortierung = 0;  ///< number, day; day, number; stall, number, day
    QDate ab;            ///< oldest booking; invalid: all
};

enum class Exportergebnis { NoAnimals, Cancelled, Done };

inline constexpr int Exportschritte = 37;  ///< sections of the file

/// Fills `bytes` with the whole file. `workPlan` is the path of the work plan's lines, which may be missing. `goOn`
/// hears how many sections are done, with every row, and answers false to give it up; `bytes` is then empty.
Exportergebnis composeDeviceFile(const Database& db, const Exportauswahl& choice, const QString& workPlan,
                                 const std::function<bool(int sections)>& goOn, QByteArray& bytes);

}  // namespace koben
