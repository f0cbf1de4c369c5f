#pragma once
// Undo and redo as the menus, the keys and the scripts call them: the newest action back, the last one taken back
// again. The forms show the herd as it is then.
#include "core/Ruecknahme.h"
#include "forms/Koben.h"

namespace koben {

enum class Richtung { Zurueck, Wieder };

/// The action that comes next in this direction, by its name; "" for none.
QString naechsteAktion(Koben& koben, Richtung richtung);
/// Does it, and says why where it cannot be done. After it, showAgain().
Rueckmeldung zuruecknehmen(Koben& koben, Richtung richtung);
/// Lets the form in front, and the herd list, show what has become of the data.
void showAgain(Koben& koben, const Rueckmeldung& done);

}  // namespace koben
