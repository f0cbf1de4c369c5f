#include "tools/handbuch/Book.h"

#include <QCollator>
#include <QDir>
#include <QRegularExpression>
#include <QSet>
#include <map>

namespace koben::handbuch {
namespace {

constexpr QChar NoBreak(0x00A0), Dash(0x2013);

bool isForm(const QString& name) {
    static const QRegularExpression form(QStringLiteral("^(P[A-Z]|S|HV)_"));
    return form.match(name).hasMatch();
}

bool beginsPart(const Hilfedatei& help, size_t index) {
    const auto& all = help.chapters();
    return index == 0 || all[index].group != all[index - 1].group;
}

QString partAnchor(const Place& first) { return QStringLiteral("t") + first.number.section(u'.', 0, 0); }

/// " (S. 45)" behind the words of a link, outside of its quotation marks.
void addPage(Block& block, size_t link, int page) {
    const auto words = block.links[link];
    qsizetype at = words.place + words.length;
    if (at < block.text.size() && block.text[at] == u'“') ++at;
    const QString note = QStringLiteral(" (S.%1%2)").arg(NoBreak).arg(page);
    block.text.insert(at, note);
    for (size_t i = link + 1; i < block.links.size(); ++i) block.links[i].place += note.size();
}

}  // namespace

QImage Pictures::of(const QString& form) const {
    QString name = form;
    name.replace(QStringLiteral("ä"), QStringLiteral("ae"));
    const QString variant = QStringLiteral("_hell_1.png");
    const QDir folder(m_folder);
    // The main window shows most with an animal's data; a list bears the name of the window that it came from.
    for (const char* kind : {"_Tier", "", "_PB_*"}) {
        const QStringList files = folder.entryList({name + QLatin1String(kind) + variant}, QDir::Files);
        if (!files.isEmpty()) return QImage(folder.filePath(files.first())).convertToFormat(QImage::Format_RGB32);
    }
    return {};
}

Book::Book(const Hilfedatei& help, const Pictures& pictures) : m_help(help) {
    int part = 0, chapter = 0;
    for (size_t i = 0; i < help.chapters().size(); ++i) {
        if (beginsPart(help, i)) ++part, chapter = 0;
        m_places.push_back({QStringLiteral("%1.%2").arg(part).arg(++chapter), QStringLiteral("k%1").arg(i)});
        const QString& name = help.chapters()[i].name;
        m_pictures.push_back(isForm(name) ? pictures.of(name) : QImage());
    }
}

QStringList Book::withoutPicture() const {
    QStringList names;
    for (size_t i = 0; i < m_places.size(); ++i)
        if (isForm(m_help.chapters()[i].name) && m_pictures[i].isNull()) names += m_help.chapters()[i].name;
    return names;
}

QString Book::anchorOf(const QString& chapter) const {
    return m_places[static_cast<size_t>(m_help.find(chapter))].anchor;
}

std::vector<Block> Book::blocks(const PageNumbers& pages) const {
    std::vector<Block> out;
    addContents(out);
    for (size_t i = 0; i < m_places.size(); ++i) {
        if (beginsPart(m_help, i)) {
            Block part{.style = Style::Part, .text = m_help.chapters()[i].group, .anchor = partAnchor(m_places[i])};
            part.mark = m_places[i].number.section(u'.', 0, 0);
            out.push_back(part);
        }
        addChapter(out, i, pages);
    }
    addIndex(out);
    return out;
}

void Book::addContents(std::vector<Block>& out) const {
    out.push_back({.style = Style::Front, .text = QStringLiteral("Inhalt"), .anchor = QStringLiteral("inhalt")});
    const auto line = [&out](Style style, const QString& number, const QString& title, const QString& anchor) {
        out.push_back(
            {.style = style, .text = title, .mark = number, .links = {{0, title.size(), anchor}}, .pageOf = anchor});
    };
    for (size_t i = 0; i < m_places.size(); ++i) {
        const Kapitel& chapter = m_help.chapters()[i];
        if (beginsPart(m_help, i))
            line(Style::ContentsPart, m_places[i].number.section(u'.', 0, 0), chapter.group, partAnchor(m_places[i]));
        line(Style::ContentsChapter, m_places[i].number, chapter.title, m_places[i].anchor);
    }
    line(Style::ContentsPart, {}, QStringLiteral("Aufgaben und Fenster von A bis Z"), QStringLiteral("index"));
}

void Book::addChapter(std::vector<Block>& out, size_t index, const PageNumbers& pages) const {
    const Kapitel& chapter = m_help.chapters()[index];
    bool pictured = m_pictures[index].isNull();
    const auto addPicture = [&] {
        if (!std::exchange(pictured, true))
            out.push_back({.style = Style::Picture, .text = chapter.title, .picture = m_pictures[index]});
    };
    qsizetype place = 0;
    for (const Kapitel::Line& line : chapter.lines) {
        const bool opening = line.kind == Kapitel::Kind::Title || line.kind == Kapitel::Kind::Text;
        if (line.kind != Kapitel::Kind::Blank) {
            if (!opening) addPicture();
            out.push_back(blockOf(chapter, line, place, pages));
            if (line.kind == Kapitel::Kind::Title) {
                out.back().mark = m_places[index].number;
                out.back().anchor = m_places[index].anchor;
            } else if (opening) {
                addPicture();
            }
        }
        place += line.text.size() + 1;
    }
    addPicture();
}

/// The links of a line with the pages that they lead to; a point that is nothing but a link has its page at the edge.
Block Book::blockOf(const Kapitel& chapter, const Kapitel::Line& line, qsizetype place,
                    const PageNumbers& pages) const {
    static const std::map<Kapitel::Kind, Style> styles{
        {Kapitel::Kind::Title, Style::Chapter}, {Kapitel::Kind::Heading, Style::Heading},
        {Kapitel::Kind::Field, Style::Field},   {Kapitel::Kind::Text, Style::Text},
        {Kapitel::Kind::Item, Style::Item},     {Kapitel::Kind::Explanation, Style::Explanation}};
    Block block{.style = styles.at(line.kind), .text = line.text};
    qsizetype cut = 0;
    if (line.kind == Kapitel::Kind::Item) {
        cut = line.text.indexOf(u' ') + 1;
        block.mark = line.text.left(cut).trimmed();
        if (block.mark == u"-") block.mark = Dash;
        block.text = line.text.mid(cut);
    }
    for (const Kapitel::Link& link : chapter.links)
        if (link.place >= place + cut && link.place < place + line.text.size())
            block.links.push_back({link.place - place - cut, link.length, anchorOf(link.target)});
    if (line.kind == Kapitel::Kind::Item && block.links.size() == 1 && block.text.size() - block.links[0].length <= 2) {
        const Kapitel::Link all = block.links[0];
        block.text = block.text.mid(all.place, all.length);
        block.links = {{0, all.length, all.target}};
        block.pageOf = all.target;
        return block;
    }
    for (size_t i = 0; i < block.links.size(); ++i)
        if (block.links[i].target != anchorOf(chapter.name)) addPage(block, i, pages.value(block.links[i].target));
    return block;
}

void Book::addIndex(std::vector<Block>& out) const {
    out.push_back({.style = Style::Front,
                   .text = QStringLiteral("Aufgaben und Fenster von A bis Z"),
                   .anchor = QStringLiteral("index"),
                   .columns = 2});
    QCollator german(QLocale(QStringLiteral("de_DE")));
    const auto before = [&german](const QString& a, const QString& b) { return german.compare(a, b) < 0; };
    std::map<QString, std::map<QString, QString, decltype(before)>, decltype(before)> words(before);
    for (size_t i = 0; i < m_places.size(); ++i)
        for (const QString& word : keywords(m_help.chapters()[i].title))
            words.try_emplace(word, before).first->second[m_help.chapters()[i].title] = m_places[i].anchor;
    for (const auto& [word, titles] : words) {
        const auto itself = titles.find(word);
        const QString its = itself == titles.end() ? QString() : itself->second;
        out.push_back({.style = Style::Keyword, .text = word, .pageOf = its});
        if (!its.isEmpty()) out.back().links = {{0, word.size(), its}};
        for (const auto& [title, anchor] : titles)
            if (anchor != its)
                out.push_back(
                    {.style = Style::Entry, .text = title, .links = {{0, title.size(), anchor}}, .pageOf = anchor});
    }
}

QString forPrint(QString text) {
    static const QRegularExpression unit(
        QStringLiteral("(\\d|Strg und|Seite) (?=(\\w|Tagen?|Wochen?|kg|g|mg|ml|Ferkel|Sauen|Uhr|Prozent|%|\\d+)\\b)"));
    text.replace(QStringLiteral("..."), QStringLiteral("…"));
    text.replace(unit, QStringLiteral("\\1%1").arg(NoBreak));
    return text;
}

QStringList keywords(const QString& title) {
    static const QRegularExpression between(QStringLiteral("[^\\w-]+"), QRegularExpression::UseUnicodePropertiesOption);
    static const QSet<QString> none{QStringLiteral("Auf"),       QStringLiteral("Das"),     QStringLiteral("Den"),
                                    QStringLiteral("Der"),       QStringLiteral("Die"),     QStringLiteral("Ein"),
                                    QStringLiteral("Eine"),      QStringLiteral("Einen"),   QStringLiteral("Mit"),
                                    QStringLiteral("Was"),       QStringLiteral("Welche"),  QStringLiteral("Wie"),
                                    QStringLiteral("Viele"),     QStringLiteral("Woher"),   QStringLiteral("Sehen"),
                                    QStringLiteral("Nachsehen"), QStringLiteral("Betriebs")};
    QStringList words;
    for (const QString& word : title.split(between, Qt::SkipEmptyParts))
        if (word.size() > 1 && word.front().isUpper() && !word.endsWith(u'-') && !none.contains(word)) words += word;
    return words;
}

}  // namespace koben::handbuch
