#pragma once
// Runs the rows: the program on one copy of the farm, the floor on another, row by row, and prints what came out.
#include <QString>

#include "bench/Messung.h"

namespace koben {

struct Laufvorgabe {
    QString hof;        ///< the farm's file, which stays as it is
    QString nur;        ///< only rows whose name contains this, or one of several parted by |
    int mal = 7;        ///< counted repetitions; fewer where one takes long
    bool boden = true;  ///< false: the program alone, for a profiler
};

/// The number of rows that miss their limit.
int messen(const Laufvorgabe& vorgabe, QDate heute);

}  // namespace koben
