// One action that brings rows back, and what follows from it: numbers of litters, the cycle, marks on the cards.
#include <QSet>
#include <algorithm>

#include "core/Aktionsnamen.h"
#include "core/Buchungen.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "core/Ruecknahme.h"
#include "core/Ruecknahmeregeln.h"
#include "core/Wurfnummern.h"

namespace koben {

using Change = RowChange::Kind;

namespace {

const QString Mark = QStringLiteral("Aenderung");
/// Latest days, of which one that becomes another marks the animal's card.
const QStringList MarkingDays = {QStringLiteral("L_Belegung"), QStringLiteral("L_Ferkelung"),
                                 QStringLiteral("L_Absetzung")};

constexpr int IsoDay = 10;  // characters

}  // namespace

/// The work of one action on one plan.
class Ruecknahme::Work {
public:
    Work(const Ruecknahme& all, const Plan& plan, const Action& action)
        : m_all(all), m_plan(plan), m_action(action), m_db(action.database()) {}

    /// Why it cannot be done; "" where all is done but the commit.
    QString run() {
        for (const Entry& entry : m_plan.entries) m_later[entry.number] = staying(entry.number);
        for (const Entry& entry : m_plan.entries) {
            if (const QString refusal = revert(entry); !refusal.isEmpty()) return refusal;
            gather(entry);
        }
        if (const QString refusal = check(); !refusal.isEmpty()) return refusal;
        settleCounters();
        Wurfnummern litters(m_db);
        Statement sow = m_db.prepare(QStringLiteral("select Kennung from Ferkelung where ID = ?"));
        for (const qint64 litter : m_changedLitters)
            if (sow.bind({litter}); sow.next() && !sow.isNull(0)) m_littered.insert(sow.integer(0));
        for (const qint64 animal : m_littered)
            if (numbered(animal)) m_renumbered.insert(animal);
        for (const qint64 animal : m_renumbered) litters.number(animal);
        if (m_cycle) derive();
        return {};
    }
    bool herd() const { return m_herd; }

private:
    QString revert(const Entry& entry) const {
        const auto conflict = m_all.m_journal.revert(m_action, entry.number, Regeln::role);
        if (!conflict) return {};
        if (const QString other = standsOn(entry, conflict->table, conflict->row); !other.isEmpty()) return other;
        return QStringLiteral(
                   "Nicht möglich: Die Daten von „%1“ (Tabelle %2) sind seither anders als durch Aktionen des Verlaufs "
                   "geändert worden. Bitte berichtigen Sie sie von Hand.")
            .arg(m_all.subject(entry), conflict->table);
    }

    /// Names an action that counts again since, and has the row; "" for none.
    QString standsOn(const Entry& entry, const QString& table, qint64 row) const {
        const qint64 behind = entry.of.empty() ? entry.number : *std::min_element(entry.of.begin(), entry.of.end());
        const qint64 number = m_all.m_journal.lastToTouch(table, row, behind);
        const auto other = m_all.m_journal.entry(number);
        return other ? Darauf_beruht(*other) : QString();
    }

    void gather(const Entry& entry) {
        const bool others = !m_later.at(entry.number).empty();
        m_all.m_journal.read(entry.number, [&](const RowChange& row) {
            m_cycle = m_cycle || Regeln::changesCycle(row);
            if (*row.table == Regeln::Tiere && row.kind != Change::Changed) {
                m_herd = true;
                if (row.kind == Change::Inserted) m_gone.insert(row.row);
                if (row.kind == Change::Deleted) m_gone.remove(row.row);
                return true;
            }
            const RowChange::Cell* owner = row.cell(Regeln::Tier);
            if (*row.table == Regeln::Wuerfe && row.kind == Change::Changed) m_changedLitters.insert(row.row);
            if (owner == nullptr) return true;
            const qint64 before = owner->before.toInt(), after = owner->after.toInt();
            if (row.kind == Change::Deleted && before != 0) m_back.insert(before);
            if (*row.table == Regeln::Wuerfe && row.kind != Change::Changed)
                (others ? m_renumbered : m_littered).insert(row.kind == Change::Inserted ? after : before);
            else if (*row.table == Regeln::Wuerfe && others)
                m_renumbered.insert(before);
            return true;
        });
    }

    /// Later actions on the same rows or animals that are not part of the plan.
    std::vector<qint64> staying(qint64 number) const {
        std::vector<qint64> later = m_all.m_journal.later(number, false);
        std::erase_if(later, [&](qint64 other) {
            return std::any_of(m_plan.entries.begin(), m_plan.entries.end(),
                               [&](const Entry& e) { return e.number == other; });
        });
        return later;
    }

    /// Bookings belong to animals: neither may be there without the other's entry in the journal.
    QString check() const {
        Statement animal = m_db.prepare(QStringLiteral("select ID from Sauen where ID = ?"));
        for (const qint64 id : m_back) {
            animal.bind({id});
            if (animal.next()) continue;
            const QString other = standsOn(m_plan.entries.back(), Regeln::Tiere, id);
            return other.isEmpty()
                       ? QStringLiteral("Nicht möglich: Das Tier, zu dem die Buchung gehört, gibt es nicht mehr.")
                       : other;
        }
        for (const Artangaben& kind : Buchungsarten) {
            if (m_gone.isEmpty()) break;
            Statement owner = m_db.prepare(
                QStringLiteral("select distinct Kennung from %1").arg(QString::fromUtf8(kind.table)) +
                (m_gone.size() == 1 ? QStringLiteral(" where Kennung = %1").arg(*m_gone.begin()) : QString()));
            for (owner.bind({}); owner.next();)
                if (!owner.isNull(0) && m_gone.contains(owner.integer(0)))
                    return QStringLiteral(
                               "Nicht möglich: Das Tier hat Buchungen (%1), die nicht im Verlauf stehen. "
                               "Bitte löschen Sie diese zuerst.")
                        .arg(QString::fromUtf8(kind.noun));
        }
        return {};
    }

    /// Litters that came without numbers, from another program, stay so.
    bool numbered(qint64 animal) const {
        Statement litter =
            m_db.prepare(QStringLiteral("select ID from Ferkelung where Kennung = ? and LNr IS NOT NULL"));
        litter.bind({animal});
        return litter.next();
    }

    void settleCounters() const {
        std::vector<qint64> reverted, revived;
        for (const Entry& entry : m_plan.entries) {
            if (!m_plan.again)
                reverted.push_back(entry.number);
            else
                revived.insert(revived.end(), entry.of.begin(), entry.of.end());
        }
        m_all.m_journal.settleCounters(reverted, revived);
    }

    void derive() const {
        Werte_berechnen(m_db, m_all.m_variablen);
        statussetzen(m_db);
        if (!m_plan.again) restoreMarks();
    }

    using Fields = std::map<QString, Value>;

    /// Deriving marks the card of an animal whose latest days become others, here too. What counts is how they went on
    /// without what is taken back.
    void restoreMarks() const {
        Statement now = m_db.prepare(
            QStringLiteral("select %1, %2 from Sauen where ID = ?").arg(Mark, MarkingDays.join(QStringLiteral(", "))));
        Statement write = m_db.prepare(QStringLiteral("update Sauen set %1 = ? where ID = ?").arg(Mark));
        QSet<qint64> done;
        for (auto entry = m_plan.entries.rbegin(); entry != m_plan.entries.rend(); ++entry) {
            const auto before = m_all.m_journal.companions(entry->number);
            if (before.empty()) continue;
            const QSet<qint64> marked = markedSince(entry->number);
            std::vector<std::map<qint64, Fields>> since;
            for (const qint64 later : m_later.at(entry->number)) since.push_back(m_all.m_journal.companions(later));
            for (const auto& [animal, fields] : before) {
                if (done.contains(animal)) continue;
                done.insert(animal);
                now.bind({animal});
                if (marked.contains(animal) || !now.next()) continue;
                const Value mark = wentOn(animal, fields, since, now) ? QStringLiteral("X") : fields.at(Mark);
                if (!(now.value(0) == mark)) write.run({mark, animal});
            }
        }
    }

    /// Whether one of the animal's latest days became another, from before an entry over those that stay until now.
    bool wentOn(qint64 animal, const Fields& before, const std::vector<std::map<qint64, Fields>>& since,
                const Statement& now) const {
        for (int i = 0; i < MarkingDays.size(); ++i) {
            const QString& field = MarkingDays[i];
            QString last = before.at(field).toText().left(IsoDay);
            const auto becomes = [&last](const QString& day) {
                const bool another = !last.isEmpty() && !day.isEmpty() && last != day;
                last = day;
                return another;
            };
            for (const auto& animals : since) {
                const auto own = animals.find(animal);
                if (own == animals.end()) continue;
                const QString day = own->second.at(field).toText().left(IsoDay);
                if ((day.isEmpty() || booked(animal, field, day)) && becomes(day)) return true;
            }
            const qint32 day = now.day(i + 1);
            if (becomes(day == 0 ? QString() : QDate::fromJulianDay(day).toString(Qt::ISODate))) return true;
        }
        return false;
    }

    /// A day of a booking that is taken back is none.
    bool booked(qint64 animal, const QString& field, const QString& day) const {
        Statement booking = m_db.prepare(QStringLiteral("select ID from %1 where Kennung = ? and Datum = ?")
                                             .arg(field.mid(QStringView(u"L_").size())));
        booking.bind({animal, QDate::fromString(day, Qt::ISODate)});
        return booking.next();
    }

    /// Animals whose mark an action that stays has set or taken away since.
    QSet<qint64> markedSince(qint64 number) const {
        QSet<qint64> result;
        for (const qint64 later : m_later.at(number))
            m_all.m_journal.read(later, [&](const RowChange& row) {
                if (*row.table == Regeln::Tiere && row.kind == Change::Changed && row.cell(Mark))
                    result.insert(row.row);
                return true;
            });
        return result;
    }

    const Ruecknahme& m_all;
    const Plan& m_plan;
    const Action& m_action;
    const Database& m_db;
    std::map<qint64, std::vector<qint64>> m_later;  ///< by entry
    QSet<qint64> m_gone, m_back, m_renumbered, m_littered, m_changedLitters;
    bool m_cycle = false, m_herd = false;
};

Rueckmeldung Ruecknahme::carryOut(const Plan& plan) const {
    if (!plan.refusal.isEmpty()) return {{}, plan.refusal};
    if (plan.entries.empty()) return {{}, QStringLiteral("Es ist keine Aktion ausgewählt.")};
    Rueckmeldung result;
    const auto asked = std::find_if(plan.entries.begin(), plan.entries.end(), [&](const Entry& entry) {
        return std::none_of(plan.added.begin(), plan.added.end(),
                            [&](const Entry& other) { return other.number == entry.number; });
    });
    result.name = andOthers(subject(asked == plan.entries.end() ? plan.entries.front() : *asked), plan.entries.size());
    Action action(
        m_db, (plan.again ? QStringLiteral("Wieder ausgeführt: ") : QStringLiteral("Zurückgenommen: ")) + result.name);
    std::vector<qint64> numbers;
    for (const Entry& entry : plan.entries) numbers.push_back(entry.number);
    action.setReversal(plan.again ? Journal::Kind::Redo : Journal::Kind::TakeBack, numbers);
    Work work(*this, plan, action);
    result.refusal = work.run();
    if (!result.done()) return result;
    action.commit();
    result.herd = work.herd();
    return result;
}

}  // namespace koben
