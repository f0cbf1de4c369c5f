#include "help/Hilfedatei.h"

#include <QRegularExpression>
#include <utility>

#include "core/Textdatei.h"

namespace koben {
namespace {

constexpr qint64 LargestFile = 16LL * 1024 * 1024;
const QString EndMark = QStringLiteral("#ende#");
const QString HeadingMark = QStringLiteral("== ");
const QString FieldMark = QStringLiteral("Feld: ");
const QString GroupMark = QStringLiteral("# ");

/// "#NAME# Title": the line that a chapter begins with.
bool beginsChapter(const QString& line, Kapitel& chapter) {
    static const QRegularExpression begin(QStringLiteral("^#([^#\\s][^#]*)#\\s*(\\S.*)$"));
    const auto match = begin.match(line);
    if (!match.hasMatch()) return false;
    chapter = {};
    chapter.name = match.captured(1).trimmed();
    chapter.title = match.captured(2).trimmed();
    chapter.lines = {{Kapitel::Kind::Title, chapter.title}, {Kapitel::Kind::Blank, {}}};
    return true;
}

Kapitel::Line lineOf(const QString& line, Kapitel::Kind before) {
    using Kind = Kapitel::Kind;
    static const QRegularExpression item(QStringLiteral("^(-|\\d+\\.) \\S"));
    if (line.isEmpty()) return {Kind::Blank, {}};
    if (line.startsWith(HeadingMark)) return {Kind::Heading, line.mid(HeadingMark.size()).trimmed()};
    if (line.startsWith(FieldMark)) return {Kind::Field, line.mid(FieldMark.size()).trimmed()};
    if (item.match(line).hasMatch()) return {Kind::Item, line};
    return {before == Kind::Field || before == Kind::Explanation ? Kind::Explanation : Kind::Text, line};
}

/// Adds a line, or goes on with the one before where that is text too.
void addLine(Kapitel& chapter, const QString& line) {
    using Kind = Kapitel::Kind;
    Kapitel::Line& before = chapter.lines.back();
    const Kapitel::Line next = lineOf(line, before.kind);
    const bool text = next.kind == Kind::Text || next.kind == Kind::Explanation;
    const bool goesOn = before.kind == Kind::Text || before.kind == Kind::Explanation || before.kind == Kind::Item;
    if (text && goesOn)
        before.text += u' ' + next.text;
    else if (next.kind != Kind::Blank || before.kind != Kind::Blank)
        chapter.lines.push_back(next);
}

void closeChapter(Kapitel& chapter) {
    while (chapter.lines.size() > 1 && chapter.lines.back().kind == Kapitel::Kind::Blank) chapter.lines.pop_back();
}

}  // namespace

QString Kapitel::text() const {
    QStringList all;
    for (const Line& line : lines) all.append(line.text);
    return all.join(u'\n');
}

QStringList Kapitel::fields() const {
    QStringList all;
    for (const Line& line : lines)
        if (line.kind == Kind::Field) all.append(line.text);
    return all;
}

Hilfedatei::Hilfedatei(const QString& text) { parse(text); }

Hilfedatei Hilfedatei::read(const QString& path, QString& trouble) {
    Hilfedatei help(readShippedText(path, LargestFile, trouble));
    if (trouble.isEmpty() && help.m_chapters.empty())
        trouble = QStringLiteral("weil die Datei beschädigt ist: Sie enthält kein Kapitel.");
    return help;
}

void Hilfedatei::parse(const QString& text) {
    Kapitel chapter;
    QString group;
    bool within = false;
    const auto close = [&] {
        if (!std::exchange(within, false) || find(chapter.name) >= 0) return;
        closeChapter(chapter);
        chapter.group = group;
        m_chapters.push_back(chapter);
    };
    for (const QString& raw : text.split(u'\n')) {
        const QString line = raw.trimmed();
        Kapitel next;
        if (line == EndMark) {
            close();
        } else if (beginsChapter(line, next)) {
            close();  // an end mark was lost
            chapter = next;
            within = true;
        } else if (within) {
            addLine(chapter, line);
        } else if (line.startsWith(GroupMark)) {
            group = line.mid(GroupMark.size()).trimmed();
        }
    }
    close();
    for (Kapitel& each : m_chapters) resolve(each);
}

int Hilfedatei::find(const QString& name) const {
    for (size_t i = 0; i < m_chapters.size(); ++i)
        if (m_chapters[i].name == name) return static_cast<int>(i);
    return -1;
}

void Hilfedatei::resolve(Kapitel& chapter) const {
    qsizetype place = 0;
    for (Kapitel::Line& line : chapter.lines) {
        line.text = resolved(line, place, chapter.links);
        place += line.text.size() + 1;
    }
}

/// A line's text with the words of its links in place of their brackets; brackets that name no chapter stay.
QString Hilfedatei::resolved(const Kapitel::Line& line, qsizetype place, std::vector<Kapitel::Link>& links) const {
    static const QRegularExpression bracket(QStringLiteral("\\[([^\\]|]+)(\\|([^\\]]+))?\\]"));
    QString text;
    qsizetype done = 0;
    for (auto all = bracket.globalMatch(line.text); all.hasNext();) {
        const auto match = all.next();
        const int target = find(match.captured(1));
        if (target < 0) continue;
        const Kapitel& other = chapter(target);
        const QString own = match.captured(3);
        const QString before = line.text.mid(done, match.capturedStart() - done);
        const bool alone = (text + before).trimmed().size() <= 1 && match.capturedEnd() == line.text.size();
        text += before;
        if (own.isEmpty() && !alone) text += u'„';
        const QString words = own.isEmpty() ? other.title : own;
        links.push_back({place + text.size(), words.size(), other.name});
        text += words;
        if (own.isEmpty() && !alone) text += u'“';
        done = match.capturedEnd();
    }
    return text + line.text.mid(done);
}

}  // namespace koben
