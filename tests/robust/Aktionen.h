#pragma once
// The writing actions of the program, each worked through its own forms.
#include "tests/robust/Betrieb.h"

namespace koben::robust {

struct Aktion {
    const char* name;
    const Ordner& (*hof)();              ///< what it begins with; null for a machine without a data folder
    std::function<void(Sitzung&)> lauf;  ///< the run up to the action, and the action
    const char* bestaetigt = "";         ///< how the line begins with which the program confirms it, "" for none
    const char* anrichten = "";          ///< a statement that is run on the database beforehand
    bool aendert = true;                 ///< somebody sees a difference afterwards
    bool schreibtDatenbank = true;       ///< through statements; otherwise only files
};

const std::vector<Aktion>& aktionen();

/// The folder with which the action begins.
std::unique_ptr<Ordner> angerichtet(const Aktion& aktion);
/// Plays the action to its end, which is where the program would go on.
void spielen(const Aktion& aktion, Sitzung& run);

/// The action once without disturbance: what is there before and after it, and how much it does.
struct Vergleich {
    Stand vorher, nachher;
    int anweisungen = 0;  ///< writing statements, commits included
    int mikrosekunden = 0;
};
Vergleich ungestoert(const Aktion& aktion);

inline void PrintTo(const Aktion& aktion, std::ostream* out) { *out << aktion.name; }
inline std::string nameOf(const testing::TestParamInfo<Aktion>& info) { return info.param.name; }

}  // namespace koben::robust
