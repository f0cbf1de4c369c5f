#include "ui/QuickEntry.h"

#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>

#include "ui/Application.h"

namespace koben::ui {

namespace {

class Keys final : public QObject {
public:
    Keys(QLineEdit& edit, TextBox& line, Grid& list) : QObject(&edit), m_line(line), m_list(list) {
        edit.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        const bool press = event->type() == QEvent::KeyPress;
        if (!press && event->type() != QEvent::ShortcutOverride) return QObject::eventFilter(object, event);
        const auto& key = *static_cast<QKeyEvent*>(event);
        const bool taken = press ? pressed(key) : undoes(key);
        if (taken && !press) event->ignore();  // the window's shortcut then
        return taken || QObject::eventFilter(object, event);
    }

private:
    bool undoes(const QKeyEvent& key) const {
        return m_line.text().isEmpty() && (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo));
    }

    bool pressed(const QKeyEvent& key) {
        if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
            guarded([this] { m_line.key(Key::Enter); });
            return true;
        }
        if (key.key() != Qt::Key_Escape) return false;
        guarded([this] { m_line.text().isEmpty() ? m_list.setFocus() : m_line.edited(QString()); });
        return true;
    }

    TextBox& m_line;
    Grid& m_list;
};

}  // namespace

Piece quickEntry(TextBox& line, Label& sentence, Grid& list) {
    constexpr int characters = 34;
    const Piece field = text(line, characters);
    auto* edit = static_cast<QLineEdit*>(field.widget);
    edit->setPlaceholderText(QStringLiteral("123 f 14/1 gestern    ? zeigt mehr"));
    edit->setToolTip(QStringLiteral("Eine Buchung in einer Zeile (Strg+K); Eingabetaste bucht, ? zeigt, wie es geht"));
    new Keys(*edit, line, list);
    const Piece name = caption(QStringLiteral("Schnell"));
    const Piece whole = row({name, field, label(sentence) * 1}) * 0;  // the list has the spare room
    name.widget->setMinimumHeight(field.widget->sizeHint().height());
    for (QWidget* widget : {name.widget, field.widget})  // stay in sight beside a long sentence
        whole.widget->layout()->setAlignment(widget, Qt::AlignTop);
    return whole;
}

}  // namespace koben::ui
