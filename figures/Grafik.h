#pragma once
// The plots of the farm. Each makes a table and a chart that shows its cells, and knows what stands behind each of
// them. To add one: a function in a unit of its own, and a row in Grafik.cpp.
#include <span>

#include "figures/Grafikinhalt.h"

namespace koben {

struct Grafik {
    const char* id;
    const char* name;   ///< in the list
    const char* title;  ///< above the plot
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
