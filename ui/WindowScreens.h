#pragma once
// What the user sees, with windows: forms modal above each other, messages, file dialogs.
#include <QElapsedTimer>
#include <memory>
#include <vector>

#include "forms/Ports.h"
#include "ui/SampleFarm.h"
#include "ui/Window.h"

class QProgressDialog;
class QWidget;

namespace koben::ui {

class FormWindow;

class WindowScreens : public Screens, public Decisions {
public:
    WindowScreens();
    ~WindowScreens() override;

    void message(const QString& text) override;
    bool yesNo(const QString& text, bool noIsDefault) override;
    bool okCancel(const QString& text) override;
    QString input(const QString& prompt, const QString& preset, const QString& heading) override;
    QString openFile(const QString& filter) override;
    QString saveFile(const QString& filter, const QString& preset) override;
    QString folder(const QString& prompt) override;

    void opened(Form& form) override;
    void shown(Form& form) override;
    void run(Form& form) override;
    void closed(Form& form) override;

    void done(const QString& action) override;
    int decide(const QString& text, const QStringList& captions) override;

    bool preview(const QString& name, const Drawing& document) override;
    void waitCursor(bool on) override;
    void tone(int hertz, int milliseconds) override;
    void breathe() override;
    bool progress(const QString& what, int percent) override;
    void progressEnds() override;

    /// The front window; nothing before the first.
    FormWindow* front() const { return m_windows.empty() ? nullptr : m_windows.back().get(); }
    FormWindow* windowOf(const Form& form) const;

    SampleFarm sample;  ///< the program's; without one the user is not offered a visit

private:
    QWidget* inSight() const;
    void tellRefusedFile();
    bool ask(const QString& text, bool okCancel, bool safeDefault);

    std::vector<std::unique_ptr<FormWindow>> m_windows;
    int m_waiting = 0;
    QElapsedTimer m_lastBreath;
    std::unique_ptr<QProgressDialog> m_progress;
};

/// "CSV-Dateien|*.CSV|Alle Dateien|*.*" as Qt's dialogs want it, matching upper and lower case.
QString fileFilter(const QString& filter);

/// The ordinary cursor while a dialog is in front, whatever the program waits for behind it.
class OrdinaryCursor {
public:
    OrdinaryCursor();
    ~OrdinaryCursor();
    OrdinaryCursor(const OrdinaryCursor&) = delete;
    OrdinaryCursor& operator=(const OrdinaryCursor&) = delete;

private:
    int m_covered = 0;
};

}  // namespace koben::ui
