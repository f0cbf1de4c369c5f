// The cycle engine: counters, dates and status of every animal, derived from the bookings.
//
// The bookings are streamed once and gathered per animal; rows of animals are read only where a stored value is not
// the empty one, and written only where a value changes. An animal that appears nowhere has the empty values and
// keeps them, so that the piglets without bookings, the bulk of a large farm, cost nothing.
#include <QHash>
#include <algorithm>
#include <limits>

#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
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

/// Rows whose derived fields are not the empty ones. Worded as the index that serves it.
const QString abgeleitet = QStringLiteral(
    "Anz_Belegungen <> 0 or Anz_Belegungen IS NULL or Anz_Ferkelungen <> 0 or Anz_Ferkelungen IS NULL "
    "or Anz_Ferkel_Gesamt IS NOT NULL or Anz_Ferkel_Lebend IS NOT NULL or L_Belegung IS NOT NULL "
    "or L_Ferkelung IS NOT NULL or L_Trächtigkeit IS NOT NULL or L_Absetzung IS NOT NULL "
    "or N_Belegung IS NOT NULL or N_Ferkelung IS NOT NULL");

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

void zaehleFerkelungen(const Database& db, Herde& herd) {
    Statement row = db.prepare(QStringLiteral(
        "select Kennung, count(*) as anzahl, sum(Ferkel_Gesamt) as xsumme, sum(Ferkel_Lebendig) as xsumme1, "
        "max(Datum) as xdatum from Ferkelung group by Kennung"));
    row.bind({});
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

/// Needs the latest farrowings: a sow's count starts again with each, its own day included.
Deckungen zaehleBelegungen(const Database& db, Herde& herd) {
    QHash<QString, qint64> spelled;
    Statement row = db.prepare(QStringLiteral("select Kennung, Datum, Ebernr from Belegung"));
    row.bind({});
    while (row.next()) {
        if (!row.isNull(2)) ++spelled[row.text(2)];
        if (row.isNull(0)) continue;
        Werte& values = herd.tier(row.integer(0)).neu;
        const qint32 day = row.day(1);
        values.lBelegung = std::max(values.lBelegung, day);
        if (values.lFerkelung == 0 || day >= values.lFerkelung) ++values.belegungen;
    }
    Deckungen services;
    for (auto it = spelled.cbegin(); it != spelled.cend(); ++it) services[sortKey(it.key())] += it.value();
    return services;
}

/// The latest day per animal, of a select of Kennung and day.
void sucheLetzten(const Database& db, Herde& herd, const QString& sql, qint32 Werte::*latest) {
    Statement row = db.prepare(sql);
    row.bind({});
    while (row.next()) {
        if (!row.isNull(0)) herd.tier(row.integer(0)).neu.*latest = row.day(1);
    }
}

void liesGespeicherte(const Database& db, Herde& herd) {
    Statement row = db.prepare(QStringLiteral("select ID, %1 from Sauen where %2").arg(wertefelder, abgeleitet));
    row.bind({});
    while (row.next()) herd.tier(row.integer(0)).alt = lies(row, 1);
}

/// A boar's count is all services under his present number.
void zaehleEber(const Database& db, Herde& herd, const Deckungen& services) {
    Statement row = db.prepare(QStringLiteral("select ID, Nummer from Sauen where Art = 'Eber'"));
    row.bind({});
    while (row.next()) herd.tier(row.integer(0)).neu.belegungen = services.value(sortKey(row.text(1)), 0);
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

/// The status codes; a place in this list stands for the code.
const QString kodes[] = {QStringLiteral(""),      QStringLiteral("B"), QStringLiteral("B_T"),
                         QStringLiteral("B_NTG"), QStringLiteral("S"), QStringLiteral("G")};
enum Kode : int { unbekannt = -1, ohne, belegt, tragend, nichtTragend, saeugend, guest };

int kodeVon(const Statement& row, int column) {
    if (row.isNull(column)) return unbekannt;
    const auto* hit = std::find(std::begin(kodes), std::end(kodes), row.text(column));
    return hit == std::end(kodes) ? unbekannt : static_cast<int>(hit - kodes);
}

/// An animal with a service or a farrowing: the days that its status hangs on.
struct Zyklus {
    qint64 id = 0;
    qint32 belegung = 0, ferkelung = 0, absetzung = 0;
    bool zaehlt = false;  ///< a sow in stock whose status is not ignored
    int gespeichert = unbekannt;
    qint32 kontrolle = 0;  ///< newest check, with its booking and result
    qint64 kontrolleId = 0;
    bool negativ = false;
};

std::vector<Zyklus> liesZyklen(const Database& db) {
    std::vector<Zyklus> animals;
    Statement row = db.prepare(QStringLiteral("select ID, L_Belegung, L_Ferkelung, L_Absetzung, Abgangsdatum, Art, "
                                              "Statusabfrage, Status from Sauen where ") +
                               abgeleitet);
    row.bind({});
    while (row.next()) {
        Zyklus z{row.integer(0), row.day(1), row.day(2), row.day(3)};
        if (z.belegung == 0 && z.ferkelung == 0) continue;
        z.zaehlt =
            row.isNull(4) && equalTexts(row.text(5), u"Sau") && (row.isNull(6) || !equalTexts(row.text(6), u"N"));
        z.gespeichert = kodeVon(row, 7);
        animals.push_back(z);
    }
    return animals;
}

/// Finds the newest check of every sow with a service newer than her farrowing; of several on one day the first
/// entered.
void sucheKontrollen(const Database& db, std::vector<Zyklus>& animals) {
    QHash<qint64, size_t> places;
    for (size_t i = 0; i < animals.size(); ++i) {
        if (animals[i].zaehlt && animals[i].belegung > animals[i].ferkelung) places.insert(animals[i].id, i);
    }
    if (places.isEmpty()) return;
    Statement row = db.prepare(QStringLiteral("select Kennung, Datum, ID, Trächtig from Trächtigkeit"));
    row.bind({});
    while (row.next()) {
        const auto place = places.constFind(row.integer(0));
        if (place == places.cend()) continue;
        Zyklus& z = animals[*place];
        const qint32 day = row.day(1);
        const qint64 id = row.integer(2);
        if (day < z.kontrolle || (day == z.kontrolle && z.kontrolleId != 0 && id > z.kontrolleId)) continue;
        z.kontrolle = day;
        z.kontrolleId = id;
        z.negativ = equalTexts(row.text(3), u"N");
    }
}

/// The order of the tests decides the ties.
int kode(const Zyklus& z) {
    if (!z.zaehlt) return ohne;
    if (z.ferkelung > z.belegung && z.ferkelung > z.absetzung) return saeugend;
    if (z.belegung != 0 && z.absetzung > z.belegung) return guest;
    if (z.belegung <= z.ferkelung) return ohne;
    return z.kontrolle <= z.belegung ? belegt : z.negativ ? nichtTragend : tragend;
}

/// Animals without service and farrowing that still bear a status, or Null.
std::vector<qint64> liesVeraltete(const Database& db) {
    std::vector<qint64> ids;
    Statement row = db.prepare(
        QStringLiteral("select ID, L_Belegung, L_Ferkelung from Sauen where Status IS NULL or Status <> ''"));
    row.bind({});
    while (row.next()) {
        if (row.isNull(1) && row.isNull(2)) ids.push_back(row.integer(0));
    }
    return ids;
}

}  // namespace

void Werte_berechnen(const Database& db, const Variablen& v) {
    Transaction action(db);
    Herde herd;
    zaehleFerkelungen(db, herd);
    const Deckungen services = zaehleBelegungen(db, herd);
    sucheLetzten(
        db, herd,
        QStringLiteral("select Kennung, max(Datum) as xdatum from Trächtigkeit where Trächtig = 'J' group by Kennung"),
        &Werte::lTraechtigkeit);
    sucheLetzten(db, herd, QStringLiteral("select Kennung, max(Datum) as xdatum from Absetzung group by Kennung"),
                 &Werte::lAbsetzung);
    liesGespeicherte(db, herd);
    zaehleEber(db, herd, services);
    auto& animals = herd.tiere();
    for (Tier& animal : animals) setzeNaechste(animal.neu, v);
    std::sort(animals.begin(), animals.end(), [](const Tier& a, const Tier& b) { return a.id < b.id; });
    schreibe(db, animals);
    action.commit();
}

void statussetzen(const Database& db) {
    Transaction action(db);
    std::vector<Zyklus> animals = liesZyklen(db);
    sucheKontrollen(db, animals);
    const std::vector<qint64> outdated = liesVeraltete(db);
    Statement update = db.prepare(QStringLiteral("update Sauen set Status = ? where ID = ?"));
    for (const Zyklus& z : animals) {
        const int code = kode(z);
        if (code != z.gespeichert) update.run({kodes[code], z.id});
    }
    for (const qint64 id : outdated) update.run({QStringLiteral(""), id});
    action.commit();
}

}  // namespace koben
