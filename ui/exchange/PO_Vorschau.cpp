#include "exchange/PO_Vorschau.h"

#include <QKeyEvent>

#include "ui/Application.h"
#include "ui/Layout.h"

namespace koben::ui {

namespace {

/// The space bar takes the marked bookings, or leaves them.
class SpaceBar final : public QObject {
public:
    SpaceBar(QWidget& list, Grid& model) : QObject(&list), m_model(model) { list.installEventFilter(this); }

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Space)
            return QObject::eventFilter(object, event);
        guarded([this] { m_model.doubleClick(); });
        return true;
    }

private:
    Grid& m_model;
};

}  // namespace

}  // namespace koben::ui

LAYOUT(PO_Vorschau) {
    const Piece list = grid(form.li, QStringLiteral("Keine Buchungen vom Gerät."));
    new SpaceBar(*list.widget, form.li);
    list.widget->setAccessibleDescription(
        QStringLiteral("Die Leertaste nimmt die markierten Buchungen oder lässt sie aus."));
    return column({row({label(form.Label1) * 1, check(form.koneindatum)}) * 0, list * 1, label(form.summe),
                   flow({button(form.übernehmen), button(form.auslassen), button(form.gleiche), button(form.zuordnen)}),
                   buttons({button(form.hilfe)}, {button(form.listen), button(form.ok), button(form.cmdschließen)})});
}
