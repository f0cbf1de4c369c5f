// The stock over time by kinds of animals.
#include "core/PZ_Koben_Subs.h"
#include "figures/Bestandsgang.h"
#include "figures/Grafik.h"

namespace koben {

namespace {

/// The last day of each month, and of the period.
std::vector<qint32> daysOf(Zeitraum period) {
    std::vector<qint32> days;
    for (const Zeitraum& month : aufteilen(Takt::Monat, period)) days.push_back(month.bis);
    return days;
}

/// The animals of a kind that are in stock at the end of a day.
Explanation animalsOn(const Database& db, const char* kind, qint32 day) {
    Explanation told;
    told.columns = {
        {.key = QStringLiteral("nummer"), .title = QStringLiteral("Nummer")},
        {.key = QStringLiteral("zugang"), .title = QStringLiteral("Zugang"), .sort = Sort::Date},
        {.key = QStringLiteral("abgang"), .title = QStringLiteral("Abgang"), .sort = Sort::Date},
        {.key = QStringLiteral("wert"), .title = QStringLiteral("Wert"), .align = Align::Right, .sort = Sort::Number}};
    Statement row = db.prepare(
        QStringLiteral("select ID, Nummer, Zugangsdatum, Abgangsdatum from Sauen where Art = '%1' and (Zugangsdatum is "
                       "null or Zugangsdatum <= %2) and (Abgangsdatum is null or Abgangsdatum > %2)")
            .arg(QLatin1String(kind), Sql_Datum(Tag_als_Text(day))));
    while (row.next())
        told.lines.push_back(
            {{Value(Hochkomma_ersetzen(row.text(1))), row.value(2), row.value(3), Value(1)}, row.integer(0)});
    told.value = QString::number(told.lines.size());
    return told;
}

}  // namespace

Grafikinhalt Grafik_Bestand(const Grafikauftrag& order) {
    enum { Monat = 1, Sauen, Eber, Masttiere, Ferkel };
    const std::vector<qint32> days = daysOf(order.period);
    const std::vector<Bestand> stocks = Bestandsgang_holen(order.db, order.period.von)->on(days);
    Grafikinhalt content;
    content.table.columns = {{.key = QStringLiteral("monat"), .title = QStringLiteral("Monat")}};
    for (const char* title : {"Sauen", "Eber", "Masttiere", "Ferkel"}) {
        const QString name = QString::fromUtf8(title);
        content.table.columns.push_back(
            {.key = name.toLower(), .title = name, .align = Align::Right, .sort = Sort::Number, .decimals = 0});
    }
    for (size_t i = 0; i < days.size(); ++i) {
        Grid::Row cells{Value(Taktname(Takt::Monat, days[i]))};
        for (const int animals : stocks[i]) cells += Value(animals);
        content.table.rows.push_back(std::move(cells));
    }
    content.behind = [db = order.db, days](int row, int column) {
        if (row < 1 || row > static_cast<int>(days.size()) || column < Sauen || column > Ferkel)
            return std::optional<Explanation>();
        const auto kind = static_cast<size_t>(column - Sauen);
        return std::optional(animalsOn(db, Tierarten[kind], days[static_cast<size_t>(row) - 1]));
    };
    const auto panel = [](const char* unit, Series first, Series second) {
        return ChartPanel{.unit = QString::fromUtf8(unit), .classes = Classes::Months, .series = {first, second}};
    };
    content.chart.panels = {
        panel("Sauen und Eber", {Sauen, Series::Kind::Line, Look::First}, {Eber, Series::Kind::Line, Look::Second}),
        panel("Ferkel und Masttiere", {Ferkel, Series::Kind::Line, Look::First},
              {Masttiere, Series::Kind::Line, Look::Second})};
    return content;
}

}  // namespace koben
