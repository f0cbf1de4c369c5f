#pragma once
// What the main window shows beside or instead of the list of animals: three ways to begin while the herd is empty, and
// on the sample farm the way back.
#include "ui/Layout.h"

namespace koben {

class PA_Koben;

namespace ui {

/// The list, or while no animal was ever entered the ways to begin.
Piece listOrFirstSteps(PA_Koben& form, const Piece& list);
/// Where the user is and how she gets back; nothing but on the sample farm.
Piece sampleFarmLine(PA_Koben& form);

}  // namespace ui
}  // namespace koben
