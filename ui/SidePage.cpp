#include "ui/SidePage.h"

#include "forms/Koben.h"

namespace koben::ui {

SidePage::SidePage(std::unique_ptr<Form> page, Form& main, Control& list)
    : View(list), m_main(main), m_page(std::move(page)) {
    m_page->runBy(*this);
}

/// Soon, not at once: the list is read within an action, and may be read several times.
void SidePage::changed(Aspect aspect) {
    if (aspect != Aspect::Rows || std::exchange(m_waiting, true)) return;
    QMetaObject::invokeMethod(
        this, [this] { refresh(); }, Qt::QueuedConnection);
}

/// Loaded anew each time: the database may have been closed under it.
void SidePage::refresh() {
    m_waiting = false;
    if (m_main.closed() || !m_main.koben.inFront(m_main)) return;
    m_main.koben.attempt([this] {
        m_page->Load();
        m_page->activate();
    });
}

/// What the page's hand has opened returns to the window's form, which is brought up to date then.
bool SidePage::attempt(const std::function<void()>& work) {
    const bool done = m_main.koben.attempt(work);
    m_main.act([] {});
    return done;
}

}  // namespace koben::ui
