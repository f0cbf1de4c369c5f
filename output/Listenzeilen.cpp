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

}  // namespace koben
