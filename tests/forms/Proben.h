#pragma once
// Tiny forms for the tests of controls and forms, and their state as short texts.
#include "tests/support/Fakes.h"

namespace koben {

/// A form with nothing of its own; tests add the controls.
struct LeereMaske : Form {
    explicit LeereMaske(Koben& run, const QString& name = QStringLiteral("Leer")) : Form(run, name, name) {}
};

/// The grid's column, top to bottom, with the marks of each row: `>` current, `*` marked.
inline std::string spalte(const Grid& grid, int column) {
    QStringList cells;
    for (int row = 1; row <= grid.rowCount(); ++row) {
        QString mark = grid.row() == row ? QStringLiteral(">") : QString();
        if (grid.marked(row)) mark += u'*';
        cells += mark + grid.cell(row, column);
    }
    return cells.join(u' ').toStdString();
}

}  // namespace koben
