#include "output/PA_Zwischenliste.h"

#include "ui/Layout.h"

LAYOUT(PA_Zwischenliste) {
    return column(
        {grid(form.gridli, QStringLiteral("Die Liste ist leer.")),
         buttons({button(form.comtext), button(form.comexcel), button(form.roexplorer[0]), button(form.roexplorer[1])},
                 {button(form.hilfe), button(form.cmdschließen)})});
}
