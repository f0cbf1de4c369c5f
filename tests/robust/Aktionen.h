#pragma once
// The writing actions of the program, each worked through its own forms.
#include "tests/robust/Betrieb.h"

namespace koben::robust {

struct Aktion {
    const char* name;
    const Ordner& (*hof)();              ///< what it begins with; null for a machine without a data folder
    std::function<void(Sitzung&)> lauf;  ///< the run up to the action, and the action
    const char* bestaetigt = "";         ///< how the line begins with which the program confirms it, "" for none
    const char* anrichten = "";          ///< statements, parted by ";", that are run on the database beforehand
    bool aendert = true;                 ///< somebody sees a difference afterwards
    bool schreibtDatenbank = true;       ///< through statements; otherwise only files
    bool leitetAb = false;               ///< a booking from which the closing frame derives values
};

const std::vector<Aktion>& aktionen();
/// Parts of the table by theme: bookings of animals; the farm's trade, the herd and master data.
std::vector<Aktion> buchungen();
std::vector<Aktion> verwaltung();
const Aktion& finde(const std::string& name);

/// How the lines begin with which the program confirms a save, and hands a list over.
inline const char* const Ton = "~";
inline const char* const Liste = "+ PA_Zwischenliste";

/// What becomes of piglets that a loss or a sale takes, as optiverkauf has it.
inline constexpr int Loeschen = 1, Abgang = 2;
inline const QString Neues = QStringLiteral("neues Stichwort");

/// Rows 1 to `count` of a list.
std::vector<int> rows(int count);

/// The folder with which the action begins.
std::unique_ptr<Ordner> angerichtet(const Aktion& aktion);
/// Plays the action to its end, which is where the program would go on.
void spielen(const Aktion& aktion, Sitzung& run);
/// Plays an action that may fail. What the user reads that is no confirmation; "" where all went well.
QString klagen(const Aktion& aktion, Sitzung& run);
/// Plays the action in a process of its own, disturbed by `an` from the user's click on, and returns what she reads.
/// Where she reads anything it must be a message. `ab` comes when the action is over, and with null when the run is.
QString gestoert(const std::string& what, const Aktion& aktion, const Ordner& folder,
                 const std::function<void(Sitzung&)>& an, const std::function<void(Sitzung*)>& ab = {});
/// From now on `weiter` is asked wherever the user may cancel: at each report of progress, and at the form's button.
void beiMeldung(Sitzung& run, const std::function<bool()>& weiter);

/// The action once without disturbance: what is there before and after it, and how much it does.
struct Vergleich {
    Stand vorher, nachher;
    int anweisungen = 0;  ///< writing statements, commits included
    int meldungen = 0;    ///< moments at which the user may cancel
    int mikrosekunden = 0;
};
Vergleich ungestoert(const Aktion& aktion, bool bisHauptform = false);
/// Each file is that of before or of after, and so is the database; with `fertig` all is as after.
void pruefeRest(const Stand& left, const Vergleich& whole, bool fertig);

inline void PrintTo(const Aktion& aktion, std::ostream* out) { *out << aktion.name; }
inline std::string nameOf(const testing::TestParamInfo<Aktion>& info) { return info.param.name; }

}  // namespace koben::robust
