#pragma once
// What every control of a form has: a name in its form, visibility, views that follow it. Controls are models: a
// window shows them, a script works them, and both come through the same verbs of the user's hand.
#include <QString>
#include <algorithm>
#include <functional>
#include <vector>

namespace koben {

class Form;

/// What about a control changed; a view repaints that much.
enum class Aspect { Text, Items, Rows, Row, Marks, Columns, Enabled, Visible, Focus, Range, Wrong };

/// Keys that mean something to a form beyond typed characters.
enum class Key { Enter, Escape, Delete, F1, Insert };

class Control;

/// The form as its controls know it: they join it, and it runs what the user's hand means.
class ControlHost {
public:
    virtual ~ControlHost() = default;
    virtual Form& form() = 0;
    /// Runs a handler as the user's action; a failure of it is rolled back and told.
    virtual void act(const std::function<void()>& handler) = 0;
    /// The close box of the window, or Escape.
    virtual void closeBox() = 0;

protected:
    std::vector<Control*> m_controls;

private:
    friend class Control;
};

class Control {
public:
    /// Follows one control. Detaches itself when destroyed.
    class View {
    public:
        explicit View(Control& control) : m_control(&control) { control.m_views.push_back(this); }
        virtual ~View() {
            if (m_control) m_control->detach(this);
        }
        View(const View&) = delete;
        View& operator=(const View&) = delete;
        virtual void changed(Aspect aspect) = 0;

    private:
        friend class Control;
        Control* m_control;
    };

    Control(ControlHost& host, const QString& name, int index = -1);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Form& form() const { return m_host.form(); }
    const QString& name() const { return m_name; }
    int index() const { return m_index; }  ///< position in a control array, -1 outside of one
    QString address() const;               ///< name or name(index)

    bool enabled() const { return m_enabled; }
    void setEnabled(bool on);
    bool visible() const { return m_visible; }
    void setVisible(bool on);
    /// Holds what a rule refused; the window marks the field until the next check.
    bool wrong() const { return m_wrong; }
    void setWrong(bool on);
    /// On a page of a tab control; such a control can be worked only while its page is in front.
    void setPage(Control& tabs, int page) { m_tabs = &tabs, m_page = page; }
    bool onFrontPage() const { return !m_tabs || m_tabs->showsPage(m_page); }
    virtual bool showsPage(int) const { return true; }
    Control* tabs() const { return m_tabs; }
    int page() const { return m_page; }

    /// What a screen reader says, and the tooltip of buttons without a caption.
    const QString& hint() const { return m_hint; }
    void setHint(const QString& hint) { m_hint = hint; }

    /// Asks the window to put the focus here. The script runner has no use for it.
    void setFocus();

    /// A key on this control; true where it meant something. The base knows the form's keys: Escape cancels.
    virtual bool key(Key key);

    std::function<void(Key)> onKey;

protected:
    void notify(Aspect aspect);
    /// Runs a handler as the user's action: afterwards the form settles (activation, flags).
    void act(const std::function<void()>& handler) { m_host.act(handler); }

private:
    void detach(View* view) { std::erase(m_views, view); }
    ControlHost& m_host;
    QString m_name;
    int m_index;
    bool m_enabled = true;
    bool m_visible = true;
    bool m_wrong = false;
    Control* m_tabs = nullptr;
    int m_page = 0;
    QString m_hint;
    std::vector<View*> m_views;
};

}  // namespace koben
