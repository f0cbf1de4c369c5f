#include "tools/skript/PrintedJob.h"

namespace koben::skript {

ScriptPrintJob::ScriptPrintJob(bool landscape, std::function<void(const PrintedJob&)> onEnd)
    : m_onEnd(std::move(onEnd)) {
    if (landscape) m_line = QStringLiteral("{quer}");
    m_begun = landscape;
}

void ScriptPrintJob::showFont() {
    if (m_font == m_shown) return;
    QStringList words;
    if (m_font.name != m_shown.name) words += m_font.name;
    if (m_font.points > 0) words += QString::number(m_font.points).replace(u'.', u',');
    if (m_font.bold) words += QStringLiteral("fett");
    if (m_font.italic) words += QStringLiteral("kursiv");
    m_line += u'{' + words.join(u' ') + u'}';
    m_shown = m_font;
}

void ScriptPrintJob::text(const QString& piece) {
    showFont();
    m_line += piece;
    m_begun = true;
}

void ScriptPrintJob::line(const QString& last) {
    text(last);
    endLine();
}

void ScriptPrintJob::endLine() {
    if (!m_begun) return;
    m_job.lines += m_line;
    m_line.clear();
    m_begun = false;
}

void ScriptPrintJob::newPage() {
    endLine();
    m_job.lines += QStringLiteral("{Seite}");
    ++m_job.pages;
}

void ScriptPrintJob::end() {
    endLine();
    m_onEnd(m_job);
}

}  // namespace koben::skript
