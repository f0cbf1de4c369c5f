#pragma once
// The month that drops down below a date field.
#include <QCalendarWidget>
#include <QFrame>
#include <QPointer>

#include "ui/Bound.h"

namespace koben::ui {

class CalendarPopup final : public QFrame, public BoundWidget, private Control::View {
public:
    /// `field` is what it drops down from; without one it is whatever has the focus of the window.
    CalendarPopup(Calendar& model, QWidget* field);
    Control& control() const override { return m_model; }
    QCalendarWidget& month() { return *m_month; }

protected:
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void changed(Aspect aspect) override;
    void dropDown();
    Calendar& m_model;
    QPointer<QWidget> m_field;
    QPointer<QWidget> m_from;  ///< the field that it hangs on now
    QCalendarWidget* m_month;
};

}  // namespace koben::ui
