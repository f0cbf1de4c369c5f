#include "plans/PB_Arbeitsplan.h"

#include "ui/Layout.h"

LAYOUT(PB_Arbeitsplan) {
    const Piece works =
        group(form.rahmen[0], column({list(form.liarplan), row({button(form.allearplan[0]), button(form.allearplan[1]),
                                                                spring(), button(form.comarbplanoptionen)})}) *
                                  1);
    const Piece period = group(
        form.rahmen[1],
        column({row({date(form.tdat, form.calender, form.calend), plain(form.Bezeichnung1), spring()}),
                flow({button(form.woche[0]), button(form.woche[1]), button(form.woche[2]), button(form.woche[3])})}));
    const Piece columns = group(
        form.rahmen[2], column({flow({check(form.kon[0]), check(form.kon[1]), check(form.kon[2]), check(form.kon[3])}),
                                row({text(form.t[0], 3), plain(form.bez[0]), spring()}),
                                row({text(form.t[1], 3), plain(form.bez[1]), spring()})}));
    return column({row({works, column({period, columns, group(form.optisort.frame, radios(form.optisort)),
                                       check(form.konnurweiblich), check(form.wartezeit), spring()}) *
                                   1}) *
                       1,
                   progress(form.meter),
                   buttons({button(form.hilfe)}, {button(form.ok[0]), button(form.ok[1]), button(form.beenden)})});
}
