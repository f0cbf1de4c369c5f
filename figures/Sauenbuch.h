#pragma once
// The sows and their bookings in memory, as figures look at them: services in groups, farrowings as litters with their
// weanings. Read by one statement a table. Only animals of the kind "Sau"; bookings without a date and after `heute`
// are not there. Days are Julian, 0 for none.
#include <QString>
#include <array>
#include <memory>
#include <span>
#include <vector>

#include "store/Database.h"

namespace koben {

/// The farrowings of a sow on one day, and what was weaned of them.
struct Wurf {
    qint32 tag = 0;
    int gesamt = 0, lebend = 0, tot = 0;
    int abgesetzt = 0;       ///< piglets of all weanings from the day after up to the day of the next litter
    qint32 abgesetztAm = 0;  ///< the latest of these weanings; 0 for a litter that is not weaned
    qint32 belegtAm = 0;     ///< the group of services that it belongs to, 0 for none
};

/// Piglets of one booking: weaned, or lost.
struct Ferkelbuchung {
    qint32 tag = 0;
    int anzahl = 0;
};

/// Losses are many, and only the early warning looks at them.
enum class Lesen { OhneVerluste, Alles };

/// Everything of one sow, by day. What the spans show lives as long as the book.
struct Sau {
    qint64 id = 0;
    QString nummer;
    qint32 zugang = 0, abgang = 0;
    std::span<const qint32> gruppen;  ///< first day of each group of services
    std::span<const Wurf> wuerfe;
    std::span<const Ferkelbuchung> absetzungen, verluste;
    std::span<const qint32> nichtTragend;  ///< days of negative checks

    /// Gone by the end of this day.
    bool gone(qint32 day) const { return abgang != 0 && abgang <= day; }
};

class Sauenbuch {
public:
    /// Reads what periods that begin on `from` or later can need: sows gone before with no booking since are left out,
    /// and losses before it.
    Sauenbuch(const Database& db, qint32 heute, qint32 from, Lesen what = Lesen::Alles);
    Sauenbuch(const Sauenbuch&) = delete;
    Sauenbuch& operator=(const Sauenbuch&) = delete;

    qint32 heute() const { return m_heute; }
    qint32 from() const { return m_from; }
    bool holds(qint32 from, Lesen what) const { return m_from <= from && m_what >= what; }
    /// By ID.
    std::span<const Sau> sauen() const { return m_sows; }

    /// The tables that it is made of. Rows of them by their counters.
    static constexpr std::array Tabellen{"Sauen", "Belegung", "Trächtigkeit", "Absetzung", "Ferkelung", "Verluste"};
    using Zeilen = std::array<std::vector<qint64>, Tabellen.size()>;
    /// The book after these rows were added, changed or removed: only the animals that they are of are read again.
    /// Null where they are too many for that.
    std::shared_ptr<const Sauenbuch> changed(const Database& db, const Zeilen& rows) const;

private:
    struct Rohdaten;
    Sauenbuch(const Sauenbuch& before, std::shared_ptr<const Rohdaten> raw);
    void build();

    qint32 m_heute, m_from;
    Lesen m_what;
    std::shared_ptr<const Rohdaten> m_raw;  ///< rows as they were read
    std::vector<Sau> m_sows;
    std::vector<qint32> m_groups, m_negative;
    std::vector<Wurf> m_litters;
    std::vector<Ferkelbuchung> m_weanings, m_losses;
};

/// The book of a file as it stands now: the one read last where nothing of the animals and bookings has changed since,
/// it is of the same day and reaches as far back; otherwise read anew. Cheap to ask for again and again.
std::shared_ptr<const Sauenbuch> Sauenbuch_holen(const Database& db, qint32 heute, qint32 from,
                                                 Lesen what = Lesen::OhneVerluste);

}  // namespace koben
