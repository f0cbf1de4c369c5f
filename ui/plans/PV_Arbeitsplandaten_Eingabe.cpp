#include "plans/PV_Arbeitsplandaten_Eingabe.h"

#include "ui/Families.h"

LAYOUT(PV_Arbeitsplandaten_Eingabe) {
    // The same words stand in both frames: a screen reader says which is which.
    for (int i = 0; i < 4; ++i)
        form.kom[1 + i].setHint(form.rahmen[i / 2].text() + QStringLiteral(": ") + form.bez[3 + i].text());
    const Piece days =
        fields({field(form.bez[0], spin(form.tz[0], form.UpDown[0])),
                field(form.bez[1], spin(form.tz[1], form.UpDown[1])), field(form.bez[2], combo(form.kom[0], 24))});
    const Piece active =
        group(form.rahmen[0],
              column({fields({field(form.bez[3], combo(form.kom[1], 24)), field(form.bez[4], combo(form.kom[2], 24))}),
                      label(form.bez[7])}));
    const Piece done =
        group(form.rahmen[1],
              column({fields({field(form.bez[5], combo(form.kom[3], 24)), field(form.bez[6], combo(form.kom[4], 24))}),
                      label(form.bez[8])}));
    return masterEntry(form, column({days, active, done}));
}
