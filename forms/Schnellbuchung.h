#pragma once
// Books a line of the quick entry by working the very forms: the booking frame and the entry screen of the kind,
// unseen. Rules, messages, questions, numbering, the name of the action and what is derived are theirs.
#include "core/Schnellzeile.h"
#include "forms/Koben.h"

namespace koben {

/// The animals of the herd list with its marks.
std::vector<Schnelltier> Schnelltiere(const Grid& herd);

struct Schnellergebnis {
    bool booked = false;
    QString reason;  ///< why not, as the form said it
};

/// Books a line that is ready, from the form in front. Not booked: nothing of it is written. No form stays open.
Schnellergebnis Schnell_buchen(Koben& koben, const Schnellzeile& line);

}  // namespace koben
