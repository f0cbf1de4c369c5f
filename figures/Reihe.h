#pragma once
// A figure week by week or month by month, for plots and what watches the farm.
#include "figures/Kennzahlen.h"

namespace koben {

struct Reihenpunkt {
    QString name;  ///< "2026-W53", "2026-12"
    Zeitraum period;
    Kennzahlwert wert;
};
/// One point for each week or month of the period, those without a value too; the first and last are cut with it.
/// The animals behind a point are the Beitraege() of its period.
std::vector<Reihenpunkt> Reihe(const Sauenbuch& book, Kz figure, Takt pace, Zeitraum period);

}  // namespace koben
