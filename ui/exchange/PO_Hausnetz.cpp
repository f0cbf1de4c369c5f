#include "exchange/PO_Hausnetz.h"

#include "ui/Layout.h"

LAYOUT(PO_Hausnetz) {
    return column(
        {label(form.Label1),
         row({drawing(form.bild) * 1, column({fields({field(QStringLiteral("Dieser &Rechner"), combo(form.kom, 36)),
                                                      field(QStringLiteral("&Adresse"), text(form.adresse, 60))}),
                                              label(form.stand),
                                              group(QStringLiteral("Empfangen und noch nicht eingelesen"),
                                                    grid(form.li, QStringLiteral("Noch nichts empfangen."))) *
                                                  1}) *
                                          2}),
         buttons({button(form.hilfe)}, {button(form.einlesen), button(form.entfernen), button(form.beenden)})});
}
