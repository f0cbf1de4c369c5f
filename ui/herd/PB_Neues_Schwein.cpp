#include "herd/PB_Neues_Schwein.h"

#include "ui/Layout.h"

LAYOUT(PB_Neues_Schwein) {
    auto& bez = form.bez;
    const Piece animal =
        column({fields({field(bez[0], combo(form.kom[0], 24)), field(bez[1], text(form.t[0], 24)),
                        field(bez[2], combo(form.kom[1], 24)), field(bez[3], combo(form.kom[2], 24)),
                        field(bez[4], date(form.tdat[3], form.calender[3])), field(bez[5], text(form.t[1], 24)),
                        field(bez[6], text(form.t[2], 24)), field(bez[7], date(form.tdat[0], form.calender[0])),
                        field(bez[8], combo(form.kom[3], 24)), field(bez[9], text(form.t[3], 36)),
                        field(bez[20], combo(form.kom[4], 6))}),
                check(form.konstatus), row({check(form.konamme), spring(), button(form.comlebenslauf)}), spring()});
    const Piece arrival =
        group(form.rahmen[1], fields({field(bez[10], date(form.tdat[1], form.calender[1])),
                                      field(bez[11], text(form.tz[0], 12)), field(bez[12], text(form.tz[1], 12)),
                                      field(bez[13], combo(form.kom[5], 24)), field(bez[14], combo(form.kom[6], 24))}));
    const Piece leaving =
        group(form.rahmen[2], fields({field(bez[15], date(form.tdat[2], form.calender[2])),
                                      field(bez[16], text(form.tz[2], 12)), field(bez[17], text(form.tz[3], 12)),
                                      field(bez[18], combo(form.kom[7], 24)), field(bez[19], combo(form.kom[8], 24))}));
    return column({row({animal, column({arrival, leaving, spring()}), sharedCalendar(form.calend)}),
                   group(form.rahmen[0], facts(form.bezinfo, bez, 21, 4)), spring(),
                   buttons({button(form.comhilfe), button(form.standard)},
                           {button(form.ok), button(form.oknächster[1]), button(form.oknächster[0]),
                            button(form.cmdabbrechen)})});
}
