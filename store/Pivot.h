#pragma once
#include "store/Connection.h"
#include "store/TableData.h"

namespace koben {

/// Runs a select and reads the whole result, column by column. `go` is asked every few thousand rows whether to read
/// on; nullptr where it says no.
std::shared_ptr<TableData> readTable(Connection& connection, const Command& command,
                                     const std::function<bool(qint64 rows)>& go = {});
/// Runs the two selects of a crosstab and lays the cells out: row columns first, then one column a pivot value.
std::shared_ptr<TableData> readPivot(Connection& connection, const Command& command);

}  // namespace koben
