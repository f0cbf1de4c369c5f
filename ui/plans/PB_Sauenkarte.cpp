#include "plans/PB_Sauenkarte.h"

#include <QPushButton>

#include "ui/Layout.h"
#include "ui/Preview.h"

namespace koben::ui {

namespace {

/// A look at the card of the current sow, or of the first marked one.
void previewCard(QWidget& parent, PB_Sauenkarte& form) {
    const auto marked = form.datali.markedRows();
    const int row = form.datali.row() > 0 ? form.datali.row() : marked.empty() ? 0 : marked.front();
    if (row == 0)
        return form.koben.message(
            QStringLiteral("Bitte markieren Sie zuerst die Sau, deren Sauenkarte Sie ansehen möchten."));
    DrawingRecorder card(false);
    form.draw(card, row);
    preview(parent, form.koben, QStringLiteral("Sauenkarte %1").arg(form.datali.cell(row, u"Nummer")), false,
            [&](QPrinter&) { return card.drawing; });
}

}  // namespace

}  // namespace koben::ui

LAYOUT(PB_Sauenkarte) {
    // The window's own, beside the road that the form offers.
    auto* look = new QPushButton(QStringLiteral("&Vorschau..."));
    look->setObjectName(QStringLiteral("vorschau"));
    look->setAutoDefault(false);
    QObject::connect(look, &QPushButton::clicked, look, [look, &form] { previewCard(*look->window(), form); });
    return column(
        {grid(form.datali, QStringLiteral("Keine Sau im Bestand.")) * 1, label(form.Label1),
         flow({button(form.alletier[0]), button(form.alletier[1]), button(form.alletier[2]), button(form.alletier[3])}),
         row({plain(form.Label2), combo(form.komdrucker, 30), spring()}),
         buttons({button(form.hilfe), own(look)}, {button(form.ok), button(form.beenden)})});
}
