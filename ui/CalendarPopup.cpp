#include "ui/CalendarPopup.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QScreen>
#include <algorithm>

#include "ui/Look.h"
#include "ui/TextViews.h"

namespace koben::ui {

namespace {

/// The date field that a calendar button stands beside; the widget itself where there is none.
QWidget* fieldBeside(QWidget* widget) {
    if (!widget || dynamic_cast<LineView*>(widget) || !widget->parentWidget()) return widget;
    for (QObject* sibling : widget->parentWidget()->children())
        if (auto* line = dynamic_cast<LineView*>(sibling)) return line;
    return widget;
}

}  // namespace

CalendarPopup::CalendarPopup(Calendar& model, QWidget* field)
    : View(model), m_model(model), m_field(field), m_month(new QCalendarWidget(this)) {
    setWindowFlags(Qt::Popup);
    setAttribute(Qt::WA_NoMouseReplay);  // else the press that closes it opens it again by its button
    setAttribute(Qt::WA_WindowPropagation);
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    setObjectName(model.address());
    setAccessibleName(QStringLiteral("Kalender"));
    m_month->setLocale(QLocale(QStringLiteral("de_DE")));
    m_month->setFirstDayOfWeek(Qt::Monday);
    m_month->setVerticalHeaderFormat(QCalendarWidget::ISOWeekNumbers);
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(1, 1, 1, 1);
    box->addWidget(m_month);
    const auto picked = [this](QDate day) {
        m_model.pick(day);
        m_model.setVisible(false);
    };
    QObject::connect(m_month, &QCalendarWidget::clicked, this, picked);
    QObject::connect(m_month, &QCalendarWidget::activated, this, picked);
}

void CalendarPopup::changed(Aspect aspect) {
    if (aspect != Aspect::Visible) return;
    if (m_model.visible())
        dropDown();
    else
        hide();
}

void CalendarPopup::dropDown() {
    QWidget* const field = fieldBeside(m_field ? m_field.data() : parentWidget()->window()->focusWidget());
    if (!field || !field->isVisible()) return;
    m_from = field;
    const QSignalBlocker quiet(m_month);
    showDaysOff(*m_month);
    m_month->setSelectedDate(m_model.date().isValid() ? m_model.date() : QDate::currentDate());
    adjustSize();
    QPoint at = field->mapToGlobal(QPoint(0, field->height()));
    if (const QScreen* screen = field->screen()) {
        const QRect free = screen->availableGeometry();
        at.setX(std::clamp(at.x(), free.left(), std::max(free.left(), free.right() - width())));
        if (at.y() + height() > free.bottom()) at.setY(field->mapToGlobal(QPoint()).y() - height());
    }
    move(at);
    show();
    m_month->setFocus();
}

void CalendarPopup::hideEvent(QHideEvent* event) {
    QFrame::hideEvent(event);
    m_model.setVisible(false);
    // back into the field, unless the user went on elsewhere
    if (QWidget* field = m_from; field && field->window()->isVisible()) {
        const auto* button = dynamic_cast<BoundWidget*>(field->window()->focusWidget());
        if (button && dynamic_cast<Button*>(&button->control())) field->setFocus(Qt::TabFocusReason);
    }
    m_from = nullptr;
}

void CalendarPopup::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QFrame::keyPressEvent(event);
}

}  // namespace koben::ui
