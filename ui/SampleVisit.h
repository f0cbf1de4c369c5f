#pragma once
// A visit to the sample farm: the program's own forms on a made herd in a folder of its own, which goes when the visit
// ends. Settings, widths and places that the visitor changes stay in memory. Nothing of it reaches the user's data, and
// what the program does with other places of the machine (backups, devices, files to import) is not on offer there.
#include <QString>

namespace koben {

struct Koben;

namespace ui {

class WindowScreens;

/// Shows the sample farm in place of the windows that stand, which come back when the visit ends. Throws DatabaseError
/// where it cannot be made.
void visitSampleFarm(Koben& own, WindowScreens& screens);

/// Removes what visits have left whose program was killed; those of other running programs stay.
void removeLeftSampleFarms(const QString& userFolder);

}  // namespace ui
}  // namespace koben
