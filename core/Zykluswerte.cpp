// The first half of the cycle engine: counters, latest and next dates of every animal, derived from the bookings.
//
// The result is that of a walk over all animals; the work is what has changed since the last one, as the change log of
// the file knows it. Where the log cannot tell (a new file, other settings, very many changes) the whole herd is
// walked: the bookings are streamed once and gathered per animal; rows of animals are read only where a stored value is
// not the empty one, and written only where a value changes. An animal that appears nowhere has the empty values and
// keeps them, so that the piglets without bookings, the bulk of a large farm, cost nothing.
#include <QHash>
#include <algorithm>
#include <functional>
#include <limits>

#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "core/Umfang.h"
#include "store/Collation.h"

namespace koben {
namespace {

/// Null of a counter. Null of a day is 0.
constexpr qint64 leereZahl = std::numeric_limits<qint64>::min();

/// The derived fields of an animal. Default: those of an animal without bookings. Days are Julian.
struct Werte {
    qint64 belegungen = 0, ferkelungen = 0, gesamt = leereZahl, lebend = leereZahl;
    qint32 lBelegung = 0, lFerkelung = 0, lTraechtigkeit = 0, lAbsetzung = 0, nBelegung = 0, nFerkelung = 0;
    bool operator==(const Werte&) const = default;
};

const QString wertefelder = QStringLiteral(
    "Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, L_Belegung, L_Ferkelung, L_Trächtigkeit, "
    "L_Absetzung, N_Belegung, N_Ferkelung");

qint64 zahl(const Statement& row, int column) { return row.isNull(column) ? leereZahl : row.integer(column); }

/// Reads the columns of `wertefelder`, beginning at `first`.
Werte lies(const Statement& row, int first) {
    const auto number = [&](int i) { return zahl(row, first + i); };
    const auto day = [&](int i) { return row.day(first + i); };
    return {number(0), number(1), number(2), number(3), day(4), day(5), day(6), day(7), day(8), day(9)};
}

Value alsZahl(qint64 number) { return number == leereZahl ? Value::null() : Value(number); }
Value alsTag(qint32 day) { return day == 0 ? Value::null() : Value(DateTime{day, 0}); }

struct Tier {
    qint64 id = 0;
    Werte alt, neu;
};

/// The animals that bookings or stored values name, found by ID.
class Herde {
public:
    Tier& tier(qint64 id) {
        if (m_last < m_animals.size() && m_animals[m_last].id == id) return m_animals[m_last];
        const auto place = m_places.constFind(id);
        if (place == m_places.cend()) {
            m_last = m_animals.size();
            m_places.insert(id, m_last);
            m_animals.push_back({id, {}, {}});
        } else {
            m_last = *place;
        }
        return m_animals[m_last];
    }
    std::vector<Tier>& tiere() { return m_animals; }

private:
    std::vector<Tier> m_animals;
    QHash<qint64, size_t> m_places;
    size_t m_last = 0;  ///< bookings of one animal often come together
};

void zaehleFerkelungen(const Database& db, const Umfang& umfang, Herde& herd) {
    Statement row = db.prepare(
        QStringLiteral("select Kennung, count(*) as anzahl, sum(Ferkel_Gesamt) as xsumme, sum(Ferkel_Lebendig) as "
                       "xsumme1, max(Datum) as xdatum from Ferkelung%1 group by Kennung")
            .arg(umfang.bedingung(QStringLiteral("where"), QStringLiteral("Kennung"))));
    row.bind(umfang.werte());
    while (row.next()) {
        if (row.isNull(0)) continue;
        Werte& values = herd.tier(row.integer(0)).neu;
        values.ferkelungen = row.integer(1);
        values.gesamt = zahl(row, 2);
        values.lebend = zahl(row, 3);
        values.lFerkelung = row.day(4);
    }
}

/// Services by the boar's number, as numbers are compared.
using Deckungen = QHash<QByteArray, qint64>;

/// Needs the latest farrowings: a sow's count starts again with each, its own day included. Calls `service` with the
/// boar's number for every service that has one.
template <class Service>
void zaehleBelegungen(const Database& db, const Umfang& umfang, Herde& herd, Service service) {
    Statement row = db.prepare(QStringLiteral("select Kennung, Datum, Ebernr from Belegung") +
                               umfang.bedingung(QStringLiteral("where"), QStringLiteral("Kennung")));
    row.bind(umfang.werte());
    while (row.next()) {
        service(row, 2);
        if (row.isNull(0)) continue;
        Werte& values = herd.tier(row.integer(0)).neu;
        const qint32 day = row.day(1);
        values.lBelegung = std::max(values.lBelegung, day);
        if (values.lFerkelung == 0 || day >= values.lFerkelung) ++values.belegungen;
    }
}

/// The latest day per animal: of the table's rows that meet `condition`.
void sucheLetzten(const Database& db, const Umfang& umfang, Herde& herd, const QString& from, const QString& joint,
                  qint32 Werte::*latest) {
    Statement row =
        db.prepare(QStringLiteral("select Kennung, max(Datum) as xdatum from ") + from +
                   umfang.bedingung(joint, QStringLiteral("Kennung")) + QStringLiteral(" group by Kennung"));
    row.bind(umfang.werte());
    while (row.next()) {
        if (!row.isNull(0)) herd.tier(row.integer(0)).neu.*latest = row.day(1);
    }
}

void liesGespeicherte(const Database& db, const Umfang& umfang, Herde& herd) {
    const QString which = umfang.alle() ? QStringLiteral(" where ") + abgeleitet
                                        : umfang.bedingung(QStringLiteral("where"), QStringLiteral("ID"));
    Statement row = db.prepare(QStringLiteral("select ID, %1 from Sauen").arg(wertefelder) + which);
    row.bind(umfang.werte());
    while (row.next()) herd.tier(row.integer(0)).alt = lies(row, 1);
}

/// A boar and his count: all services under his present number.
struct Eber {
    qint64 id, gespeichert, deckungen;
};

std::vector<Eber> zaehleEber(const Database& db, const Deckungen& services) {
    std::vector<Eber> boars;
    Statement row = db.prepare(QStringLiteral("select ID, Nummer, Anz_Belegungen from Sauen where Art = 'Eber'"));
    row.bind({});
    while (row.next()) boars.push_back({row.integer(0), zahl(row, 2), services.value(sortKey(row.text(1)), 0)});
    return boars;
}

Deckungen verglichen(const std::vector<std::pair<QString, qint64>>& spelled) {
    Deckungen services;
    for (const auto& [number, count] : spelled) services[sortKey(number)] += count;
    return services;
}

/// Only one next date stays: a farrowing after a newer service, a service after a newer or same-day farrowing.
void setzeNaechste(Werte& values, const Variablen& v) {
    if (values.lFerkelung != 0) values.nBelegung = values.lFerkelung + v.Konfig_Zahl[Zahl::TageFerkelungBelegung];
    if (values.lBelegung != 0) values.nFerkelung = values.lBelegung + v.Konfig_Zahl[Zahl::TageBelegungFerkelung];
    if (values.lFerkelung == 0 || values.lBelegung == 0) return;
    (values.lBelegung > values.lFerkelung ? values.nBelegung : values.nFerkelung) = 0;
}

/// A date that comes where there was none, or goes, is no change here.
bool geaendert(qint32 before, qint32 now) { return before != 0 && now != 0 && before != now; }

void schreibe(const Database& db, std::vector<Tier>& animals) {
    const QString text = QStringLiteral(
        "update Sauen set Anz_Belegungen = ?, Anz_Ferkelungen = ?, Anz_Ferkel_Gesamt = ?, Anz_Ferkel_Lebend = ?, "
        "L_Belegung = ?, L_Ferkelung = ?, L_Trächtigkeit = ?, L_Absetzung = ?, N_Belegung = ?, N_Ferkelung = ?%1 "
        "where ID = ?");
    Statement plain = db.prepare(text.arg(QString()));
    Statement marking = db.prepare(text.arg(QStringLiteral(", Aenderung = 'X'")));
    for (const Tier& animal : animals) {
        const Werte& n = animal.neu;
        if (n == animal.alt) continue;
        const bool mark = geaendert(animal.alt.lBelegung, n.lBelegung) ||
                          geaendert(animal.alt.lFerkelung, n.lFerkelung) ||
                          geaendert(animal.alt.lAbsetzung, n.lAbsetzung);
        (mark ? marking : plain)
            .run({alsZahl(n.belegungen), alsZahl(n.ferkelungen), alsZahl(n.gesamt), alsZahl(n.lebend),
                  alsTag(n.lBelegung), alsTag(n.lFerkelung), alsTag(n.lTraechtigkeit), alsTag(n.lAbsetzung),
                  alsTag(n.nBelegung), alsTag(n.nFerkelung), animal.id});
    }
}

/// Derives the animals of the scope and writes what differs.
template <class Service>
void leiteAb(const Database& db, const Variablen& v, const Umfang& umfang, Service service,
             const std::function<std::vector<Eber>()>& boars) {
    Herde herd;
    zaehleFerkelungen(db, umfang, herd);
    zaehleBelegungen(db, umfang, herd, service);
    sucheLetzten(db, umfang, herd, QStringLiteral("Trächtigkeit where Trächtig = 'J'"), QStringLiteral("and"),
                 &Werte::lTraechtigkeit);
    sucheLetzten(db, umfang, herd, QStringLiteral("Absetzung"), QStringLiteral("where"), &Werte::lAbsetzung);
    liesGespeicherte(db, umfang, herd);
    for (const Eber& boar : boars()) herd.tier(boar.id).neu.belegungen = boar.deckungen;
    auto& animals = herd.tiere();
    for (Tier& animal : animals) setzeNaechste(animal.neu, v);
    std::sort(animals.begin(), animals.end(), [](const Tier& a, const Tier& b) { return a.id < b.id; });
    schreibe(db, animals);
}

void leiteAlleAb(const Database& db, const Variablen& v) {
    QHash<QString, qint64> spelled;
    const auto service = [&](const Statement& row, int column) {
        if (!row.isNull(column)) ++spelled[row.text(column)];
    };
    leiteAb(db, v, Umfang(), service, [&] {
        std::vector<std::pair<QString, qint64>> all;
        for (auto it = spelled.cbegin(); it != spelled.cend(); ++it) all.emplace_back(it.key(), it.value());
        return zaehleEber(db, verglichen(all));
    });
}

/// The noted animals, and the boars whose services have become more or fewer.
void leiteGeaenderteAb(const Database& db, const Variablen& v, std::vector<qint64> ids) {
    const std::vector<Eber> boars = zaehleEber(db, verglichen(servicesByBoar(db)));
    for (const Eber& boar : boars)
        if (boar.gespeichert != boar.deckungen) ids.push_back(boar.id);
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    for (const auto& group : gruppen(ids)) {
        leiteAb(
            db, v, Umfang(group), [](const Statement&, int) {},
            [&] {
                std::vector<Eber> here;
                std::copy_if(boars.begin(), boars.end(), std::back_inserter(here),
                             [&](const Eber& boar) { return std::binary_search(group.begin(), group.end(), boar.id); });
                return here;
            });
    }
}

}  // namespace

void Werte_berechnen(const Database& db, const Variablen& v) {
    Transaction action(db);
    ChangeLog log(db, ChangeLog::Purpose::Values);
    const QString basis = QStringLiteral("%1 %2")
                              .arg(v.Konfig_Zahl[Zahl::TageBelegungFerkelung])
                              .arg(v.Konfig_Zahl[Zahl::TageFerkelungBelegung]);
    auto ids = geaenderte(log, basis);
    if (ids)
        leiteGeaenderteAb(db, v, std::move(*ids));
    else
        leiteAlleAb(db, v);
    log.settle(basis);
    action.commit();
}

void Werte_vormerken(const Database& db) { ChangeLog(db, ChangeLog::Purpose::Values).expect(); }

void Werte_nachholen(const Database& db, const Variablen& v) {
    if (ChangeLog(db, ChangeLog::Purpose::Values).expected()) Werte_berechnen(db, v);
}

}  // namespace koben
