#pragma once
// The tiles of today's page: a figure of the latest rolling year beside the year before, the way from one to the other,
// and the farm's target.
#include "figures/Kennzahlen.h"
#include "figures/Zielwerte.h"
#include "forms/Zeichnung.h"

namespace koben {

/// How one value stands to another, by the figure's own direction.
enum class Urteil { Offen, Besser, Schlechter, Gleich };

struct Kachel {
    Kz figure = {};
    std::vector<Kennzahlwert> jahre;  ///< rolling years, a month apart: the year before first, the latest last
    QString ziel;                     ///< "" for none

    const Kennzahlwert& jetzt() const { return jahre.back(); }
    const Kennzahlwert& vorher() const { return jahre.front(); }
    /// The latest year against the one before; open where one of them is empty.
    Urteil urteil() const;
    /// "▲ besser: +0,4 zum Vorjahr 28,3"
    QString vorjahrtext() const;
    /// "Ziel 30,0: nicht erreicht"
    QString zieltext() const;
    /// All of it as a sentence.
    QString gesprochen() const;
};

/// The figures of the tiles, in their order.
std::span<const Kz> Kachelzahlen();
/// The rolling years that the tiles show, oldest first.
std::vector<Zeitraum> Kacheljahre(qint32 heute);
std::vector<Kachel> computeKacheln(const Sauenbuch& book, const Zielwerte& targets);

/// All tiles in as many columns as suit the room; each is an area by the figure's id.
Sketch drawKacheln(const std::vector<Kachel>& tiles, QSizeF room);

}  // namespace koben
