#pragma once
// A list as a printed table: its columns as wide as their texts, its head on every page.
#include "forms/Grid.h"
#include "forms/Koben.h"
#include "forms/Zeichnung.h"

namespace koben {

/// What a table is printed on. `measure` gives the width of a text in a typeface, in millimetres.
struct Tabellenblatt {
    double width, height;  ///< within the margins, millimetres
    std::function<double(const QString&, const Typeface&)> measure;
};

/// True where the list is too wide for upright paper in a size that reads well.
bool braucht_Querformat(const Grid& grid, const Tabellenblatt& upright);

/// The pages. The type shrinks until all columns fit beside each other; where it would no longer be read, the columns
/// go on on further pages, each with the first column. Nothing is cut: a text wider than the paper takes several lines.
/// `kopf` stands above the table of the first page, "" for none. Empty pages where the work was cancelled.
Drawing Tabellendruck(const Grid& grid, const Tabellenblatt& paper, const Sheet& sheet, const QString& kopf,
                      Progress* progress = nullptr);

}  // namespace koben
