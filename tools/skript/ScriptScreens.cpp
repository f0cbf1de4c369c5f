#include "tools/skript/ScriptScreens.h"

#include "core/PZ_Koben_Subs.h"
#include "forms/Form.h"

namespace koben::skript {

void ScriptScreens::message(const QString& text) { m_transcript.line("!", text); }

bool ScriptScreens::question(const QString& text, const QString& yes, const QString& no) {
    const QString answer = m_answers.word(text, yes, no);
    m_transcript.line("?", text + QStringLiteral(" => ") + answer);
    return answer == yes;
}

bool ScriptScreens::yesNo(const QString& text, bool) {
    return question(text, QStringLiteral("ja"), QStringLiteral("nein"));
}

bool ScriptScreens::okCancel(const QString& text) {
    return question(text, QStringLiteral("ok"), QStringLiteral("abbrechen"));
}

QString ScriptScreens::value(const QString& text) {
    const QString answer = m_answers.value(text);
    m_transcript.line("?=", text + QStringLiteral(" => ") + answer);
    return answer;
}

QString ScriptScreens::path(const QString& text) {
    const QString answer = value(text);
    return answer.isEmpty() || !pathOf ? answer : pathOf(answer);
}

QString ScriptScreens::input(const QString& prompt, const QString&, const QString&) {
    return withoutControls(value(prompt));
}
QString ScriptScreens::openFile(const QString& filter) { return path(filter); }
QString ScriptScreens::saveFile(const QString& filter, const QString&) { return path(filter); }
QString ScriptScreens::folder(const QString& prompt) { return path(prompt); }

void ScriptScreens::opened(Form& form) { m_transcript.line("+", form.name()); }

void ScriptScreens::run(Form& form) {
    if (onRun) onRun(form);
}

void ScriptScreens::closing(Form& form) { m_transcript.line("-", form.name()); }

void ScriptScreens::closed(Form& form) {
    if (onClosed) onClosed(form);
}

void ScriptScreens::tone(int hertz, int milliseconds) {
    m_transcript.line("~", QStringLiteral("%1 %2").arg(hertz).arg(milliseconds));
}

}  // namespace koben::skript
