#include "exchange/Geraeteplan.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <map>
#include <set>

#include "core/FreieNummer.h"
#include "core/PZ_Koben_Subs.h"
#include "store/Collation.h"

namespace koben {
namespace {

constexpr int NumberWidth = 15;  // of an animal

/// The animals by number, those of the plan among them. Of several with one number it is the one that came last.
class Tiernummern {
public:
    explicit Tiernummern(const Database& db)
        : m_herd(db.prepare(QStringLiteral("select ID, Nummer from Sauen where Nummer = ?"))) {}

    Plantier find(const QString& number) {
        auto known = m_known.find(number);
        if (known == m_known.end()) known = m_known.insert(number, inHerd(number));
        return *known;
    }
    void add(const QString& number, Plantier animal) {
        m_known[number] = animal;
        m_taken.insert(sortKey(number));
    }
    /// Whether an animal of the plan has the number, as the database finds numbers equal.
    bool planned(const QString& number) const { return m_taken.contains(sortKey(number)); }

private:
    /// The device knows a number with an apostrophe by a backtick.
    Plantier inHerd(const QString& number) {
        const Plantier exact = lastOf(number, number);
        if (exact != 0 || !number.contains(u'`')) return exact;
        return lastOf(QString(number).replace(u'`', u'\''), number);
    }
    /// The database finds what differs in case too, which are different animals here.
    Plantier lastOf(const QString& stored, const QString& number) {
        Plantier last = 0;
        for (m_herd.bind({stored}); m_herd.next();)
            if (Hochkomma_ersetzen(m_herd.text(1)) == Hochkomma_ersetzen(number))
                last = std::max(last, m_herd.integer(0));
        return last;
    }

    Statement m_herd;
    QHash<QString, Plantier> m_known;
    QSet<QByteArray> m_taken;
};

/// The bookings of one kind, those of the plan among them, by animal and day.
class Buchungstage {
public:
    Buchungstage(const Database& db, Buchungsart art) : m_db(db), m_table(QString::fromUtf8(angaben(art).table)) {}

    bool has(Plantier animal, QDate day) {
        if (m_planned.contains({animal, day})) return true;
        if (animal < 0) return false;
        if (!m_ofAnimal) m_ofAnimal = prepared(QStringLiteral("Kennung = ? and Datum = ?"));
        return any(*m_ofAnimal, {animal, day});
    }
    /// Of any animal, or of none.
    bool has(QDate day) {
        if (m_days.contains(day)) return true;
        if (!m_ofDay) m_ofDay = prepared(QStringLiteral("Datum = ?"));
        return any(*m_ofDay, {day});
    }
    void add(Plantier animal, QDate day) {
        m_planned.insert({animal, day});
        m_days.insert(day);
    }

private:
    Statement prepared(const QString& condition) const {
        return m_db.prepare(QStringLiteral("select top 1 ID from %1 where %2").arg(m_table, condition));
    }

    /// Reads to the end: a question to the user may follow, and no statement is left open meanwhile.
    static bool any(Statement& statement, const std::vector<Value>& values) {
        bool found = false;
        for (statement.bind(values); statement.next();) found = true;
        return found;
    }

    const Database& m_db;
    QString m_table;
    std::optional<Statement> m_ofAnimal, m_ofDay;
    std::set<std::pair<Plantier, QDate>> m_planned;
    std::set<QDate> m_days;
};

class Planner {
public:
    Planner(const Database& db, bool onceADay, const std::function<bool(const QString&)>& add,
            const Geraetewahl& wanted)
        : m_db(db),
          m_onceADay(onceADay),
          m_add(add),
          m_wanted(wanted),
          m_animals(db),
          m_held(db.prepare(QStringLiteral("select top 1 ID from Sauen"))) {}

    Geraeteplan of(const Geraetedatei& file) {
        m_held.next();
        for (const Geraetebuchung& booking : file.bookings())
            m_plan.entries.push_back(
                judged(booking, m_wanted ? m_wanted(m_plan.entries.size()) : Geraetewunsch::Geprüft));
        return std::move(m_plan);
    }

private:
    Geplant judged(const Geraetebuchung& booking, Geraetewunsch wanted) {
        Geplant entry{.booking = &booking};
        if (!booking.complete() || wanted == Geraetewunsch::Auslassen) {
            entry.urteil = booking.complete() ? Geraeteurteil::Ausgelassen : Geraeteurteil::Unvollständig;
            return entry;
        }
        if (!booking.number().isEmpty()) entry.animal = animal(booking.number());
        Buchungstage& days = m_days.try_emplace(booking.section->art, m_db, booking.section->art).first->second;
        const bool once = m_onceADay && wanted != Geraetewunsch::Trotzdem;
        if (once && (booking.number().isEmpty() ? days.has(booking.day) : days.has(entry.animal, booking.day))) {
            entry.urteil = Geraeteurteil::Doppelt;
            return entry;
        }
        days.add(entry.animal, booking.day);
        if (booking.section->art == Buchungsart::Verschiebung) mirror(entry, days);
        if (!booking.pen().isEmpty()) wean(entry);
        return entry;
    }

    Plantier animal(const QString& number) {
        if (const Plantier known = m_animals.find(number); known != 0) return known;
        m_held.bind({});  // nothing is held while the user is asked
        const bool add = m_add(number);
        m_held.next();
        return add ? added(number.left(NumberWidth)) : 0;
    }

    Plantier added(const QString& number) {
        m_plan.numbers.append(number);
        const auto animal = -static_cast<Plantier>(m_plan.numbers.size());
        m_animals.add(number, animal);
        return animal;
    }

    void mirror(Geplant& entry, Buchungstage& days) {
        const QString number = entry.booking->fields[2 + 1];
        if (number.isEmpty()) return;
        entry.mirrored = true;
        entry.partner = animal(number);
        days.add(entry.partner, entry.booking->day);
    }

    /// The piglets get the numbers of the pen that are free in the herd and in the plan.
    void wean(Geplant& entry) {
        const QString pen = entry.booking->pen();
        FreieNummern& free = m_free.try_emplace(pen, m_db, pen).first->second;
        entry.firstPiglet = m_plan.numbers.size();
        for (int i = 0; i < entry.booking->piglets; ++i) {
            QString number = free.naechste();
            while (m_animals.planned(number)) number = free.naechste();
            added(number);
        }
    }

    const Database& m_db;
    const bool m_onceADay;
    const std::function<bool(const QString&)>& m_add;
    const Geraetewahl& m_wanted;
    Tiernummern m_animals;
    Statement m_held;  // while it stands on a row, the others read without a lock of their own
    std::map<Buchungsart, Buchungstage> m_days;
    std::map<QString, FreieNummern> m_free;
    Geraeteplan m_plan;
};

}  // namespace

int Geraeteplan::count(Geraeteurteil urteil) const {
    return static_cast<int>(
        std::count_if(entries.begin(), entries.end(), [&](const Geplant& entry) { return entry.urteil == urteil; }));
}

Geraeteplan planDeviceBookings(const Database& db, const Geraetedatei& file, bool onceADay,
                               const std::function<bool(const QString& number)>& add, const Geraetewahl& wanted) {
    return Planner(db, onceADay, add, wanted).of(file);
}

}  // namespace koben
