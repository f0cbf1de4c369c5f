#pragma once
// The check of what the tables say, beside the pages of the file: bookings and their animals, and what is derived
// against what is booked, the rows against the journal of actions. Reads only; the repair is another step.
#include <QStringList>

#include "core/Zyklusdaten.h"
#include "store/Action.h"

namespace koben {

/// One of the things that were looked at.
struct Pruefbefund {
    enum class Art {
        InOrdnung,
        Hinweis,     ///< for the user to look at; nothing is wrong with the file
        Abgeleitet,  ///< counters, days or status do not fit the bookings: deriving anew mends it
        OhneTier,    ///< bookings whose animal is not there: taking them out mends it
        Wuerfe,      ///< litters bear other numbers than their days give them: numbering anew mends it
        Fremd        ///< rows stand otherwise than KOBEN left them: only the user can tell whether that is meant
    };
    Art art = Art::InOrdnung;
    QString was;              ///< what was looked at
    QString satz;             ///< what came of it, in a German sentence
    QStringList zeilen = {};  ///< the first few cases
    QString merkmal = {};     ///< of Fremd: the same for the same rows in the same state
};

/// Nothing where it was given up.
std::optional<std::vector<Pruefbefund>> Daten_pruefen(const Database& db, const Variablen& v,
                                                      const CycleProgress& go = {});
bool enthaelt(const std::vector<Pruefbefund>& findings, Pruefbefund::Art kind);

/// The rows against the journal. Nothing where it was given up.
std::optional<Pruefbefund> Verlauf_pruefen(const Database& db, const CycleProgress& go = {});

/// Derives all animals anew, whatever the change log says. Within the action; false where it was given up, and then
/// that must not be committed.
bool Neu_ableiten(const Action& action, const Variablen& v, const CycleProgress& go = {});
/// Numbers the litters anew of the animals at which the check stopped; how many they were.
qint64 Wuerfe_neu_nummerieren(const Action& action);
/// Deletes the bookings whose animal is not there; how many they were.
qint64 Buchungen_ohne_Tier_loeschen(const Action& action);

}  // namespace koben
