#include "ui/Scanner.h"

#include <QApplication>
#include <QKeyEvent>
#include <algorithm>

#include "ui/Application.h"
#include "ui/Bound.h"

namespace koben::ui {

namespace {

constexpr quint64 Fast = 35;  // milliseconds between two keys; a hand takes twice as long
/// The system may wake up for the first key; without it the rest would be another number.
constexpr quint64 Awake = 150;
/// Two fingers may hit two keys at once: numbers of a few signs are a reading where no hand at all keeps up.
constexpr qsizetype Few = 3;
constexpr quint64 VeryFast = 10;

bool typedInto(QWidget& widget) {
    const auto* box = dynamic_cast<const TextBox*>(controlOf(&widget));
    return box && !box->readOnly;
}

}  // namespace

Scanner::Scanner(QWidget& widget, std::function<void(const QString&)> read)
    : QObject(&widget), m_widget(widget), m_read(std::move(read)) {
    m_clock.start();
    qApp->installEventFilter(this);
}

/// A key is delivered to the window first, then to the widget with the focus, then to those around it: counted once.
bool Scanner::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::KeyPress || object != QApplication::focusWidget()) return false;
    auto* focus = static_cast<QWidget*>(object);
    if (focus->window() != m_widget.window() || typedInto(*focus)) {
        m_typed.clear();
        return false;
    }
    return key(*static_cast<QKeyEvent*>(event));
}

bool Scanner::key(const QKeyEvent& event) {
    const QString text = event.text();
    const bool ends = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || event.key() == Qt::Key_Tab;
    if (text.isEmpty() && !ends) return false;  // Shift and its like
    // by the time at which the key was pressed: a busy program hears a hand's keys late and all at once
    const quint64 now = event.timestamp() > 0 ? event.timestamp() : static_cast<quint64>(m_clock.elapsed());
    const quint64 pause = now - std::exchange(m_last, now);
    if (pause > (m_typed.size() == 1 ? Awake : Fast)) m_typed.clear();
    if (m_typed.size() <= 1 && !ends)
        m_slowest = 0;
    else
        m_slowest = std::max(m_slowest, pause);
    if (!ends) {
        if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier) || !text.at(0).isPrint())
            m_typed.clear();
        else
            m_typed += text;
        return false;
    }
    const QString code = std::exchange(m_typed, {});
    if (code.isEmpty() || (code.size() <= Few && m_slowest > VeryFast)) return false;
    guarded([&] { m_read(code); });
    return true;
}

}  // namespace koben::ui
