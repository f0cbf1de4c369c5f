#pragma once
// The figures of the farm: what each is (a row of data with its words) and how many periods at once are computed from
// the sows' book. Numerators and denominators are whole numbers, so that what is shown is rounded exactly, half away
// from zero.
//
//     const qint32 heute = Tag_aus_Text(koben.Heute);
//     const auto years = rollende_Jahre(heute, 13);
//     const auto book = Sauenbuch_holen(m_db, heute, years.front().von);
//     const auto stands = Kennzahlen_berechnen(*book, years);        // stands[12] the latest, stands[0] a year before
//     const QString shown = stands[12][Kz::Abferkelrate].text();     // "87,5"; "" where there is nothing to count
#include <array>
#include <optional>

#include "figures/Sauenbuch.h"
#include "figures/Zeitraum.h"

namespace koben {

/// The rows of the list of figures, in its order.
enum class Kz : int {
    WuerfeSauJahr,
    AbgesetztSauJahr,
    LebendWurf,
    TotProzent,
    AbgesetztWurf,
    VerlusteProzent,
    Abferkelrate,
    Umrauscher,
    Umrauscher_4_17,
    Umrauscher_18_24,
    Umrauscher_25_37,
    Umrauscher_38_46,
    AbsetzBelegTage,
    Zwischenwurfzeit,
    NptSauJahr,
    NptBisUmrauschen,
    NptBisBelegung,
    NptBisAbgang,
    NptOffen,
    Remontierung,
    Wuerfe0,                 ///< sows in the herd without a litter, then with one and so on
    Wuerfe10 = Wuerfe0 + 10  ///< ten litters and more
};
inline constexpr int KennzahlAnzahl = static_cast<int>(Kz::Wuerfe10) + 1;

/// Which way is better.
enum class Richtung { Mehr, Weniger, Keine };

struct Kennzahl {
    Kz nr;
    const char* id;       ///< "umrauscher.18-24"
    const char* name;     ///< "Abferkelrate (Belegwoche)"
    const char* einheit;  ///< "%", "Tage", "Würfe" ...
    int decimals;
    Richtung better;
    const char* variante;     ///< on every print of the figure: "nach Produktionstagen"
    const char* satz;         ///< what it says, in German, whole sentences
    const char* formel;       ///< "Würfe x 365 / Produktionstage"
    int faktor;               ///< of the numerator: 100 for percents, 365 for a year of production days, otherwise 1
    bool quotient;            ///< otherwise a plain number, its denominator 1
    const char* ausgelassen;  ///< what is counted as left out, null where nothing is
};

/// All rows in their order.
std::span<const Kennzahl> Kennzahlen();
const Kennzahl& kennzahl(Kz figure);
/// Null for an id that is none.
const Kennzahl* kennzahl(QStringView id);

/// What a figure came to in a period.
struct Kennzahlwert {
    Kz nr = {};
    qint64 numerator = 0, denominator = 0;  ///< without the factor
    qint64 counted = 0;                     ///< cases in the denominator; production days of figures by these
    std::optional<qint64> leftOut = {};     ///< only of figures that leave something out

    bool empty() const { return denominator == 0; }
    std::optional<double> value() const;
    /// With the figure's decimals and a comma; "" for an empty one.
    QString text() const;
    /// The value as it is shown, as a number with the figure's decimals; Null for an empty one.
    Value rounded() const;
};

class Kennzahlenstand {
public:
    Kennzahlenstand();
    Kennzahlwert& operator[](Kz figure) { return m_values[static_cast<size_t>(figure)]; }
    const Kennzahlwert& operator[](Kz figure) const { return m_values[static_cast<size_t>(figure)]; }
    Zeitraum period;  ///< as it was computed: it ends by `heute`
    qint64 productionDays = 0;
    /// Production days over days of the period; nothing of an empty one.
    std::optional<double> meanSows() const;

private:
    std::array<Kennzahlwert, KennzahlAnzahl> m_values;
};

/// The figures of a period, or of many in the order given. The book must reach back to the earliest of them.
Kennzahlenstand Kennzahlen_berechnen(const Sauenbuch& book, Zeitraum period);
std::vector<Kennzahlenstand> Kennzahlen_berechnen(const Sauenbuch& book, std::span<const Zeitraum> periods);

/// A booking or an animal behind a figure, and its part in it. The parts of all add up to the figure's.
struct Beitrag {
    const Sau* sau = nullptr;
    qint32 tag = 0;      ///< of the booking; of an animal's days the first
    QString was;         ///< "Wurf", "Belegung", "Produktionstage" ...
    QString einzelheit;  ///< "3 tot von 14"
    std::optional<qint64> numerator = {}, denominator = {};
};
/// By day and animal.
std::vector<Beitrag> Beitraege(const Sauenbuch& book, Kz figure, Zeitraum period);
/// The bookings that a figure leaves out, without parts.
std::vector<Beitrag> Ausgelassene(const Sauenbuch& book, Kz figure, Zeitraum period);

}  // namespace koben
