#include "analytics/PB_Statistiken.h"

#include "ui/Layout.h"

LAYOUT(PB_Statistiken) {
    const auto page = [&](ListBox& measures, const std::vector<Piece>& runs) {
        return column({list(measures) * 1, flow(runs)});
    };
    const auto span = [&](int frame, int first) {
        return group(form.rahmen[frame], row({plain(form.bez[first]), text(form.t[first - 2], 5),
                                              plain(form.bez[first + 1]), text(form.t[first - 1], 5), spring()}));
    };
    const Piece sows = page(form.li1, {button(form.ok[0]), button(form.ok[1]), button(form.ok[2])});
    const Piece boars = page(form.li2, {button(form.ok[3]), button(form.ok[4])});
    const Piece measures =
        group(form.rahmen[0], column({tabs(form.sstab, {sows, boars}) * 1,
                                      row({button(form.alletier[0]), button(form.alletier[1]), spring()})}));
    const Piece period =
        group(form.rahmen[1], column({check(form.kon[0]),
                                      fields({field(form.bez[0], date(form.tdat[0], form.calender[0])),
                                              field(form.bez[1], date(form.tdat[1], form.calender[1]))}),
                                      sharedCalendar(form.calend)}));
    return column({row({measures * 3, column({period, span(2, 2), span(3, 4), label(form.Label1), spring(),
                                              button(form.ok[5]), button(form.ok[6])}) *
                                          2}) *
                       1,
                   progress(form.meter), buttons({button(form.hilfe)}, {button(form.beenden)})});
}
