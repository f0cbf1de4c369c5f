#pragma once
// The spreadsheet: a grid as an .xlsx file.
#include <optional>

#include "output/Listenzeilen.h"

namespace koben {

struct Tabellenform {
    QString datum = {};            ///< above the table, none where empty
    QString kopf = {};             ///< a line of text under the date, none where empty
    Progress* progress = nullptr;  ///< of two steps a row
};

/// The number that a cell stands for: a plain decimal number with at most one comma and no point, in single precision.
/// Everything else (dates, figures with a thousands point, ranges) stays a text.
std::optional<double> Tabellenzahl(const QString& cell);

/// Writes the file, whole or not at all; false where it cannot be written or was cancelled. Texts are stored as texts,
/// whatever they begin with; no cell is a formula.
bool Tabelle_schreiben(const Grid& grid, const QString& path, const Tabellenform& form);

/// Where the next spreadsheet of a folder goes: "liste.xlsx", or the first of "liste-2.xlsx" ... that no spreadsheet
/// program holds open (its lock file stands beside).
QString Tabellendatei(const QString& folder);

}  // namespace koben
