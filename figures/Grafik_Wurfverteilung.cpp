// The herd by the number of litters that each sow has had.
#include "figures/Kennzahlenlauf.h"
#include "figures/Kennzahltabelle.h"

namespace koben {

Grafikinhalt Grafik_Wurfverteilung(const Grafikauftrag& order) {
    enum { Nummer = 1, Sauen, Anteil };
    const auto book = bookFor(order);
    const Kennzahlenstand stand = compute(*book, std::span(&order.period, 1), parts(Kz::Wuerfe0)).front();
    Kennzahltabelle table(book, "Würfe", {{"Sauen", 0}, {"Anteil %", 1}});
    const int first = static_cast<int>(Kz::Wuerfe0), classes = static_cast<int>(Kz::Wuerfe10) - first;
    qint64 all = 0;
    for (int i = 0; i <= classes; ++i) all += stand[static_cast<Kz>(first + i)].numerator;
    for (int i = 0; i <= classes; ++i) {
        const auto figure = static_cast<Kz>(first + i);
        table.addRow(i == classes ? QStringLiteral("%1+").arg(i) : QString::number(i));
        table.set(Sauen, stand[figure].numerator, figure, order.period);
        table.set(Anteil, share(stand[figure].numerator, all));
    }
    Grafikinhalt content = table.finish();
    content.chart.panels = {{.unit = QStringLiteral("Sauen"),
                             .classTitle = QStringLiteral("Würfe bis zum letzten Tag des Zeitraums"),
                             .series = {{Sauen}}}};
    return content;
}

}  // namespace koben
