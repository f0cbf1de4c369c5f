#include "figures/PA_Grafiken.h"

#include <algorithm>

#include "ui/GridView.h"
#include "ui/Layout.h"

namespace koben::ui {

namespace {

/// The names of the plots, none of them cut.
Piece names(PA_Grafiken& form) {
    const Piece names = list(form.li);
    const QFontMetrics letters = names.widget->fontMetrics();
    int widest = 0;
    for (const Grafik& plot : Grafiken())
        widest = std::max(widest, letters.horizontalAdvance(QString::fromUtf8(plot.name)));
    names.widget->setMinimumWidth(widest + 2 * letters.height());
    return names;
}

/// Asks for a few rows; the window's spare height makes it more.
Piece cells(Grid& model) {
    constexpr int rows = 5;
    const Piece table = grid(model, QStringLiteral("Zu diesem Zeitraum gibt es keine Zeilen."));
    static_cast<GridView*>(table.widget)->fitRows(rows, rows);
    return table;
}

}  // namespace

}  // namespace koben::ui

LAYOUT(PA_Grafiken) {
    const Piece choices = flow({plain(form.bez[0]), date(form.tdat[0], form.calender[0]), plain(form.bez[1]),
                                date(form.tdat[1], form.calender[1]), sharedCalendar(form.calend), plain(form.bez[2]),
                                text(form.ziel, 4)});
    const Piece shown = column({choices, drawing(form.bild) * 3, label(form.satz), cells(form.gridli) * 1});
    return column({split(names(form), shown, 0, 1) * 1,
                   flow({button(form.drucken), button(form.datei[0]), button(form.datei[1]), button(form.datei[2]),
                         button(form.kopie[0]), button(form.kopie[1])}),
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}
