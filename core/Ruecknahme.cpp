// What rests on an action, and the plan of what is taken back together.
#include "core/Ruecknahme.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "core/Aktionsnamen.h"
#include "core/Ruecknahmeferkel.h"
#include "core/Ruecknahmeregeln.h"
#include "core/Ruecknahmestichworte.h"

namespace koben {

using Kind = Journal::Kind;
using Change = RowChange::Kind;

/// What an entry did, by row; of changed rows the fields that count.
struct Ruecknahme::Footprint {
    struct Row {
        Change kind;
        QStringList fields;
    };
    QHash<QString, std::unordered_map<qint64, Row>> rows;
    std::unordered_set<qint64> newAnimals, bookingsGone;  ///< animals that it made; animals whose bookings it deleted
    QSet<QString> numbers;                                ///< that it gave to animals which were there

    bool carries(const RowChange& later) const;
};

/// Whether a later change of a row rests on it.
bool Ruecknahme::Footprint::carries(const RowChange& later) const {
    if (later.kind != Change::Deleted && *later.table != Regeln::Tiere && !numbers.isEmpty())
        for (const QString& field : Regeln::numberFields())
            if (const auto* cell = later.cell(field); cell && numbers.contains(cell->after.toText())) return true;
    if (later.kind != Change::Changed) {
        const RowChange::Cell* owner = later.cell(Regeln::Tier);
        const bool inserted = later.kind == Change::Inserted;
        if (owner && newAnimals.contains((inserted ? owner->after : owner->before).toInt())) return true;
        if (!inserted && *later.table == Regeln::Tiere && bookingsGone.contains(later.row)) return true;
    }
    const auto table = rows.constFind(*later.table);
    if (table == rows.cend()) return false;
    const auto own = table->find(later.row);
    if (own == table->end()) return false;
    if (later.kind != Change::Changed) return own->second.kind != Change::Changed || !own->second.fields.isEmpty();
    return std::any_of(later.cells.begin(), later.cells.end(), [&](const RowChange::Cell& cell) {
        const QString& field = later.fields->at(cell.field);
        if (own->second.kind != Change::Changed) return Regeln::role(*later.table, field) == Journal::Role::Own;
        return own->second.fields.contains(field);
    });
}

Ruecknahme::Footprint Ruecknahme::footprint(const Entry& entry) const {
    Footprint result;
    m_journal.read(entry.number, [&](const RowChange& row) {
        if (Regeln::isKeywords(*row.table)) return true;
        auto& own = result.rows[*row.table][row.row];
        own.kind = row.kind;
        if (row.kind == Change::Changed) {
            for (const auto& cell : row.cells)
                if (const QString& field = row.fields->at(cell.field);
                    Regeln::role(*row.table, field) == Journal::Role::Own)
                    own.fields.append(field);
            if (const auto* number = row.cell(Regeln::Nummer);
                number && *row.table == Regeln::Tiere && !number->after.toText().isEmpty())
                result.numbers.insert(number->after.toText());
        } else if (*row.table == Regeln::Tiere) {
            if (row.kind == Change::Inserted) result.newAnimals.insert(row.row);
        } else if (const auto* owner = row.cell(Regeln::Tier); owner && row.kind == Change::Deleted) {
            result.bookingsGone.insert(owner->before.toInt());
        }
        return true;
    });
    return result;
}

std::vector<qint64> Ruecknahme::restingOn(const Entry& entry) const {
    std::vector<qint64> result;
    auto candidates = m_journal.later(entry.number, entry.kind == Kind::TakeBack);
    const auto behind = entry.kind == Kind::TakeBack ? candidates : m_journal.actionsBehind(entry.number);
    if (!behind.empty()) {
        const Footprint own = footprint(entry);
        Ferkelbewegungen movements(m_db);
        m_journal.read(entry.number, [&](const RowChange& row) { return movements.take(row), true; });
        if (!own.numbers.isEmpty()) candidates = behind;  // bookings name sows and boars by their numbers, too
        for (const qint64 number : candidates) {
            bool rests = false;
            Absetzverlust weaning;
            m_journal.read(number, [&](const RowChange& row) {
                weaning.take(row);
                return !(rests = own.carries(row));
            });
            if (rests || weaning.restsOn(movements)) result.push_back(number);
        }
    }
    addTakers(entry, result);
    return result;
}

/// Actions that have given a name to another row since, which the rows of this entry would get back.
void Ruecknahme::addTakers(const Entry& entry, std::vector<qint64>& numbers) const {
    QHash<QString, Statement> others;
    m_journal.read(entry.number, [&](const RowChange& row) {
        const QString field = Journal::nameField(*row.table);
        if (row.kind == Change::Inserted || field.isEmpty()) return true;
        const RowChange::Cell* cell = row.cell(field);
        if (cell == nullptr || cell->before.toText().isEmpty()) return true;
        if (!others.contains(*row.table))
            others.insert(
                *row.table,
                m_db.prepare(QStringLiteral("select ID from %1 where %2 = ? and ID <> ?").arg(*row.table, field)));
        Statement& other = others.find(*row.table).value();
        for (other.bind({cell->before, row.row}); other.next();)
            if (const qint64 taker =
                    m_journal.lastToName(*row.table, other.integer(0), field, cell->before, entry.number);
                taker != 0)
                numbers.push_back(taker);
        return true;
    });
}

std::optional<Journal::Entry> Ruecknahme::nextAgain() const {
    const auto last = m_journal.newest(Kind::TakeBack);
    if (!last || m_journal.anyBehind(Kind::Action, last->number)) return std::nullopt;
    return last;
}

QString Ruecknahme::subject(const Entry& entry) const {
    if (entry.kind == Kind::Action || entry.of.empty()) return entry.name;
    const auto first = m_journal.entry(entry.of.front());
    if (!first) return entry.name;
    return andOthers(subject(*first), entry.of.size());
}

namespace {

QString named(const Journal::Entry& entry) {
    return QStringLiteral("„%1“ vom %2").arg(entry.name, Value(DateTime{entry.time.julianDay, 0}).toText());
}

}  // namespace

QString Darauf_beruht(const Journal::Entry& entry) {
    return QStringLiteral("Nicht möglich: darauf beruht %1.").arg(named(entry));
}

namespace {

QString notKept(const Journal::Entry& entry) {
    return QStringLiteral(
               "Nicht möglich: %1 hat Tabellen oder so viele Datensätze geändert, dass deren früherer "
               "Zustand nicht aufbewahrt wurde. Es hilft nur eine Datensicherung von davor.")
        .arg(named(entry));
}

}  // namespace

/// Why this entry cannot be part of it, "" where it can.
QString Ruecknahme::objection(const Entry& entry, bool again) const {
    if (!entry.counts()) return QStringLiteral("Nicht möglich: %1 ist schon zurückgenommen.").arg(named(entry));
    if ((entry.kind == Kind::TakeBack) != again)
        return QStringLiteral("Nicht möglich: Aktionen und Rücknahmen können nicht gemeinsam zurückgenommen werden.");
    if (!entry.known) return notKept(entry);
    const auto unknown = m_journal.unknownBehind(entry.number);
    return unknown ? notKept(*unknown) : QString();
}

/// For an entry that carried actions out again, those actions.
std::vector<qint64> Ruecknahme::meant(qint64 number) const {
    const auto entry = m_journal.entry(number);
    if (!entry || entry->kind != Kind::Redo) return {number};
    std::vector<qint64> result;
    for (const qint64 takenBack : entry->of)
        if (const auto other = m_journal.entry(takenBack))
            result.insert(result.end(), other->of.begin(), other->of.end());
    return result;
}

/// The actions that count no more, or again, when a plan is carried out.
std::vector<qint64> Ruecknahme::deeds(const Plan& plan) const {
    std::vector<qint64> result;
    for (const Entry& entry : plan.entries) {
        if (plan.again)
            result.insert(result.end(), entry.of.begin(), entry.of.end());
        else
            result.push_back(entry.number);
    }
    return result;
}

bool Ruecknahme::countsAfter(const Entry& entry, const Plan& plan, const std::vector<qint64>& deeds) {
    return std::find(deeds.begin(), deeds.end(), entry.number) == deeds.end() ? entry.counts() : plan.again;
}

/// Actions that change or delete a keyword which would not be there then.
std::vector<qint64> Ruecknahme::missingWords(const Plan& plan) const {
    const std::vector<qint64> changing = deeds(plan);
    if (changing.empty()) return {};
    const Stichwortlisten words(m_journal, changing);
    std::vector<qint64> result = words.without([&](const Entry& e) { return countsAfter(e, plan, changing); });
    const std::vector<qint64> always = words.without([](const Entry& e) { return e.counts(); });
    std::erase_if(result, [&](qint64 n) { return std::find(always.begin(), always.end(), n) != always.end(); });
    return result;
}

Ruecknahme::Plan Ruecknahme::plan(const std::vector<qint64>& numbers) const {
    Plan plan;
    std::map<qint64, Entry, std::greater<>> all;
    QSet<qint64> asked;
    for (const qint64 number : numbers)
        for (const qint64 deed : meant(number)) asked.insert(deed);
    std::vector<qint64> open(asked.begin(), asked.end());
    std::sort(open.begin(), open.end(), std::greater<>());
    while (!open.empty() && plan.refusal.isEmpty()) {
        const qint64 number = open.back();
        open.pop_back();
        const auto entry = m_journal.entry(number);
        if (entry && !all.contains(number)) {
            if (all.empty()) plan.again = entry->kind == Kind::TakeBack;
            if (plan.again && entry->kind == Kind::Action)
                plan.refusal = Darauf_beruht(*entry);
            else
                plan.refusal = objection(*entry, plan.again);
            all.emplace(number, *entry);
            if (plan.refusal.isEmpty())
                for (const qint64 other : restingOn(*entry)) open.push_back(other);
        }
        if (!open.empty() || !plan.refusal.isEmpty()) continue;
        plan.entries.clear();
        for (const auto& item : all) plan.entries.push_back(item.second);
        open = missingWords(plan);
    }
    plan.entries.clear();
    for (const auto& [number, entry] : all) {
        plan.entries.push_back(entry);
        if (!asked.contains(number)) plan.added.push_back(entry);
    }
    return plan;
}

Ruecknahme::Plan Ruecknahme::backPlan() const {
    if (const auto entry = next()) return plan({entry->number});
    Plan none;
    none.refusal = QStringLiteral("Es gibt keine Aktion, die zurückgenommen werden kann.");
    return none;
}

Ruecknahme::Plan Ruecknahme::againPlan() const {
    if (const auto entry = nextAgain()) return plan({entry->number});
    Plan none;
    none.refusal = QStringLiteral("Es gibt keine Rücknahme, die wieder aufgehoben werden kann.");
    return none;
}

Rueckmeldung Ruecknahme::back() const { return carryOut(backPlan()); }

Rueckmeldung Ruecknahme::again() const { return carryOut(againPlan()); }

}  // namespace koben
