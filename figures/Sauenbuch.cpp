#include "figures/Sauenbuch.h"

#include <algorithm>
#include <array>

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

constexpr int GroupDays = 3;          // so long after the first service of a heat further ones belong to it
constexpr qint32 FirstDay = 1757585;  // 01.01.0100, the first of the dialect
constexpr int ShortestPregnancy = 105, LongestPregnancy = 125;

enum Kind : int { Service, Negative, Weaning, Farrowing, Loss, KindCount };

/// A booking of any of the tables.
struct Row {
    qint32 place, day;
    int a, b, c;  // of a farrowing all, alive, dead; otherwise the piglets
};
using Rows = std::array<std::vector<Row>, KindCount>;

/// All bookings in one statement. An index that has all asked fields holds them by animal, so the rows of the newer
/// animals lie together; only those of the farrowings are found by walking the table. "union all" asks for no order.
QString bookingsSql(bool losses) {
    const auto part = [](int kind, const char* what, const char* table, const char* where) {
        return QStringLiteral("select %1, Kennung, Datum, %2 from %3%4")
            .arg(QString::number(kind), QString::fromUtf8(what), QString::fromUtf8(table), QString::fromUtf8(where));
    };
    QStringList parts{part(Service, "0, 0, 0", "Belegung", " where Kennung >= ?"),
                      part(Negative, "0, 0, 0", "Trächtigkeit", " where Kennung >= ? and Trächtig = 'N'"),
                      part(Weaning, "Anzahl_Ferkel, 0, 0", "Absetzung", " where Kennung >= ?"),
                      part(Farrowing, "Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot", "Ferkelung", "")};
    if (losses) parts += part(Loss, "Anzahl_Ferkel, 0, 0", "Verluste", " where Datum >= ?");
    return parts.join(QStringLiteral(" union all "));
}

Value dateValue(qint32 day) { return Value(DateTime{day, 0}); }

/// Reads the sows that have not left before a day, and their bookings.
class Reader {
public:
    Reader(const Database& db, qint32 heute, qint32 from, Lesen what)
        : m_db(db), m_heute(heute), m_from(std::max(from, FirstDay)), m_losses(what == Lesen::Alles) {}

    void read() {
        readSows(m_from);
        readBookings();
        if (m_from == FirstDay || !othersBooked()) return;
        sows.clear();
        rows = {};
        readSows(FirstDay);
        readBookings();
    }

    std::vector<Sau> sows;
    Rows rows;

private:
    void readSows(qint32 from) {
        QString sql = QStringLiteral("select ID, Nummer, Zugangsdatum, Abgangsdatum from Sauen where Art = 'Sau'");
        if (from > FirstDay) sql += QStringLiteral(" and (Abgangsdatum is null or Abgangsdatum >= ?)");
        Statement row = m_db.prepare(sql);
        row.bind(from > FirstDay ? std::vector<Value>{dateValue(from)} : std::vector<Value>{});
        while (row.next()) {
            Sau& sow = sows.emplace_back();
            sow.id = row.integer(0);
            sow.nummer = Hochkomma_ersetzen(row.text(1));
            sow.zugang = row.day(2);
            sow.abgang = row.day(3);
        }
    }

    void readBookings() {
        if (sows.empty()) return;
        m_found = 0;
        const Value first(sows.front().id);
        std::vector<Value> values{first, first, first};
        if (m_losses) values.push_back(dateValue(m_from));
        Statement row = m_db.prepare(bookingsSql(m_losses));
        row.bind(values);
        qint64 id = -1;
        qint32 place = -1;
        while (row.next()) {
            const qint64 animal = row.integer(1);
            if (animal != id) place = placeOf(id = animal);
            if (place < 0) continue;
            const qint32 day = row.day(2);
            const auto kind = static_cast<int>(row.integer(0));
            if (day >= m_from && kind != Negative) ++m_found;
            if (day == 0 || day > m_heute) continue;
            const auto amount = [&](int column) { return static_cast<int>(row.integer(column)); };
            rows[static_cast<size_t>(kind)].push_back({place, day, amount(3), amount(4), amount(5)});
        }
    }

    /// Position of a sow, -1 for another animal and for a booking of none.
    qint32 placeOf(qint64 id) const {
        const auto at = std::lower_bound(sows.begin(), sows.end(), id, [](const Sau& s, qint64 i) { return s.id < i; });
        return at == sows.end() || at->id != id ? -1 : static_cast<qint32>(at - sows.begin());
    }

    /// Whether there are bookings since `from` of other animals than those read: a sow gone before may be among them.
    bool othersBooked() const {
        QStringList parts;
        std::vector<Value> values;
        for (const char* table : {"Belegung", "Absetzung", "Ferkelung", "Verluste"}) {
            if (!m_losses && values.size() == 3) break;
            parts += QStringLiteral("select count(*) from %1 where Datum >= ?").arg(QString::fromUtf8(table));
            values.push_back(dateValue(m_from));
        }
        Statement count = m_db.prepare(parts.join(QStringLiteral(" union all ")));
        count.bind(values);
        qint64 all = 0;
        while (count.next()) all += count.integer(0);
        return all != m_found;
    }

    const Database& m_db;
    const qint32 m_heute, m_from;
    const bool m_losses;
    qint64 m_found = 0;
};

/// By sow, those of each by day.
void sort(std::vector<Row>& rows) {
    const auto before = [](const Row& a, const Row& b) {
        return a.place != b.place ? a.place < b.place : a.day < b.day;
    };
    if (!std::is_sorted(rows.begin(), rows.end(), before)) std::stable_sort(rows.begin(), rows.end(), before);
}

/// Hands each sow her part of what `make` makes of her rows and puts into `all`.
template <class T, class Make, class Set>
void share(std::vector<Row>& rows, std::vector<Sau>& sows, std::vector<T>& all, const Make& make, const Set& set) {
    sort(rows);
    all.reserve(rows.size());  // so that the spans stay valid
    for (auto at = rows.cbegin(); at != rows.cend();) {
        const qint32 place = at->place;
        const size_t first = all.size();
        for (; at != rows.cend() && at->place == place; ++at) make(*at, all, first);
        set(sows[static_cast<size_t>(place)], std::span<T>(all.data() + first, all.size() - first));
    }
    rows = {};
}

void addGroup(const Row& service, std::vector<qint32>& groups, size_t first) {
    if (groups.size() == first || service.day - groups.back() > GroupDays) groups.push_back(service.day);
}

void addDay(const Row& row, std::vector<qint32>& days, size_t) { days.push_back(row.day); }

void addPiglets(const Row& row, std::vector<Ferkelbuchung>& bookings, size_t) { bookings.push_back({row.day, row.a}); }

void addLitter(const Row& farrowing, std::vector<Wurf>& litters, size_t first) {
    if (litters.size() == first || litters.back().tag != farrowing.day) litters.push_back({.tag = farrowing.day});
    Wurf& litter = litters.back();
    litter.gesamt += farrowing.a;
    litter.lebend += farrowing.b;
    litter.tot += farrowing.c;
}

/// What was weaned of each litter, and the service that it belongs to.
void connect(const Sau& sow, std::span<Wurf> litters) {
    for (const Ferkelbuchung& weaning : sow.absetzungen) {
        const auto behind = std::lower_bound(litters.begin(), litters.end(), weaning.tag,
                                             [](const Wurf& w, qint32 day) { return w.tag < day; });
        if (behind == litters.begin()) continue;
        Wurf& litter = *(behind - 1);
        litter.abgesetzt += weaning.anzahl;
        litter.abgesetztAm = weaning.tag;
    }
    for (Wurf& litter : litters) {
        const auto behind = std::lower_bound(sow.gruppen.begin(), sow.gruppen.end(), litter.tag);
        if (behind == sow.gruppen.begin()) continue;
        const qint32 days = litter.tag - *(behind - 1);
        if (ShortestPregnancy <= days && days <= LongestPregnancy) litter.belegtAm = *(behind - 1);
    }
}

}  // namespace

Sauenbuch::Sauenbuch(const Database& db, qint32 heute, qint32 from, Lesen what)
    : m_heute(heute), m_from(from), m_what(what) {
    Reader reader(db, heute, from, what);
    reader.read();
    m_sows = std::move(reader.sows);
    Rows& rows = reader.rows;
    share(rows[Service], m_sows, m_groups, addGroup, [](Sau& s, std::span<qint32> of) { s.gruppen = of; });
    share(rows[Negative], m_sows, m_negative, addDay, [](Sau& s, std::span<qint32> of) { s.nichtTragend = of; });
    share(rows[Weaning], m_sows, m_weanings, addPiglets,
          [](Sau& s, std::span<Ferkelbuchung> of) { s.absetzungen = of; });
    share(rows[Loss], m_sows, m_losses, addPiglets, [](Sau& s, std::span<Ferkelbuchung> of) { s.verluste = of; });
    share(rows[Farrowing], m_sows, m_litters, addLitter, [](Sau& s, std::span<Wurf> of) {
        connect(s, of);
        s.wuerfe = of;
    });
}

}  // namespace koben
