#pragma once
// The rules of the report over bookings: what is read for a choice, and how it stands in the list.
#include <QStringList>
#include <array>

#include "forms/Koben.h"

namespace koben {

/// The tables of bookings in the order of the report.
inline constexpr std::array<const char*, 8> Buchungstabellen{"Belegung", "Ferkelung",    "Absetzung",  "Trächtigkeit",
                                                             "Verluste", "Verschiebung", "Behandlung", "Ferkelverkauf"};

/// The whole of a report in steps of its progress.
inline constexpr int Buchungsschritte = 16'000;

/// What a report is to show.
struct Buchungswahl {
    QString animals;                    ///< condition on `Sauen`
    std::array<bool, 4> columns{};      ///< Art, Nummer, Gruppe, Stallnr
    std::array<QStringList, 8> fields;  ///< of each table; without one the table is passed over
    QString from, to;                   ///< a period by its days; "" for all bookings
    bool latestOnly = false;            ///< of each animal and table the last booking
    bool emptyRows = false;             ///< between two animals
    bool byAnimal = false;              ///< events by animal, then day; otherwise by day, then animal
};

/// Table by table, each under its name and its fields' names. False where the user has cancelled.
bool Buchungen_auflisten(Grid& grid, const Database& db, const Buchungswahl& choice, Progress& progress);

/// All bookings as events in one list. False where the user has cancelled.
bool Ereignisse_auflisten(Grid& grid, const Database& db, const Buchungswahl& choice, Progress& progress);

}  // namespace koben
