#pragma once
// How the early warning reads: its settings, its row in a list, where that comes from.
#include "core/Variablen.h"
#include "figures/Fruehwarnung.h"
#include "forms/Grid.h"

namespace koben {

/// As the farm has set it; what is not set or makes no sense is the default.
Warnvorgaben Warnvorgaben_lesen(const Variablen& settings);
/// The settings' texts in the order of their slots: slack, threshold, weeks, least weeks.
QStringList Warnvorgaben_als_Text(const Warnvorgaben& how);

/// "unauffällig", "Alarm", or why no warning is possible.
QString Warnzustand(const Warnung& watch);
/// "2026-W12, 2026-W30"
QString Warnwochentext(const Warnung& watch);

/// The columns of the list, and the row of a series.
std::vector<Column> Warnspalten();
Grid::Row Warnzeile(const Warnung& watch, const Rueckblick& past);

/// The weeks that the state rests on.
Explanation Warnung_herleiten(const Warnung& watch, const Rueckblick& past, const Warnvorgaben& how);
/// The bookings of the alarm weeks.
Explanation Alarmwochen_herleiten(const Sauenbuch& book, const Warnung& watch);

}  // namespace koben
