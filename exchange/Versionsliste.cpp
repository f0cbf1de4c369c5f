#include "exchange/Versionsliste.h"

#include <QStringDecoder>
#include <QStringList>
#include <optional>

#include "core/Einstellungen.h"

namespace koben {

namespace {

constexpr qsizetype FirstVersion = 2;  // line, counted from 0

QString textOf(const QByteArray& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    return utf8.hasError() ? ausWindows1252(bytes) : text;
}

QStringList linesOf(const QByteArray& bytes) {
    QStringList lines = textOf(bytes).split(u'\n');
    if (lines.last().isEmpty()) lines.removeLast();
    for (QString& line : lines)
        if (line.endsWith(u'\r')) line.chop(1);
    return lines;
}

/// The version of a line, "" where it goes on with the one above; nothing where the line is none.
std::optional<QString> versionOf(const QString& line) {
    if (line.startsWith(u':') || line.startsWith(u' ')) return QString();
    qsizetype end = line.indexOf(u':');
    if (end < 0) end = line.indexOf(u' ');
    return end < 0 ? std::nullopt : std::optional(line.left(end));
}

/// What a server says instead, a page for people say, must not pass for a version.
bool isVersion(const QString& text) { return !text.isEmpty() && text.front() >= u'0' && text.front() <= u'9'; }

}  // namespace

Versionsliste Versionsliste::lesen(const QByteArray& bytes, const QString& own) {
    Versionsliste list;
    const QStringList lines = linesOf(bytes);
    const auto first = versionOf(lines.value(FirstVersion));
    if (bytes.contains('\0') || !first || !isVersion(*first)) return list;
    list.newest = *first;
    if (own == list.newest) list.missing = QStringLiteral("Sie haben die aktuellste Version!");
    bool stopped = false;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        list.all += lines[i] + Crlf;
        if (i < FirstVersion || stopped) continue;
        const auto version = versionOf(lines[i]);
        if (!version) return list;
        if (*version > own || version->isEmpty())
            list.missing += lines[i] + Crlf;
        else
            stopped = true;
    }
    list.whole = true;
    return list;
}

}  // namespace koben
