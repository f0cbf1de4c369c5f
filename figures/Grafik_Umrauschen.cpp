// How long after a service sows come into heat again.
#include <algorithm>

#include "figures/Faelle.h"

namespace koben {

namespace {

constexpr int fewestDays = 4, mostDays = 46;

bool farrowedBetween(const Sau& sow, qint32 from, qint32 to) {
    return std::any_of(sow.wuerfe.begin(), sow.wuerfe.end(),
                       [&](const Wurf& litter) { return litter.tag > from && litter.tag < to; });
}

}  // namespace

Grafikinhalt Grafik_Umrauschen(const Grafikauftrag& order) {
    enum { Tage = 1, Belegungen };
    QStringList days;
    for (int day = fewestDays; day <= mostDays; ++day) days += QString::number(day);
    Faelle cases(bookFor(order), "Tage", days,
                 {{"Belegungen", Fallspalte::Art::Summe, 0, "Belegung, danach umgerauscht"}});
    for (const Sau& sow : cases.book().sauen())
        for (size_t i = 0; i + 1 < sow.gruppen.size(); ++i) {
            const qint32 service = sow.gruppen[i], next = sow.gruppen[i + 1], apart = next - service;
            if (!order.period.contains(service) || order.heute - service <= mostDays) continue;
            if (apart < fewestDays || apart > mostDays || farrowedBetween(sow, service, next)) continue;
            cases.count(apart - fewestDays + 1, Belegungen, sow, service);
        }
    Grafikinhalt content = cases.finish();
    content.chart.panels = {
        {.unit = QStringLiteral("Belegungen, nach denen die Sau umrauschte"),
         .classTitle = QStringLiteral("Tage bis zur nächsten Belegung"),
         .classes = Classes::Numbers,
         .series = {{Belegungen}},
         .bands = {{QStringLiteral("18"), QStringLiteral("24"), QStringLiteral("18 bis 24 Tage")},
                   {QStringLiteral("38"), QStringLiteral("46"), QStringLiteral("38 bis 46 Tage")}}}};
    return content;
}

}  // namespace koben
