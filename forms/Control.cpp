#include "forms/Control.h"

namespace koben {

Control::Control(ControlHost& host, const QString& name, int index) : m_host(host), m_name(name), m_index(index) {
    host.m_controls.push_back(this);
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

void Control::setFocus() { notify(Aspect::Focus); }

bool Control::key(Key key) {
    if (onKey) {
        act([&] { onKey(key); });
        return true;
    }
    if (key == Key::Escape) {
        act([&] { m_host.closeBox(); });
        return true;
    }
    return false;
}

void Control::notify(Aspect aspect) {
    const auto views = m_views;  // a view may go while it is told
    for (View* view : views)
        if (std::find(m_views.begin(), m_views.end(), view) != m_views.end()) view->changed(aspect);
}

}  // namespace koben
