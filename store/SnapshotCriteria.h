#pragma once
#include "store/Connection.h"
#include "store/TableData.h"

namespace koben {

/// The first row of a finished table that meets a where text; the number of rows where none does.
int firstMatch(Connection& connection, const std::shared_ptr<const sql::Catalog>& catalog, const TableData& table,
               const QString& criteria);

}  // namespace koben
