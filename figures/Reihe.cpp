#include "figures/Reihe.h"

#include "figures/Kennzahlenlauf.h"

namespace koben {

std::vector<Reihenpunkt> Reihe(const Sauenbuch& book, Kz figure, Takt pace, Zeitraum period) {
    const std::vector<Zeitraum> periods = aufteilen(pace, period);
    const std::vector<Kennzahlenstand> stands = compute(book, periods, parts(figure));
    std::vector<Reihenpunkt> points;
    for (size_t i = 0; i < periods.size(); ++i)
        points.push_back({Taktname(pace, periods[i].von), stands[i].period, stands[i][figure]});
    return points;
}

}  // namespace koben
