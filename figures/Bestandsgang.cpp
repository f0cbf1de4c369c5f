#include "figures/Bestandsgang.h"

#include <QDate>
#include <algorithm>
#include <optional>

#include "store/Watch.h"

namespace koben {

namespace {

// Days outside of these count as the first or the last of them.
const qint32 firstDay = static_cast<qint32>(QDate(1900, 1, 1).toJulianDay());
const qint32 lastDay = static_cast<qint32>(QDate(2100, 1, 1).toJulianDay());
constexpr size_t most = 2000;  // animals that are read again one by one

const QString select = QStringLiteral("select ID, Art, Zugangsdatum, Abgangsdatum from Sauen");

qint8 kindOf(const QString& text) {
    for (size_t kind = 0; kind < Tierarten.size(); ++kind)
        if (text.compare(QLatin1String(Tierarten[kind]), Qt::CaseInsensitive) == 0) return static_cast<qint8>(kind);
    return -1;
}

}  // namespace

Bestandsgang::Tier Bestandsgang::tierOf(const Statement& row) {
    if (QString art = row.text(1); art != m_art) m_kind = kindOf(art), m_art = std::move(art);
    const qint32 left = row.day(3);
    return {static_cast<qint32>(row.integer(0)), std::clamp(row.day(2), firstDay, lastDay),
            left == 0 ? lastDay : std::clamp(left, firstDay, lastDay), m_kind};
}

void Bestandsgang::count(const Tier& animal, int sign) {
    if (animal.kind < 0 || animal.from >= animal.to) return;
    const auto kind = static_cast<size_t>(animal.kind);
    m_changes[static_cast<size_t>(animal.from - firstDay)][kind] += sign;
    m_changes[static_cast<size_t>(animal.to - firstDay)][kind] -= sign;
}

Bestandsgang::Bestandsgang(const Database& db, qint32 from)
    : m_from(from), m_changes(static_cast<size_t>(lastDay - firstDay) + 1) {
    Statement row = db.prepare(select + QStringLiteral(" where Abgangsdatum is null or Abgangsdatum > ?"));
    row.bind({Value(DateTime{std::max(from, firstDay), 0})});
    while (row.next()) {
        m_animals.push_back(tierOf(row));
        count(m_animals.back(), 1);
    }
    const auto before = [](const Tier& a, const Tier& b) { return a.id < b.id; };
    if (!std::is_sorted(m_animals.begin(), m_animals.end(), before))
        std::sort(m_animals.begin(), m_animals.end(), before);
}

void Bestandsgang::update(const Database& db, const std::vector<qint64>& ids) {
    Statement row = db.prepare(select + QStringLiteral(" where ID = ?"));
    for (const qint64 id : ids) {
        const auto at = std::lower_bound(m_animals.begin(), m_animals.end(), id,
                                         [](const Tier& animal, qint64 wanted) { return animal.id < wanted; });
        const bool known = at != m_animals.end() && at->id == id;
        if (known) count(*at, -1);
        row.bind({Value(id)});
        if (row.next()) {
            const Tier now = tierOf(row);
            count(now, 1);
            if (known)
                *at = now;
            else
                m_animals.insert(at, now);
        } else if (known) {
            at->kind = -1;
        }
    }
}

std::vector<Bestand> Bestandsgang::on(const std::vector<qint32>& days) const {
    std::vector<Bestand> stocks;
    Bestand stock{};
    qint32 next = firstDay;
    for (const qint32 day : days) {
        for (; next <= std::min(day, lastDay - 1); ++next)
            for (size_t kind = 0; kind < stock.size(); ++kind)
                stock[kind] += m_changes[static_cast<size_t>(next - firstDay)][kind];
        stocks.push_back(stock);
    }
    return stocks;
}

namespace {

/// A table that is emptied as a whole tells no row to its watch.
std::pair<qint64, qint64> mark(const Database& db) {
    Statement row = db.prepare(QStringLiteral("select max(ID) from Sauen"));
    return row.next() ? std::pair(row.integer(0), qint64{1}) : std::pair(qint64{0}, qint64{0});
}

/// What was read last, of one file.
class Ablage {
public:
    std::shared_ptr<const Bestandsgang> of(const Database& db, qint32 from) {
        if (!m_watch || !m_watch->watches(db)) m_stock.reset(), m_watch.emplace(db, QStringLiteral("Sauen"));
        const auto changed = m_watch->take(most);
        const auto newest = mark(db);
        const bool emptied = newest < m_mark;
        m_mark = newest;
        if (!m_stock || !changed || emptied || from < m_stock->from())
            m_stock = std::make_shared<Bestandsgang>(db, from);
        else
            m_stock->update(db, *changed);
        return m_stock;
    }

private:
    std::optional<Watch> m_watch;
    std::pair<qint64, qint64> m_mark;
    std::shared_ptr<Bestandsgang> m_stock;
};

}  // namespace

std::shared_ptr<const Bestandsgang> Bestandsgang_holen(const Database& db, qint32 from) {
    static Ablage kept;
    return kept.of(db, from);
}

}  // namespace koben
