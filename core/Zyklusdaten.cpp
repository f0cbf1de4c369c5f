// Rows of animals are read only where a stored value is not the empty one, and written only where a value changes. An
// animal that appears nowhere has the empty values and keeps them, so that the piglets without bookings, the bulk of a
// large farm, cost nothing.
#include "core/Zyklusdaten.h"

#include <QHash>
#include <algorithm>
#include <array>

#include "store/Collation.h"

namespace koben {
namespace {

const QString valueFields = QStringLiteral(
    "Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, L_Belegung, L_Ferkelung, L_Trächtigkeit, "
    "L_Absetzung, N_Belegung, N_Ferkelung");

qint64 number(const Statement& row, int column) { return row.isNull(column) ? NoNumber : row.integer(column); }

/// Reads the columns of `valueFields`, beginning at `first`.
Zykluswerte readValues(const Statement& row, int first) {
    const auto count = [&](int i) { return number(row, first + i); };
    const auto day = [&](int i) { return row.day(first + i); };
    return {count(0), count(1), count(2), count(3), day(4), day(5), day(6), day(7), day(8), day(9)};
}

constexpr size_t Many = 1000;  // changes, beyond which noting each costs more than preparing the statements anew

Value asNumber(qint64 value) { return value == NoNumber ? Value::null() : Value(value); }
Value asDay(qint32 day) { return day == 0 ? Value::null() : Value(DateTime{day, 0}); }

/// The bookings of the scope up to the last day: `select` and what stands before and behind the condition.
Statement bookingsOf(const Database& db, const Umfang& umfang, qint32 lastDay, const QString& select,
                     const QString& condition = {}, const QString& behind = {}) {
    QStringList where;
    std::vector<Value> values = umfang.values();
    if (!umfang.all()) where += umfang.condition(QString(), QStringLiteral("Kennung"));
    if (!condition.isEmpty()) where += condition;
    if (lastDay != NoEnd) {
        where += QStringLiteral("(Datum IS NULL or Datum < ?)");
        values.emplace_back(DateTime{lastDay + 1, 0});
    }
    Statement row = db.prepare(
        select + (where.isEmpty() ? QString() : QStringLiteral(" where ") + where.join(QStringLiteral(" and "))) +
        behind);
    row.bind(values);
    return row;
}

const QString byAnimal = QStringLiteral(" group by Kennung");

void readFarrowings(const Database& db, const Umfang& umfang, qint32 lastDay, Zyklusbuchungen& result) {
    Statement row = bookingsOf(db, umfang, lastDay,
                               QStringLiteral("select Kennung, count(*) as anzahl, sum(Ferkel_Gesamt) as xsumme, "
                                              "sum(Ferkel_Lebendig) as xsumme1, max(Datum) as xdatum from Ferkelung"),
                               {}, byAnimal);
    while (row.next())
        if (!row.isNull(0))
            result.ferkelungen.push_back({row.integer(0), row.day(4), number(row, 2), number(row, 3), row.integer(1)});
}

void readServices(const Database& db, const Umfang& umfang, qint32 lastDay, Zyklusbuchungen& result) {
    const bool boars = umfang.all();
    Statement row = bookingsOf(db, umfang, lastDay,
                               boars ? QStringLiteral("select Kennung, Datum, Ebernr from Belegung")
                                     : QStringLiteral("select Kennung, Datum from Belegung"));
    QHash<QString, qint64> spelled;
    while (row.next()) {
        if (boars && !row.isNull(2)) ++spelled[row.text(2)];
        if (!row.isNull(0)) result.belegungen.push_back({row.integer(0), row.day(1)});
    }
    if (!boars) return;
    std::vector<std::pair<QString, qint64>> services;
    for (auto it = spelled.cbegin(); it != spelled.cend(); ++it) services.emplace_back(it.key(), it.value());
    for (const CountedBoar& boar : readBoars(db, services)) result.eber.push_back(boar.eber);
}

void readChecks(const Database& db, const Umfang& umfang, qint32 lastDay, Zyklusbuchungen& result) {
    Statement row =
        bookingsOf(db, umfang, lastDay, QStringLiteral("select Kennung, Datum, ID, Trächtig from Trächtigkeit"));
    while (row.next()) {
        if (row.isNull(0)) continue;
        const QString found = row.text(3);
        result.kontrollen.push_back(
            {row.integer(0), row.integer(2), row.day(1), equalTexts(found, u"J"), equalTexts(found, u"N")});
    }
}

void readPositiveChecks(const Database& db, const Umfang& umfang, qint32 lastDay, Zyklusbuchungen& result) {
    Statement row =
        bookingsOf(db, umfang, lastDay, QStringLiteral("select Kennung, max(Datum) as xdatum from Trächtigkeit"),
                   QStringLiteral("Trächtig = 'J'"), byAnimal);
    while (row.next())
        if (!row.isNull(0)) result.kontrollen.push_back({row.integer(0), 0, row.day(1), true, false});
}

void readWeanings(const Database& db, const Umfang& umfang, qint32 lastDay, Zyklusbuchungen& result) {
    Statement row = bookingsOf(db, umfang, lastDay,
                               QStringLiteral("select Kennung, max(Datum) as xdatum from Absetzung"), {}, byAnimal);
    while (row.next())
        if (!row.isNull(0)) result.absetzungen.push_back({row.integer(0), row.day(1)});
}

/// A date that comes where there was none, or goes, is no change here.
bool changed(qint32 before, qint32 now) { return before != 0 && now != 0 && before != now; }

/// Statements that write the values of an animal: only the next days, all of them, and with the mark on the card.
class ValueWriter {
public:
    ValueWriter(const Database& db, CardMarks marks)
        : m_db(db),
          m_marks(marks),
          m_next(db.prepare(QStringLiteral("update Sauen set N_Belegung = ?, N_Ferkelung = ? where ID = ?"))),
          m_plain(db.prepare(all(QString()))),
          m_marking(db.prepare(all(QStringLiteral(", Aenderung = 'X'")))) {}

    /// Next days alone come together at the end.
    void write(qint64 animal, const Zykluswerte& before, const Zykluswerte& n) {
        Zykluswerte other = before;
        other.nBelegung = n.nBelegung;
        other.nFerkelung = n.nFerkelung;
        if (other == n) return m_onlyNext.push_back({animal, n});
        const bool mark = m_marks == CardMarks::Set &&
                          (changed(before.lBelegung, n.lBelegung) || changed(before.lFerkelung, n.lFerkelung) ||
                           changed(before.lAbsetzung, n.lAbsetzung));
        (mark ? m_marking : m_plain)
            .run({asNumber(n.belegungen), asNumber(n.ferkelungen), asNumber(n.gesamt), asNumber(n.lebend),
                  asDay(n.lBelegung), asDay(n.lFerkelung), asDay(n.lTraechtigkeit), asDay(n.lAbsetzung),
                  asDay(n.nBelegung), asDay(n.nFerkelung), animal});
    }

    /// False where it was given up.
    bool finish(const CycleProgress& go, int from) {
        std::optional<ChangeLog::Silence> silence;
        if (m_onlyNext.size() >= Many) silence.emplace(m_db);
        for (size_t i = 0; i < m_onlyNext.size(); ++i) {
            if (!goesOn(go, from + static_cast<int>(static_cast<size_t>(100 - from) * i / m_onlyNext.size())))
                return false;
            const Zykluswerte& n = m_onlyNext[i].werte;
            m_next.run({asDay(n.nBelegung), asDay(n.nFerkelung), m_onlyNext[i].tier});
        }
        return true;
    }

private:
    static QString all(const QString& mark) {
        return QStringLiteral("update Sauen set ") +
               QString(valueFields).replace(QStringLiteral(","), QStringLiteral(" = ?,")) + QStringLiteral(" = ?") +
               mark + QStringLiteral(" where ID = ?");
    }
    const Database& m_db;
    const CardMarks m_marks;
    Statement m_next, m_plain, m_marking;
    std::vector<Tierwerte> m_onlyNext;
};

/// The kind, departure and mark of a sow whose status counts, in the columns from `first`: Abgangsdatum, Art,
/// Statusabfrage.
const QString statusFields = QStringLiteral("Abgangsdatum, Art, Statusabfrage");
bool counts(const Statement& row, int first, qint32 lastDay) {
    return (row.isNull(first) || row.day(first) > lastDay) && equalTexts(row.text(first + 1), u"Sau") &&
           (row.isNull(first + 2) || !equalTexts(row.text(first + 2), u"N"));
}

/// Gives every sow with a service newer than her farrowing her newest check. Checks of no such service's time are not
/// looked at.
void findChecks(const Database& db, const Umfang& umfang, std::vector<StoredStatus>& animals) {
    QHash<qint64, size_t> places;
    qint32 first = NoEnd;
    for (size_t i = 0; i < animals.size(); ++i) {
        const Statuslage& lage = animals[i].lage;
        if (!lage.zaehlt || lage.belegung <= lage.ferkelung) continue;
        places.insert(animals[i].tier, i);
        first = std::min(first, lage.belegung);
    }
    if (places.isEmpty()) return;
    Statement row =
        db.prepare(QStringLiteral("select Kennung, Datum, ID, Trächtig from Trächtigkeit where Datum >= ?") +
                   umfang.condition(QStringLiteral("and"), QStringLiteral("Kennung")));
    std::vector<Value> values{DateTime{first, 0}};
    values.insert(values.end(), umfang.values().begin(), umfang.values().end());
    row.bind(values);
    while (row.next()) {
        const auto place = places.constFind(row.integer(0));
        if (place == places.cend()) continue;
        const bool negative = equalTexts(row.text(3), u"N");
        animals[*place].lage.take({row.integer(0), row.integer(2), row.day(1), false, negative});
    }
}

/// Animals without service and farrowing that still bear a status, or Null.
void findOutdated(const Database& db, std::vector<StoredStatus>& animals) {
    Statement row = db.prepare(
        QStringLiteral("select ID, L_Belegung, L_Ferkelung from Sauen where Status IS NULL or Status <> ''"));
    row.bind({});
    while (row.next())
        if (row.isNull(1) && row.isNull(2)) animals.push_back({row.integer(0), Zyklusstatus::Unknown, {}});
}

}  // namespace

Zyklusbuchungen readBookings(const Database& db, const Umfang& umfang, qint32 lastDay, Checks checks) {
    Zyklusbuchungen result;
    readFarrowings(db, umfang, lastDay, result);
    readServices(db, umfang, lastDay, result);
    (checks == Checks::All ? readChecks : readPositiveChecks)(db, umfang, lastDay, result);
    readWeanings(db, umfang, lastDay, result);
    return result;
}

std::vector<CountedBoar> readBoars(const Database& db, const std::vector<std::pair<QString, qint64>>& services) {
    QHash<QByteArray, qint64> counted;  // as numbers are compared
    for (const auto& [number, count] : services) counted[sortKey(number)] += count;
    std::vector<CountedBoar> boars;
    Statement row = db.prepare(QStringLiteral("select ID, Nummer, Anz_Belegungen from Sauen where Art = 'Eber'"));
    row.bind({});
    while (row.next()) boars.push_back({{row.integer(0), counted.value(sortKey(row.text(1)), 0)}, number(row, 2)});
    return boars;
}

std::vector<Tierwerte> readStored(const Database& db, const Umfang& umfang) {
    const QString which = umfang.all() ? QStringLiteral(" where ") + derivedRows
                                       : umfang.condition(QStringLiteral("where"), QStringLiteral("ID"));
    std::vector<Tierwerte> result;
    Statement row = db.prepare(QStringLiteral("select ID, %1 from Sauen").arg(valueFields) + which);
    row.bind(umfang.values());
    while (row.next()) result.push_back({row.integer(0), readValues(row, 1)});
    std::sort(result.begin(), result.end(), [](const auto& a, const auto& b) { return a.tier < b.tier; });
    return result;
}

bool writeValues(const Database& db, const std::vector<Tierwerte>& stored, const std::vector<Tierwerte>& now,
                 const CycleProgress& go, CardMarks marks) {
    const Zykluswerte none;
    ValueWriter writer(db, marks);
    const size_t total = std::max<size_t>(stored.size() + now.size(), 1);
    for (size_t s = 0, n = 0; s < stored.size() || n < now.size();) {
        if (!goesOn(go, 50 + static_cast<int>(10 * (s + n) / total))) return false;
        const bool isStored = s < stored.size() && (n == now.size() || stored[s].tier <= now[n].tier);
        const bool isNow = n < now.size() && (s == stored.size() || now[n].tier <= stored[s].tier);
        const Zykluswerte& before = isStored ? stored[s].werte : none;
        const Zykluswerte& after = isNow ? now[n].werte : none;
        if (!(before == after)) writer.write(isNow ? now[n].tier : stored[s].tier, before, after);
        s += isStored;
        n += isNow;
    }
    return writer.finish(go, 60);
}

std::vector<StoredStatus> readStatus(const Database& db, const Umfang& umfang) {
    std::vector<StoredStatus> animals;
    const QString which = umfang.all() ? QStringLiteral(" where ") + derivedRows
                                       : umfang.condition(QStringLiteral("where"), QStringLiteral("ID"));
    Statement row = db.prepare(QStringLiteral("select ID, L_Belegung, L_Ferkelung, L_Absetzung, Status, ") +
                               statusFields + QStringLiteral(" from Sauen") + which);
    row.bind(umfang.values());
    while (row.next()) {
        const Statuslage lage{counts(row, 5, NoEnd), row.day(1), row.day(2), row.day(3), {}};
        if (umfang.all() && lage.belegung == 0 && lage.ferkelung == 0) continue;  // findOutdated finds these
        animals.push_back({row.integer(0), row.isNull(4) ? Zyklusstatus::Unknown : statusOf(row.text(4)), lage});
    }
    findChecks(db, umfang, animals);
    if (umfang.all()) findOutdated(db, animals);
    return animals;
}

bool writeStatus(const Database& db, const std::vector<StoredStatus>& animals, const CycleProgress& go) {
    std::array<std::vector<qint64>, 6> ids;  // by status: one statement for many animals
    size_t total = 0, done = 0;
    for (const StoredStatus& animal : animals) {
        const Zyklusstatus now = status(animal.lage);
        if (now == animal.stored) continue;
        ids[static_cast<size_t>(now)].push_back(animal.tier);
        ++total;
    }
    std::optional<ChangeLog::Silence> silence;
    if (total >= Many) silence.emplace(db);
    for (size_t code = 0; code < ids.size(); ++code)
        for (const auto& group : groups(ids[code])) {
            if (!goesOn(go, static_cast<int>(100 * done / total))) return false;
            const Umfang some(group);
            std::vector<Value> values{kode(static_cast<Zyklusstatus>(code))};
            values.insert(values.end(), some.values().begin(), some.values().end());
            db.prepare(QStringLiteral("update Sauen set Status = ?") +
                       some.condition(QStringLiteral("where"), QStringLiteral("ID")))
                .run(values);
            done += group.size();
        }
    return true;
}

std::vector<Tierstand> readCycle(const Database& db, const Zyklusvorgaben& vorgaben) {
    const Zyklusbuchungen bookings = readBookings(db, Umfang(), vorgaben.lastDay, Checks::All);
    const std::vector<Tierwerte> values = derive(bookings, vorgaben);
    QHash<qint64, Statuslage> checked;
    for (const auto& check : bookings.kontrollen) checked[check.tier].take(check);
    std::vector<Tierstand> result;
    Statement row =
        db.prepare(QStringLiteral("select ID, ") + statusFields + QStringLiteral(" from Sauen order by ID"));
    row.bind({});
    for (auto value = values.begin(); row.next();) {
        Tierstand animal{row.integer(0), {}, {}};
        while (value != values.end() && value->tier < animal.tier) ++value;
        if (value != values.end() && value->tier == animal.tier) animal.werte = value->werte;
        Statuslage lage = checked.value(animal.tier);
        lage.zaehlt = counts(row, 1, vorgaben.lastDay);
        lage.belegung = animal.werte.lBelegung;
        lage.ferkelung = animal.werte.lFerkelung;
        lage.absetzung = animal.werte.lAbsetzung;
        animal.status = status(lage);
        result.push_back(animal);
    }
    return result;
}

}  // namespace koben
