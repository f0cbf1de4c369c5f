// Of the services of each week, how many led to a litter.
#include "figures/Kennzahltabelle.h"
#include "figures/Reihe.h"

namespace koben {

Grafikinhalt Grafik_Abferkelrate(const Grafikauftrag& order) {
    enum { Woche = 1, Rate, Mittel, Abgeschlossen, Abgeferkelt, Offen };
    const auto book = bookFor(order);
    Kennzahltabelle table(book, "Woche",
                          {{"Abferkelrate %", 1},
                           {"Mittel des Zeitraums", 1},
                           {"Belegungen ohne offene", 0},
                           {"Abgeferkelt", 0},
                           {"Offen", 0}});
    const Kz figure = Kz::Abferkelrate;
    const std::vector<Reihenpunkt> weeks = Reihe(*book, figure, Takt::Woche, order.period);
    qint64 farrowed = 0, closed = 0;
    for (const Reihenpunkt& week : weeks) farrowed += week.wert.numerator, closed += week.wert.denominator;
    for (const Reihenpunkt& week : weeks) {
        table.addRow(week.name);
        table.set(Rate, week.wert.rounded(), figure, week.period);
        table.set(Mittel, share(farrowed, closed), figure, order.period);
        table.set(Abgeschlossen, week.wert.denominator);
        table.set(Abgeferkelt, week.wert.numerator);
        table.set(Offen, week.wert.leftOut.value_or(0));
    }
    Grafikinhalt content = table.finish();
    content.chart.panels = {{.unit = QStringLiteral("Abferkelrate in Prozent"),
                             .classes = Classes::Weeks,
                             .series = {{Rate, Series::Kind::Line}, {Mittel, Series::Kind::Line, Look::Target}},
                             .fromZero = false}};
    return content;
}

}  // namespace koben
