#include "plans/PV_Termine_Eingabe.h"

#include "ui/Families.h"

LAYOUT(PV_Termine_Eingabe) {
    return masterEntry(form, fields({field(form.bez[0], date(form.tdat, form.calender, form.calend)),
                                     field(form.bez[1], combo(form.kom, 24))}));
}
