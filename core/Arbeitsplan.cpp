#include "core/Arbeitsplan.h"

#include <QDate>
#include <algorithm>
#include <array>
#include <optional>

#include "core/PZ_Koben_Subs.h"
#include "store/Collation.h"

namespace koben {

namespace {

struct NamedDate {
    const char* name;
    const char* field;
};
constexpr std::array<NamedDate, 6> Dates{{{"Geburtsdatum", "Geburtsdatum"},
                                          {"Letzte Belegung", "L_Belegung"},
                                          {"Letzte Trächtigkeit", "L_Trächtigkeit"},
                                          {"Letzte Ferkelung", "L_Ferkelung"},
                                          {"Letzte Absetzung", "L_Absetzung"},
                                          {"Zugangsdatum", "Zugangsdatum"}}};

const qint64 EarliestDay = QDate(100, 1, 1).toJulianDay();
const qint64 LatestDay = QDate(9999, 12, 31).toJulianDay();

/// A kind of work with its dates as columns of the table of animals, -1 for none.
struct Columns {
    int from, to;
    int reference, activeLater, activeEarlier, doneLater, doneEarlier;

    Columns(const Arbeit& work, const Table& animals) : from(work.from), to(work.to) {
        const auto column = [&](const QString& field) { return field.isEmpty() ? -1 : animals.columnOf(field); };
        reference = column(work.reference);
        activeLater = column(work.activeLater);
        activeEarlier = column(work.activeEarlier);
        doneLater = column(work.doneLater);
        doneEarlier = column(work.doneEarlier);
    }
};

/// An empty date is day 0, earlier than any other.
qint64 day(const Table& animals, int animal, int column) { return animals.integer(animal, column); }

/// False where one of the two dates is not named; equal dates are not later.
bool isLater(const Table& animals, int animal, int later, int earlier) {
    return later >= 0 && earlier >= 0 && day(animals, animal, later) > day(animals, animal, earlier);
}

/// Inactive work is passed over, and so is work that was done.
bool isOpen(const Table& animals, int animal, const Columns& work) {
    return !isLater(animals, animal, work.activeEarlier, work.activeLater) &&
           !isLater(animals, animal, work.doneLater, work.doneEarlier);
}

/// The work's window for one animal, if it touches the period.
std::optional<Planzeitraum> window(const Table& animals, int animal, const Columns& work, Planzeitraum period) {
    const qint64 reference = work.reference < 0 ? 0 : day(animals, animal, work.reference);
    if (reference == 0) return std::nullopt;
    const qint64 from = reference + work.from, to = reference + work.to;
    if (from < EarliestDay || to < EarliestDay || from > LatestDay || to > LatestDay) return std::nullopt;
    if (!trifft(from, to, period)) return std::nullopt;
    return Planzeitraum{static_cast<qint32>(from), static_cast<qint32>(to)};
}

QString sqlDay(qint64 day) {
    return Sql_Datum(Datum_als_Anzeige(QDate::fromJulianDay(std::clamp(day, EarliestDay, LatestDay))));
}

/// The condition on an animal's reference date without which the work cannot fall into the period.
QString nearPeriod(const Arbeit& work, Planzeitraum period) {
    const qint64 first = qint64(period.first) - std::max(work.from, work.to);
    const qint64 last = qint64(period.last) - std::min(work.from, work.to);
    return QStringLiteral("(%1 >= %2 and %1 < %3)").arg(work.reference, sqlDay(first), sqlDay(last + 1));
}

QString inStock(Tierauswahl choice) {
    return QStringLiteral(" from Sauen where Abgangsdatum IS NULL") +
           (choice.sowsOnly ? QStringLiteral(" and Art = 'Sau'") : QString());
}

QString planFields() {
    QString select = QStringLiteral("select ID, Nummer, Art, Stallnr, Gruppe");
    for (const auto& date : Dates) select += QStringLiteral(", ") + QString::fromUtf8(date.field);
    return select;
}

/// The animals in stock that meet one of the conditions.
Table readAny(const Database& db, Tierauswahl choice, QStringList conditions) {
    conditions.removeDuplicates();
    if (conditions.isEmpty()) return {};
    return db.table(planFields() + inStock(choice) + QStringLiteral(" and (%1)").arg(conditions.join(" or ")));
}

/// The condition on an animal that has the work open on a day: its window reaches the day, or lies before it.
QString openOn(const Arbeit& work, qint32 day) {
    const QString near = nearPeriod(work, {day, day});
    if (!work.ends()) return near;
    return QStringLiteral("((%1 or %2 < %3) and (%4 IS NULL or %4 <= %5))")
        .arg(near, work.reference, sqlDay(qint64(day) - work.to), work.doneLater, work.doneEarlier);
}

}  // namespace

QStringList Terminnamen() {
    QStringList names;
    for (const auto& date : Dates) names.append(QString::fromUtf8(date.name));
    return names;
}

QString get_feldname(QStringView name) {
    for (const auto& date : Dates)
        if (name == QString::fromUtf8(date.name)) return QString::fromUtf8(date.field);
    return {};
}

std::vector<Arbeit> Arbeiten_lesen(const Table& options, const QStringList& names) {
    const int nameColumn = options.columnOf(u"Arbeitsart");
    const auto number = [&](int row, QStringView field) {
        return static_cast<int>(options.integer(row, options.columnOf(field)));
    };
    const auto date = [&](int row, QStringView field) {
        return get_feldname(Hochkomma_ersetzen(options.text(row, options.columnOf(field))));
    };
    std::vector<Arbeit> works;
    for (const QString& name : names) {
        Arbeit work;
        work.name = name;
        for (int row = 0; row < options.rowCount() && !work.known; ++row) {
            if (options.isNull(row, nameColumn) || !equalTexts(options.text(row, nameColumn), name)) continue;
            work = {.name = name,
                    .known = true,
                    .from = number(row, u"Tage_von"),
                    .to = number(row, u"Tage_bis"),
                    .reference = date(row, u"Bezugstermin"),
                    .activeLater = date(row, u"Aktiv_gross"),
                    .activeEarlier = date(row, u"Aktiv_klein"),
                    .doneLater = date(row, u"Erledigt_gross"),
                    .doneEarlier = date(row, u"Erledigt_klein")};
        }
        if (name.isEmpty()) work.reference.clear();  // work without a name is never listed
        works.push_back(work);
    }
    return works;
}

Table Tiere_lesen(const Database& db, const std::vector<Arbeit>& works, Planzeitraum period, Tierauswahl choice) {
    if (choice.withBlocks) return db.table(planFields() + inStock(choice));
    QStringList near;
    for (const Arbeit& work : works)
        if (!work.reference.isEmpty()) near.append(nearPeriod(work, period));
    return readAny(db, choice, near);
}

bool Tiere_vorhanden(const Database& db, Tierauswahl choice) {
    return db.table(QStringLiteral("select top 1 ID") + inStock(choice)).rowCount() > 0;
}

bool trifft(qint64 from, qint64 to, Planzeitraum period) {
    return period.contains(from) || period.contains(to) || (from < period.first && to > period.last);
}

std::vector<Faelligkeit> Arbeitsplan_berechnen(const Table& animals, const std::vector<Arbeit>& works,
                                               Planzeitraum period, const QHash<qint64, qint32>& blocks,
                                               const Fortschritt& progress) {
    const int idColumn = animals.columnOf(u"ID");
    std::vector<Columns> columns;
    for (const Arbeit& work : works) columns.emplace_back(work, animals);
    std::vector<Faelligkeit> plan;
    int steps = 0;
    for (int animal = 0; animal < animals.rowCount(); ++animal) {
        for (size_t w = 0; w < works.size(); ++w) {
            if (!isOpen(animals, animal, columns[w])) continue;
            ++steps;
            if (const auto due = window(animals, animal, columns[w], period))
                plan.push_back({animal, static_cast<int>(w), due->first, due->last});
        }
        const auto block = blocks.constFind(animals.integer(animal, idColumn));
        if (block != blocks.constEnd()) plan.push_back({animal, Verkaufssperre, period.first, *block});
        if (!progress(steps)) return {};
    }
    return plan;
}

Tagesarbeit computeTagesarbeit(const Database& db, const std::vector<Arbeit>& works, qint32 day) {
    QStringList open;
    for (const Arbeit& work : works)
        if (!work.reference.isEmpty()) open.append(openOn(work, day));
    Tagesarbeit result{readAny(db, {}, open), {}, {}};
    std::vector<Columns> columns;
    for (const Arbeit& work : works) columns.emplace_back(work, result.animals);
    const Planzeitraum passed{static_cast<qint32>(EarliestDay), day - 1};
    for (int animal = 0; animal < result.animals.rowCount(); ++animal)
        for (size_t w = 0; w < works.size(); ++w) {
            if (!isOpen(result.animals, animal, columns[w])) continue;
            const auto add = [&](std::vector<Faelligkeit>& rows, Planzeitraum due) {
                rows.push_back({animal, static_cast<int>(w), due.first, due.last});
            };
            if (const auto due = window(result.animals, animal, columns[w], {day, day}))
                add(result.due, *due);
            else if (const auto late = window(result.animals, animal, columns[w], passed); late && works[w].ends())
                add(result.overdue, *late);
        }
    return result;
}

}  // namespace koben
