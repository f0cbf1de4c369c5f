#pragma once
// A widget that follows a control. Widgets tell the control what the user did; the control tells the widget what
// changed; what the program sets never comes back as an event.
#include <QMetaObject>
#include <QString>
#include <QWidget>

#include "forms/Controls.h"

namespace koben::ui {

/// What a window asks of any bound widget.
class BoundWidget {
public:
    virtual ~BoundWidget() = default;
    virtual Control& control() const = 0;
};

/// The control that a widget, or the nearest widget around it, is bound to; nothing outside of any.
Control* controlOf(QWidget* widget);

/// A caption without its mnemonic sign.
QString plainCaption(QString caption);

/// What a screen reader says for a control: its hint, its caption, at last its name.
QString accessibleName(const Control& control);

/// Widget class W on control class C. A constructor ends with start().
template <class W, class C>
class Bound : public W, public BoundWidget, protected Control::View {
public:
    explicit Bound(C& model) : Control::View(model), m_model(model) {}
    C& model() const { return m_model; }
    Control& control() const override { return m_model; }

protected:
    void start() {
        W::setObjectName(m_model.address());
        W::setAccessibleName(accessibleName(m_model));
        if (!m_model.hint().isEmpty()) W::setToolTip(m_model.hint());
        W::setEnabled(m_model.enabled());
        if (!m_model.visible()) W::setVisible(false);
        refresh(Aspect::Text);
    }
    void changed(Aspect aspect) override {
        switch (aspect) {
            case Aspect::Enabled:
            case Aspect::Visible:
                // Soon, not at once: forms lock and unlock themselves within one action, and a widget that is locked
                // for a moment loses the focus for good.
                QMetaObject::invokeMethod(
                    this, [this] { showState(); }, Qt::QueuedConnection);
                break;
            case Aspect::Focus:
                showState();
                W::setFocus(Qt::OtherFocusReason);
                break;
            default:
                refresh(aspect);
        }
    }
    /// What can be worked now; a widget may have reasons of its own beside the control's.
    virtual bool usable() const { return m_model.enabled(); }
    void showState() {
        if (W::isEnabledTo(W::parentWidget()) != usable()) W::setEnabled(usable());
        if (W::isHidden() == m_model.visible()) W::setVisible(m_model.visible());
    }
    /// Shows the control's state anew.
    virtual void refresh(Aspect aspect) = 0;

private:
    C& m_model;
};

}  // namespace koben::ui
