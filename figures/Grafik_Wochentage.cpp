// On which days of the week sows are served and farrow.
#include "figures/Faelle.h"

namespace koben {

Grafikinhalt Grafik_Wochentage(const Grafikauftrag& order) {
    enum { Tag = 1, Belegungen, Wuerfe };
    const QStringList days{QStringLiteral("Montag"),     QStringLiteral("Dienstag"), QStringLiteral("Mittwoch"),
                           QStringLiteral("Donnerstag"), QStringLiteral("Freitag"),  QStringLiteral("Samstag"),
                           QStringLiteral("Sonntag")};
    using Art = Fallspalte::Art;
    Faelle cases(bookFor(order), "Wochentag", days,
                 {{"Belegungen", Art::Summe, 0, "Belegung"}, {"Abferkelungen", Art::Summe, 0, "Wurf"}});
    const auto rowOf = [](qint32 day) { return day % 7 + 1; };  // day 0 of the count was a Monday
    for (const Sau& sow : cases.book().sauen()) {
        for (const qint32 day : sow.gruppen)
            if (order.period.contains(day)) cases.count(rowOf(day), Belegungen, sow, day);
        for (const Wurf& litter : sow.wuerfe)
            if (order.period.contains(litter.tag)) cases.count(rowOf(litter.tag), Wuerfe, sow, litter.tag);
    }
    Grafikinhalt content = cases.finish();
    content.chart.panels = {
        {.unit = QStringLiteral("Belegungen und Abferkelungen"),
         .series = {{Belegungen, Series::Kind::Bars, Look::First}, {Wuerfe, Series::Kind::Bars, Look::Second}}}};
    return content;
}

}  // namespace koben
