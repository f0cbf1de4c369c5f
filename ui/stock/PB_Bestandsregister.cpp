#include "stock/PB_Bestandsregister.h"

#include "ui/Layout.h"

LAYOUT(PB_Bestandsregister) {
    std::vector<FieldRow> farm;
    for (int i = 0; i < form.t.count(); ++i)
        farm.push_back(field(form.bez[form.tdat.count() + i], text(form.t[i], 40)));
    return column({row({fields({field(form.bez[0], date(form.tdat[0], form.calender[0])),
                                field(form.bez[1], date(form.tdat[1], form.calender[1]))}),
                        spring(), sharedCalendar(form.calend)}),
                   fields(farm), check(form.kon), check(form.konadd), label(form.Label1), spring(),
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}
