#pragma once
// What a measure of the statistics is: one row of data with its words, and what it is made of. A quantity is a sum over
// the bookings of one table; the total of all rows of a run and the list of bookings behind one cell come from the same
// rows.
#include <functional>
#include <map>
#include <span>

#include "analytics/Buchungsauszug.h"

namespace koben {

/// Quantities. The last of the sows' are days back to the latest earlier booking of another kind.
enum class Groesse {
    Belegungen,
    Ferkelungen,
    Absetzungen,
    Ferkel,
    Lebend,
    Tot,
    Verluste,
    Abgesetzt,
    Gewicht,
    Tragend,
    Leer,
    Versetzt,
    Zugesetzt,
    Tragezeit,
    Saeugezeit,
    Guestzeit,
    Produktionszeit,
    Deckungen,
    Erfolge,
    Misserfolge
};

/// One booking of the quantity's table counts 1, one of its amounts, or the days since the animal's latest earlier
/// booking of `since`.
struct Groessenart {
    Tabelle table;
    int amount = -1;  ///< 1 for each booking where below 0
    std::optional<Tabelle> since = {};
    bool chosen = false;  ///< only some bookings of the table count; the others are no part of the figure
};
const Groessenart& art(Groesse quantity);

/// The part of a booking in a quantity; nothing where there is no earlier booking to count days from.
std::optional<double> part(Groesse quantity, const Buchung& booking, Buchungsauszug& bookings);

/// How a cell is computed.
struct Formel {
    enum Art {
        Fehlt,        ///< the run has no cell for it; what follows stands a column to the left
        Strich,       ///< the text "-"
        Anzahl,       ///< the sum; empty where it is 0
        Summe,        ///< the sum
        Anteil,       ///< factor x the first over the sum of the others; empty where these are 0
        Abstand,      ///< mean of days over the bookings that have an earlier one; 0,0 where none has
        Bestand,      ///< the animal's stored count of services
        JeJahr,       ///< a stored count by the days from first service to last farrowing
        Zunahme,      ///< grams a day
        JeMonat,      ///< services by the calendar months from first to last
        JeZwoelftel,  ///< services of a year by 12
        Erste,        ///< first day
        Letzte        ///< last day
    };
    Art kind = Fehlt;
    std::vector<Groesse> of = {};  ///< numerator first
    int factor = 1;
    const char* sentence = nullptr;  ///< where it differs from the measure's
};

/// A measure: the caption to choose it by, its column, the unit, the sentence that explains it, and how the runs by
/// animal and by year compute it.
struct Kennwert {
    const char* caption;
    const char* column;
    const char* unit;
    const char* sentence;
    Formel jeTier, jeJahr;
    bool text = false;    ///< a column of texts: no means and sums
    bool summed = false;  ///< the page of the farm shows its sum, otherwise its mean
    bool ruled = false;   ///< a line follows on the page of the farm
    const Formel& formel(bool year) const { return year ? jeJahr : jeTier; }
};
std::span<const Kennwert> Kennwerte_Sau();
std::span<const Kennwert> Kennwerte_Eber();

/// What bookings add up to.
struct Summe {
    double amount = 0;
    qint64 count = 0, found = 0;  ///< bookings; those with a part
    qint32 first = 0, last = 0;   ///< days
    bool undated = false;
    void add(qint32 day, std::optional<double> value);
};

/// The sums of a run, made once for each quantity and all rows.
class Summen {
public:
    /// `key` is the row of a booking, from 0; below 0 it is of none.
    Summen(Buchungsauszug& bookings, int keys, std::function<int(const Buchung&)> key)
        : m_bookings(bookings), m_keys(keys), m_key(std::move(key)) {}
    const Summe& of(Groesse quantity, int key);

private:
    Buchungsauszug& m_bookings;
    int m_keys;
    std::function<int(const Buchung&)> m_key;
    std::map<Groesse, std::vector<Summe>> m_sums;
};

/// A cell and its parts.
struct Zelle {
    Value shown;
    std::optional<double> numerator = {}, denominator = {};
};

/// What a cell is computed from.
struct Zellenlage {
    std::function<const Summe&(Groesse)> sum;
    const Tier* tier = nullptr;  ///< of runs by animal
    int zyklustage = 0;          ///< days from farrowing to service, of the settings
    int geburtsgewicht = 0;      ///< grams, of the settings
};
Zelle berechnen(const Formel& formel, const Zellenlage& from);

/// One decimal with a comma, half away from zero.
QString eine_Stelle(double value);
/// A number as it is, no more than needed.
QString Zahlentext(double value);

}  // namespace koben
