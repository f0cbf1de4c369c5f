#include "cycle/PV_Stichworte.h"

#include "ui/Layout.h"

LAYOUT(PV_Stichworte) {
    return column({segments(form.opti),
                   grid(form.li, QStringLiteral("Noch keine Stichwörter. „Neu“ legt das erste an.")),
                   label(form.hinweis),
                   buttons({button(form.neu), button(form.ändern), button(form.löschen)},
                           {button(form.comlisten), button(form.comhilfe), button(form.cmdschließen)})});
}
