// Weaned piglets a sow and year, twelve months back from the end of each month.
#include "figures/Kennzahltabelle.h"
#include "figures/Reihe.h"

namespace koben {

namespace {

constexpr int monthsBefore = 11;

/// The first day of the month eleven before that of this day.
qint32 yearBegin(qint32 day) {
    const QDate date = QDate::fromJulianDay(day);
    return static_cast<qint32>(QDate(date.year(), date.month(), 1).addMonths(-monthsBefore).toJulianDay());
}

/// From the first month of the first year to the last that ended in the period; empty where none did.
Zeitraum monthsOf(Zeitraum period) {
    std::vector<qint32> ends;
    for (const Zeitraum& month : aufteilen(Takt::Monat, period))
        if (const qint32 last = um(Takt::Monat, month.von).bis; period.contains(last)) ends.push_back(last);
    return ends.empty() ? Zeitraum() : Zeitraum{yearBegin(ends.front()), ends.back()};
}

}  // namespace

Grafikinhalt Grafik_AbgesetztRollierend(const Grafikauftrag& order) {
    enum { Monat = 1, Wert, Ferkel, Tage };
    constexpr Kz figure = Kz::AbgesetztSauJahr;
    const auto book = bookFor(order);
    Kennzahltabelle table(book, "Monat",
                          {{"Abgesetzte Ferkel je Sau und Jahr", 1}, {"Abgesetzte Ferkel", 0}, {"Produktionstage", 0}});
    // Piglets and days of a year are those of its months.
    const std::vector<Reihenpunkt> months = Reihe(*book, figure, Takt::Monat, monthsOf(order.period));
    for (size_t last = monthsBefore; last < months.size(); ++last) {
        Kennzahlwert year{.nr = figure};
        for (size_t month = last - monthsBefore; month <= last; ++month) {
            year.numerator += months[month].wert.numerator;
            year.denominator += months[month].wert.denominator;
        }
        table.addRow(months[last].name);
        table.set(Wert, year.rounded(), figure, {months[last - monthsBefore].period.von, months[last].period.bis});
        table.set(Ferkel, year.numerator);
        table.set(Tage, year.denominator);
    }
    Grafikinhalt content = table.finish();
    content.chart.panels = {{.unit = QStringLiteral("Abgesetzte Ferkel je Sau und Jahr"),
                             .classes = Classes::Months,
                             .series = {{Wert, Series::Kind::Line}},
                             .fromZero = false}};
    return content;
}

}  // namespace koben
