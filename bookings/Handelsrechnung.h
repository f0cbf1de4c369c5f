#pragma once
// The arithmetic between count, price, money and weights of the piglet trade, as it runs when a field is left. It works
// on the texts of the fields, exactly, and rounds each result to two decimals, half away from zero.
#include <QString>
#include <array>

namespace koben {

/// Fields of a sale at a sow, in the order of its screen.
struct Verkaufsfelder {
    enum { Anzahl, Preis, Einnahmen, Stückgewicht, Gesamtgewicht, Zahl };
};
/// Fields of a purchase or sale of the farm, in the order of its screen.
struct Handelsfelder {
    enum { Einkauf, Verkauf, Preis, Einnahmen, Ausgaben, Stückgewicht, Gesamtgewicht, Zahl };
};
using Verkaufszahlen = std::array<QString, Verkaufsfelder::Zahl>;
using Handelszahlen = std::array<QString, Handelsfelder::Zahl>;

/// What follows from leaving field `i`.
void Verkauf_nachrechnen(Verkaufszahlen& tz, int i);
/// What follows from leaving field `i`. A purchase empties the sale and the other way round.
void Handel_nachrechnen(Handelszahlen& tz, int i);

}  // namespace koben
