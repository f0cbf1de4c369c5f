#include "tools/handbuch/Typesetter.h"

#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace koben::handbuch {
namespace {

constexpr double PageHeight = mm(297), Left = mm(25), TextWidth = mm(162), Top = mm(26), Bottom = mm(272);
constexpr double HeadLine = mm(17), FootLine = mm(284), BetweenColumns = mm(8);
constexpr double PixelWidth = mm(0.155), HighestPicture = mm(100);
constexpr const char* Blue = "#23557a";

/// At least so many lines of a text stand together on either side of a page break.
constexpr int Together = 2;

const std::array<Format, static_cast<size_t>(Style::Count)> Formats{{
    {24, 0, 26, 42, 42, true, true, Blue},        // Part
    {24, 0, 26, 0, 0, true, true, Blue},          // Front
    {15, 26, 7, 42, 42, true, true, Blue},        // Chapter
    {11, 12, 3, 0, 0, true, true, Blue},          // Heading
    {10, 6, 1, 0, 0, true, true},                 // Field
    {10, 4, 4, 0, 0, false, false},               // Text
    {10, 0, 5, 14, 0, false, false},              // Explanation
    {10, 2, 2, 16, 16, false, false},             // Item
    {8.5, 8, 10, 0, 0, false, false, "#50565c"},  // Picture
    {10.5, 8, 2, 34, 34, true, true},             // ContentsPart
    {10, 1, 1, 34, 34, false, false},             // ContentsChapter
    {9, 4, 0, 0, 0, true, true},                  // Keyword
    {9, 0, 0, 9, 0, false, false},                // Entry
}};

constexpr double Leading = 1.32;  // of the letters' size

bool opens(const Block& block) { return block.style == Style::Part || block.style == Style::Front; }

QFont faceOf(const Format& format) { return face(format.size, format.bold); }

/// Where the words of links lead.
QList<QTextLayout::FormatRange> ranges(const Block& block) {
    QList<QTextLayout::FormatRange> all;
    const bool plain = !block.pageOf.isEmpty();  // lists of links look like lists
    for (const Kapitel::Link& link : block.links) {
        QTextCharFormat format;
        format.setAnchor(true);
        format.setAnchorHref(u'#' + link.target);
        if (!plain) format.setForeground(QColor(Blue));
        all.append({static_cast<int>(link.place), static_cast<int>(link.length), format});
    }
    return all;
}

}  // namespace

const Format& formatOf(Style style) { return Formats[static_cast<size_t>(style)]; }

QFont face(double points, bool bold) {
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPixelSize(static_cast<int>(std::lround(pt(points))));
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

Typesetter::Typesetter(std::vector<Block> blocks) : m_blocks(std::move(blocks)) {
    for (const Block& block : m_blocks) {
        if (opens(block)) m_columns = block.columns;
        m_set.push_back(set(block));
    }
    flow();
}

double Typesetter::width(const Block& block) const {
    if (opens(block)) return TextWidth - pt(formatOf(block.style).indent);
    const double column = (TextWidth - (m_columns - 1) * BetweenColumns) / m_columns;
    return column - pt(formatOf(block.style).indent) - (block.pageOf.isEmpty() ? 0 : mm(10));
}

Typesetter::SetBlock Typesetter::set(const Block& block) const {
    const Format& format = formatOf(block.style);
    SetBlock result;
    if (!block.picture.isNull()) {
        const double scale =
            std::min({PixelWidth, TextWidth / block.picture.width(), HighestPicture / block.picture.height()});
        result.pictureWidth = block.picture.width() * scale;
        result.pictureHeight = block.picture.height() * scale;
        result.height = result.pictureHeight + pt(4);
    }
    result.lines = std::make_unique<QTextLayout>(block.text, faceOf(format));
    QTextOption option;
    option.setWrapMode(QTextOption::WordWrap);
    result.lines->setTextOption(option);
    result.lines->setFormats(ranges(block));
    result.lines->beginLayout();
    for (QTextLine line = result.lines->createLine(); line.isValid(); line = result.lines->createLine()) {
        line.setLineWidth(width(block));
        line.setPosition({0, result.height});
        result.height += pt(format.size * Leading);
    }
    result.lines->endLayout();
    return result;
}

double Typesetter::lineTop(size_t block, int line) const {
    const QTextLayout& lines = *m_set[block].lines;
    return line < lines.lineCount() ? lines.lineAt(line).y() : m_set[block].height;
}

double Typesetter::room() const { return Bottom - m_y; }

/// Above a block; fields that share their explanation stand close.
double Typesetter::gap(size_t block) const {
    const bool shared = m_blocks[block].style == Style::Field && block > 0 && m_blocks[block - 1].style == Style::Field;
    return shared ? 0 : pt(formatOf(m_blocks[block].style).above);
}

/// The height of a block with all that must stand on its page, and the first lines of what follows.
double Typesetter::wanted(size_t block) const {
    double height = 0;
    for (size_t i = block; i < m_blocks.size(); ++i) {
        const Format& format = formatOf(m_blocks[i].style);
        if (m_blocks[i].style == Style::Picture) continue;  // may float
        height += i == block ? 0 : gap(i);
        const int lines = m_set[i].lines->lineCount();
        if (!format.stays) return height + lineTop(i, lines <= 2 * Together - 1 ? lines : Together);
        height += m_set[i].height + pt(format.below);
    }
    return height;
}

void Typesetter::flow() {
    m_pages.resize(1);
    nextPage();
    for (size_t i = 0; i < m_blocks.size(); ++i) {
        const bool opening = opens(m_blocks[i]);
        if ((opening || m_blocks[i].style == Style::Chapter) && !m_floating.empty()) nextPage();
        if (opening && !m_pages.back().pieces.empty()) nextPage();
        if (opening) m_columns = m_blocks[i].columns;
        place(i);
        if (!opening) continue;
        m_pages.back().opens = true;
        m_pages.back().top = m_y + m_below;
    }
    while (!m_floating.empty()) nextPage();
}

void Typesetter::place(size_t block) {
    if (m_blocks[block].style == Style::Picture) return placePicture(block);
    if (!m_fresh) m_y += std::max(m_below, gap(block));
    if (!m_fresh && wanted(block) > room()) nextColumn();
    placeLines(block);
    m_below = pt(formatOf(m_blocks[block].style).below);
}

void Typesetter::placeLines(size_t block) {
    const int lines = m_set[block].lines->lineCount();
    const double column = (TextWidth + BetweenColumns) / m_columns;
    for (int first = 0; first < lines;) {
        int last = first;
        while (last < lines && lineTop(block, last + 1) - lineTop(block, first) <= room()) ++last;
        if (last < lines) last = std::min(last, lines - Together);
        if (last < first + std::min(Together, lines - first) && !m_fresh) {
            nextColumn();
            continue;
        }
        last = std::clamp(last, first + 1, lines);
        if (first == 0) note(block);
        const double x = Left + m_column * column + pt(formatOf(m_blocks[block].style).indent);
        m_pages.back().pieces.push_back({block, first, last, x, m_y});
        m_y += lineTop(block, last) - lineTop(block, first);
        m_fresh = false;
        first = last;
        if (first < lines) nextColumn();
    }
}

/// Where it is, or else on top of the next page: the text goes on in the meantime.
void Typesetter::placePicture(size_t block) {
    const Format& format = formatOf(Style::Picture);
    const double above = m_fresh ? 0 : std::max(m_below, pt(format.above));
    if (!m_floating.empty() || above + m_set[block].height > room()) return m_floating.push_back(block);
    m_y += above;
    m_pages.back().pieces.push_back({block, 0, m_set[block].lines->lineCount(), Left, m_y});
    m_y += m_set[block].height;
    m_below = pt(format.below);
    m_fresh = false;
}

/// What running heads and page numbers make of a block that begins here.
void Typesetter::note(size_t block) {
    const Block& begun = m_blocks[block];
    Page& page = m_pages.back();
    if (!begun.anchor.isEmpty()) {
        m_numbers[begun.anchor] = pageCount();
        m_targets[begun.anchor] = {pageCount(), (PageHeight - m_y) / pt(1) + 12};
    }
    if (opens(begun)) page.part = page.chapter = page.latest = begun.text;
    if (begun.style != Style::Chapter) return;
    page.latest = begun.mark + QStringLiteral("  ") + begun.text;
    if (!std::exchange(page.begun, true)) page.chapter = page.latest;
}

void Typesetter::nextColumn() {
    if (++m_column >= m_columns) return nextPage();
    m_y = m_pages.back().top;
    m_fresh = true;
}

void Typesetter::nextPage() {
    Page page;
    page.part = m_pages.back().part;
    page.top = Top;
    page.chapter = page.latest = m_pages.back().latest;
    m_pages.push_back(page);
    m_column = 0;
    m_y = Top;
    m_fresh = true;
    std::vector<size_t> waiting;
    waiting.swap(m_floating);
    for (const size_t picture : waiting) placePicture(picture);
    if (!std::exchange(m_fresh, true)) m_y += m_below;
}

void Typesetter::paint(QPainter& painter, QPdfWriter& paper) const {
    for (size_t i = 1; i < m_pages.size(); ++i) {
        paper.newPage();
        paintHead(painter, m_pages[i], static_cast<int>(i) + 1);
        for (const Piece& piece : m_pages[i].pieces) paintPiece(painter, piece);
    }
}

void Typesetter::paintPiece(QPainter& painter, const Piece& piece) const {
    const Block& block = m_blocks[piece.block];
    const SetBlock& set = m_set[piece.block];
    const Format& format = formatOf(block.style);
    if (!block.picture.isNull()) {
        const QRectF frame(piece.x, piece.y, set.pictureWidth, set.pictureHeight);
        painter.drawImage(frame, block.picture);
        painter.setPen(QPen(QColor(0x9a, 0xa2, 0xaa), pt(0.5)));
        painter.drawRect(frame);
    }
    painter.setPen(QColor(QLatin1String(format.colour)));
    const double start = block.picture.isNull() ? lineTop(piece.block, piece.first) : 0;
    for (int i = piece.first; i < piece.last; ++i) set.lines->lineAt(i).draw(&painter, {piece.x, piece.y - start});
    if (piece.first == 0 && !block.mark.isEmpty()) {
        painter.setFont(faceOf(format));
        const double ascent = set.lines->lineAt(0).ascent();
        painter.drawText(QPointF(piece.x - pt(format.hanging), piece.y + ascent), block.mark);
    }
    if (!block.pageOf.isEmpty() && piece.last == set.lines->lineCount()) paintPageNumber(painter, piece);
}

void Typesetter::paintPageNumber(QPainter& painter, const Piece& piece) const {
    const Block& block = m_blocks[piece.block];
    const QTextLine last = m_set[piece.block].lines->lineAt(piece.last - 1);
    const double base = piece.y + last.y() - lineTop(piece.block, piece.first) + last.ascent();
    const double edge = piece.x + last.width() + mm(10);
    const QFont font = faceOf(formatOf(block.style));
    const QFontMetricsF metrics(font);
    const QString number = QString::number(m_numbers.value(block.pageOf));
    painter.setFont(font);
    painter.drawText(QPointF(edge - metrics.horizontalAdvance(number), base), number);
    const double step = pt(5);
    for (double x = edge - mm(8); x > piece.x + last.naturalTextWidth() + step; x -= step)
        painter.drawText(QPointF(x, base), QStringLiteral("."));
}

/// Outer edge: left on even pages, right on odd ones.
void Typesetter::paintHead(QPainter& painter, const Page& page, int number) const {
    const bool even = number % 2 == 0;
    const QFont font = face(8.5, false);
    painter.setFont(font);
    painter.setPen(QColor(0x50, 0x56, 0x5c));
    const auto write = [&](const QString& text, double base) {
        const double x = even ? Left : Left + TextWidth - QFontMetricsF(font).horizontalAdvance(text);
        painter.drawText(QPointF(x, base), text);
    };
    write(QString::number(number), FootLine);
    if (page.opens) return;
    write(even ? page.part : page.chapter, HeadLine);
    painter.setPen(QPen(QColor(0xc4, 0xca, 0xd0), pt(0.5)));
    painter.drawLine(QPointF(Left, HeadLine + mm(2)), QPointF(Left + TextWidth, HeadLine + mm(2)));
}

}  // namespace koben::handbuch
