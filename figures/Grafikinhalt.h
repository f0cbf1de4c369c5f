#pragma once
// What a plot is asked for, and what it makes of it.
#include <functional>
#include <memory>
#include <optional>

#include "figures/Chart.h"
#include "figures/Sauenbuch.h"
#include "figures/Zeitraum.h"

namespace koben {

/// What a plot is to show.
struct Grafikauftrag {
    Database db;
    qint32 heute = 0;
    Zeitraum period = {};  ///< no day of it after `heute`
    int tragezeit = 0;     ///< days from service to farrowing, as the cycle has it
    int ziel = 0;          ///< services a week that the farm aims at; 0 for none
};

/// The book of sows that all plots of the period can use.
std::shared_ptr<const Sauenbuch> bookFor(const Grafikauftrag& order);

/// " where" with the period on `Datum`; "" where that is most of what was ever booked: then the table is read in its
/// own order, which is faster, and whoever reads looks at the days.
QString periodCondition(const Grafikauftrag& order);

struct Grafikinhalt {
    ChartTable table;
    Chart chart;
    /// Where a cell comes from, by row and column from 1; nothing for names and targets. Keeps what it needs.
    std::function<std::optional<Explanation>(int row, int column)> behind;
};

/// Part of a whole in percent (or times another factor) with one decimal, half away from zero; Null of nothing.
Value share(qint64 part, qint64 whole, int factor = 100);

}  // namespace koben
