#include "output/Tabellendruck.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "output/Listenzeilen.h"

namespace koben {
namespace {

constexpr double largest = 9, smallest = 6, readable = 7.5;  // points
constexpr double gap = 2.4;                                  // millimetres between columns
constexpr double lineHeight = 0.352778 * 1.3;                // millimetres a point
const QString face = QStringLiteral("Liberation Sans");

struct Spalte {
    int number;    ///< of the grid
    double width;  ///< millimetres at the largest size
    double anchor;
};

QString titleOf(const Column& column) { return column.caption.isEmpty() ? column.title : column.caption; }

double anchorOf(Align align) { return align == Align::Right ? 1 : align == Align::Centre ? 0.5 : 0; }

/// Shown columns with the width of their widest text. Texts much shorter than the longest so far are not measured.
std::vector<Spalte> measured(const Grid& grid, const Tabellenblatt& paper, Progress* progress) {
    std::vector<Spalte> columns;
    std::vector<qsizetype> longest;
    for (int c = 1; c <= grid.columnCount(); ++c) {
        const QString title = titleOf(grid.column(c));
        if (grid.column(c).technical) continue;
        const double width = paper.measure(title, {.name = face, .points = largest, .bold = true});
        columns.push_back({c, width, anchorOf(grid.column(c).align)});
        longest.push_back(0);
    }
    for (int row = 1; row <= grid.rowCount(); ++row) {
        if (!advance(progress)) return {};
        for (size_t c = 0; c < columns.size() && !grid.isSeparator(row); ++c)
            for (const QString& line : grid.cell(row, columns[c].number).split(u'\n')) {
                if (line.size() * 5 < longest[c] * 3) continue;
                longest[c] = std::max(longest[c], line.size());
                const double width = paper.measure(einzeilig(line), {.name = face, .points = largest});
                columns[c].width = std::max(columns[c].width, width);
            }
    }
    return columns;
}

/// Points in which all columns would stand beside each other; the gaps between them do not shrink.
double fittingPoints(const std::vector<Spalte>& columns, double width) {
    const double texts = std::accumulate(columns.begin(), columns.end(), 0.0,
                                         [](double sum, const Spalte& column) { return sum + column.width; });
    return largest * (width - gap * static_cast<double>(columns.size())) / std::max(texts, 1.0);
}

/// The pages of one list.
class Satz {
public:
    Satz(const Grid& grid, const Tabellenblatt& paper, std::vector<Spalte> columns, QString kopf)
        : m_grid(grid), m_paper(paper), m_columns(std::move(columns)), m_kopf(std::move(kopf)) {
        m_points = std::clamp(fittingPoints(m_columns, paper.width), smallest, largest);
        for (Spalte& column : m_columns) column.width = std::min(column.width * m_points / largest + gap, paper.width);
        m_line = m_points * lineHeight;
        formBands();
    }

    Drawing draw(Progress* progress) {
        beginPages();
        const auto lines = Listenzeilen(m_grid);
        for (size_t i = 0; i < lines.size(); ++i) {
            if (!advance(progress)) return {};
            const double height = heightOf(lines[i]);
            // A line before a sum does not stand alone at the foot of a page.
            const double wanted =
                lines[i].art == Zeilenart::Strich && i + 1 < lines.size() ? height + heightOf(lines[i + 1]) : height;
            if (m_y + wanted > m_paper.height && m_y > m_top) beginPages();
            for (size_t band = 0; band < m_bands.size(); ++band) addRow(lines[i], band);
            m_y += height;
        }
        return std::move(m_drawing);
    }

private:
    using Band = std::vector<Spalte>;

    /// The columns that stand beside each other on a page; the first one names the rows on each.
    void formBands() {
        double x = 0;
        for (const Spalte& column : m_columns) {
            const bool first = &column == &m_columns.front();
            if (first || x + column.width > m_paper.width + 0.01) {
                m_bands.emplace_back();
                x = 0;
                if (!first && m_columns.front().width + column.width <= m_paper.width) {
                    m_bands.back().push_back(m_columns.front());
                    x = m_columns.front().width;
                }
            }
            m_bands.back().push_back(column);
            x += column.width;
        }
    }

    Typeface typeface(bool bold = false) const { return {.name = face, .points = m_points, .bold = bold}; }

    void beginPages() {
        const bool first = m_drawing.pages.front().items.empty();
        if (first) m_drawing.pages.clear();
        m_firstPage = m_drawing.pages.size();
        m_y = 0;
        const double head = first && !m_kopf.isEmpty() ? 2 * m_line : 0;
        for (size_t band = 0; band < m_bands.size(); ++band) {
            m_drawing.pages.emplace_back();
            if (head > 0) add(band, PlacedText{{0, 0, m_paper.width, m_line}, 0, {m_kopf, typeface(true)}});
            m_y = head;
            addHead(band);
        }
        m_y = m_top = head + 1.6 * m_line;
    }

    void add(size_t band, DrawItem item) { m_drawing.pages[m_firstPage + band].items.push_back(std::move(item)); }

    void addHead(size_t band) {
        const double width = widthOf(band);
        add(band, Rectangle{{0, m_y, width, 1.4 * m_line}, 0, 232});
        double x = 0;
        for (const Spalte& column : m_bands[band]) {
            addText(band, column, x, m_y + 0.2 * m_line, titleOf(m_grid.column(column.number)), true);
            x += column.width;
        }
        add(band, StraightLine{{0, m_y + 1.4 * m_line}, {width, m_y + 1.4 * m_line}, 0.3});
    }

    double widthOf(size_t band) const {
        double width = 0;
        for (const Spalte& column : m_bands[band]) width += column.width;
        return width;
    }

    void addText(size_t band, const Spalte& column, double x, double y, const QString& text, bool bold) {
        if (!text.isEmpty())
            add(band, PlacedText{{x + gap / 2, y, column.width - gap, m_line}, column.anchor, {text, typeface(bold)}});
    }

    /// The lines that a cell takes.
    QStringList wrapped(int row, const Spalte& column) const {
        QStringList lines;
        for (const QString& whole : m_grid.cell(row, column.number).split(u'\n')) {
            QString rest = einzeilig(whole);
            // Only a column that was cut down to the paper can hold a text that is too wide.
            while (column.width >= m_paper.width && rest.size() > 1 &&
                   m_paper.measure(rest, typeface()) > column.width - gap) {
                qsizetype fits = rest.size() - 1;
                while (fits > 1 && m_paper.measure(rest.left(fits), typeface()) > column.width - gap)
                    fits = fits * 9 / 10;
                lines.append(rest.left(fits));
                rest = rest.mid(fits);
            }
            lines.append(rest);
        }
        return lines;
    }

    double heightOf(const Listenzeile& line) const {
        if (line.art == Zeilenart::Strich) return 0.5 * m_line;
        if (line.art == Zeilenart::Block) return 2 * m_line;
        qsizetype most = 1;
        for (const Spalte& column : m_columns)
            if (column.width >= m_paper.width || m_grid.cell(line.row, column.number).contains(u'\n'))
                most = std::max(most, wrapped(line.row, column).size());
        return static_cast<double>(most) * m_line + 0.15 * m_line;
    }

    void addRow(const Listenzeile& line, size_t band) {
        const double width = widthOf(band);
        if (line.art == Zeilenart::Strich)
            add(band, StraightLine{{0, m_y + 0.25 * m_line}, {width, m_y + 0.25 * m_line}, 0.3});
        if (line.art != Zeilenart::Daten) return;
        double x = 0;
        for (const Spalte& column : m_bands[band]) {
            double y = m_y;
            for (const QString& text : wrapped(line.row, column)) {
                addText(band, column, x, y, text, false);
                y += m_line;
            }
            x += column.width;
        }
        const double foot = m_y + heightOf(line);
        add(band, StraightLine{{0, foot}, {width, foot}, 0.05});
    }

    const Grid& m_grid;
    const Tabellenblatt& m_paper;
    std::vector<Spalte> m_columns;
    const QString m_kopf;
    std::vector<Band> m_bands;
    Drawing m_drawing;
    size_t m_firstPage = 0;  ///< of the pages that stand beside each other
    double m_points = 0, m_line = 0, m_y = 0, m_top = 0;
};

}  // namespace

bool braucht_Querformat(const Grid& grid, const Tabellenblatt& upright) {
    return fittingPoints(measured(grid, upright, nullptr), upright.width) < readable;
}

Drawing Tabellendruck(const Grid& grid, const Tabellenblatt& paper, const Sheet& sheet, const QString& kopf,
                      Progress* progress) {
    Satz satz(grid, paper, measured(grid, paper, progress), kopf);
    Drawing drawing;
    if (!progress || !progress->cancelled()) drawing = satz.draw(progress);
    drawing.sheet = sheet;
    drawing.landscape = paper.width > paper.height;
    return drawing;
}

}  // namespace koben
