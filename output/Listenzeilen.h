#pragma once
// A list as its readers see it: the rows of a grid with the separator rows (first cell ".") already understood. The
// text list and the HTML report both walk it.
#include <vector>

#include "forms/Grid.h"

namespace koben {

enum class Zeilenart {
    Daten,   ///< a row of the grid
    Strich,  ///< a separator: what follows is a sum
    Block,   ///< the end of a block: an empty space
};

struct Listenzeile {
    Zeilenart art;
    int row;  ///< of the grid
};

/// A separator that is the last row, or that another one follows, ends a block and takes the other one with it; any
/// other separator is a line.
std::vector<Listenzeile> Listenzeilen(const Grid& grid);

}  // namespace koben
