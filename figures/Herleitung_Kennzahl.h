#pragma once
// Where a figure comes from, as F2 shows it.
#include "figures/Kennzahlen.h"
#include "forms/Grid.h"

namespace koben {

/// What of a row is asked for.
enum class Spalte { Wert, Gezaehlt, Ausgelassen };

/// Sentence with variant, period and formula; numerator, denominator and value; the bookings or animals behind. Of what
/// is counted the cases in the denominator, of what is left out the bookings.
Explanation Kennzahl_herleiten(const Sauenbuch& book, Kz figure, Zeitraum period, Spalte column = Spalte::Wert);

}  // namespace koben
