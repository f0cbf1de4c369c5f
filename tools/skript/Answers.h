#pragma once
// The answers that wait for the program's questions, in the order in which the script gave them.
#include <QString>
#include <deque>

#include "tools/skript/Script.h"

namespace koben::skript {

class Answers {
public:
    /// Takes an `antwort` command.
    void add(const Command& command);
    /// The answer to a question with these two words ("ja", "nein"); a Failure where none of them waits.
    QString word(const QString& question, const QString& yes, const QString& no);
    /// The answer to an input box or file picker.
    QString value(const QString& question);
    /// Line of the first answer that nothing asked for; 0 where none is left.
    int leftOver() const { return m_waiting.empty() ? 0 : m_waiting.front().line; }

private:
    struct Waiting {
        int line;
        bool isValue;
        QString text;
    };
    Waiting take(const QString& question);
    std::deque<Waiting> m_waiting;
};

}  // namespace koben::skript
