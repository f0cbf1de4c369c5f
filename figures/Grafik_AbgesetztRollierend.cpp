// Weaned piglets a sow and year, twelve months back from the end of each month.
#include "figures/Kennzahltabelle.h"

namespace koben {

namespace {

/// The twelve months that end with the month of this day.
Zeitraum yearUpTo(qint32 lastDay) {
    const QDate last = QDate::fromJulianDay(lastDay);
    const QDate first = QDate(last.year(), last.month(), 1).addMonths(-11);
    return {static_cast<qint32>(first.toJulianDay()), lastDay};
}

}  // namespace

Grafikinhalt Grafik_AbgesetztRollierend(const Grafikauftrag& order) {
    enum { Monat = 1, Wert, Ferkel, Tage };
    std::vector<Zeitraum> years;
    for (const Zeitraum& month : aufteilen(Takt::Monat, order.period))
        if (const qint32 last = um(Takt::Monat, month.von).bis; order.period.contains(last))
            years.push_back(yearUpTo(last));
    const auto book = bookFor(order);
    Kennzahltabelle table(book, "Monat",
                          {{"Abgesetzte Ferkel je Sau und Jahr", 1}, {"Abgesetzte Ferkel", 0}, {"Produktionstage", 0}});
    const Kz figure = Kz::AbgesetztSauJahr;
    for (const Kennzahlenstand& stand : Kennzahlen_berechnen(*book, years)) {
        table.addRow(Taktname(Takt::Monat, stand.period.bis));
        table.set(Wert, stand[figure].rounded(), figure, stand.period);
        table.set(Ferkel, stand[figure].numerator);
        table.set(Tage, stand[figure].denominator);
    }
    Grafikinhalt content = table.finish();
    content.chart.panels = {{.unit = QStringLiteral("Abgesetzte Ferkel je Sau und Jahr"),
                             .classes = Classes::Months,
                             .series = {{Wert, Series::Kind::Line}},
                             .fromZero = false}};
    return content;
}

}  // namespace koben
