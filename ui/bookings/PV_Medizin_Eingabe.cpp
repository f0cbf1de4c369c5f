#include "bookings/PV_Medizin_Eingabe.h"

#include "ui/Families.h"

LAYOUT(PV_Medizin_Eingabe) {
    auto& bez = form.bez;
    return masterEntry(form, fields({field(bez[0], text(form.tz[0], 12)), field(bez[1], combo(form.kom[0], 6)),
                                     field(bez[2], spin(form.tz[1], form.UpDown)), field(bez[3], text(form.tz[2], 12)),
                                     field(bez[4], combo(form.kom[1], 24)), field(bez[5], combo(form.kom[2], 24))}));
}
