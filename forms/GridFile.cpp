// The grid's own file format (docs/dateiformate.md): a head line, one line a column, one line a row, tab-separated.
#include <QFile>
#include <algorithm>

#include "core/Einstellungen.h"
#include "forms/Grid.h"
#include "store/Files.h"

namespace koben {

namespace {

const QString Mark = QStringLiteral("KOBEN-Liste 1");

/// Keeps a text within its cell and within Windows-1252: what stands in the bytes is Latin-1, which it contains.
void append(QByteArray& bytes, const QString& text) {
    const auto plain = [](QChar c) {
        const ushort code = c.unicode();
        return code != u'\\' && code <= 0xff && code != u'\t' && code != u'\n' && code != u'\r' &&
               (code < 0x80 || code >= 0xa0);
    };
    if (std::all_of(text.begin(), text.end(), plain)) {
        bytes += text.toLatin1();
        return;
    }
    for (const QChar c : text) {
        const ushort code = c.unicode();
        if (code == u'\\')
            bytes += "\\\\";
        else if (code == u'\t')
            bytes += "\\t";
        else if (code == u'\n')
            bytes += "\\n";
        else if (code == u'\r')
            bytes += "\\r";
        else if (code > 0xff || (code >= 0x80 && code < 0xa0))
            bytes += "\\u" + QByteArray::number(code, 16).rightJustified(4, '0');
        else
            bytes += static_cast<char>(code);
    }
}

void append(QByteArray& bytes, const QStringList& cells) {
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0) bytes += '\t';
        append(bytes, cells[i]);
    }
    bytes += "\r\n";
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

QByteArray Grid::fileText() const {
    QByteArray bytes;
    append(bytes, QStringList{Mark});
    bytes.chop(2);
    bytes += '\t' + QByteArray::number(columnCount()) + '\t' + QByteArray::number(rowCount()) + "\r\n";
    for (const Column& c : m_columns)
        append(bytes, {c.key, c.title, QString::number(static_cast<int>(c.align)), QString::number(c.width),
                       QString::number(static_cast<int>(c.sort)), c.caption, QString::number(c.technical)});
    for (int row = 1; row <= rowCount(); ++row) {
        for (int column = 1; column <= columnCount(); ++column) {
            if (column > 1) bytes += '\t';
            append(bytes, cell(row, column));
        }
        bytes += "\r\n";
    }
    return bytes;
}

bool Grid::writeFile(const QString& path, const QByteArray& bytes) {
    // Unbuffered, since the last flush of a buffer takes a half-done write for a whole one.
    const QString draft = path + QStringLiteral(".neu");
    QFile file(draft);
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(bytes) == bytes.size();
    file.close();
    if (written && replaceFile(draft, path, false).isEmpty()) return true;
    file.remove();
    return false;
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
        Source source;
        for (const QString& cell : line()) source.cells.append(unescaped(cell));
        source.separator = columns > 0 && source.cells.first() == Value(QStringLiteral("."));
        m_cells.push_back(source);
    }
    if (!whole) return clear(), false;
    resetRows(rows);
    return true;
}

}  // namespace koben
