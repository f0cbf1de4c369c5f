#pragma once
// The script as text: one command a line, comments, values after " = ".
#include <QString>
#include <QStringList>
#include <optional>

namespace koben::skript {

/// The script is wrong or the program refused (exit status 1). No std::exception, so that no form takes it for its own.
struct Failure {
    QString reason;
};

/// No command is left while forms are still open: unwinds the run.
struct EndOfScript {};

/// What stands before and after " = ".
struct Assignment {
    QString target;
    QString value;
};

struct Command {
    int line = 0;       ///< from 1
    QString text;       ///< the whole line, as echoed
    QString word;       ///< the command itself
    QString arguments;  ///< what follows it, without blanks around

    /// Splits the line at its first " = "; a Failure where there is none.
    Assignment assignment() const;
    /// The arguments split at blanks, exactly `count` of them; the one at `wide` may itself contain blanks.
    QStringList words(const QString& text, int count, int wide = -1) const;
    QStringList words(int count, int wide = -1) const { return words(arguments, count, wide); }
};

/// `\n` is CR LF, `\t` a tab, `\\` a backslash; any other backslash stands for itself.
QString unescaped(const QString& value);

/// The commands of a script in order, comments and blank lines left out.
class Script {
public:
    explicit Script(const QString& text) : m_lines(text.split(u'\n')) {}
    /// The next command, or nothing at the end.
    std::optional<Command> next();
    int line() const { return m_line; }  ///< of the command given last

private:
    QStringList m_lines;
    qsizetype m_next = 0;
    int m_line = 0;
};

}  // namespace koben::skript
