#include "bookings/PE_Bewegungsdaten.h"

#include "ui/Layout.h"

LAYOUT(PE_Bewegungsdaten) {
    const Piece animals =
        column({heading(form.Label1), grid(form.schweinli, QStringLiteral("Keine Tiere")), label(form.Label2),
                flow({combo(form.kom, 14), plain(form.Label3), check(form.konalt)})});
    const Piece bookings =
        column({grid(form.li, QStringLiteral("Noch keine Buchungen dieser Art. „Neu“ trägt die erste ein.")),
                flow({button(form.neu), button(form.ändern), button(form.löschen), button(form.kopieren)})});
    return column({segments(form.opti), split(animals, bookings, 1, 1),
                   buttons({button(form.nextschwein1[0]), button(form.nextschwein1[1])},
                           {button(form.comhilfe), button(form.cmdschließen)})});
}
