#pragma once
// Where an amount of the contribution margin comes from.
#include "analytics/Deckungsbeitrag.h"
#include "forms/Erklaerung.h"

namespace koben {

/// A list of the contribution margin as it stands.
struct Deckungsliste {
    Database db;
    Deckungsauswahl choice;
    std::vector<Deckungsbeitrag::Zeile> rows;
    Betraege totals{};
    int names = 0;           ///< columns before the first amount
    std::vector<int> items;  ///< of the columns behind them
    bool years = true;       ///< a row is a year, else an animal
};

/// Tells of each amount which bookings and animals stand behind it, and of a total which rows. They are read when they
/// are asked for. The row behind the last is the closing row.
std::function<std::optional<Explanation>(int row, int column)> Deckungsbeitrag_herleiten(Deckungsliste list);

}  // namespace koben
