#include "analytics/PB_Deckungsbeitrag.h"

#include "ui/Layout.h"

LAYOUT(PB_Deckungsbeitrag) {
    const Piece years =
        group(form.rahmen[0],
              row({plain(form.bez[0]), text(form.t[0], 5), plain(form.bez[1]), text(form.t[1], 5), spring()}));
    const Piece names =
        group(form.rahmen[2],
              flow({check(form.kontier[0]), check(form.kontier[1]), check(form.kontier[2]), check(form.kontier[3])}));
    const Piece animals =
        group(form.optitieraus.frame,
              column({radios(form.optitieraus), row({button(form.nächster[0]), button(form.nächster[1]), spring()})}));
    std::vector<Piece> kinds;
    for (int i = 0; i < form.konkost.count(); ++i) kinds.push_back(check(form.konkost[i]));
    std::vector<FieldRow> feed;
    for (int i = 0; i < form.tzahl.count(); ++i) feed.push_back(field(form.bez[2 + i], text(form.tzahl[i], 8)));
    kinds.push_back(spring());
    const Piece sums = group(
        form.rahmen[1],
        row({column(kinds),
             column({fields(feed), row({button(form.alletier[0]), button(form.alletier[1]), spring()}), spring()})}));
    return column({row({column({years, animals, names, spring()}), sums * 1}) * 1,
                   group(form.optiauswertung.frame, radios(form.optiauswertung)), progress(form.meter),
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}
