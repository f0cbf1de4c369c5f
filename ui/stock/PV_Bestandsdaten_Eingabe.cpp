#include "stock/PV_Bestandsdaten_Eingabe.h"

#include "ui/Families.h"

LAYOUT(PV_Bestandsdaten_Eingabe) {
    return masterEntry(
        form, fields({field(form.bez[0], spin(form.tz[0], form.UpDown[0])),
                      field(form.bez[1], spin(form.tz[1], form.UpDown[1])), field(form.bez[2], combo(form.kom[0], 12)),
                      field(form.bez[3], combo(form.kom[1], 12)), field(form.bez[4], text(form.tz[2], 10)),
                      field(form.bez[5], spin(form.tz[3], form.UpDown[2])), field(form.bez[6], combo(form.kom[2], 12)),
                      field(form.bez[7], combo(form.kom[3], 12))}));
}
