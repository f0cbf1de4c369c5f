#pragma once
// What the run prints: one line each, buffered, UTF-8.
#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringList>

namespace koben::skript {

class Transcript {
public:
    /// `out` must be open for writing and outlive the transcript.
    explicit Transcript(QIODevice& out) : m_out(out) {}
    ~Transcript() { flush(); }
    Transcript(const Transcript&) = delete;
    Transcript& operator=(const Transcript&) = delete;

    /// One line: the mark, a blank, the text; line breaks inside the text as `\n`.
    void line(const char* mark, const QString& text);
    /// Printed lines ("= "), one for each line of the text. A break at the end begins no further line.
    void lines(const QString& text);
    void printed(const QString& text) { line("=", text); }
    void flush();

private:
    QIODevice& m_out;
    QByteArray m_buffer;
};

/// The lines of a text; a break at its end begins no further line, and the empty text is one empty line.
QStringList linesOf(const QString& text);

}  // namespace koben::skript
