#pragma once
// The cycle of the animals as a function: bookings, settings and a last day in; counters, latest and next dates and the
// status out. In memory, without a database: core/Zyklusdaten reads what goes in and writes what comes out.
// Days are Julian, 0 for none.
#include <QString>
#include <limits>
#include <vector>

#include "core/Variablen.h"

namespace koben {

/// Null of a counter.
inline constexpr qint64 NoNumber = std::numeric_limits<qint64>::min();
/// A last day behind all bookings.
inline constexpr qint32 NoEnd = std::numeric_limits<qint32>::max();

/// What the result hangs on beside the bookings.
struct Zyklusvorgaben {
    int tageBelegungFerkelung = 0, tageFerkelungBelegung = 0;
    qint32 lastDay = NoEnd;  ///< bookings and departures after it do not count yet

    Zyklusvorgaben() = default;
    explicit Zyklusvorgaben(const Variablen& v, qint32 last = NoEnd);
    /// The settings as a text: where it is another one, all derived values are.
    QString basis() const;
};

/// The bookings of any number of animals, in any order. An undated booking is one before all others.
struct Zyklusbuchungen {
    struct Belegung {
        qint64 tier;
        qint32 tag;
    };
    struct Ferkelung {
        qint64 tier;
        qint32 tag;
        qint64 gesamt, lebend;  ///< NoNumber where nothing was entered
        qint64 wuerfe = 1;      ///< of so many farrowings together, the latest on that day
    };
    struct Kontrolle {
        qint64 tier = 0, id = 0;
        qint32 tag = 0;
        bool positiv = false, negativ = false;
    };
    struct Absetzung {
        qint64 tier;
        qint32 tag;
    };
    /// A boar counts all services under his number, over all sows and all time.
    struct Eber {
        qint64 tier;
        qint64 deckungen;
    };
    std::vector<Belegung> belegungen;
    std::vector<Ferkelung> ferkelungen;
    std::vector<Kontrolle> kontrollen;
    std::vector<Absetzung> absetzungen;
    std::vector<Eber> eber;
};

/// The derived fields of an animal. Default: those of an animal without bookings.
struct Zykluswerte {
    qint64 belegungen = 0, ferkelungen = 0, gesamt = NoNumber, lebend = NoNumber;
    qint32 lBelegung = 0, lFerkelung = 0, lTraechtigkeit = 0, lAbsetzung = 0, nBelegung = 0, nFerkelung = 0;
    bool operator==(const Zykluswerte&) const = default;
};

struct Tierwerte {
    qint64 tier = 0;
    Zykluswerte werte;
};

/// The derived fields of all animals that the bookings name, by ID.
std::vector<Tierwerte> derive(const Zyklusbuchungen& bookings, const Zyklusvorgaben& vorgaben);

enum class Zyklusstatus : int { Unknown = -1, Ohne, Belegt, Tragend, NichtTragend, Saeugend, Guest };
/// As it stands in the field Status: "", "B", "B_T", "B_NTG", "S", "G".
QString kode(Zyklusstatus status);
/// Unknown for a text that is none of them.
Zyklusstatus statusOf(const QString& code);
/// In the farmer's words: "Tragend"; "" for none.
QString Statuswort(Zyklusstatus status);

/// What the status of an animal hangs on.
struct Statuslage {
    bool zaehlt = false;  ///< a sow in stock whose status is not ignored
    qint32 belegung = 0, ferkelung = 0, absetzung = 0;
    Zyklusbuchungen::Kontrolle kontrolle;  ///< her newest one

    /// Takes a check that is newer than the one so far; of several on one day the first entered counts.
    void take(const Zyklusbuchungen::Kontrolle& check);
};
Zyklusstatus status(const Statuslage& sow);

}  // namespace koben
