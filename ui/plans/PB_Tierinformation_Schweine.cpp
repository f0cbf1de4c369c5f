#include "plans/PB_Tierinformation_Schweine.h"

#include "ui/Layout.h"

LAYOUT(PB_Tierinformation_Schweine) {
    const Piece animals =
        group(form.optitieraus.frame,
              column({radios(form.optitieraus), row({button(form.nächster[0]), button(form.nächster[1]), spring()})}));
    const Piece presence =
        group(form.optibetrieb.frame,
              column({row({date(form.tdat, form.calender, form.calend), spring()}), radios(form.optibetrieb)}));
    const Piece columns =
        group(form.rahmen,
              column({list(form.liste) * 1, row({button(form.alletier[0]), button(form.alletier[1]), spring()})}));
    return column(
        {row({column({animals, presence, fields({field(form.bez, combo(form.komsort, 24))}), spring()}), columns * 1}) *
             1,
         progress(form.meter), buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}
