#pragma once
// A form: its caption, its controls by name, and its life from load to close.
#include <QString>
#include <vector>

#include "forms/Controls.h"
#include "forms/Grid.h"

namespace koben {

struct Koben;

/// Who runs a form: knows which one is in front, hears of its closing, and catches what its handlers throw.
class FormHost {
public:
    virtual ~FormHost() = default;
    virtual bool inFront(const Form& form) const = 0;
    virtual void closing(Form& form) = 0;
    /// What stands behind the caption of every form now, "" for nothing.
    virtual QString captionMark() const { return {}; }
    /// Runs a piece of work whose failure must not go further: it is rolled back, told to the user, and false.
    virtual bool attempt(const std::function<void()>& work) = 0;
};

class Form : public ControlHost {
public:
    Form(Koben& koben, const QString& name, const QString& caption);
    ~Form() override;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const QString& name() const { return m_name; }
    /// With the day that the herd is shown as of, unless that is today.
    QString caption() const { return m_host ? m_caption + m_host->captionMark() : m_caption; }
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
    void closeBox() override;
    /// Runs what the user's hand means. Where it fails, what it wrote is rolled back and the user is told; the form
    /// stays as it is, with what was typed. What a handler of a form above it throws never comes here.
    void act(const std::function<void()>& handler) override;
    Form& form() final { return *this; }
    /// Runs what the user's action left to do: activation after another form closed.
    void settle();

    Button* acceptButton = nullptr;  ///< Enter where no field takes it
    Button* cancelButton = nullptr;  ///< Escape and the close box
    QString helpTopic;

    // life, run by Koben::run
    /// Only for the herd as it is: enters data, or reaches other places. Refused while another day is shown.
    virtual bool onlyToday() const { return false; }
    virtual void Load() {}
    virtual void FirstShown() {}  ///< once, before the first Activate
    virtual void Activate() {}    ///< at the first showing and whenever a form opened from here has closed
    void activate();
    void activateLater() { m_activate = true; }
    /// From now on the form is run by this host.
    void runBy(FormHost& host) { m_host = &host; }

    Koben& koben;

private:
    QString m_name;
    QString m_caption;
    FormHost* m_host = nullptr;
    bool m_acting = false;
    bool m_closed = false;
    bool m_shown = false;
    bool m_activate = false;
};

}  // namespace koben
