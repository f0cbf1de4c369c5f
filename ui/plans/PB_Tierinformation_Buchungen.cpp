#include "plans/PB_Tierinformation_Buchungen.h"

#include "ui/Layout.h"

LAYOUT(PB_Tierinformation_Buchungen) {
    const Piece animals =
        group(form.optitieraus.frame,
              column({radios(form.optitieraus), row({button(form.nächster[0]), button(form.nächster[1]), spring()})}));
    const Piece columns =
        group(form.rahmen[0],
              flow({check(form.kontier[0]), check(form.kontier[1]), check(form.kontier[2]), check(form.kontier[3])}));
    const Piece bookings =
        group(form.optibuch.frame,
              column({radios(form.optibuch),
                      row({date(form.tdat[0], form.calender[0]), caption(QStringLiteral("bis")),
                           date(form.tdat[1], form.calender[1]), sharedCalendar(form.calend), spring()})}));
    std::vector<std::vector<Piece>> lines;
    for (int i = 0; i < form.li.count(); ++i) {
        if (i % 4 == 0) lines.emplace_back();
        lines.back().push_back(column({plain(form.bez[i]), list(form.li[i]) * 1}));
    }
    const Piece picks =
        group(form.rahmen[1],
              column({table(lines) * 1, row({button(form.alletier[0]), button(form.alletier[1]), spring()})}));
    return column({row({column({animals, columns, bookings, check(form.tierleer), check(form.kontiergruppe), spring()}),
                        picks * 1}) *
                       1,
                   check(form.konereignis), progress(form.meter),
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}
