#include "output/Listenzeilen.h"

namespace koben {

std::vector<Listenzeile> Listenzeilen(const Grid& grid) {
    std::vector<Listenzeile> lines;
    const int rows = grid.rowCount();
    lines.reserve(static_cast<size_t>(rows));
    for (int row = 1; row <= rows; ++row) {
        if (!grid.isSeparator(row)) {
            lines.push_back({Zeilenart::Daten, row});
        } else if (row == rows || grid.isSeparator(row + 1)) {
            lines.push_back({Zeilenart::Block, row});
            ++row;
        } else {
            lines.push_back({Zeilenart::Strich, row});
        }
    }
    return lines;
}

std::vector<qsizetype> Spaltenbreiten(const Grid& grid, int last, Progress* progress) {
    std::vector<qsizetype> widths;
    for (int c = 1; c <= last; ++c) widths.push_back(grid.column(c).title.size());
    for (int row = 1; row <= grid.rowCount(); ++row) {
        for (int c = 1; c <= last; ++c) {
            qsizetype& width = widths[static_cast<size_t>(c - 1)];
            width = std::max(width, grid.cell(row, c).size());
        }
        if (!advance(progress)) return {};
    }
    return widths;
}

QString einzeilig(QString text) {
    for (QChar& c : text)
        if (c < u' ' || c == u'\x7f') c = u' ';
    return text;
}

}  // namespace koben
