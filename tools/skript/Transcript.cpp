#include "tools/skript/Transcript.h"

#include <QFileDevice>

namespace koben::skript {

namespace {

constexpr qsizetype BufferSize = 1 << 16;

QString oneBreak(QString text) {
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
}

}  // namespace

QStringList linesOf(const QString& text) {
    QStringList lines = oneBreak(text).split(u'\n');
    if (lines.size() > 1 && lines.last().isEmpty()) lines.removeLast();
    return lines;
}

void Transcript::line(const char* mark, const QString& text) {
    m_buffer += mark;
    m_buffer += ' ';
    if (text.contains(u'\n') || text.contains(u'\r'))
        m_buffer += oneBreak(text).replace(u'\n', QLatin1String("\\n")).toUtf8();
    else
        m_buffer += text.toUtf8();
    m_buffer += '\n';
    if (m_buffer.size() > BufferSize) flush();
}

void Transcript::lines(const QString& text) {
    for (const QString& one : linesOf(text)) printed(one);
}

void Transcript::flush() {
    m_out.write(m_buffer);
    m_buffer.clear();
    if (auto* file = qobject_cast<QFileDevice*>(&m_out)) file->flush();
}

}  // namespace koben::skript
