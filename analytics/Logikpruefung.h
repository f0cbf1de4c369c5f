#pragma once
// The logic test of the sows' dates: from each farrowing, are the service and the pregnancy check before it and the
// weaning after it where the cycle says?
#include <QDate>
#include <array>
#include <vector>

#include "store/Database.h"

namespace koben {

/// What is looked for around a farrowing.
enum class Termin { Belegung, Kontrolle, Absetzung };
inline constexpr int Termine = 3;

struct Logikauswahl {
    std::array<bool, Termine> tested{};
    std::array<int, Termine> expected{};  ///< days between the event and the farrowing
    int tolerance = 0;                    ///< days, to both sides, both ends included
    bool lastOnly = false;                ///< a sow's last farrowing alone
    QDate today;
};

/// What is wrong with one event.
struct Befund {
    bool wrong = false;
    QDate day;           ///< invalid where the event is missing
    qint64 days = 0;     ///< between it and the farrowing
    qint64 booking = 0;  ///< ID, 0 where it is missing
};

/// A farrowing with a finding.
struct Logikzeile {
    qint64 sow;
    QString number, stall, group;
    bool first;  ///< of the sow's findings
    int litter;  ///< counted over all farrowings of the sow
    QDate day;
    std::array<Befund, Termine> found;
};

/// The sows in stock with a farrowing, in the order of their numbers, and what they are tested by: read once, then
/// tested one by one in memory.
class Logikpruefung {
public:
    Logikpruefung(const Database& db, const Logikauswahl& choice);
    int sows() const { return m_sows.rowCount(); }
    /// The findings of the sow at this place, from 0.
    std::vector<Logikzeile> test(int sow) const;

private:
    struct Ereignis {
        DateTime at;
        qint64 id;
        bool live = true;  ///< of a farrowing: not all piglets were dead
    };
    using Ereignisse = std::vector<Ereignis>;
    /// Bookings of one kind, those of each sow together and by their days.
    struct Buch {
        std::vector<std::pair<qint64, Ereignis>> entries;
        Ereignisse of(qint64 sow) const;
    };
    Buch read(const QString& table, const QString& condition = {}) const;
    Buch readFarrowings() const;
    std::array<Befund, Termine> test(QDate farrowing, const Ereignisse& services, const Ereignisse& checks,
                                     const Ereignisse& weanings) const;
    Befund measured(Termin what, const Ereignis* event, QDate farrowing) const;

    const Database m_db;
    const Logikauswahl m_choice;
    Table m_sows;
    Buch m_farrowings, m_services, m_checks, m_weanings;
};

}  // namespace koben
