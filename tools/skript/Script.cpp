#include "tools/skript/Script.h"

namespace koben::skript {

namespace {

constexpr QChar ByteOrderMark(0xfeff);

QStringView withoutLeadingBlanks(QStringView line) {
    while (!line.isEmpty() && (line.front().isSpace() || line.front() == ByteOrderMark)) line = line.mid(1);
    return line;
}

}  // namespace

QString unescaped(const QString& value) {
    if (!value.contains(u'\\')) return value;
    QString out;
    out.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar next = value[i] == u'\\' && i + 1 < value.size() ? value[i + 1] : QChar();
        if (next == u'n')
            out += QStringLiteral("\r\n");
        else if (next == u't')
            out += u'\t';
        else if (next == u'\\')
            out += u'\\';
        else {
            out += value[i];
            continue;
        }
        ++i;
    }
    return out;
}

Assignment Command::assignment() const {
    const qsizetype at = text.indexOf(QLatin1String(" = "), word.size());
    if (at >= 0) return {text.mid(word.size(), at - word.size()).trimmed(), unescaped(text.mid(at + 3))};
    if (!text.trimmed().endsWith(QLatin1String(" =")))
        throw Failure{QStringLiteral("%1 verlangt \" = WERT\"").arg(word)};
    const QString left = text.trimmed().chopped(2);
    return {left.mid(word.size()).trimmed(), QString()};
}

QStringList Command::words(const QString& from, int count, int wide) const {
    QStringList parts = from.split(u' ', Qt::SkipEmptyParts);
    if (wide >= 0 && parts.size() > count) {
        const qsizetype length = parts.size() - count + 1;
        const QString joined = parts.mid(wide, length).join(u' ');
        parts.remove(wide, length);
        parts.insert(wide, joined);
    }
    if (parts.size() != count) throw Failure{QStringLiteral("%1 verlangt %2 Angaben").arg(word).arg(count)};
    return parts;
}

std::optional<Command> Script::next() {
    while (m_next < m_lines.size()) {
        QStringView line = m_lines.at(m_next++);
        if (line.endsWith(u'\r')) line.chop(1);
        line = withoutLeadingBlanks(line);
        if (line.isEmpty() || line.front() == u'#') continue;
        m_line = static_cast<int>(m_next);
        const qsizetype blank = line.indexOf(u' ');
        const QStringView word = blank < 0 ? line : line.left(blank);
        return Command{m_line, line.toString(), word.toString(), line.mid(word.size()).trimmed().toString()};
    }
    return std::nullopt;
}

}  // namespace koben::skript
