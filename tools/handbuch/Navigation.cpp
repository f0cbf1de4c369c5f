#include "tools/handbuch/Navigation.h"

#include <QRegularExpression>
#include <cmath>

namespace koben::handbuch {
namespace {

/// Numbers of the objects that are the pages, in their order.
std::vector<int> pageObjects(const QByteArray& pdf) {
    static const QRegularExpression kids(QStringLiteral("/Kids\\s*\\[([0-9\\sR]+)\\]")),
        one(QStringLiteral("(\\d+) 0 R"));
    std::vector<int> pages;
    auto all = one.globalMatch(kids.match(QString::fromLatin1(pdf)).captured(1));
    while (all.hasNext()) pages.push_back(all.next().captured(1).toInt());
    return pages;
}

/// The number behind the last place of a word, -1 where there is none.
int lastNumber(const QByteArray& pdf, const char* word) {
    const auto at = pdf.lastIndexOf(word);
    if (at < 0) return -1;
    static const QRegularExpression number(QStringLiteral("^\\s*(\\d+)"));
    const auto match = number.match(QString::fromLatin1(pdf.mid(at + QByteArrayView(word).size(), 24)));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

QByteArray hexText(const QString& text) {
    QByteArray hex = "<FEFF";
    for (const QChar c : text) hex += QByteArray::number(c.unicode(), 16).rightJustified(4, '0');
    return hex + '>';
}

QByteArray reference(const char* name, int object) {
    return QByteArray("/") + name + ' ' + QByteArray::number(object) + " 0 R\n";
}

/// Objects added behind the end of a file, and the table that finds them.
class Update {
public:
    explicit Update(QByteArray& pdf)
        : m_pdf(pdf), m_before(lastNumber(pdf, "startxref")), m_info(lastNumber(pdf, "/Info")) {}
    void add(int number, const QByteArray& content) {
        m_table += QByteArray::number(number) + " 1\n" + QByteArray::number(m_pdf.size()).rightJustified(10, '0') +
                   " 00000 n \n";
        m_pdf += QByteArray::number(number) + " 0 obj\n" + content + "\nendobj\n";
    }
    void finish(int size, int root) {
        const QByteArray start = QByteArray::number(m_pdf.size());
        m_pdf += "xref\n" + m_table + "trailer\n<<\n/Size " + QByteArray::number(size) + "\n" +
                 reference("Root", root) + (m_info < 0 ? QByteArray() : reference("Info", m_info)) + "/Prev " +
                 QByteArray::number(m_before) + "\n>>\nstartxref\n" + start + "\n%%EOF\n";
    }

private:
    QByteArray& m_pdf;
    int m_before, m_info;
    QByteArray m_table;
};

/// The bookmark at `index`; its object is `first` and its place further on.
QByteArray item(const std::vector<Bookmark>& all, size_t index, int first, int root, const QByteArray& to) {
    const auto object = [first](size_t i) { return first + static_cast<int>(i); };
    const bool inner = all[index].inner;
    size_t parent = index, next = index + 1, before = index;
    while (inner && all[parent].inner) --parent;
    while (next < all.size() && all[next].inner && !inner) ++next;
    do --before;
    while (before < all.size() && all[before].inner && !inner);
    QByteArray text =
        "<<\n/Title " + hexText(all[index].title) + '\n' + reference("Parent", inner ? object(parent) : root);
    if (before < all.size() && all[before].inner == inner) text += reference("Prev", object(before));
    if (next < all.size() && all[next].inner == inner) text += reference("Next", object(next));
    if (!inner && next > index + 1)
        text += reference("First", object(index + 1)) + reference("Last", object(next - 1)) + "/Count -" +
                QByteArray::number(static_cast<qulonglong>(next - index - 1)) + '\n';
    return text + to + "\n>>";
}

/// To a place on a page, as a link or a bookmark has it.
QByteArray way(int page, double top) {
    return "/Dest [" + QByteArray::number(page) + " 0 R /XYZ null " + QByteArray::number(std::lround(top)) + " null]";
}

/// What the writer takes for addresses outside of the file leads to places in it. Nothing moves: blanks fill the room.
bool turnLinks(QByteArray& pdf, const QHash<QString, QByteArray>& ways) {
    const QByteArray before = "/A <<\n/Type /Action\n/S /URI\n/URI (#", after = ")\n>>";
    for (auto at = pdf.indexOf(before); at >= 0; at = pdf.indexOf(before, at)) {
        const auto end = pdf.indexOf(after, at);
        const auto name = at + before.size();
        const QByteArray to = ways.value(QString::fromLatin1(pdf.mid(name, end - name)));
        const auto length = end + after.size() - at;
        if (end < 0 || to.isEmpty() || to.size() > length) return false;
        pdf.replace(at, length, to.leftJustified(length, ' '));
    }
    return true;
}

bool addBookmarks(QByteArray& pdf, const std::vector<Bookmark>& bookmarks, const QHash<QString, QByteArray>& ways) {
    const int root = lastNumber(pdf, "/Root"), size = lastNumber(pdf, "/Size");
    const auto object = pdf.indexOf('\n' + QByteArray::number(root) + " 0 obj\n<<\n");
    const auto end = pdf.indexOf(">>\nendobj", object);
    if (root < 0 || size < 0 || object < 0 || end < 0 || bookmarks.empty()) return false;
    const auto start = pdf.indexOf("<<\n", object) + 3;
    const QByteArray catalogue = pdf.mid(start, end - start);
    const int first = size + 1;
    size_t last = bookmarks.size() - 1;
    while (bookmarks[last].inner) --last;
    Update update(pdf);
    update.add(root,
               "<<\n" + reference("Outlines", size) + "/PageMode /UseOutlines\n/Lang (de-DE)\n" + catalogue + ">>");
    update.add(size, "<<\n/Type /Outlines\n" + reference("First", first) +
                         reference("Last", first + static_cast<int>(last)) + ">>");
    for (size_t i = 0; i < bookmarks.size(); ++i)
        update.add(first + static_cast<int>(i), item(bookmarks, i, first, size, ways.value(bookmarks[i].anchor)));
    update.finish(first + static_cast<int>(bookmarks.size()), root);
    return true;
}

}  // namespace

bool addNavigation(QByteArray& pdf, const std::vector<Bookmark>& bookmarks, const QHash<QString, Target>& targets) {
    QHash<QString, QByteArray> ways;
    const std::vector<int> pages = pageObjects(pdf);
    for (auto each = targets.begin(); each != targets.end(); ++each) {
        if (each->page < 1 || each->page > static_cast<int>(pages.size())) return false;
        ways[each.key()] = way(pages[static_cast<size_t>(each->page - 1)], each->top);
    }
    return turnLinks(pdf, ways) && addBookmarks(pdf, bookmarks, ways);
}

}  // namespace koben::handbuch
