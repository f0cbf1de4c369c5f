#pragma once
// A chart and its table as a drawing.
#include "figures/Chart.h"

namespace koben {

/// Areas bear the id "row.column" of their cell, see cellOf(). `words`: with title and sentence, as on paper.
Sketch drawChart(const Chart& chart, const ChartTable& table, QSizeF size, bool words);

}  // namespace koben
