#include "exchange/HV_Updatemanager.h"

#include "ui/Layout.h"

LAYOUT(HV_Updatemanager) {
    return column({fields({field(QStringLiteral("Ihre Version:"), plain(form.labelakt[0])),
                           field(QStringLiteral("Aktuell verfügbare Version:"), plain(form.labelakt[1]))}),
                   pages({{QStringLiteral("Die Änderungen von Ihrer Version bis zur aktuellsten Version"),
                           text(form.Text2, 80) * 1},
                          {QStringLiteral("Alle Änderungen seit der Startversion"), text(form.Text1, 80) * 1}}) *
                       1,
                   label(form.hinweis), buttons({button(form.cmdschliessen)})});
}
