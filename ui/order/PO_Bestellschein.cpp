#include "order/PO_Bestellschein.h"

#include "ui/Layout.h"

LAYOUT(PO_Bestellschein) {
    auto& bez = form.bez;
    const Piece customer =
        group(form.rahmen, fields({field(bez[0], text(form.t[0], 16)), field(bez[1], text(form.t[1], 28)),
                                   field(bez[2], text(form.t[2], 28)), field(bez[3], text(form.t[3], 28)),
                                   field(bez[4], text(form.t[4], 8)), field(bez[5], text(form.t[5], 28)),
                                   field(bez[6], text(form.t[6], 20)), field(bez[7], text(form.t[7], 28))}));
    const Piece articles =
        column({grid(form.li) * 1, row({plain(bez[9]), spin(form.tz, form.UpDown), spring(), button(form.leeren)})});
    return column({row({column({customer, spring()}), articles * 1}) * 1, fields({field(bez[8], text(form.t[8], 60))}),
                   label(form.bezsumme), label(form.hinweis),
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.cmdschließen)})});
}
