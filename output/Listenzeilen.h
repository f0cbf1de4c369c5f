#pragma once
// A list as its readers see it: the rows of a grid with what its separator rows mean, and the widths of its columns.
// The writers walk these, twice over all rows: once to measure, once to write.
#include <vector>

#include "forms/Grid.h"
#include "forms/Koben.h"

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

/// One row more of work that may be cancelled; nobody asks where there is no progress.
inline bool advance(Progress* progress) { return !progress || progress->advance(); }

/// Characters of the longest text of each column up to `last`, its title included; empty where cancelled.
std::vector<qsizetype> Spaltenbreiten(const Grid& grid, int last, Progress* progress);

/// A text that must not break its line or its columns: a control character is a blank.
QString einzeilig(QString text);

}  // namespace koben
