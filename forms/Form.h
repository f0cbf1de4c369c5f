#pragma once
// A form: its caption, its controls by name, and its life from load to close.
#include <QString>
#include <vector>

#include "forms/Controls.h"
#include "forms/Grid.h"

namespace koben {

struct Koben;

class Form {
public:
    Form(Koben& koben, const QString& name, const QString& caption);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const QString& name() const { return m_name; }
    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption);
    std::function<void()> captionChanged;

    /// In order of creation, which is the order of the tab key where a layout says nothing else.
    const std::vector<Control*>& controls() const { return m_controls; }
    /// By name (case-insensitive) and index; an array with one member answers with and without its index.
    Control* find(QStringView name, int index = -1) const;

    bool closed() const { return m_closed; }
    /// Ends the form; whoever opened it goes on.
    void close();
    /// The close box of the window, or Escape: what the cancel button does, or close().
    virtual void closeBox();
    /// Runs what the user's action left to do: activation after another form closed.
    void settle();

    Button* acceptButton = nullptr;  ///< Enter where no field takes it
    Button* cancelButton = nullptr;  ///< Escape and the close box
    QString helpTopic;

    // life, run by Koben::run
    virtual void Load() {}
    virtual void FirstShown() {}  ///< once, before the first Activate
    virtual void Activate() {}    ///< at the first showing and whenever a form opened from here has closed
    void activate();
    void activateLater() { m_activate = true; }

    Koben& koben;

private:
    friend class Control;
    QString m_name;
    QString m_caption;
    std::vector<Control*> m_controls;
    bool m_closed = false;
    bool m_shown = false;
    bool m_activate = false;
};

}  // namespace koben
