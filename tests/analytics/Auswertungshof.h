#pragma once
// A farm for analyses, and the promise that every figure adds up from what is said to stand behind it.
#include "forms/Erklaerung.h"
#include "tests/support/Hof.h"

namespace koben {

class Auswertungshof : public Hof {
public:
    /// The column of this name, added up.
    static double added(const Explanation& told, const QString& name) {
        double sum = 0;
        for (size_t c = 0; c < told.columns.size(); ++c)
            for (const auto& line : told.lines)
                if (told.columns[c].title == name) sum += line.cells.value(static_cast<qsizetype>(c)).toDouble();
        return sum;
    }
    static double number(QString text) { return text.remove(u'.').replace(u',', u'.').remove(" €").toDouble(); }

    /// Every cell from this column on is explained, and adds up; an empty one has nothing behind it.
    static void expectExplained(const Grid& grid, int first) {
        for (int row = 1; row <= grid.rowCount(); ++row)
            for (int column = first; column <= grid.columnCount(); ++column) {
                const auto told = grid.explanation(row, column);
                const std::string where = (grid.cell(row, 1) + " " + grid.column(column).title).toStdString();
                ASSERT_TRUE(told) << where;
                EXPECT_EQ(told->value, grid.cell(row, column)) << where;
                if (told->denominator) {
                    EXPECT_EQ(added(*told, "Nenner"), number(*told->denominator)) << where;
                    EXPECT_NEAR(added(*told, "Zähler"), number(*told->numerator), 0.005) << where;
                    EXPECT_NEAR(added(*told, "Zähler") / std::max(added(*told, "Nenner"), 1.0), number(*told->value),
                                0.01);
                } else {
                    EXPECT_NEAR(added(*told, "Wert"), number(*told->value), 0.02) << where;
                }
            }
    }
};

}  // namespace koben
