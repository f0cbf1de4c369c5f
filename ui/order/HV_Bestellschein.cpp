#include "order/HV_Bestellschein.h"

#include <QPushButton>

#include "ui/Layout.h"
#include "ui/Preview.h"

LAYOUT(HV_Bestellschein) {
    // The window's own, beside the roads that the form offers.
    auto* look = new QPushButton(QStringLiteral("&Vorschau..."));
    look->setObjectName(QStringLiteral("vorschau"));
    look->setAutoDefault(false);
    QObject::connect(look, &QPushButton::clicked, look, [look, &form] {
        const Drawing shown = form.druckbild();
        preview(*look->window(), form.koben, QStringLiteral("Bestellschein"), false, [&](QPrinter&) { return shown; });
    });
    auto& bez = form.bez;
    return column(
        {row({column({heading(form.Label1), label(form.besteller), spring()}) * 1,
              column({heading(form.Label2), label(form.empfänger), spring()}) * 1}),
         grid(form.gridli) * 1,
         row({spring(), fields({field(bez[0], plain(form.summe[0])), field(bez[1], plain(form.summe[1])),
                                field(bez[2], plain(form.summe[2]))})}),
         label(form.bemerkung), label(form.hinweis), row({plain(form.Label3), combo(form.komdrucker, 30), spring()}),
         buttons({button(form.hilfe), own(look)}, {button(form.ok), button(form.pdf), button(form.cmdschließen)})});
}
