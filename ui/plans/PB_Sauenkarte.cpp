#include "plans/PB_Sauenkarte.h"

#include "ui/Layout.h"

LAYOUT(PB_Sauenkarte) {
    return column(
        {grid(form.datali, QStringLiteral("Keine Sau im Bestand.")) * 1, label(form.Label1),
         flow({button(form.alletier[0]), button(form.alletier[1]), button(form.alletier[2]), button(form.alletier[3])}),
         row({plain(form.Label2), combo(form.komdrucker, 30), spring()}),
         buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}
