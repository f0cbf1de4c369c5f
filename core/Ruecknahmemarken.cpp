#include "core/Ruecknahmemarken.h"

#include <algorithm>

#include "core/Ruecknahmeregeln.h"

namespace koben {

using Change = RowChange::Kind;

namespace {

const QString Mark = QStringLiteral("Aenderung");
const QString Set = QStringLiteral("X");
/// Bookings of which a latest day that becomes another marks the card.
const std::array<QString, 3> Tables = {QStringLiteral("Belegung"), QStringLiteral("Ferkelung"),
                                       QStringLiteral("Absetzung")};

size_t kindOf(const QString& table) {
    return static_cast<size_t>(std::find(Tables.begin(), Tables.end(), table) - Tables.begin());
}

}  // namespace

Kartenmarken::Kartenmarken(const Database& db, const Journal& journal, const std::vector<qint64>& deeds,
                           const Counts& counts)
    : m_db(db), m_journal(journal) {
    std::vector<qint64> animals;
    for (const qint64 deed : deeds) {
        Journal::Beside beside;
        journal.read(
            deed, [](const RowChange&) { return true; }, &beside);
        for (const auto& [animal, fields] : beside.animals)
            if (m_animals.try_emplace(animal).second) animals.push_back(animal);
    }
    if (animals.empty()) return;
    auto entries = journal.ofAnimals(animals, journal.origin(*std::min_element(deeds.begin(), deeds.end())));
    // from the newest on: a booking that is gone is met where it went, with its animal
    for (auto number = entries.rbegin(); number != entries.rend(); ++number) read(*number, counts);
}

void Kartenmarken::read(qint64 number, const Counts& counts) {
    const auto entry = m_journal.entry(number);
    const bool action = entry->kind == Journal::Kind::Action, counting = action && counts(*entry);
    const auto step = [&](qint64 animal) -> Step* {
        const auto steps = m_animals.find(animal);
        if (steps == m_animals.end()) return nullptr;
        Step& own = steps->second[number];
        own.action = action;
        own.counts = counting;
        return &own;
    };
    Journal::Beside beside;
    m_journal.read(
        number,
        [&](const RowChange& row) {
            if (const size_t kind = kindOf(*row.table); kind < DayCount) {
                readBooking(row, kind, step);
            } else if (*row.table == Regeln::Tiere && row.kind != Change::Deleted) {
                const RowChange::Cell* mark = row.cell(Mark);
                Step* own = mark || row.kind == Change::Inserted ? step(row.row) : nullptr;
                if (own && mark) own->mark = {mark->before, mark->after};
                if (own) own->made = row.kind == Change::Inserted;
            }
            return true;
        },
        &beside);
    for (const auto& [animal, fields] : beside.animals)
        if (Step* own = step(animal)) {
            own->kept = Kept{fields.at(Mark), {}};
            for (size_t i = 0; i < DayCount; ++i)
                own->kept->days[i] = Regeln::dayOf(fields.at(QStringLiteral("L_") + Tables[i]));
        }
}

void Kartenmarken::readBooking(const RowChange& row, size_t kind, const std::function<Step*(qint64 animal)>& step) {
    const RowChange::Cell* day = row.cell(Regeln::Tag);
    if (row.kind == Change::Deleted)
        if (const auto* owner = row.cell(Regeln::Tier)) m_owners[{*row.table, row.row}] = owner->before.toInt();
    if (day == nullptr) return;
    if (Step* own = step(ownerOf(row)))
        own->bookings.push_back({kind, row.row, row.kind, Regeln::dayOf(day->before), Regeln::dayOf(day->after)});
}

/// The animal of a booking: by the row itself, as it stands now, or as it went later.
qint64 Kartenmarken::ownerOf(const RowChange& row) {
    if (row.kind != Change::Changed) {
        const auto* owner = row.cell(Regeln::Tier);
        return owner == nullptr ? 0 : (row.kind == Change::Inserted ? owner->after : owner->before).toInt();
    }
    Statement booking = m_db.prepare(QStringLiteral("select Kennung from %1 where ID = ?").arg(*row.table));
    booking.bind({row.row});
    if (booking.next()) return booking.integer(0);
    const auto gone = m_owners.find({*row.table, row.row});
    return gone == m_owners.end() ? 0 : gone->second;
}

Kartenmarken::Bookings Kartenmarken::bookingsNow(qint64 animal) const {
    Bookings result;
    for (size_t i = 0; i < DayCount; ++i) {
        Statement row = m_db.prepare(QStringLiteral("select ID, Datum from %1 where Kennung = ?").arg(Tables[i]));
        for (row.bind({animal}); row.next();) result[i][row.integer(0)] = row.day(1);
    }
    return result;
}

void Kartenmarken::apply(const Booking& booking, Bookings& bookings, bool back) {
    auto& days = bookings[booking.kind];
    if (booking.change == (back ? Change::Inserted : Change::Deleted))
        days.erase(booking.row);
    else
        days[booking.row] = back ? booking.before : booking.after;
}

/// Whether the herd was derived between an entry and the next one of the animal. What takes back derives itself; of an
/// action it shows in the days that the next entry found, unless they would have stayed the same.
bool Kartenmarken::derivedBehind(Steps::const_iterator at, const Steps& steps) {
    const Step& step = at->second;
    const auto next = std::find_if(std::next(at), steps.end(), [](const auto& item) { return item.second.kept; });
    if (next == steps.end() || !step.action || !step.kept) return true;
    const Days& days = step.kept->days;
    if (days != next->second.kept->days) return true;
    return std::none_of(step.bookings.begin(), step.bookings.end(), [&](const Booking& booking) {
        const qint32 latest = days[booking.kind];
        return booking.after > latest || (booking.change != Change::Inserted && booking.before == latest);
    });
}

/// As the actions that count make it; nothing where no entry tells how it began.
std::optional<Value> Kartenmarken::mark(qint64 animal, const Steps& steps) const {
    Bookings bookings = bookingsNow(animal);
    for (auto step = steps.rbegin(); step != steps.rend(); ++step)
        if (step->second.counts)
            for (const Booking& booking : step->second.bookings) apply(booking, bookings, true);
    const auto first = std::find_if(steps.begin(), steps.end(), [](const auto& item) { return item.second.kept; });
    if (first == steps.end()) return std::nullopt;
    const auto told = std::find_if(steps.begin(), first, [](const auto& item) { return item.second.mark; });
    Value mark = told == first && !first->second.mark ? first->second.kept->mark : told->second.mark->first;
    Days days = first->second.kept->days;
    for (auto at = steps.begin(); at != steps.end(); ++at) {
        const Step& step = at->second;
        if (step.counts) {
            for (const Booking& booking : step.bookings) apply(booking, bookings, false);
            if (step.mark) mark = step.mark->second;
            if (step.made) days = {};
        }
        if (!derivedBehind(at, steps)) continue;
        for (size_t i = 0; i < DayCount; ++i) {
            qint32 latest = 0;
            for (const auto& [row, day] : bookings[i]) latest = std::max(latest, day);
            if (days[i] != 0 && latest != 0 && days[i] != latest) mark = Set;
            days[i] = latest;
        }
    }
    return mark;
}

void Kartenmarken::restore() const {
    Statement now = m_db.prepare(QStringLiteral("select %1 from Sauen where ID = ?").arg(Mark));
    Statement write = m_db.prepare(QStringLiteral("update Sauen set %1 = ? where ID = ?").arg(Mark));
    for (const auto& [animal, steps] : m_animals) {
        now.bind({animal});
        if (!now.next()) continue;
        const Value before = now.value(0);
        if (const auto after = mark(animal, steps); after && !(before == *after)) write.run({*after, animal});
    }
}

}  // namespace koben
