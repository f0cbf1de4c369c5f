#include "stock/PB_Bestand.h"

#include "ui/Layout.h"

LAYOUT(PB_Bestand) {
    const Piece groups =
        group(form.rahmen[0], column({list(form.libestand) * 1, row({button(form.bestandsoptionen), spring()}),
                                      flow({button(form.ok[0]), button(form.ok[2])})}));
    const Piece columns =
        group(form.rahmen[1],
              column({list(form.litiere) * 1, row({button(form.alletiere[0]), button(form.alletiere[1]), spring()})}));
    const Piece special = group(form.rahmen[2], column({radios(form.optibest), label(form.Label1), spring(),
                                                        flow({button(form.ok[1]), button(form.ok[3])})}));
    return column(
        {row({column({groups * 1, columns * 1}) * 2, special * 3}) * 1,
         row({plain(form.bez), date(form.tdat, form.calender, form.calend), check(form.konbestand), spring()}),
         check(form.konalter), group(form.optisort.frame, radios(form.optisort, true)), progress(form.meter),
         buttons({button(form.hilfe)}, {button(form.beenden)})});
}
