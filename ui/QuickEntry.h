#pragma once
// The quick entry at the foot of the herd list: the line, and the sentence beside it.
#include "ui/Layout.h"

namespace koben::ui {

/// Enter in the line is the model's own, Esc empties it and then leads to the list; while it is empty Strg+Z is the
/// window's.
Piece quickEntry(TextBox& line, Label& sentence, Grid& list);

}  // namespace koben::ui
