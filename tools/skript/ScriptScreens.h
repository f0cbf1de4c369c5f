#pragma once
// What the user would see, written to the transcript; forms run on the script's next commands.
#include <functional>

#include "forms/Ports.h"
#include "tools/skript/Answers.h"
#include "tools/skript/Transcript.h"

namespace koben::skript {

class ScriptScreens final : public Screens {
public:
    ScriptScreens(Transcript& transcript, Answers& answers) : m_transcript(transcript), m_answers(answers) {}

    std::function<void(Form&)> onRun;     ///< works the form until it is closed
    std::function<void(Form&)> onClosed;  ///< the form is about to go
    /// The full path of a file or folder that the script names.
    std::function<QString(const QString&)> pathOf;

    void message(const QString& text) override;
    bool yesNo(const QString& text, bool noIsDefault) override;
    bool okCancel(const QString& text) override;
    QString input(const QString& prompt, const QString& preset, const QString& title) override;
    QString openFile(const QString& filter) override;
    QString saveFile(const QString& filter, const QString& preset) override;
    QString folder(const QString& prompt) override;
    void opened(Form& form) override;
    void run(Form& form) override;
    void closing(Form& form) override;
    void closed(Form& form) override;
    /// A failing program ends the run.
    [[noreturn]] void failed(const QString&) override { throw; }
    void waitCursor(bool) override {}
    void tone(int hertz, int milliseconds) override;
    void breathe() override {}

private:
    bool question(const QString& text, const QString& yes, const QString& no);
    QString value(const QString& text);
    QString path(const QString& text);

    Transcript& m_transcript;
    Answers& m_answers;
};

}  // namespace koben::skript
