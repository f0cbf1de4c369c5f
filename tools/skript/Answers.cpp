#include "tools/skript/Answers.h"

namespace koben::skript {

void Answers::add(const Command& command) {
    if (command.arguments.startsWith(u'=')) {
        m_waiting.push_back({command.line, true, command.assignment().value});
        return;
    }
    static const QStringList words{QStringLiteral("ja"), QStringLiteral("nein"), QStringLiteral("ok"),
                                   QStringLiteral("abbrechen")};
    if (!words.contains(command.arguments))
        throw Failure{QStringLiteral("antwort verlangt ja, nein, ok, abbrechen oder = WERT")};
    m_waiting.push_back({command.line, false, command.arguments});
}

Answers::Waiting Answers::take(const QString& question) {
    if (m_waiting.empty()) throw Failure{QStringLiteral("keine Antwort wartet auf: %1").arg(question)};
    Waiting first = m_waiting.front();
    m_waiting.pop_front();
    return first;
}

QString Answers::word(const QString& question, const QString& yes, const QString& no) {
    const Waiting answer = take(question);
    if (answer.isValue || (answer.text != yes && answer.text != no))
        throw Failure{QStringLiteral("die Antwort \"%1\" (Zeile %2) passt nicht zu: %3")
                          .arg(answer.text)
                          .arg(answer.line)
                          .arg(question)};
    return answer.text;
}

QString Answers::value(const QString& question) {
    const Waiting answer = take(question);
    if (!answer.isValue)
        throw Failure{QStringLiteral("die Antwort \"%1\" (Zeile %2) ist kein Text für: %3")
                          .arg(answer.text)
                          .arg(answer.line)
                          .arg(question)};
    return answer.text;
}

}  // namespace koben::skript
