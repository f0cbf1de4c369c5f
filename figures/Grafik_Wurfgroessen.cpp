// How large litters are.
#include <algorithm>

#include "figures/Faelle.h"

namespace koben {

Grafikinhalt Grafik_Wurfgroessen(const Grafikauftrag& order) {
    enum { Ferkel = 1, Gesamt, Lebend };
    const auto book = bookFor(order);
    constexpr int most = 40;  // these and more stand together
    int largest = 0;
    const auto each = [&](const auto& use) {
        for (const Sau& sow : book->sauen())
            for (const Wurf& litter : sow.wuerfe)
                if (order.period.contains(litter.tag))
                    use(sow, litter, std::clamp(litter.gesamt, 0, most), std::clamp(litter.lebend, 0, most));
    };
    each([&](const Sau&, const Wurf&, int all, int living) { largest = std::max({largest, all, living}); });
    QStringList sizes;
    for (int size = 0; size <= largest; ++size)
        sizes += QString::number(size) + (size == most ? QStringLiteral("+") : QString());
    using Art = Fallspalte::Art;
    Faelle cases(book, "Ferkel", sizes,
                 {{"Würfe nach gesamt geborenen", Art::Summe, 0, "Wurf"},
                  {"Würfe nach lebend geborenen", Art::Summe, 0, "Wurf"}});
    each([&](const Sau& sow, const Wurf& litter, int all, int living) {
        cases.count(all + 1, Gesamt, sow, litter.tag);
        cases.count(living + 1, Lebend, sow, litter.tag);
    });
    Grafikinhalt content = cases.finish();
    content.chart.panels = {
        {.unit = QStringLiteral("Würfe"),
         .classTitle = QStringLiteral("Ferkel im Wurf"),
         .classes = Classes::Numbers,
         .series = {{Lebend, Series::Kind::Bars, Look::First}, {Gesamt, Series::Kind::Bars, Look::Second}}}};
    return content;
}

}  // namespace koben
