#include "forms/Control.h"

#include "forms/Form.h"

namespace koben {

Control::Control(Form& form, const QString& name, int index) : m_form(form), m_name(name), m_index(index) {
    form.m_controls.push_back(this);
}

Control::~Control() {
    for (View* view : m_views) view->m_control = nullptr;
}

QString Control::address() const { return m_index < 0 ? m_name : QStringLiteral("%1(%2)").arg(m_name).arg(m_index); }

void Control::setEnabled(bool on) {
    if (on == m_enabled) return;
    m_enabled = on;
    notify(Aspect::Enabled);
}

void Control::setVisible(bool on) {
    if (on == m_visible) return;
    m_visible = on;
    notify(Aspect::Visible);
}

void Control::setWrong(bool on) {
    if (on == m_wrong) return;
    m_wrong = on;
    notify(Aspect::Wrong);
}

bool Control::onFrontPage() const { return !m_tabs || m_tabs->front() == m_page; }

void Control::setFocus() { notify(Aspect::Focus); }

bool Control::key(Key key) {
    if (onKey) {
        act([&] { onKey(key); });
        return true;
    }
    if (key == Key::Escape) {
        act([&] { m_form.closeBox(); });
        return true;
    }
    return false;
}

void Control::notify(Aspect aspect) {
    const auto views = m_views;  // a view may go while it is told
    for (View* view : views)
        if (std::find(m_views.begin(), m_views.end(), view) != m_views.end()) view->changed(aspect);
}

void Control::act(const std::function<void()>& handler) {
    if (handler) handler();
    m_form.settle();
}

}  // namespace koben
