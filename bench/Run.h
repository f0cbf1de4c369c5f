#pragma once
// Runs the rows: the program on one copy of the farm, the floor on another, row by row, and prints what came out.
#include <QString>

#include "bench/Measurement.h"

namespace koben {

struct RunOptions {
    QString farm;       ///< the farm's file, which stays as it is
    QString only;       ///< only rows whose name contains this, or one of several parted by |
    int repeats = 7;    ///< counted repetitions; fewer where one takes long
    bool floor = true;  ///< false: the program alone, for a profiler
};

/// The number of rows that miss their limit.
int measure(const RunOptions& options, QDate today);

}  // namespace koben
