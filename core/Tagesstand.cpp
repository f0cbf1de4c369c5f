#include "core/Tagesstand.h"

#include <QSet>
#include <iterator>

#include "core/Buchungen.h"

namespace koben {
namespace {

constexpr qint64 MostAtOnce = 2000;  // animals, between two looks at the cancel button

std::vector<qint64> numbers(const Database& db, const QString& sql, const std::vector<Value>& values = {}) {
    std::vector<qint64> found;
    Statement row = db.prepare(sql);
    row.bind(values);
    while (row.next()) found.push_back(row.integer(0));
    return found;
}

/// A part of the way, told in its own percents.
CycleProgress part(const CycleProgress& go, int from, int to) {
    return [go, from, to](int percent) { return goesOn(go, from + percent * (to - from) / 100); };
}

bool removeBookings(const Database& db, const Value& next, const CycleProgress& go) {
    int done = 0;
    for (const Artangaben& kind : Buchungsarten) {
        if (!goesOn(go, 100 * done++ / static_cast<int>(std::size(Buchungsarten)))) return false;
        db.prepare(QStringLiteral("delete from %1 where %2 >= ?")
                       .arg(QString::fromUtf8(kind.table), QString::fromUtf8(kind.date)))
            .run({next});
    }
    return true;
}

/// Animals that had not arrived, with the bookings that they have all the same.
bool removeAnimals(const Database& db, const Value& next, const CycleProgress& go) {
    const auto late =
        consecutive(numbers(db,
                            QStringLiteral("select ID from Sauen where Zugangsdatum >= ? or (Zugangsdatum "
                                           "IS NULL and Geburtsdatum >= ?)"),
                            {next, next}),
                    MostAtOnce);
    if (late.empty()) return true;
    std::vector<Statement> removals{db.prepare(QStringLiteral("delete from Sauen where ID >= ? and ID <= ?"))};
    for (const Artangaben& kind : Buchungsarten)
        removals.push_back(db.prepare(
            QStringLiteral("delete from %1 where Kennung >= ? and Kennung <= ?").arg(QString::fromUtf8(kind.table))));
    for (size_t i = 0; i < late.size(); ++i) {
        if (!goesOn(go, static_cast<int>(100 * i / late.size()))) return false;
        for (Statement& removal : removals) removal.run({late[i].first, late[i].second});
    }
    return true;
}

/// What a departure writes into the animal's row goes with it. How an animal in stock has these fields, empty or
/// without a value, those of her arrival show.
void undoDepartures(const Database& db, const Value& next) {
    static const char* const fields[][3] = {{"Abgangsgewicht_kg", "Zugangsgewicht_kg", "0"},
                                            {"Verkaufspreis", "Einkaufspreis", "0"},
                                            {"Abgangsgrund", "Zugangsgrund", "''"},
                                            {"Abnehmer", "Lieferant", "''"}};
    QStringList set{QStringLiteral("Abgangsdatum = NULL")};
    for (const auto& [field, ofArrival, empty] : fields)
        set += QStringLiteral("%1 = iif(%1 IS NULL or %2 IS NULL, NULL, %3)")
                   .arg(QString::fromUtf8(field), QString::fromUtf8(ofArrival), QString::fromUtf8(empty));
    db.prepare(QStringLiteral("update Sauen set %1 where Abgangsdatum >= ?").arg(set.join(QStringLiteral(", "))))
        .run({next});
}

/// The mark on the card stands for a latest day that became another one: it goes where no kind of booking has two.
void correctMarks(const Database& db) {
    std::vector<qint64> marked = numbers(db, QStringLiteral("select ID from Sauen where Aenderung = 'X'"));
    if (marked.empty()) return;
    QSet<qint64> changed;
    for (const char* table : {"Belegung", "Ferkelung", "Absetzung"})
        for (const qint64 id : numbers(db, QStringLiteral("select Kennung from %1 where Kennung IS NOT NULL group by "
                                                          "Kennung having min(Datum) < max(Datum)")
                                               .arg(QString::fromUtf8(table))))
            changed.insert(id);
    std::erase_if(marked, [&](qint64 id) { return changed.contains(id); });
    Statement clear = db.prepare(QStringLiteral("update Sauen set Aenderung = NULL where ID >= ? and ID <= ?"));
    for (const auto& [first, last] : consecutive(marked)) clear.run({first, last});
}

}  // namespace

bool Tagesstand_bilden(const Database& db, const Variablen& v, QDate day, const CycleProgress& go) {
    const ChangeLog::Silence silence(db);  // nobody asks a view what has changed
    Transaction all(db);
    const Value next = day.addDays(1);
    if (!removeBookings(db, next, part(go, 0, 30)) || !removeAnimals(db, next, part(go, 30, 45))) return false;
    undoDepartures(db, next);
    correctMarks(db);
    const Zyklusvorgaben vorgaben(v, static_cast<qint32>(day.toJulianDay()));
    const std::vector<Tierwerte> now = derive(readBookings(db, Umfang(), vorgaben.lastDay), vorgaben);
    if (!goesOn(go, 60) || !writeValues(db, readStored(db, Umfang()), now, part(go, 60, 90), CardMarks::Kept) ||
        !writeStatus(db, readStatus(db, Umfang()), part(go, 90, 100)))
        return false;
    all.commit();
    return true;
}

}  // namespace koben
