#pragma once

namespace koben {

struct Koben;

namespace ui {

class WindowScreens;

/// Shows the sample farm in place of the windows that stand, which come back when the visit ends. Throws DatabaseError
/// where it cannot be made.
void visitSampleFarm(Koben& own, WindowScreens& screens);

}  // namespace ui
}  // namespace koben
