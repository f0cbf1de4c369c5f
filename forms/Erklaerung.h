#pragma once
// Where a figure in a list comes from: what it means, what it is made of, and the bookings or animals behind it.
#include "forms/Grid.h"

namespace koben {

struct Explanation {
    QString sentence;  ///< what the figure is, in German
    /// The figure and, where it is a quotient, its parts, as they read. The columns of the rows named like them,
    /// "Zähler", "Nenner" and "Wert", add up to them.
    std::optional<QString> numerator = {}, denominator = {}, value = {};
    struct Line {
        Grid::Row cells;
        qint64 animal = 0;  ///< ID of the animal that the line is about, 0 for none
    };
    std::vector<Column> columns = {};
    std::vector<Line> lines = {};

    /// "Zähler", "Nenner" and "Wert" with their values, as far as there are any.
    std::vector<std::pair<QString, QString>> figures() const;
    /// Puts columns and lines into an empty grid.
    void fill(Grid& grid) const;
};

/// Shows where a cell of the list comes from, in a screen of its own. Says so where the list does not tell it.
void Zelle_erklaeren(Grid& list, int row, int column);

}  // namespace koben
