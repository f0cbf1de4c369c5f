// The two screens that print sow cards.
#include "plans/PB_Sauenkarte.h"

#include <QPushButton>

#include "plans/PB_Sauenkarte_gezeichnet.h"
#include "ui/Layout.h"
#include "ui/Preview.h"

namespace koben::ui {

namespace {

/// A look at the cards of these rows, or of the current sow where there are none.
void previewCards(QWidget& parent, Sauenkartendruck& form, std::vector<int> rows) {
    if (rows.empty() && form.datali.row() > 0) rows = {form.datali.row()};
    if (rows.empty())
        return form.koben.message(
            QStringLiteral("Bitte markieren Sie zuerst die Sau, deren Sauenkarte Sie ansehen möchten."));
    DrawingRecorder cards(false);
    form.look(cards, rows);
    const QString name = rows.size() == 1
                             ? QStringLiteral("Sauenkarte %1").arg(form.datali.cell(rows.front(), u"Nummer"))
                             : QStringLiteral("Sauenkarten");
    preview(parent, form.koben, name, false, [&](QPrinter&) { return cards.drawing; });
}

/// The window's own, beside the road that the form offers.
Piece previewButton(Sauenkartendruck& form, std::function<std::vector<int>()> rows) {
    auto* look = new QPushButton(QStringLiteral("&Vorschau..."));
    look->setObjectName(QStringLiteral("vorschau"));
    look->setAutoDefault(false);
    QObject::connect(look, &QPushButton::clicked, look,
                     [look, &form, chosen = std::move(rows)] { previewCards(*look->window(), form, chosen()); });
    return own(look);
}

Piece sows(Sauenkartendruck& form) { return grid(form.datali, QStringLiteral("Keine Sau im Bestand.")) * 1; }

Piece marks(Sauenkartendruck& form) {
    return flow(
        {button(form.alletier[0]), button(form.alletier[1]), button(form.alletier[2]), button(form.alletier[3])});
}

Piece printer(Sauenkartendruck& form) { return row({plain(form.Label2), combo(form.komdrucker, 30), spring()}); }

}  // namespace

}  // namespace koben::ui

LAYOUT(PB_Sauenkarte) {
    const auto one = [&form] {
        const auto marked = form.datali.markedRows();
        return form.datali.row() > 0 || marked.empty() ? std::vector<int>() : std::vector<int>{marked.front()};
    };
    return column({sows(form), label(form.Label1), marks(form), printer(form),
                   buttons({button(form.hilfe), previewButton(form, one)}, {button(form.ok), button(form.beenden)})});
}

LAYOUT(PB_Sauenkarte_gezeichnet) {
    const Piece facts = row({column({label(form.Label3), list(form.livorrat) * 1}) * 1,
                             column({spring(), button(form.aufnehmen), button(form.entfernen), spring()}),
                             column({label(form.Label4), list(form.lifelder) * 1}) * 1,
                             column({spring(), button(form.verschieben[0]), button(form.verschieben[1]), spring()})});
    return column(
        {split(column({sows(form), label(form.Label1), marks(form)}),
               column({group(form.optigröße.frame, segments(form.optigröße)), facts * 1, printer(form)}), 1, 1) *
             1,
         buttons({button(form.hilfe), previewButton(form, [&form] { return form.datali.markedRows(); })},
                 {button(form.ok), button(form.beenden)})});
}
