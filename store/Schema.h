#pragma once
// The program's own tables, and the indexes that its questions want.
#include <functional>
#include <vector>

#include "store/Database.h"

namespace koben {

class Connection;

/// The statements that make a new database, in the dialect and in the order in which they run: each table, its
/// indexes, its first rows.
const std::vector<QString>& schemaStatements();

/// Adds the missing helper indexes and the change log for the tables and fields that are there. They are SQLite's own:
/// the dialect does not see them. Run when a file is opened and after the tables were made.
void addHelpers(const Database& database);
/// False where `on`, asked before each, answered false: then some are missing.
bool addHelpers(Connection& connection, const std::function<bool()>& on = {});
/// Takes the helper indexes away, within a transaction that is about to write very many rows and ends with
/// addHelpers(): so they are made in one go.
void dropHelpers(Connection& connection);

}  // namespace koben
