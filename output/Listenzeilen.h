#pragma once
// A list as its readers see it: the rows of a grid with the separator rows (first cell ".") already understood, the
// widths of its columns, and how far a writer is with it. The writers walk these.
#include <functional>
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

/// Is told the percentage done; false where the user wants no more of it. Empty: nobody asks.
using Weiter = std::function<bool(int percent)>;

/// Counts the rows that a writer has gone through, each of them `passes` times.
class Fortgang {
public:
    Fortgang(const Weiter& weiter, const Grid& grid, int passes)
        : m_weiter(weiter), m_total(std::max<qint64>(1, static_cast<qint64>(grid.rowCount()) * passes)) {}
    /// One row more; false once the user has cancelled.
    bool step() {
        if (++m_done % rowsPerReport == 0 && m_weiter) m_on = m_weiter(static_cast<int>(m_done * 100 / m_total));
        return m_on;
    }

private:
    static constexpr qint64 rowsPerReport = 64;
    const Weiter& m_weiter;
    qint64 m_total, m_done = 0;
    bool m_on = true;
};

/// Characters of the longest text of each column up to `last`, its title included; empty where cancelled.
std::vector<qsizetype> Spaltenbreiten(const Grid& grid, int last, Fortgang& fortgang);

}  // namespace koben
