#include "figures/PA_Grafiken.h"

#include "ui/Layout.h"

LAYOUT(PA_Grafiken) {
    const Piece choices = flow({plain(form.bez[0]), date(form.tdat[0], form.calender[0]), plain(form.bez[1]),
                                date(form.tdat[1], form.calender[1]), sharedCalendar(form.calend), plain(form.bez[2]),
                                text(form.ziel, 4)});
    const Piece shown = column({choices, drawing(form.bild) * 3, label(form.satz),
                                grid(form.gridli, QStringLiteral("Zu diesem Zeitraum gibt es keine Zeilen.")) * 1});
    return column({split(list(form.li), shown, 1, 3) * 1,
                   flow({button(form.drucken), button(form.datei[0]), button(form.datei[1]), button(form.datei[2]),
                         button(form.kopie[0]), button(form.kopie[1])}),
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}
