#include "output/Bericht_html.h"

#include <QDir>
#include <QFile>
#include <algorithm>

#include "store/Files.h"

namespace koben {
namespace {

using Zeilen = std::vector<Listenzeile>;

/// Text for the page: markup characters as entities, control characters that HTML forbids left out.
QString html(const QString& text) {
    QString clean;
    clean.reserve(text.size());
    for (const QChar c : text)
        if (c >= u' ' || c == u'\t' || c == u'\n') clean += c;
    return clean.toHtmlEscaped();
}

QString dateiname(int page) {
    return page == 1 ? QStringLiteral("report.htm") : QStringLiteral("report-%1.htm").arg(page);
}

/// The rows of each page. A separator stays with the row before it. An empty list has one page.
std::vector<Zeilen> seiten(const Grid& grid, int rowsPerPage) {
    std::vector<Zeilen> pages(1);
    int rows = 0;
    for (const Listenzeile& line : Listenzeilen(grid)) {
        if (line.art == Zeilenart::Daten && rows++ == rowsPerPage) {
            pages.emplace_back();
            rows = 1;
        }
        pages.back().push_back(line);
    }
    return pages;
}

/// How the page lies on the paper, and the font that lets it fit.
struct Papier {
    bool quer;
    double punkt;
};

/// Upright if rows and columns then fit in a readable font; otherwise across. Where even that is too small for the
/// rows, they run on to a second sheet, under the table head again; the columns are made to fit in any case.
Papier papier(const Grid& grid, int rowsPerPage, const std::vector<qsizetype>& widths) {
    constexpr double shortSide = 527, longSide = 774;            // points inside the margins of A4
    constexpr double charWidth = 0.55, lineHeight = 1.45;        // of the font's size
    constexpr double smallest = 4, readable = 6.5, largest = 9;  // points
    constexpr int linesBesides = 7;                              // head text, page number, titles, foot
    double width = 0;
    for (const qsizetype longest : widths) width += static_cast<double>(longest) * charWidth + 1.2;
    width = std::max(width, 1.0);
    const double height = (std::min(rowsPerPage, grid.rowCount()) + linesBesides) * lineHeight;
    const double upright = std::min({largest, shortSide / width, longSide / height});
    if (upright >= readable) return {false, upright};
    const double across = std::clamp(longSide / width, smallest, largest);
    return {true, std::min(across, std::max(shortSide / height, readable))};
}

/// The style of all pages. Colours are the browser's own, so that light and dark screens both read well.
QString stil(const Grid& grid, const Papier& paper) {
    QString css =
        QStringLiteral(
            ":root{color-scheme:light dark}\n"
            "body{font:10pt \"Liberation Sans\",Arial,sans-serif;margin:1.5em}\n"
            "h1{font-size:1.2em;margin:0 0 .5em;white-space:pre-wrap}\n"
            "p{margin:.5em 0}\n"
            "table{border-collapse:collapse}\n"
            "th,td{padding:.1em .6em;text-align:left;vertical-align:top;white-space:pre-line}\n"
            "th{border-bottom:2px solid}\n"
            "tbody tr{border-bottom:1px dotted}\n"
            "tr.strich{border-bottom:1px solid}\n"
            "tr.strich td{padding:0;height:.2em}\n"
            "tr.block{border-bottom:0}\n"
            "tr.block td{height:2em}\n"
            "nav{margin:.5em 0}\n"
            "nav a,nav span{margin-right:1.5em}\n"
            "nav span{opacity:.6}\n"
            "@page{size:A4 %1;margin:12mm}\n"
            "@media print{nav{display:none}body{font-size:%2pt;margin:0}thead{display:table-header-group}"
            "tr{break-inside:avoid}}\n")
            .arg(QString::fromLatin1(paper.quer ? "landscape" : "portrait"), QString::number(paper.punkt, 'f', 1));
    for (int c = 1; c <= grid.columnCount(); ++c) {
        const Align align = grid.column(c).align;
        if (align == Align::Left) continue;
        const QString side = QString::fromLatin1(align == Align::Right ? "right" : "center");
        css += QStringLiteral("th:nth-child(%1),td:nth-child(%1){text-align:%2}\n").arg(c).arg(side);
    }
    return css;
}

QString verweise(int page, int pages) {
    if (pages == 1) return {};
    const auto link = [](const char* text, int target, bool active) {
        const QString caption = QString::fromUtf8(text);
        if (!active) return QStringLiteral("<span>%1</span>").arg(caption);
        return QStringLiteral("<a href=\"%1\">%2</a>").arg(dateiname(target), caption);
    };
    return QStringLiteral("<nav>%1%2%3%4</nav>\n")
        .arg(link("Erste Seite", 1, page > 1), link("Vorige Seite", page - 1, page > 1),
             link("Nächste Seite", page + 1, page < pages), link("Letzte Seite", pages, page < pages));
}

QString tabelle(const Grid& grid, const Zeilen& lines) {
    QString out = QStringLiteral("<table>\n<thead><tr>");
    for (int c = 1; c <= grid.columnCount(); ++c)
        out += QStringLiteral("<th scope=\"col\">") + html(grid.column(c).title) + QStringLiteral("</th>");
    out += QStringLiteral("</tr></thead>\n<tbody>\n");
    for (const auto& [kind, row] : lines) {
        if (kind != Zeilenart::Daten) {
            out += QStringLiteral("<tr class=\"%1\"><td colspan=\"%2\"></td></tr>\n")
                       .arg(QString::fromLatin1(kind == Zeilenart::Strich ? "strich" : "block"))
                       .arg(grid.columnCount());
            continue;
        }
        out += QStringLiteral("<tr>");
        for (int c = 1; c <= grid.columnCount(); ++c)
            out += QStringLiteral("<td>") + html(grid.cell(row, c)) + QStringLiteral("</td>");
        out += QStringLiteral("</tr>\n");
    }
    return out + QStringLiteral("</tbody>\n</table>\n");
}

QString absatz(const QString& text) { return text.isEmpty() ? QString() : "<p>" + html(text) + "</p>\n"; }

/// One page, in a form that is valid as HTML and as XML.
QString seite(const Grid& grid, const Berichtsform& form, const QString& css, const Zeilen& lines, int page,
              int pages) {
    const QString head = form.kopf.trimmed();
    QString out = QStringLiteral("<!DOCTYPE html>\n<html lang=\"de\">\n<head>\n<meta charset=\"utf-8\"/>\n<title>");
    out += html(head.isEmpty() ? QStringLiteral("Liste") : head) + QStringLiteral("</title>\n<style>\n") + css;
    out += QStringLiteral("</style>\n</head>\n<body>\n") + verweise(page, pages);
    if (!head.isEmpty()) out += QStringLiteral("<h1>") + html(head) + QStringLiteral("</h1>\n");
    if (form.seitenkopf) out += absatz(form.seitenkopf(page, pages));
    out += tabelle(grid, lines);
    if (form.seitenfuss) out += absatz(form.seitenfuss(page, pages));
    return out + verweise(page, pages) + QStringLiteral("</body>\n</html>\n");
}

/// The pages under a draft's name; they take their own together, or go again with this.
class Entwurf {
public:
    explicit Entwurf(const QString& folder) : m_folder(folder) {}
    ~Entwurf() {
        for (const QString& name : m_names) QFile::remove(draft(name));
    }
    Entwurf(const Entwurf&) = delete;
    Entwurf& operator=(const Entwurf&) = delete;

    bool add(const QString& name, const QString& text) {
        m_names.append(name);
        QFile file(draft(name));
        const QByteArray bytes = text.toUtf8();
        return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(bytes) == bytes.size();
    }
    bool finish() {
        while (!m_names.isEmpty()) {
            if (!replaceFile(draft(m_names.first()), m_folder + m_names.first(), false).isEmpty()) return false;
            m_names.removeFirst();
        }
        return true;
    }

private:
    QString draft(const QString& name) const { return m_folder + name + QStringLiteral(".neu"); }
    const QString m_folder;
    QStringList m_names;
};

/// Removes pages of an earlier report beyond the last one of this.
void raeumeAuf(const QString& folder, int pages) {
    QDir dir(folder);
    for (const QString& name : dir.entryList({QStringLiteral("report-*.htm")}, QDir::Files))
        if (name.mid(7).chopped(4).toInt() > pages) dir.remove(name);
}

}  // namespace

bool Bericht_schreiben(const Grid& grid, const Berichtsform& form, const QString& folder) {
    const int rowsPerPage = form.zeilenJeSeite > 0 ? form.zeilenJeSeite : 60;
    const auto widths = Spaltenbreiten(grid, grid.columnCount(), form.progress);
    if (static_cast<int>(widths.size()) < grid.columnCount()) return false;
    const auto split = seiten(grid, rowsPerPage);
    const int pages = static_cast<int>(split.size());
    const QString css = stil(grid, papier(grid, rowsPerPage, widths));
    Entwurf draft(folder);
    // The first page comes last: it is what the browser opens, and its links then lead to pages that are there.
    for (int page = pages; page >= 1; --page) {
        const Zeilen& lines = split[static_cast<size_t>(page - 1)];
        if (!draft.add(dateiname(page), seite(grid, form, css, lines, page, pages))) return false;
        for (size_t line = 0; line < lines.size(); ++line)
            if (!advance(form.progress)) return false;
    }
    if (!draft.finish()) return false;
    raeumeAuf(folder, pages);
    return true;
}

}  // namespace koben
