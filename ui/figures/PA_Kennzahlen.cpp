#include "figures/PA_Kennzahlen.h"

#include "ui/GridView.h"
#include "ui/Layout.h"

LAYOUT(PA_Kennzahlen) {
    const Piece period = row({plain(form.bez[0]), date(form.tdat[0], form.calender[0]), plain(form.bez[1]),
                              date(form.tdat[1], form.calender[1]), spring()});
    const Piece figures = group(form.rahmen[0], column({period, sharedCalendar(form.calend), grid(form.gridli) * 1}));
    std::vector<Piece> settings;
    for (int i = 0; i < form.t.count(); ++i) {
        settings.push_back(plain(form.bez[form.tdat.count() + i]));
        settings.push_back(text(form.t[i], 5));
    }
    settings.push_back(button(form.standard));
    const Piece series = grid(form.liwarnung);
    static_cast<GridView*>(series.widget)->fitRows(WarnreihenAnzahl, WarnreihenAnzahl);
    series.widget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    const Piece watch = group(form.rahmen[1], column({series * 0, flow(settings)}));
    return column({figures * 1, watch * 0, label(form.Label1),
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}
