// Days on which sows neither carry nor suckle, by what ends them.
#include <utility>

#include "figures/Kennzahltabelle.h"

namespace koben {

Grafikinhalt Grafik_Nichtproduktiv(const Grafikauftrag& order) {
    enum { Art = 1, JeSau, Tage, Anteil };
    static constexpr std::pair<Kz, const char*> kinds[] = {{Kz::NptBisBelegung, "Absetzen bis Belegung"},
                                                           {Kz::NptBisUmrauschen, "Belegung bis Umrauschen"},
                                                           {Kz::NptBisAbgang, "bis Abgang"},
                                                           {Kz::NptOffen, "offen"}};
    const auto book = bookFor(order);
    const Kennzahlenstand stand = Kennzahlen_berechnen(*book, order.period);
    Kennzahltabelle table(book, "Art", {{"Tage je Sau und Jahr", 1}, {"Tage", 0}, {"Anteil %", 1}});
    qint64 all = 0;
    for (const auto& [figure, name] : kinds) all += stand[figure].numerator;
    for (const auto& [figure, name] : kinds) {
        const qint64 days = stand[figure].numerator;
        table.addRow(QString::fromUtf8(name));
        table.set(JeSau, share(days * 365, stand.productionDays, 1), figure, order.period);
        table.set(Tage, days, figure, order.period);
        table.set(Anteil, share(days, all));
    }
    Grafikinhalt content = table.finish();
    content.behind = [behind = std::move(content.behind), cells = content.table, days = stand.productionDays](
                         int row, int column) {
        std::optional<Explanation> told = behind(row, column);
        if (!told || column != JeSau) return told;
        told->sentence += QStringLiteral(" Diese Tage mal 365, geteilt durch %1 Produktionstage.").arg(days);
        told->numerator = std::exchange(told->value, cells.text(row, JeSau));
        for (Column& heading : told->columns)
            if (heading.title == u"Wert") heading.title = QStringLiteral("Zähler");
        return told;
    };
    content.chart.panels = {{.unit = QStringLiteral("Tage je Sau und Jahr"), .series = {{JeSau}}, .level = true}};
    return content;
}

}  // namespace koben
