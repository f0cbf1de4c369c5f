// What sows bear and wean by the number of their litters.
#include "figures/Faelle.h"

namespace koben {

namespace {
constexpr int mostLitters = 10;  // these and more stand together
}  // namespace

Grafikinhalt Grafik_FerkelNachWurf(const Grafikauftrag& order) {
    enum { Nummer = 1, Lebend, Abgesetzt, Wuerfe, Abgesetzte };
    QStringList numbers;
    for (int number = 1; number < mostLitters; ++number) numbers += QString::number(number);
    numbers += QStringLiteral("%1+").arg(mostLitters);
    using Art = Fallspalte::Art;
    Faelle cases(bookFor(order), "Wurf", numbers,
                 {{"Lebend geboren je Wurf", Art::Mittel, 1, "Wurf, lebend geboren"},
                  {"Abgesetzt je Wurf", Art::Mittel, 1, "Wurf, abgesetzt"},
                  {"Würfe", Art::Summe, 0, "Wurf"},
                  {"Abgesetzte Würfe", Art::Summe, 0, "Wurf, abgesetzt"}});
    for (const Sau& sow : cases.book().sauen())
        for (size_t i = 0; i < sow.wuerfe.size(); ++i) {
            const Wurf& litter = sow.wuerfe[i];
            const int row = std::min(static_cast<int>(i) + 1, mostLitters);
            if (order.period.contains(litter.tag)) {
                cases.count(row, Lebend, sow, litter.tag, litter.lebend);
                cases.count(row, Wuerfe, sow, litter.tag);
            }
            if (litter.abgesetztAm != 0 && order.period.contains(litter.abgesetztAm)) {
                cases.count(row, Abgesetzt, sow, litter.tag, litter.abgesetzt);
                cases.count(row, Abgesetzte, sow, litter.tag);
            }
        }
    Grafikinhalt content = cases.finish();
    content.chart.panels = {
        {.unit = QStringLiteral("Ferkel je Wurf"),
         .classTitle = QStringLiteral("Wurfnummer"),
         .series = {{Lebend, Series::Kind::Bars, Look::First}, {Abgesetzt, Series::Kind::Bars, Look::Second}}}};
    return content;
}

}  // namespace koben
