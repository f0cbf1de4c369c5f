#pragma once
// The way from a figure in a list to where it comes from.
#include "forms/Grid.h"

namespace koben {

struct Koben;

/// Puts columns and lines of an explanation into an empty grid.
void Erklaerung_fuellen(Grid& grid, const Explanation& told);

/// Shows an explanation in a screen of its own.
void Herkunft_zeigen(Koben& koben, const Explanation& told);

/// Shows where a cell of the list comes from, in a screen of its own. Says so where the list does not tell it.
void Zelle_erklaeren(Grid& list, int row, int column);

}  // namespace koben
