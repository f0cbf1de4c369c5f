// One action that brings rows back, and what follows from it: numbers of litters, the cycle, marks on the cards.
#include <QHash>
#include <QSet>
#include <algorithm>
#include <map>
#include <set>

#include "core/Aktionsnamen.h"
#include "core/Buchungen.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "core/Ruecknahme.h"
#include "core/Ruecknahmemarken.h"
#include "core/Ruecknahmeregeln.h"
#include "core/Ruecknahmeselektion.h"
#include "core/Ruecknahmestichworte.h"
#include "core/Wurfnummern.h"
#include "store/Collation.h"

namespace koben {

using Change = RowChange::Kind;

/// The work of one action on one plan.
class Ruecknahme::Work {
public:
    Work(const Ruecknahme& all, const Plan& plan, const Action& action)
        : m_all(all), m_plan(plan), m_action(action), m_db(action.database()), m_deeds(all.deeds(plan)) {}

    /// Why it cannot be done; "" where all is done but the commit.
    QString run() {
        const Stichwortlisten words(m_all.m_journal, m_deeds);
        for (const Entry& entry : m_plan.entries) m_later[entry.number] = staying(entry.number);
        for (const Entry& entry : m_plan.entries) {
            if (const QString refusal = revert(entry); !refusal.isEmpty()) return refusal;
            gather(entry);
        }
        if (const QString refusal = check(); !refusal.isEmpty()) return refusal;
        if (const QString refusal = checkNames(); !refusal.isEmpty()) return refusal;
        words.settle(
            m_action, [](const Entry& e) { return e.counts(); }, [this](const Entry& e) { return counts(e); });
        Selektionsmarken(m_all.m_journal, m_deeds).restore(m_db, [this](const Entry& e) { return counts(e); });
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
    /// What typing would ask for the animals that come back, or get marks back; "" for nothing. After run().
    QString question() const {
        QMultiHash<QByteArray, const Mark*> wanted;
        for (const Mark& mark : m_marks)
            if (mark.field == EarTag || m_all.m_variablen.Konfig_Zahl[Zahl::TaetowierungDoppelt] == 0)
                wanted.insert(key(mark.field, mark.text.toText()), &mark);
        if (wanted.isEmpty()) return {};
        QStringList lines;
        Statement animal = m_db.prepare(QStringLiteral("select ID, Art, Nummer, Ohrmarke, Tätowierung from Sauen"));
        for (animal.bind({}); animal.next() && lines.size() < MostLines;)
            for (const int column : {3, 4})
                for (const Mark* mark : wanted.values(key(column == 3 ? EarTag : Tattoo, animal.text(column))))
                    if (givenSince(*mark, animal.integer(0)))
                        lines += QStringLiteral("...die %1 „%2“ hat inzwischen auch %3 %4.")
                                     .arg(column == 3 ? EarTag : QStringLiteral("Tätowierungs-Nummer"),
                                          mark->text.toText(), animal.text(1), animal.text(2));
        if (lines.isEmpty()) return {};
        return QStringLiteral("Bitte beachten:") + Crlf + Crlf + lines.join(Crlf) + Crlf + Crlf +
               QStringLiteral("Sollen die Daten trotzdem so werden?");
    }

private:
    /// A text that a row gets back, and that others are not to bear.
    struct Mark {
        QString table, field;
        qint64 row;
        Value text;
        qint64 behind;  ///< the entry whose row it is
    };
    static inline const QString EarTag = QStringLiteral("Ohrmarke"), Tattoo = QStringLiteral("Tätowierung");
    static constexpr int MostLines = 10;

    bool counts(const Entry& entry) const { return countsAfter(entry, m_plan, m_deeds); }

    static QByteArray key(const QString& field, const QString& text) { return field.toUtf8() + sortKey(text); }
    /// Whether another animal has been given the text of a mark since.
    bool givenSince(const Mark& mark, qint64 animal) const {
        return animal != mark.row &&
               m_all.m_journal.lastToName(mark.table, animal, mark.field, mark.text, mark.behind) != 0;
    }

    /// Texts that the row of an entry gets back.
    void gatherNames(const Entry& entry, const RowChange& row) {
        if (row.kind == Change::Inserted) return;
        const QString name = Journal::nameField(*row.table);
        const auto add = [&](const QString& field, std::vector<Mark>& all) {
            const RowChange::Cell* cell = row.cell(field);
            if (cell && !cell->before.toText().isEmpty())
                all.push_back({*row.table, field, row.row, cell->before, entry.number});
        };
        if (!name.isEmpty()) add(name, m_names);
        if (*row.table != Regeln::Tiere) return;
        add(EarTag, m_marks);
        add(Tattoo, m_marks);
    }

    /// A number or name that comes back must not be another row's, unless that one comes back, too, or it was so when
    /// the action was done.
    QString checkNames() const {
        std::set<std::pair<QString, qint64>> coming;
        for (const Mark& name : m_names) coming.insert({name.table, name.row});
        std::map<QString, Statement> bearers;
        QSet<QByteArray> seen;
        for (const Mark& name : m_names) {
            const QByteArray text = key(name.table, name.text.toText());
            if (seen.contains(text)) continue;
            seen.insert(text);
            const bool animal = name.table == Regeln::Tiere;
            auto of = bearers.find(name.table);
            if (of == bearers.end())
                of =
                    bearers
                        .emplace(name.table, m_db.prepare(QStringLiteral("select ID, %1 from %2 where %3 = ?")
                                                              .arg(animal ? QStringLiteral("Art, Stallnr") : name.field,
                                                                   name.table, name.field)))
                        .first;
            bool comes = false;
            QString kind, pen;
            bool other = false;
            for (of->second.bind({name.text}); of->second.next();) {
                const std::pair row(name.table, of->second.integer(0));
                if (coming.contains(row)) {
                    comes = comes || !m_doubles.contains(row);
                } else if (!other) {
                    other = true;
                    kind = of->second.text(1);
                    pen = animal ? of->second.text(2) : QString();
                }
            }
            if (comes && other) return taken(name, animal, kind, pen);
        }
        return {};
    }

    static QString taken(const Mark& name, bool animal, const QString& kind, const QString& pen) {
        if (!animal)
            return QStringLiteral(
                       "Nicht möglich: „%1“ steht inzwischen ein zweites Mal in den Stammdaten (%2). "
                       "Bitte benennen Sie diesen anderen Eintrag zuerst um, oder löschen Sie ihn.")
                .arg(name.text.toText(), name.table);
        return QStringLiteral(
                   "Nicht möglich: Die Nummer %1 hat inzwischen ein anderes Tier (%2%3). Bitte geben Sie "
                   "diesem Tier zuerst eine andere Nummer, oder löschen Sie es.")
            .arg(name.text.toText(), kind, pen.isEmpty() ? QString() : QStringLiteral(", Stallnr ") + pen);
    }

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
        Journal::Beside beside;
        const auto take = [&](const RowChange& row) {
            m_cycle = m_cycle || Regeln::changesCycle(row);
            gatherNames(entry, row);
            m_herd = m_herd || (*row.table == Regeln::Tiere && Regeln::changesList(row));
            if (*row.table == Regeln::Tiere && row.kind != Change::Changed) {
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
        };
        m_all.m_journal.read(entry.number, take, &beside);
        m_doubles.merge(beside.doubles);
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
        Kartenmarken(m_db, m_all.m_journal, m_deeds, [this](const Entry& e) { return counts(e); }).restore();
    }

    const Ruecknahme& m_all;
    const Plan& m_plan;
    const Action& m_action;
    const Database& m_db;
    const std::vector<qint64> m_deeds;
    std::vector<Mark> m_names, m_marks;
    std::set<std::pair<QString, qint64>> m_doubles;
    std::map<qint64, std::vector<qint64>> m_later;  ///< by entry
    QSet<qint64> m_gone, m_back, m_renumbered, m_littered, m_changedLitters;
    bool m_cycle = false, m_herd = false;
};

Rueckmeldung Ruecknahme::carryOut(const Plan& plan, bool agreed) const {
    if (!plan.refusal.isEmpty()) return {{}, plan.refusal, {}};
    if (plan.entries.empty()) return {{}, QStringLiteral("Es ist keine Aktion ausgewählt."), {}};
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
    if (result.done() && !agreed) result.question = work.question();
    if (!result.done()) return result;
    action.commit();
    result.herd = work.herd();
    return result;
}

}  // namespace koben
