#pragma once
// The page of the farm: one figure a measure over the marked sows, and how many animals were replaced in the period.
#include "analytics/Kennwert.h"
#include "forms/Grid.h"

namespace koben {

/// The page over the filled list, means and sums in its last two rows. `von` and `bis` as the user typed them; without
/// both the rates of replacement are left out.
QString Betriebsstatistik(const Database& db, const Grid& list, const QString& von, const QString& bis);

}  // namespace koben
