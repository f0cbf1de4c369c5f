#include "exchange/PO_Pocketexport.h"

#include "ui/Layout.h"
#include "ui/exchange/DeviceFolder.h"

LAYOUT(PO_Pocketexport) {
    return column(
        {label(form.Label1),
         row({group(form.optisort.frame, radios(form.optisort)),
              column({group(form.rahmen, row({date(form.tdat, form.calender, form.calend), spring()})),
                      check(form.konnursauen), spring()}) *
                  1}),
         deviceFolder(
             form.geraet,
             QStringLiteral("Schritt 1 erstellt die Datei und kopiert sie dorthin, Schritt 2 kopiert sie allein.")),
         group(
             QStringLiteral("Telefon ohne Kabel"),
             row({caption(QStringLiteral("Es holt die Seite für den Stall im WLAN ab.")) * 1, button(form.hausnetz)})),
         progress(form.meter), spring(),
         buttons({button(form.hilfe)}, {button(form.ok[0]), button(form.ok[1]), button(form.beenden)})});
}
