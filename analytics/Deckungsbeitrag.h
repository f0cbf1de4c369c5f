#pragma once
// The contribution margin: what animals bring in against what they cost, kind by kind, over calendar years.
#include <QStringList>
#include <array>
#include <functional>
#include <optional>

#include "store/Database.h"

namespace koben {

/// A kind of income or cost: what it is called, and which statement finds its amounts.
struct Posten {
    const char* column;
    const char* caption;
    bool income;
    const char* table;  ///< "Sauen" where the amount stands with the animal itself, "" for the lump sums of feed
    const char* day;    ///< what decides to which year an amount belongs
    const char* amount;
    const char* detail;    ///< what else tells a reader which booking it is, "" for nothing
    const char* sentence;  ///< what the figure is
};

inline constexpr int Postenzahl = 10, Endposten = Postenzahl;
inline constexpr std::array<Posten, Postenzahl> Postenliste{{
    {"E_Tierverkauf", "Verkauf von Sauen / Eber / Mastschweine", true, "Sauen", "Abgangsdatum", "Verkaufspreis",
     "Abnehmer", "Verkaufspreise der Tiere mit einem Abgangsdatum in der Zeit"},
    {"E_Ferkelverkauf", "Ferkelverkäufe", true, "Ferkelverkauf", "Datum", "Einnahmen", "Kunde",
     "Einnahmen der Ferkelverkäufe, die in der Zeit bei den Tieren gebucht sind"},
    {"A_Tiereinkauf", "Einkauf von Sauen / Eber / Mastschweine", false, "Sauen",
     "iif(Zugangsdatum is null, Geburtsdatum, Zugangsdatum)", "Einkaufspreis", "Lieferant",
     "Einkaufspreise der Tiere mit einem Zugangsdatum (wo keines steht: einem Geburtsdatum) in der Zeit"},
    {"A_Belegung", "Belegungskosten (Besamungskosten)", false, "Belegung", "Datum", "Kosten", "Ebernr",
     "Kosten der Belegungen in der Zeit"},
    {"A_Ferkelung", "Kosten durch Ferkelungen", false, "Ferkelung", "Datum", "Kosten", "LNr",
     "Kosten der Ferkelungen in der Zeit"},
    {"A_Trächtigkeit", "Trächtigkeitsfeststellungskosten", false, "Trächtigkeit", "Datum", "Kosten", "Trächtig",
     "Kosten der Trächtigkeitsfeststellungen in der Zeit"},
    {"A_Verluste", "Ferkelverluste", false, "Verluste", "Datum", "Kosten", "Grund",
     "Kosten der Ferkelverluste in der Zeit"},
    {"A_Behandlung", "Behandlungskosten", false, "Behandlung", "Datum", "Kosten", "Behandlungsart",
     "Kosten der Behandlungen in der Zeit"},
    {"A_Ferkeleinkauf", "Ferkeleinkäufe", false, "Ferkelverkauf", "Datum", "Ausgaben", "Kunde",
     "Ausgaben der Ferkeleinkäufe, die in der Zeit bei den Tieren gebucht sind"},
    {"A_Futterkosten", "Futterkostenpauschale je Jahr in Höhe von...", false, "", "", "", "",
     "Futterkostenpauschale der Sauen, Eber und Mastschweine: Tage im Betrieb (der letzte zählt nicht) / 365 x "
     "Pauschale"},
}};

/// The amounts of one row: the kinds in their order, then the sum. They are kept to seven digits.
using Betraege = std::array<float, Postenzahl + 1>;

/// As the list shows an amount: "-1.234,56 €".
QString Betrag_mit_Waehrung(float amount);

/// What is to be computed.
struct Deckungsauswahl {
    QString animals;       ///< condition on Sauen, "" for all animals
    QString words;         ///< the same in the user's words
    bool strays = false;   ///< piglet sales of no sow count in the years
    int from = 0, to = 0;  ///< years, both included
    std::array<bool, Postenzahl> chosen{};
    std::array<float, 3> feed{};  ///< a year's lump sum of a sow, a boar, a fattening pig
};

/// Days of an animal's stay that feed is reckoned for. The last day does not count.
struct Futterzeit {
    QDate from, to;
    float share() const { return static_cast<float>(static_cast<double>(from.daysTo(to)) / 365); }
};
/// Of an animal that came and left on these days, as far as they are known; nothing where it came after the last year
/// or left before the first.
std::optional<Futterzeit> Futterzeit_ermitteln(QDate came, QDate left, int first, int last);

class Deckungsbeitrag {
public:
    /// Hears how far it is, 0 to 100; false gives it up.
    using Go = std::function<bool(int percent)>;
    /// Reads the animals; the rest follows as it is asked for.
    Deckungsbeitrag(const Database& db, const Deckungsauswahl& choice, const Go& go = {});
    bool whole() const { return m_whole; }  ///< it was not given up

    struct Zeile {
        int year = 0;       ///< of a row per year
        qint64 animal = 0;  ///< ID, of a row per animal
        Betraege amounts{};
    };
    /// A row for each year. Animals without a number count for feed alone. Nothing where it was given up.
    std::optional<std::vector<Zeile>> perYear(const Go& go) const;
    /// A row for each of the animals, in their order. Bookings of no animal count nowhere.
    std::optional<std::vector<Zeile>> perAnimal(const Go& go) const;

    /// The animals: Art, Nummer, Gruppe, Stallnr, then three dates and the ID.
    const Table& animals() const { return m_animals; }
    qint64 id(int row) const { return m_animals.integer(row, 7); }
    int rowOf(qint64 id) const;  ///< -1 for none of them

    /// One amount behind a cell.
    struct Beleg {
        int item;
        int row;  ///< of animals(); -1 for a booking of no animal
        QDate day;
        Value amount;  ///< with the sign that it has in the column
        QString detail;
    };
    /// The amounts behind a cell of a year, or (with a year of 0) of an animal by its row. `item` may be the sum.
    std::vector<Beleg> behind(int item, int year, int row) const;

private:
    struct Buchung {
        qint64 animal;
        QDate day;
        qint64 amount;  ///< ten-thousandths
        QString detail;
    };
    /// Years one by one, or a span of them as a whole.
    enum class Zeit { Jahre, Spanne };
    void read(int item, int from, int to, Zeit time, qint64 animal, bool details,
              const std::function<bool(const Buchung&)>& each) const;
    Betraege& addUp(Betraege& amounts) const;
    void readFed();
    float feed(int year) const;
    void bookingsBehind(std::vector<Beleg>& found, int item, int year, int row) const;
    void feedBehind(std::vector<Beleg>& found, int year, int row) const;
    bool numbered(int row) const { return !m_choice.animals.isEmpty() || !m_animals.isNull(row, 1); }
    int numberedAnimals() const;

    const Database m_db;
    const Deckungsauswahl m_choice;
    Table m_animals;
    bool m_whole = true;
    struct Futtertier {
        int row;
        float lumpSum;
        QDate came, left;
    };
    std::vector<Futtertier> m_fed;  // in the order of the animals
};

}  // namespace koben
