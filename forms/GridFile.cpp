// The grid's own file format (docs/dateiformate.md): a head line, one line a column, one line a row, tab-separated.
#include <QFile>
#include <QSaveFile>

#include "core/Einstellungen.h"
#include "forms/Grid.h"

namespace koben {

namespace {

const QString Mark = QStringLiteral("KOBEN-Liste 1");

/// Keeps a text within its cell and within Windows-1252.
QString escaped(const QString& text) {
    QString out;
    for (const QChar c : text) {
        if (c == u'\\')
            out += QStringLiteral("\\\\");
        else if (c == u'\t')
            out += QStringLiteral("\\t");
        else if (c == u'\n')
            out += QStringLiteral("\\n");
        else if (c == u'\r')
            out += QStringLiteral("\\r");
        else if (c.unicode() > 0xff || (c.unicode() >= 0x80 && c.unicode() < 0xa0))
            out += QStringLiteral("\\u%1").arg(static_cast<uint>(c.unicode()), 4, 16, QChar(u'0'));
        else
            out += c;
    }
    return out;
}

QString unescaped(const QString& text) {
    if (!text.contains(u'\\')) return text;
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        switch (text[++i].unicode()) {
            case u't':
                out += u'\t';
                break;
            case u'n':
                out += u'\n';
                break;
            case u'r':
                out += u'\r';
                break;
            case u'u':
                out += QChar(text.mid(i + 1, 4).toUShort(nullptr, 16)), i += 4;
                break;
            default:
                out += text[i];
        }
    }
    return out;
}

}  // namespace

bool Grid::save(const QString& path) const {
    QByteArray bytes;
    bytes.append(nachWindows1252(QStringLiteral("%1\t%2\t%3\r\n").arg(Mark).arg(columnCount()).arg(rowCount())));
    for (const Column& c : m_columns) {
        const QStringList line{escaped(c.key),
                               escaped(c.title),
                               QString::number(static_cast<int>(c.align)),
                               QString::number(c.width),
                               QString::number(static_cast<int>(c.sort)),
                               escaped(c.caption),
                               QString::number(c.technical)};
        bytes.append(nachWindows1252(line.join(u'\t') + Crlf));
    }
    for (int row = 1; row <= rowCount(); ++row) {
        QString line;
        for (int column = 1; column <= columnCount(); ++column) {
            if (column > 1) line += u'\t';
            line += escaped(cell(row, column));
        }
        bytes.append(nachWindows1252(line + Crlf));
    }
    // Unbuffered, since the last flush of a buffer takes a half-done write for a whole one.
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(bytes) == bytes.size() &&
           file.commit();
}

bool Grid::load(const QString& path) {
    clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    bool whole = true;  // a line without its end is a file cut off
    const auto line = [&] {
        QString text = ausWindows1252(file.readLine());
        whole = whole && text.endsWith(u'\n');
        while (text.endsWith(u'\n') || text.endsWith(u'\r')) text.chop(1);
        return text.split(u'\t');
    };
    const QStringList head = line();
    if (!whole || head.size() != 3 || head[0] != Mark) return false;
    const int columns = head[1].toInt(), rows = head[2].toInt();
    if (columns < 0 || columns > 4095 || rows < 0) return false;
    for (int c = 0; c < columns; ++c) {
        QStringList parts = line();
        if (parts.size() < 5) return clear(), false;
        while (parts.size() < 7) parts.append(QString());
        const int align = parts[2].toInt(), sort = parts[4].toInt();
        addColumn({.key = unescaped(parts[0]),
                   .title = unescaped(parts[1]),
                   .align = align >= 0 && align <= 2 ? static_cast<Align>(align) : Align::Left,
                   .width = parts[3].toInt(),
                   .sort = sort >= 0 && sort <= 2 ? static_cast<Sort>(sort) : Sort::Text,
                   .caption = unescaped(parts[5]),
                   .technical = parts[6] == u"1"});
    }
    for (int row = 0; row < rows; ++row) {
        if (file.atEnd()) return clear(), false;
        QStringList cells = line();
        for (QString& cell : cells) cell = unescaped(cell);
        m_cells.push_back(cells);
    }
    if (!whole) return clear(), false;
    resetRows(rows);
    return true;
}

}  // namespace koben
