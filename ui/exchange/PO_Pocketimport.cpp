#include "exchange/PO_Pocketimport.h"

#include "ui/Layout.h"
#include "ui/exchange/DeviceFolder.h"

LAYOUT(PO_Pocketimport) {
    return column({row({label(form.Label1) * 1, check(form.koneindatum)}),
                   deviceFolder(form.geraet, QStringLiteral("Schritt 1 holt die Datei von dort, Schritt 2 übernimmt "
                                                            "ihre Buchungen. Die Vorschau zeigt sie vorher.")),
                   spring(),
                   buttons({button(form.hilfe)}, {button(form.ok[0]), button(form.vorschau), button(form.ok[1]),
                                                  button(form.cmdschließen)})});
}
