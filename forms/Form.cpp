#include "forms/Form.h"

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
    if (m_host) m_host->closing(*this);
}

void Form::act(const std::function<void()>& handler) {
    const auto work = [&] {
        if (handler) handler();
        settle();
    };
    if (!m_host || m_acting) return work();  // the action that this one is part of catches
    struct Acting {
        bool& flag;
        explicit Acting(bool& f) : flag(f) { flag = true; }
        ~Acting() { flag = false; }
    };
    const Acting acting(m_acting);
    m_host->attempt(work);
}

void Form::settle() {
    while (m_activate && !m_closed && m_host && m_host->inFront(*this)) {
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
