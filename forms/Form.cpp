#include "forms/Form.h"

#include "forms/Koben.h"

namespace koben {

Form::Form(Koben& koben_, const QString& name, const QString& caption)
    : koben(koben_), m_name(name), m_caption(caption) {}

Form::~Form() = default;

void Form::setCaption(const QString& caption) {
    m_caption = caption;
    if (captionChanged) captionChanged();
}

Control* Form::find(QStringView name, int index) const {
    Control* only = nullptr;
    int members = 0;
    for (Control* control : m_controls) {
        if (name.compare(control->name(), Qt::CaseInsensitive) != 0) continue;
        if (control->index() == index) return control;
        only = control;
        ++members;
    }
    return members == 1 && index <= 0 ? only : nullptr;
}

void Form::closeBox() {
    if (cancelButton && cancelButton->enabled() && cancelButton->onClick)
        cancelButton->onClick();
    else if (!cancelButton)
        close();
}

void Form::close() {
    if (m_closed) return;
    m_closed = true;
    koben.screens.closing(*this);
}

void Form::settle() {
    while (m_activate && !m_closed && koben.front() == this) {
        m_activate = false;
        Activate();
    }
}

void Form::activate() {
    if (!m_shown) {
        m_shown = true;
        FirstShown();
        if (m_closed) return;
    }
    m_activate = false;
    Activate();
    settle();
}

}  // namespace koben
