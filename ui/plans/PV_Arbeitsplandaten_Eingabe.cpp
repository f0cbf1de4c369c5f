#include "plans/PV_Arbeitsplandaten_Eingabe.h"

#include "ui/Families.h"

LAYOUT(PV_Arbeitsplandaten_Eingabe) {
    const Piece days =
        fields({field(form.bez[0], spin(form.tz[0], form.UpDown[0])),
                field(form.bez[1], spin(form.tz[1], form.UpDown[1])), field(form.bez[2], combo(form.kom[0], 24))});
    std::vector<Piece> lists;
    for (int i = 1; i <= 4; ++i) lists.push_back(combo(form.kom[i], 24));
    const Piece active =
        group(form.rahmen[0],
              column({fields({field(form.bez[3], lists[0]), field(form.bez[4], lists[1])}), label(form.bez[7])}));
    const Piece done =
        group(form.rahmen[1],
              column({fields({field(form.bez[5], lists[2]), field(form.bez[6], lists[3])}), label(form.bez[8])}));
    // The same words stand in both frames: a screen reader says which is which.
    for (int i = 0; i < 4; ++i)
        lists[static_cast<size_t>(i)].widget->setAccessibleName(form.rahmen[i / 2].text() + u' ' +
                                                                form.bez[3 + i].text());
    return masterEntry(form, column({days, active, done}));
}
