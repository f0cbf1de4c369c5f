#pragma once
// Sets blocks on A4 pages: lines, page breaks, running heads, page numbers.
#include <QTextLayout>
#include <memory>

#include "tools/handbuch/Block.h"
#include "tools/handbuch/Navigation.h"

class QPainter;
class QPdfWriter;

namespace koben::handbuch {

/// Dots to an inch in which pages are measured: no rounding of a screen's moves a line.
constexpr int Dots = 1200;
constexpr double mm(double millimetres) { return millimetres / 25.4 * Dots; }
constexpr double pt(double points) { return points / 72 * Dots; }

/// How a style looks. Lengths in points.
struct Format {
    double size, above, below;
    double indent;   ///< of the text
    double hanging;  ///< of its mark, to the left of the text
    bool bold;
    bool stays;  ///< on the page of what follows
    const char* colour = "#1c1f22";
};
const Format& formatOf(Style style);

/// The manual's face, in letters of so many points.
QFont face(double points, bool bold);

class Typesetter {
public:
    /// Pages from the second on; the first is the cover's.
    explicit Typesetter(std::vector<Block> blocks);
    const PageNumbers& pageNumbers() const { return m_numbers; }
    const QHash<QString, Target>& targets() const { return m_targets; }
    int pageCount() const { return static_cast<int>(m_pages.size()); }
    /// All pages but the cover, which is on the paper already.
    void paint(QPainter& painter, QPdfWriter& paper) const;

private:
    struct SetBlock {
        std::unique_ptr<QTextLayout> lines;
        double height = 0;
        double pictureWidth = 0, pictureHeight = 0;  ///< above the lines
    };
    struct Piece {
        size_t block;
        int first, last;  ///< lines; the last does not count
        double x, y;
    };
    struct Page {
        std::vector<Piece> pieces;
        QString part, chapter;  ///< in the running head: the first chapter that begins here, or goes on
        QString latest;         ///< chapter at its end
        bool begun = false;     ///< a chapter begins here
        bool opens = false;     ///< a part: no running head
        double top = 0;         ///< of its columns
    };

    double width(const Block& block) const;
    SetBlock set(const Block& block) const;
    double lineTop(size_t block, int line) const;
    double room() const;
    double gap(size_t block) const;
    double wanted(size_t block) const;
    void flow();
    void place(size_t block);
    void placeLines(size_t block);
    void placePicture(size_t block);
    void note(size_t block);
    void nextColumn();
    void nextPage();
    void paintPiece(QPainter& painter, const Piece& piece) const;
    void paintPageNumber(QPainter& painter, const Piece& piece) const;
    void paintHead(QPainter& painter, const Page& page, int number) const;

    std::vector<Block> m_blocks;
    std::vector<SetBlock> m_set;
    std::vector<Page> m_pages;
    PageNumbers m_numbers;
    QHash<QString, Target> m_targets;
    // where the flow stands
    int m_columns = 1, m_column = 0;
    double m_y = 0, m_below = 0;
    bool m_fresh = true;             ///< nothing stands in this column yet
    std::vector<size_t> m_floating;  ///< pictures that wait for the next page
};

}  // namespace koben::handbuch
