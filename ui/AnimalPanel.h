#pragma once
// The panel beside the herd list: the data of the current animal and of no other, under its number.
#include "ui/Layout.h"

namespace koben {

class PA_Koben;

namespace ui {

Piece animalPanel(PA_Koben& form);

}  // namespace ui
}  // namespace koben
