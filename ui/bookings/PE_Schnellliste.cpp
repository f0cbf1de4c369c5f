#include "bookings/PE_Schnellliste.h"

#include "ui/Layout.h"

LAYOUT(PE_Schnellliste) {
    return column({label(form.Label1), row({button(form.einfügen), button(form.datei), label(form.urteil) * 1}) * 0,
                   text(form.t) * 1,
                   grid(form.li, QStringLiteral("Tippen Sie oben die Buchungen ein, oder fügen Sie sie ein.")) * 2,
                   buttons({button(form.comhilfe)}, {button(form.ok[1]), button(form.ok[0]), button(form.abbrechen)})});
}
