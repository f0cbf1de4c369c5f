#include "stock/PB_Bestandsregister.h"

#include "ui/Layout.h"

LAYOUT(PB_Bestandsregister) {
    std::vector<FieldRow> inputs;
    for (int i = 0; i < form.tdat.count(); ++i)
        inputs.push_back(field(form.bez[i], date(form.tdat[i], form.calender[i])));
    for (int i = 0; i < form.t.count(); ++i)
        inputs.push_back(field(form.bez[form.tdat.count() + i], text(form.t[i], 40)));
    return column({row({fields(inputs), spring(), sharedCalendar(form.calend)}), check(form.kon), check(form.konadd),
                   label(form.Label1), spring(),
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}
