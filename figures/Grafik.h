#pragma once
// The plots of the farm. Each makes a table and a chart that shows its cells, and knows what stands behind each of
// them. To add one: a function in a unit of its own, and a row in Grafik.cpp.
#include <functional>
#include <span>

#include "figures/Chart.h"
#include "figures/Sauenbuch.h"
#include "figures/Zeitraum.h"

namespace koben {

/// What a plot is to show.
struct Grafikauftrag {
    Database db;
    qint32 heute = 0;
    Zeitraum period;    ///< no day of it after `heute`
    int tragezeit = 0;  ///< days from service to farrowing, as the cycle has it
    int ziel = 0;       ///< services a week that the farm aims at; 0 for none
};

/// The book of sows that all plots of the period can use.
std::shared_ptr<const Sauenbuch> bookFor(const Grafikauftrag& order);

struct Grafikinhalt {
    ChartTable table;
    Chart chart;
    /// Where a cell comes from, by row and column from 1; nothing for names and targets. Keeps what it needs.
    std::function<std::optional<Explanation>(int row, int column)> behind;
};

struct Grafik {
    const char* id;
    const char* title;
    const char* satz;   ///< what it shows, in German; %1 is the number of days from service to farrowing
    const char* empty;  ///< what is missing where it shows nothing
    Grafikinhalt (*make)(const Grafikauftrag& order);
};
/// In the order of the list.
std::span<const Grafik> Grafiken();
/// Null for another id.
const Grafik* grafik(QStringView id);

/// The plot with its title, and its sentence with the period.
Grafikinhalt Grafik_berechnen(const Grafik& plot, const Grafikauftrag& order);

/// Part of a whole in percent (or times another factor) with one decimal, half away from zero; Null of nothing.
Value share(qint64 part, qint64 whole, int factor = 100);

// the plots, each in the unit of its name
Grafikinhalt Grafik_Belegungen(const Grafikauftrag& order);
Grafikinhalt Grafik_Wurfverteilung(const Grafikauftrag& order);
Grafikinhalt Grafik_FerkelNachWurf(const Grafikauftrag& order);
Grafikinhalt Grafik_AbgesetztRollierend(const Grafikauftrag& order);
Grafikinhalt Grafik_Abferkelrate(const Grafikauftrag& order);
Grafikinhalt Grafik_Umrauschen(const Grafikauftrag& order);
Grafikinhalt Grafik_Nichtproduktiv(const Grafikauftrag& order);
Grafikinhalt Grafik_Verluste(const Grafikauftrag& order);
Grafikinhalt Grafik_Bestand(const Grafikauftrag& order);
Grafikinhalt Grafik_Eber(const Grafikauftrag& order);
Grafikinhalt Grafik_Wurfgroessen(const Grafikauftrag& order);
Grafikinhalt Grafik_Wochentage(const Grafikauftrag& order);

}  // namespace koben
