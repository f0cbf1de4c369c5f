#include "help/Druckfassung.h"

#include "core/Variablen.h"

namespace koben {
namespace {

constexpr qsizetype Widest = 76;  // characters of a page

/// The first line begins with `first`, all others with as many blanks.
void addBroken(QStringList& out, const QString& first, const QString& text) {
    QString line = first;
    bool begun = false;
    for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
        if (begun && line.size() + 1 + word.size() > Widest) {
            out.append(line);
            line = QString(first.size(), u' ');
            begun = false;
        }
        line += begun ? u' ' + word : word;
        begun = true;
    }
    out.append(line);
}

}  // namespace

QString Druckfassung(const Kapitel& chapter) {
    using Kind = Kapitel::Kind;
    QStringList out;
    for (const Kapitel::Line& line : chapter.lines) {
        const auto mark = line.text.indexOf(u' ') + 1;
        switch (line.kind) {
            case Kind::Title:
            case Kind::Heading:
                addBroken(out, QString(), line.text);
                out.append(QString(std::min(line.text.size(), Widest), u'='));
                break;
            case Kind::Item:
                addBroken(out, line.text.left(mark), line.text.mid(mark));
                break;
            case Kind::Explanation:
                addBroken(out, QStringLiteral("    "), line.text);
                break;
            default:
                addBroken(out, QString(), line.text);
        }
    }
    return out.join(Crlf) + Crlf;
}

}  // namespace koben
