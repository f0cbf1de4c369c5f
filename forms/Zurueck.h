#pragma once
// Undo and redo as the menus, the keys and the scripts call them: the newest action back, the last one taken back
// again. The forms show the herd as it is then.
#include "core/Ruecknahme.h"
#include "forms/Koben.h"

namespace koben {

enum class Ruecknahmerichtung { Zurueck, Wieder };

/// A form whose lists are not read anew by its Activate.
class ReadsAnew {
public:
    virtual ~ReadsAnew() = default;
    virtual void readAnew() = 0;
};

/// The action that comes next in this direction, by its name; "" for none.
QString naechsteAktion(Koben& koben, Ruecknahmerichtung richtung);
/// Does it, and says why where it cannot be done. After it, showAgain().
Rueckmeldung zuruecknehmen(Koben& koben, Ruecknahmerichtung richtung);
/// Carries a plan out; asks what typing the same would ask, and says why where it cannot be done.
Rueckmeldung carryOut(Koben& koben, const Ruecknahme& journal, const Ruecknahme::Plan& plan);
/// Lets the form in front, and the herd list, show what has become of the data.
void showAgain(Koben& koben, const Rueckmeldung& done);

}  // namespace koben
