#pragma once
// A form as a part of another one's window: it stands on no stack, and what it opens returns to the window's form.
#include <QObject>
#include <memory>

#include "forms/Form.h"

namespace koben::ui {

/// Loads the page when the list of the window's form is first read, and brings it up to date whenever that is read
/// anew.
class SidePage final : public QObject, private FormHost, private Control::View {
public:
    SidePage(std::unique_ptr<Form> page, Form& main, Control& list);
    Form& page() { return *m_page; }

private:
    void changed(Aspect aspect) override;
    void refresh();
    bool inFront(const Form&) const override { return false; }
    void closing(Form&) override {}
    bool attempt(const std::function<void()>& work) override;

    Form& m_main;
    std::unique_ptr<Form> m_page;
    bool m_waiting = false;
};

}  // namespace koben::ui
