#pragma once
// Today's page beside the herd list, as a part of its window.
#include "ui/Layout.h"

namespace koben {
class PA_Koben;
}

namespace koben::ui {

/// The page in tabs, with `panel` as the last of them, where the user wants it beside the list; otherwise `panel`.
Piece withToday(PA_Koben& form, const Piece& panel);

}  // namespace koben::ui
