// Services a week against the target, and the farrowings that they lead to.
#include "figures/Faelle.h"

namespace koben {

namespace {

constexpr int weeksAhead = 17;

bool within(std::span<const qint32> days, qint32 after, qint32 before) {
    for (const qint32 day : days)
        if (day > after && day < before) return true;
    return false;
}

/// Whether by all that is known a service could lead to a farrowing on that day.
bool isExpected(const Sau& sow, qint32 service, qint32 due) {
    const bool gone = sow.abgang != 0 && sow.abgang < due;
    return !gone && !within(sow.gruppen, service, due) && !within(sow.nichtTragend, service, due);
}

}  // namespace

Grafikinhalt Grafik_Belegungen(const Grafikauftrag& order) {
    enum { Woche = 1, Belegungen, Ziel, Erwartet, Wuerfe };
    const Zeitraum shown{um(Takt::Woche, order.period.von).von, um(Takt::Woche, order.period.bis).bis + weeksAhead * 7};
    QStringList weeks;
    for (qint32 day = shown.von; day <= shown.bis; day += 7) weeks += Taktname(Takt::Woche, day);
    using Art = Fallspalte::Art;
    Faelle cases(bookFor(order), "Woche", weeks,
                 {{"Belegungen", Art::Summe, 0, "Belegung"},
                  {"Ziel", Art::Given},
                  {"Erwartete Abferkelungen", Art::Summe, 0, "Belegung, erwartet"},
                  {"Abferkelungen", Art::Summe, 0, "Wurf"}});
    const auto rowOf = [&](qint32 day) { return (day - shown.von) / 7 + 1; };
    const Zeitraum farrowings{order.period.von, shown.bis};
    for (const Sau& sow : cases.book().sauen()) {
        for (const qint32 day : sow.gruppen) {
            if (order.period.contains(day)) cases.count(rowOf(day), Belegungen, sow, day);
            const qint32 due = day + order.tragezeit;
            if (farrowings.contains(due) && isExpected(sow, day, due)) cases.count(rowOf(due), Erwartet, sow, day);
        }
        for (const Wurf& litter : sow.wuerfe)
            if (farrowings.contains(litter.tag)) cases.count(rowOf(litter.tag), Wuerfe, sow, litter.tag);
    }
    for (int row = 1; row <= weeks.size(); ++row) {
        const qint32 monday = shown.von + (row - 1) * 7;
        if (monday > order.period.bis)
            cases.leaveEmpty(row, Belegungen);
        else if (order.ziel > 0)
            cases.set(row, Ziel, order.ziel);
        if (monday > order.heute) cases.leaveEmpty(row, Wuerfe);
        if (monday > order.heute + order.tragezeit) cases.leaveEmpty(row, Erwartet);
    }
    Grafikinhalt content = cases.finish();
    using Kind = Series::Kind;
    content.chart.panels = {{.unit = QStringLiteral("Sauen je Woche"),
                             .classes = Classes::Weeks,
                             .series = {{Belegungen, Kind::Bars, Look::Soft},
                                        {Ziel, Kind::Line, Look::Target},
                                        {Erwartet, Kind::Line, Look::Second},
                                        {Wuerfe, Kind::Line, Look::Third}}}};
    return content;
}

}  // namespace koben
