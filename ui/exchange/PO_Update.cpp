#include "exchange/PO_Update.h"

#include "ui/Layout.h"

LAYOUT(PO_Update) {
    const Piece choice = column({fields({field(QStringLiteral("&Laufwerk"), combo(form.lw, 24)),
                                         field(QStringLiteral("&Ordner"), text(form.pfad, 36))}),
                                 list(form.verzeichnis) * 1});
    const Piece found = column({label(form.befund), grid(form.lifund, QStringLiteral("In diesem Ordner wurde keine "
                                                                                     "alte Datenbank gefunden.")) *
                                                        1});
    return column({heading(form.Label1), split(choice, found, 2, 3) * 3, label(form.Label2), text(form.t, 80) * 2,
                   buttons({button(form.start), button(form.koben2), button(form.beenden)})});
}
