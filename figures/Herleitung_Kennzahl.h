#pragma once
// Where a figure comes from, as F2 shows it.
#include "figures/Kennzahlen.h"
#include "forms/Grid.h"

namespace koben {

/// Sentence with variant, period and formula; numerator, denominator and value; the bookings or animals behind.
Explanation Kennzahl_herleiten(const Sauenbuch& book, Kz figure, Zeitraum period);

}  // namespace koben
