#pragma once
// The bookings that statistics count: each table is read once for all animals, in the order of entry, and every total
// and every list of bookings behind a figure is made of these same rows.
#include <QDate>
#include <QHash>
#include <array>
#include <optional>
#include <vector>

#include "store/Database.h"

namespace koben {

/// An animal that has a row of its own, or whose bookings count.
struct Zaehltier {
    qint64 id = 0;
    QString nummer, stallnr, gruppe;
    Value belegungen;                    ///< Anz_Belegungen as stored
    qint64 ferkelungen = 0, ferkel = 0;  ///< Anz_Ferkelungen and Anz_Ferkel_Gesamt as stored
};

/// The animals that meet a condition on Sauen, by number.
class Tierliste {
public:
    Tierliste(const Database& db, const QString& condition);
    const std::vector<Zaehltier>& all() const { return m_animals; }
    int count() const { return static_cast<int>(m_animals.size()); }
    int place(qint64 id) const { return m_places.value(id, -1); }  ///< -1 for another animal
    const Zaehltier& operator[](int place) const { return m_animals[static_cast<size_t>(place)]; }

private:
    std::vector<Zaehltier> m_animals;
    QHash<qint64, int> m_places;
};

/// `Deckung` is a service seen from the boar, by the number that it names.
enum class Tabelle { Belegung, Traechtigkeit, Ferkelung, Absetzung, Verluste, Verschiebung, Deckung };

struct Zaehlbuchung {
    int place = 0;       ///< of the animal in the list; -1 for a service whose boar does not matter
    qint64 kennung = 0;  ///< ID of the animal booked
    qint32 day = 0;      ///< Julian day; 0 without a date
    std::array<double, 4> amounts{};
};

/// Which bookings: of one animal (0 for all of the list), of a period (both days counted; none without dates).
struct Ausschnitt {
    qint64 tier = 0;
    QDate von = {}, bis = {};
    bool fewAnimals = false;  ///< looks the bookings of a few animals up; they come by animal, each in order of entry
};

/// The amount of a farrowing that is its stored litter number, and what that is where there is none.
inline constexpr size_t StoredNumber = 3;
inline constexpr double NoNumberStored = -99999;

/// Name of a table as a booking reads: "Trächtigkeit".
QString Buchungsname(Tabelle table);

class Buchungsauszug {
public:
    /// `go` is asked now and then while rows are read; where it answers false the rest stays unread. Bookings are those
    /// of the animals in the list; services by boar are those of every sow that name one, of the listed boars where
    /// `byBoar`. The list must outlive this.
    Buchungsauszug(const Database& db, const Tierliste& animals, Ausschnitt cut, std::function<bool()> go = {},
                   bool byBoar = true)
        : m_db(db), m_animals(animals), m_cut(cut), m_go(std::move(go)), m_byBoar(byBoar) {}

    const std::vector<Zaehlbuchung>& rows(Tabelle table);
    /// The latest day before this one on which the animal has a booking of the table, whatever the period; 0 for none.
    qint32 before(Tabelle table, int place, qint32 day);
    const Tierliste& animals() const { return m_animals; }

private:
    /// Days of each animal one behind the other, ascending.
    struct Days {
        std::vector<size_t> begins;
        std::vector<qint32> days;
    };
    QString where(bool ofPeriod, const QString& more = {}) const;
    void read(Tabelle table, bool ofPeriod, std::vector<Zaehlbuchung>& rows) const;
    void readServices(std::vector<Zaehlbuchung>& rows) const;
    Days daysOf(Tabelle table);

    const Database m_db;
    const Tierliste& m_animals;
    const Ausschnitt m_cut;
    const std::function<bool()> m_go;
    const bool m_byBoar;
    std::array<std::optional<std::vector<Zaehlbuchung>>, 7> m_rows;
    std::array<std::optional<Days>, 7> m_days;
};

}  // namespace koben
