#pragma once
// The work plan as a list: by date, or as a chart with one column a day; and its lines for the pocket device.
#include <array>

#include "core/Arbeitsplan.h"
#include "forms/Grid.h"

namespace koben {

/// What the user chose about the look of the plan.
struct Arbeitsplanform {
    bool chart = false;
    std::array<bool, 4> fields{};  ///< Nummer, Art, Stallnr, Gruppe
    int sort = 0;                  ///< of the chart: Nummer; Art, Stallnr or Gruppe before it
    QString due, free;             ///< marks of the chart's days
};

/// Fills `grid` anew with the sorted plan. A plan without rows leaves the columns alone in it.
void Arbeitsplan_ausgeben(Grid& grid, const Table& animals, std::vector<Faelligkeit> plan, const QStringList& works,
                          Planzeitraum period, const Arbeitsplanform& form);

/// One line a row of the grid: beginning, end and kind of work, then number and stall as far as they are columns,
/// a tab behind each.
QString Arbeitsplan_Pocket(const Grid& grid);

}  // namespace koben
