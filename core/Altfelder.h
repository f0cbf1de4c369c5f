#pragma once
// The tables in the order in which old databases are emptied and read, and rows on their way from an old table into one
// of the database.
#include <functional>

#include "core/RowWriter.h"
#include "store/OldFile.h"

namespace koben {

struct Alttabelle {
    const char* name;
    const char* was;  ///< in the user's words
    bool buchung;
};

/// Animals, their bookings, then what is copied whole.
inline constexpr Alttabelle Alttabellen[] = {{"Sauen", "Tiere", false},
                                             {"Belegung", "Belegungen", true},
                                             {"Ferkelung", "Ferkelungen", true},
                                             {"Absetzung", "Absetzungen", true},
                                             {"Trächtigkeit", "Trächtigkeitskontrollen", true},
                                             {"Verluste", "Verluste", true},
                                             {"Verschiebung", "Verschiebungen", true},
                                             {"Behandlung", "Behandlungen", true},
                                             {"Ferkelverkauf", "Ferkel Ein- und Verkauf", true},
                                             {"Bestandsoptionen", "Bestandsdaten", false},
                                             {"Stammdaten_Gruppe", "Stichworte: Gruppen", false},
                                             {"Stammdaten_Rasse", "Stichworte: Rassen", false},
                                             {"Stammdaten_Stallnummer", "Stichworte: Stallnummern", false},
                                             {"Stammdaten_Zugangsgrund", "Stichworte: Zugangsgründe", false},
                                             {"Stammdaten_Abgangsgrund", "Stichworte: Abgangsgründe", false},
                                             {"Stammdaten_Kunde", "Stichworte: Kunden", false},
                                             {"Stammdaten_Bemerkung", "Stichworte: Bemerkungen", false},
                                             {"Medikamente", "Medikamente", false},
                                             {"Arbeitsplanoptionen", "Arbeitsplandaten", false},
                                             {"Termine", "Termine", false}};
QStringList alttabellen();
/// By name, case aside; null for one of no meaning here.
const Alttabelle* alttabelle(const QString& name);

/// Which field of an old table goes into which field of the database, and what has no place there.
class Altfelder {
public:
    /// Fields of the same name, but for those `without`; where the database lacks the table, none.
    Altfelder(const Database& db, const OldTable& table, const QStringList& without = {});

    const QStringList& names() const { return m_names; }
    /// Their places in the old table.
    const std::vector<int>& places() const { return m_from; }
    const QStringList& homeless() const { return m_homeless; }
    /// The values of a row in the order of names().
    std::vector<Value> values(const OldRow& row);
    /// How many texts of the row are longer than their fields.
    int tooLong(const std::vector<Value>& values) const;
    /// Throws, with table, field and lengths, where there is one, or a number beyond its field.
    void requireFit(const std::vector<Value>& values) const;
    OldLosses& losses() { return m_losses; }

private:
    const OldTable& m_table;
    QStringList m_names, m_homeless;
    std::vector<int> m_from;  // positions in the old table
    std::vector<int> m_size;  // of the new field, 0 for any
    std::vector<Type> m_type;
    OldLosses m_losses;
};

/// Work that asks `go` on its way, and nothing where that answered false, whatever the work then failed at.
template <class Work>
auto unlessGivenUp(const std::function<bool(int percent)>& go, const Work& work) -> decltype(work(go)) {
    bool on = true;
    try {
        return work([&](int percent) { return on = on && (!go || go(percent)); });
    } catch (const DatabaseError&) {
        if (on) throw;
        return {};
    }
}

/// What was lost, as a sentence for the user; "" for nothing.
QString lossText(const OldLosses& losses);

}  // namespace koben
