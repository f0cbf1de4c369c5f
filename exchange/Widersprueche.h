#pragma once
// What of a device's bookings contradicts the herd, because somebody went on booking here while the device was away
// with its copy. Reads the journal and the bookings; writes nothing.
//
// The device knows the herd as of its export, at the latest as of the day of the booking itself. What was written here
// behind that it cannot have known. A booking contradicts
// - a departure: the animal had gone before the booking's day;
// - the deletion of its animal;
// - a booking of the same event: of two services less than 18 days apart the second is no new heat (a sow returns after
//   18 to 24 days), of two litters within a gestation one is wrong, and so are two weanings of one litter and two
//   pregnancy checks of one gestation with different results;
// - a state that it cannot follow: a service in a gestation that ended in a litter or was found to last, a litter or a
//   check where the sow was found empty or served again, a weaning or a loss of piglets that are weaned;
// - the deletion of what it rests on: the service of a check or litter, the litter of a weaning or loss.
// Gestation, suckling and tolerance are those of the settings. Treatments, sales and cross-fosterings disturb no cycle:
// they contradict a departure alone, a cross-fostering also that of the partner.
#include <map>

#include "core/Variablen.h"
#include "exchange/Geraeteplan.h"
#include "store/Journal.h"

namespace koben {

class Widersprueche {
public:
    /// `exported`: when the device got its copy, as the journal's clock has it; null where nobody knows.
    Widersprueche(const Database& db, const Variablen& v, std::optional<DateTime> exported, const Geraetedatei& file);

    /// Why the booking contradicts what stands here, a German sentence; "" where it does not. `entry` of a plan without
    /// wishes.
    QString reason(const Geplant& entry);

private:
    /// A booking of the cycle that is here, or was.
    struct Ereignis {
        Buchungsart art;
        qint64 id;
        QDate day;
        bool negative = false;                 ///< a check
        DateTime written = {};                 ///< since the export; null before
        std::optional<DateTime> removed = {};  ///< it is here no more
    };
    struct Lage {
        QDate gone;
        std::vector<Ereignis> events;
    };
    /// What the journal says of a row.
    struct Spur {
        bool before = false;  ///< it was here at the time of the export
        DateTime written = {};
        qint64 animal = 0;
        std::optional<Ereignis> removed = {};
    };
    /// A booking of the device that a booking here, so many days before it, makes impossible, or rests on.
    struct Regel {
        Buchungsart coming, here;
        int from, to;                            ///< days
        std::optional<Buchungsart> unless = {};  ///< stands between the two
        std::optional<bool> negative = {};       ///< of a check here
        QString sentence = {};
    };

    void makeRules(const Variablen& v);
    void readJournal(DateTime since);
    void note(const RowChange& change, DateTime time);
    const Lage& lage(qint64 animal);
    DateTime known(QDate day) const;
    QString departed(const Geplant& entry);
    static bool stands(const Lage& lage, Buchungsart art, QDate after, QDate until);
    QString overtaken(const Geraetebuchung& booking, const Lage& lage) const;
    QString withoutGround(const Geraetebuchung& booking, const Lage& lage) const;

    const Database& m_db;
    const std::optional<DateTime> m_exported;
    std::vector<Regel> m_rules, m_grounds;
    std::map<std::pair<Buchungsart, qint64>, Spur> m_traces;  ///< by row
    std::map<QString, DateTime> m_deleted;                    ///< animals by number
    std::map<qint64, Lage> m_animals;
};

}  // namespace koben
