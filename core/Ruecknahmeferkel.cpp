#include "core/Ruecknahmeferkel.h"

#include <algorithm>

#include "core/Ruecknahmeregeln.h"

namespace koben {

using Change = RowChange::Kind;

namespace {

constexpr qint32 LastDay = 5373484;  // 31.12.9999

}  // namespace

void Ferkelbewegungen::take(const RowChange& row) {
    static const QStringList counted = {Regeln::Tag, QStringLiteral("Ferkel_Lebendig"),
                                        QStringLiteral("Anzahl_Ferkel")};
    const bool litter = *row.table == Regeln::Wuerfe;
    if (!litter && *row.table != Regeln::Verluste && *row.table != Regeln::Verschiebungen) return;
    if (std::none_of(counted.begin(), counted.end(), [&](const QString& field) { return row.cell(field); })) return;
    const RowChange::Cell *owner = row.cell(Regeln::Tier), *day = row.cell(Regeln::Tag);
    if (row.kind != Change::Changed) {
        if (owner == nullptr || day == nullptr) return;
        const bool inserted = row.kind == Change::Inserted;
        m_days[(inserted ? owner->after : owner->before).toInt()].push_back(
            {Regeln::dayOf(inserted ? day->after : day->before), litter});
        return;
    }
    Statement booking = m_db.prepare(QStringLiteral("select Kennung, Datum from %1 where ID = ?").arg(*row.table));
    booking.bind({row.row});
    if (!booking.next()) return;
    auto& days = m_days[booking.integer(0)];
    days.push_back({booking.day(1), litter});
    if (day) days.push_back({Regeln::dayOf(day->before), litter});
}

bool Ferkelbewegungen::concern(qint64 animal, qint32 weaned) const {
    const auto days = m_days.find(animal);
    if (animal == 0 || days == m_days.end()) return false;
    const qint32 litter = litterOf(animal, weaned), latest = litterOf(animal, LastDay);
    return std::any_of(days->second.begin(), days->second.end(), [&](const Movement& movement) {
        if (latest != 0 && movement.day >= latest) return true;  // what the weaning proposed is counted from there
        return (movement.litter ? movement.day <= weaned : litter != 0) && litterOf(animal, movement.day) == litter;
    });
}

/// The day of the latest farrowing until then; 0 for none.
qint32 Ferkelbewegungen::litterOf(qint64 animal, qint32 day) const {
    Statement litter =
        m_db.prepare(QStringLiteral("select max(Datum) as tag from Ferkelung where Kennung = ? and Datum <= ?"));
    litter.bind({animal, DateTime{day, 0}});
    return litter.next() ? litter.day(0) : 0;
}

void Absetzverlust::take(const RowChange& row) {
    const bool weaning = *row.table == Regeln::Absetzungen;
    if (row.kind != Change::Inserted || (!weaning && *row.table != Regeln::Verluste)) return;
    const RowChange::Cell *owner = row.cell(Regeln::Tier), *day = row.cell(Regeln::Tag);
    if (owner && day) (weaning ? m_weaned : m_lost).emplace(owner->after.toInt(), Regeln::dayOf(day->after));
}

bool Absetzverlust::restsOn(const Ferkelbewegungen& movements) const {
    return std::any_of(m_weaned.begin(), m_weaned.end(), [&](const auto& weaning) {
        return m_lost.contains(weaning) && movements.concern(weaning.first, weaning.second);
    });
}

}  // namespace koben
