#include "figures/PA_Tagesblick.h"

#include "ui/GridView.h"
#include "ui/Layout.h"

LAYOUT(PA_Tagesblick) {
    constexpr int Overdue = 3;
    const Piece work = grid(form.liarbeit, QStringLiteral("Noch keine Arbeiten. Legen Sie unter „Verwaltung / "
                                                          "Arbeitsplandaten“ fest, was wann zu tun ist."));
    static_cast<GridView*>(work.widget)
        ->setUrgent([&list = form.liarbeit](int row) { return list.integer(row + 1, Overdue) > 0; },
                    QStringLiteral("überfällig"));
    const Piece figures = pages({{QStringLiteral("Kacheln"), drawing(form.kacheln)},
                                 {QStringLiteral("Zahlen und Ziele"), grid(form.likacheln)}});
    return column(
        {heading(form.Label1),
         row({group(QStringLiteral("Arbeit"), work) * 4, group(QStringLiteral("Sauen"), grid(form.listatus)) * 3,
              group(QStringLiteral("Wartezeiten bis Sonntag"),
                    grid(form.lisperren, QStringLiteral("Diese Woche endet keine Wartezeit."))) *
                  3}) *
             2,
         label(form.Label2), figures * 3, row({caption(form.optistart.frame), segments(form.optistart), spring()}),
         buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}
