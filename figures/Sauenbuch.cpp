#include "figures/Sauenbuch.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

constexpr int GroupDays = 3;          // so long after the first service of a heat further ones belong to it
constexpr qint32 FirstDay = 1757585;  // 01.01.0100, the first of the dialect
constexpr int ShortestPregnancy = 105, LongestPregnancy = 125;

/// Kinds of bookings by their place behind the sows in Sauenbuch::Tabellen.
enum Kind : size_t { Service, Negative, Weaning, Farrowing, Loss, KindCount };

/// A booking of any of the tables.
struct Row {
    qint32 sow, day, id;
    int a, b, c;  // of a farrowing all, alive, dead; otherwise the piglets
};

Value dateValue(qint32 day) { return Value(DateTime{day, 0}); }

QString idList(const std::vector<qint64>& ids) {
    QStringList texts;
    for (const qint64 id : ids) texts += QString::number(id);
    return texts.join(QStringLiteral(", "));
}

}  // namespace

struct Sauenbuch::Rohdaten {
    std::vector<Sau> sows;  ///< by ID, without their bookings
    std::array<std::vector<Row>, KindCount> rows;
};

namespace {

bool before(const Row& a, const Row& b) { return a.sow != b.sow ? a.sow < b.sow : a.day < b.day; }

/// By sow, those of each by day.
void sort(std::vector<Row>& rows) {
    if (!std::is_sorted(rows.begin(), rows.end(), before)) std::stable_sort(rows.begin(), rows.end(), before);
}

/// Reads sows and their bookings.
template <class Raw>
class Reader {
public:
    Reader(const Database& db, qint32 heute, qint32 from, Lesen what)
        : m_db(db), m_heute(heute), m_from(std::max(from, FirstDay)), m_losses(what == Lesen::Alles) {}

    /// The sows that have not left before the first day, and those that are booked since all the same.
    Raw all() {
        Raw raw = sows(m_from == FirstDay ? QString() : QStringLiteral("Abgangsdatum is null or Abgangsdatum >= ?"));
        bookings(raw);
        if (m_from == FirstDay || !othersBooked()) return raw;
        raw = sows({});
        bookings(raw);
        return raw;
    }
    /// Of these animals those that are sows.
    Raw of(const std::vector<qint64>& ids) {
        Raw raw = sows("ID in (" + idList(ids) + ")");
        bookings(raw, "Kennung in (" + idList(ids) + ")");
        return raw;
    }

private:
    Raw sows(const QString& condition) {
        QString sql = QStringLiteral("select ID, Nummer, Zugangsdatum, Abgangsdatum from Sauen where Art = 'Sau'");
        if (!condition.isEmpty()) sql += " and (" + condition + ")";
        Statement row = m_db.prepare(sql);
        row.bind(condition.contains(u'?') ? std::vector<Value>{dateValue(m_from)} : std::vector<Value>{});
        Raw raw;
        while (row.next()) {
            Sau& sow = raw.sows.emplace_back();
            sow.id = row.integer(0);
            sow.nummer = Hochkomma_ersetzen(row.text(1));
            sow.zugang = row.day(2);
            sow.abgang = row.day(3);
        }
        return raw;
    }

    /// All bookings in one statement. An index that has all asked fields holds them by animal, so the rows of the newer
    /// animals lie together; only those of the farrowings are found by walking the table. "union all" asks for no
    /// order.
    QString bookingsSql(const QString& which) const {
        const auto part = [](Kind kind, const char* amounts, const QString& condition) {
            return QStringLiteral("select %1, Kennung, Datum, ID, %2 from %3%4")
                .arg(QString::number(kind), QString::fromUtf8(amounts), QString::fromUtf8(Tabellen[kind + 1]),
                     condition.isEmpty() ? QString() : " where " + condition);
        };
        const QString newer = which.isEmpty() ? QStringLiteral("Kennung >= ?") : which;
        QStringList parts{part(Service, "0, 0, 0", newer), part(Negative, "0, 0, 0", newer + " and Trächtig = 'N'"),
                          part(Weaning, "Anzahl_Ferkel, 0, 0", newer),
                          part(Farrowing, "Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot", which)};
        const QString losses = QStringLiteral("Datum >= ?");
        if (m_losses) parts += part(Loss, "Anzahl_Ferkel, 0, 0", which.isEmpty() ? losses : which + " and " + losses);
        return parts.join(QStringLiteral(" union all "));
    }

    void bookings(Raw& raw, const QString& which = {}) {
        m_found = 0;
        if (raw.sows.empty()) return;
        std::vector<Value> values;
        if (which.isEmpty()) values.assign(3, Value(raw.sows.front().id));
        if (m_losses) values.push_back(dateValue(m_from));
        Statement row = m_db.prepare(bookingsSql(which));
        row.bind(values);
        qint64 id = 0;
        bool sow = false;
        while (row.next()) {
            const qint64 animal = row.integer(1);
            if (animal != id) sow = isSow(raw, id = animal);
            if (!sow) continue;
            const qint32 day = row.day(2);
            const auto kind = static_cast<size_t>(row.integer(0));
            if (day >= m_from && kind != Negative) ++m_found;
            if (day == 0 || day > m_heute) continue;
            const auto number = [&](int column) { return static_cast<qint32>(row.integer(column)); };
            raw.rows[kind].push_back({static_cast<qint32>(animal), day, number(3), number(4), number(5), number(6)});
        }
        std::for_each(raw.rows.begin(), raw.rows.end(), sort);
    }

    static bool isSow(const Raw& raw, qint64 id) {
        const auto at = std::lower_bound(raw.sows.begin(), raw.sows.end(), id,
                                         [](const Sau& sow, qint64 other) { return sow.id < other; });
        return at != raw.sows.end() && at->id == id;
    }

    /// Whether there are bookings since the first day of other animals than those read: a sow gone before may be among
    /// them.
    bool othersBooked() const {
        QStringList parts;
        for (const Kind kind : {Service, Weaning, Farrowing, Loss})
            if (kind != Loss || m_losses)
                parts += QStringLiteral("select count(*) from %1 where Datum >= ?")
                             .arg(QString::fromUtf8(Tabellen[kind + 1]));
        Statement count = m_db.prepare(parts.join(QStringLiteral(" union all ")));
        count.bind(std::vector<Value>(static_cast<size_t>(parts.size()), dateValue(m_from)));
        qint64 all = 0;
        while (count.next()) all += count.integer(0);
        return all != m_found;
    }

    static constexpr auto& Tabellen = Sauenbuch::Tabellen;
    const Database& m_db;
    const qint32 m_heute, m_from;
    const bool m_losses;
    qint64 m_found = 0;
};

/// Hands each sow her part of what `make` makes of her rows and puts into `all`.
template <class T, class Make, class Set>
void share(const std::vector<Row>& rows, std::vector<Sau>& sows, std::vector<T>& all, const Make& make,
           const Set& set) {
    all.reserve(rows.size());  // so that the spans stay valid
    auto sow = sows.begin();
    for (auto at = rows.begin(); at != rows.end();) {
        const qint32 id = at->sow;
        const size_t first = all.size();
        for (; at != rows.end() && at->sow == id; ++at) make(*at, all, first);
        while (sow->id != id) ++sow;
        set(*sow, std::span<T>(all.data() + first, all.size() - first));
    }
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

/// The animals that the rows are of: as they stand now, and as they stood in the book.
template <class Raw>
std::set<qint64> animalsOf(const Database& db, const Raw& raw, const Sauenbuch::Zeilen& rows) {
    std::set<qint64> animals(rows[0].begin(), rows[0].end());
    for (size_t kind = 0; kind < KindCount; ++kind) {
        const std::vector<qint64>& touched = rows[kind + 1];
        if (touched.empty()) continue;
        Statement row = db.prepare(QStringLiteral("select Kennung from %1 where ID in (%2)")
                                       .arg(QString::fromUtf8(Sauenbuch::Tabellen[kind + 1]), idList(touched)));
        while (row.next()) animals.insert(row.integer(0));
        const std::set<qint64> ids(touched.begin(), touched.end());
        for (const Row& known : raw.rows[kind])
            if (ids.contains(known.id)) animals.insert(known.sow);
    }
    return animals;
}

}  // namespace

Sauenbuch::Sauenbuch(const Database& db, qint32 heute, qint32 from, Lesen what)
    : m_heute(heute),
      m_from(from),
      m_what(what),
      m_raw(std::make_shared<const Rohdaten>(Reader<Rohdaten>(db, heute, from, what).all())) {
    build();
}

Sauenbuch::Sauenbuch(const Sauenbuch& before, std::shared_ptr<const Rohdaten> raw)
    : m_heute(before.m_heute), m_from(before.m_from), m_what(before.m_what), m_raw(std::move(raw)) {
    build();
}

void Sauenbuch::build() {
    m_sows = m_raw->sows;
    const auto& rows = m_raw->rows;
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

std::shared_ptr<const Sauenbuch> Sauenbuch::changed(const Database& db, const Zeilen& rows) const {
    constexpr size_t most = 300;
    const std::set<qint64> animals = animalsOf(db, *m_raw, rows);
    if (animals.size() > most) return nullptr;
    Rohdaten fresh = Reader<Rohdaten>(db, m_heute, m_from, m_what).of({animals.begin(), animals.end()});
    auto raw = std::make_shared<Rohdaten>();
    const auto take = [&](const auto& from, const auto& added, auto& to, const auto& animal, const auto& less) {
        to.reserve(from.size() + added.size());
        std::copy_if(from.begin(), from.end(), std::back_inserter(to),
                     [&](const auto& one) { return !animals.contains(animal(one)); });
        const auto middle = to.insert(to.end(), added.begin(), added.end());
        std::inplace_merge(to.begin(), middle, to.end(), less);
    };
    take(
        m_raw->sows, fresh.sows, raw->sows, [](const Sau& s) { return s.id; },
        [](const Sau& a, const Sau& b) { return a.id < b.id; });
    for (size_t kind = 0; kind < KindCount; ++kind)
        take(
            m_raw->rows[kind], fresh.rows[kind], raw->rows[kind], [](const Row& r) { return qint64{r.sow}; }, before);
    return std::shared_ptr<const Sauenbuch>(new Sauenbuch(*this, std::move(raw)));
}

}  // namespace koben
