#pragma once
// Charts as drawing lists: a table's columns as bars, stacks, lines and points over its rows. What is drawn is what
// stands in the cells, and each bar or point can be pointed at by the cell that it shows. Millimetres throughout.
#include "figures/Axis.h"
#include "forms/Grid.h"
#include "forms/Zeichnung.h"

namespace koben {

/// The cells of a chart; its first column names the classes.
struct ChartTable {
    std::vector<Column> columns;
    std::vector<Grid::Row> rows;
    const Value& cell(int row, int column) const;  ///< from 1; Null outside
    QString text(int row, int column) const;       ///< as the grid shows it, thousands parted
};

/// How a series is drawn. The looks differ in tone, and in grey by strength, hatch, dash and mark.
struct SeriesLook {
    Tone tone;
    double strength;
    Hatch hatch;
    Dash dash;
    Shape shape;
};
enum class Look { First, Second, Third, Fourth, Target, Soft };  ///< soft: bars behind lines
const SeriesLook& lookOf(Look look);

struct Series {
    enum class Kind { Bars, Stack, Line, Points };
    int column;  ///< from 1
    Kind kind = Kind::Bars;
    Look look = Look::First;
    int low = 0, high = 0;  ///< columns with the ends of an interval; 0 for none
};

/// A stretch of classes with a name, shaded behind the bars.
struct Band {
    QString first, last;  ///< names of classes
    QString name;
};

/// One pair of axes.
struct ChartPanel {
    QString unit = {};        ///< along the values: "Sauen je Woche"
    QString classTitle = {};  ///< along the classes; not needed for weeks and months
    Classes classes = Classes::Plain;
    int firstRow = 1, lastRow = 0;  ///< of the table; 0 for its end
    std::vector<Series> series = {};
    std::vector<Band> bands = {};
    bool fromZero = true;
    bool level = false;  ///< classes below each other, values to the right: for long names
};

struct Chart {
    QString title = {}, sentence = {};  ///< above and below, where words are wanted
    std::vector<ChartPanel> panels = {};
    bool sideBySide = false;  ///< else below each other
    QString empty = {};       ///< what stands there instead where no cell has a value
};

/// The cell that an area of a drawn chart shows; nothing for another id.
std::optional<std::pair<int, int>> cellOf(const QString& area);

}  // namespace koben
