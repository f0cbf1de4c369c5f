#pragma once
// The context of a run, handed to every form: shared variables, database, ports, and the way to other forms.
#include <chrono>
#include <functional>
#include <map>
#include <memory>

#include "core/Variablen.h"
#include "forms/Form.h"
#include "forms/Ports.h"

namespace koben {

class ProgressBar;
struct Explanation;
struct HandedList;

/// How forms are made, by name. Forms open each other through it, so none includes another's folder.
class Catalogue {
public:
    using Maker = std::function<std::unique_ptr<Form>(Koben&)>;
    template <class F>
    void add(const QString& name) {
        m_makers[name] = [](Koben& koben) { return std::make_unique<F>(koben); };
    }
    bool has(const QString& name) const { return m_makers.contains(name); }
    std::unique_ptr<Form> make(const QString& name, Koben& koben) const;

private:
    std::map<QString, Maker> m_makers;
};

/// What other forms may ask of the main form.
class HerdList {
public:
    virtual ~HerdList() = default;
    virtual Grid& herd() = 0;               ///< datali
    virtual void datenschweinelesen() = 0;  ///< loads the list anew
    /// Shows the herd as of a day as the user types it, or "heute", and all that opens from the list with it.
    virtual void Stand_zeigen(const QString& entered) { Q_UNUSED(entered) }
};

struct Koben : Variablen, FormHost {
    Koben(Screens& screens, Platform& platform, const Catalogue& catalogue);
    ~Koben() override;

    Screens& screens;
    Platform& platform;
    const Catalogue& catalogue;
    Workspace workspace;
    HerdList* herdList = nullptr;
    const HandedList* handedList = nullptr;  ///< the list that is on its way to the list screen
    const Explanation* explained = nullptr;  ///< what the screen of explanations shows
    qint64 shownBooking = 0;                 ///< ID of the booking that the booking frame opens on, 0 for the latest
    QString lastAction;                      ///< name of the newest action that reached the disk, "" before the first
    QString notWritable;                     ///< why the herd that is shown cannot be changed now, "" where it can
    /// The past or coming day that the herd is shown as of: Datenbankpfad is that of a copy that is only looked at, and
    /// Heute is that day. Invalid for the herd as it is.
    QDate Stand;
    /// Set by the main form as it ends in order: what is done once no window stands any more.
    std::function<void()> atEnd;
    bool ended = false;  ///< the program is ending: every open form closes

    /// Opens a form modally and returns once it has closed. A name without a screen does nothing. A form that fails
    /// while it loads is told and closed; of the main form, the first one, the failure ends the program.
    void open(const QString& name);
    /// Runs a form already made.
    void run(Form& form);
    bool inFront(const Form& form) const override { return front() == &form; }
    void closing(Form& form) override {
        if (!worker) screens.closing(form);
    }
    QString captionMark() const override { return Stand.isValid() ? QStringLiteral(" - ") + Standtext() : QString(); }
    /// What fails is told by screens.failed(): what could not be done, why, and what to do. True where all went well.
    bool attempt(const std::function<void()>& work) override;
    Form* front() const { return m_stack.empty() ? nullptr : m_stack.back(); }
    const std::vector<Form*>& stack() const { return m_stack; }
    /// Ends the program at once: all forms close without their closing steps.
    void end();

    QString Standtext() const;  ///< "Stand vom 03.05.2026"
    /// Why nothing is written while another day is shown, and what to do.
    QString nurAnsehen(QDate day) const;
    /// Says so where it is the case: for what would write anywhere but into the database.
    bool nurAnsehen_melden();

    /// A new connection of a form's own.
    Database connect() { return workspace.open(Datenbankpfad); }

    void message(const QString& text) {
        said = text;
        screens.message(text);
    }
    bool yesNo(const QString& text, bool noIsDefault = false) { return screens.yesNo(text, noIsDefault); }
    /// The tone that confirms a save, unless it is switched off.
    void Quittungston();
    /// True to go on with a deletion; asks only where the settings want it.
    bool Loeschen_bestaetigen();
    /// Moves the herd list's current row: 0 up, 1 down, wrapping at the ends.
    void Tier_weiterschalten(int direction);
    /// Keeps and restores the column widths of a list in the user's settings.
    void restoreWidths(Grid& grid, const QString& section);
    void saveWidths(const Grid& grid, const QString& section);
    QString clockToday() const;  ///< dd.mm.yyyy of the machine's clock

private:
    void begin(Form& form);

    std::vector<Form*> m_stack;
    int m_actions = 0;  // that reached the disk

public:
    /// While it is set it works the forms that open, in the user's stead: they stand on the stack as ever, say and ask
    /// what they do, but are not shown. It leaves none open.
    std::function<void(Form&)> worker;
    QString said;  ///< the newest message that a form said
};

/// Shows the wait cursor while it lives.
class WaitCursor {
public:
    explicit WaitCursor(Koben& koben) : m_screens(koben.screens) { m_screens.waitCursor(true); }
    ~WaitCursor() { m_screens.waitCursor(false); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    Screens& m_screens;
};

/// Tells the user how far a piece of work is while it lives, and whether she has cancelled it. The work then throws or
/// returns before its commit, so that nothing of it stays. It asks by the clock, so that a cancel is heard soon however
/// long a step takes, and step() may come as often as it likes.
class Progress {
public:
    /// `what` in the user's words, "Die Liste wird erstellt"; `total` in the steps that step() counts, at least 1. A
    /// form's own `meter` shows the same while the work goes on.
    Progress(Koben& koben, QString what, qint64 total, ProgressBar* meter = nullptr);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// So many steps are done. False once the user has cancelled.
    bool step(qint64 done);
    /// One step more.
    bool advance() { return step(m_done + 1); }
    bool cancelled() const { return m_cancelled; }

private:
    using Clock = std::chrono::steady_clock;
    Screens& m_screens;
    QString m_what;
    qint64 m_total, m_done = 0;
    ProgressBar* m_meter;
    Clock::duration m_interval;
    Clock::time_point m_asked;
    bool m_cancelled = false;
};

}  // namespace koben
