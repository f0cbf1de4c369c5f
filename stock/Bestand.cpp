#include "stock/Bestand.h"

#include <algorithm>
#include <array>

#include "core/PZ_Koben_Subs.h"
#include "store/Collation.h"

namespace koben {

namespace {

const QString Nobody = QStringLiteral("1 = 0");
const QDate Earliest(100, 1, 1), Latest(9999, 12, 31);
constexpr qint64 MostUnits = 100'000;                          // more is no age
const QDate NoArrival(1901, 1, 1), NoDeparture(2099, 12, 12);  // for animals without the date

QString sqlDay(QDate day) { return Sql_Datum(Datum_als_Anzeige(day)); }

/// The last day of birth from which `count` units end by the day. Adding keeps the order of days, but several may end
/// on the same one.
QDate lastBirth(QDate day, const QString& unit, qint64 count) {
    QDate birth = Alter_addieren(day, unit, -count);
    while (Alter_addieren(birth, unit, count) > day) birth = birth.addDays(-1);
    while (Alter_addieren(birth.addDays(1), unit, count) <= day) birth = birth.addDays(1);
    return birth;
}

/// The first day of birth from which `count` units end on the day or later.
QDate firstBirth(QDate day, const QString& unit, qint64 count) {
    return lastBirth(day.addDays(-1), unit, count).addDays(1);
}

QString ageCondition(const Bestandsgruppe& group, QDate day) {
    if (!group.youngest || !group.oldest) return QStringLiteral("Geburtsdatum IS NOT NULL");
    const QDate first = firstBirth(day, group.unit, *group.oldest), last = lastBirth(day, group.unit, *group.youngest);
    if (last < Earliest || first > Latest) return Nobody;
    return QStringLiteral("(Geburtsdatum >= %1 and Geburtsdatum < %2)")
        .arg(sqlDay(std::max(first, Earliest)), sqlDay(std::min(last, Latest.addDays(-1)).addDays(1)));
}

/// A date that is missing stands for the far past or future, which only a day beyond them notices.
QString herdCondition(QDate day) {
    const QString to = sqlDay(day);
    return (day < NoArrival ? QStringLiteral("Zugangsdatum <= %1")
                            : QStringLiteral("(Zugangsdatum IS NULL or Zugangsdatum <= %1)"))
               .arg(to) +
           " and " +
           (day > NoDeparture ? QStringLiteral("Abgangsdatum >= %1")
                              : QStringLiteral("(Abgangsdatum IS NULL or Abgangsdatum >= %1)"))
               .arg(to);
}

/// Later than `before`, or there at all where `before` is missing.
QString later(const char* date, const char* before) {
    return QStringLiteral("(%1 IS NOT NULL and %2 IS NULL) or (%1 > %2)")
        .arg(QString::fromUtf8(date), QString::fromUtf8(before));
}

}  // namespace

QDate Alter_addieren(QDate from, const QString& unit, qint64 count) {
    count = std::clamp(count, -MostUnits, MostUnits);
    if (unit == u"Wochen") return from.addDays(7 * count);
    if (unit == u"Monate") return from.addMonths(static_cast<int>(count));
    if (unit == u"Jahre") return from.addYears(static_cast<int>(count));
    return from.addDays(count);
}

QString Bestandsgruppe::ages() const {
    const auto number = [](const std::optional<qint64>& n) { return n ? QString::number(*n) : QString(); };
    return QStringLiteral("Von %1 bis %2 %3").arg(number(youngest), number(oldest), unit);
}

QString Bestandsgruppe::age(QDate born, QDate day) const {
    const double days = static_cast<double>(std::max<qint64>(born.daysTo(day), 0));
    const double inUnit = unit == u"Wochen"   ? days / 7
                          : unit == u"Monate" ? days * 12 / 365
                          : unit == u"Jahre"  ? days / 365
                                              : days;
    return Zahl_formatieren(Value(inUnit).toText(), 1) + u' ' + unit;
}

QString Bestandsgruppe::condition(QDate day, bool inHerd) const {
    QStringList all{ageCondition(*this, day)};
    if (kind != u"Alle") all += QStringLiteral("Art = '%1'").arg(kind);
    if (sex == u"W")
        all += QStringLiteral("Art = 'Sau'");
    else if (sex == u"M")
        all += QStringLiteral("Art = 'Eber'");
    else if (sex != u"E")
        all += Nobody;
    if (inHerd) all += herdCondition(day);
    if (leastFarrowings > 0) all += QStringLiteral("Anz_Ferkelungen >= %1").arg(leastFarrowings);
    if (served == u"J")
        all += QStringLiteral("L_Belegung IS NOT NULL");
    else if (served != u"N")
        all += Nobody;
    return u'(' + all.join(QStringLiteral(" and ")) + u')';
}

std::vector<Bestandsgruppe> Bestandsgruppen_lesen(const Database& db, const QStringList& names) {
    const Table options = db.table(
        "select Tiergruppe, Tierart, Alter_von, Alter_bis, Zeit, Geschlecht, Wert, "
        "Mindestferkelung, Belegt from Bestandsoptionen");
    enum { Name, Kind, Youngest, Oldest, Unit, Sex, Worth, Farrowings, Served };
    std::vector<Bestandsgruppe> groups;
    for (const QString& name : names)
        for (int row = 0; row < options.rowCount(); ++row) {
            const auto text = [&](int column) { return Hochkomma_ersetzen(options.text(row, column)); };
            const auto age = [&](int column) {
                return options.isNull(row, column) ? std::nullopt : std::optional(options.integer(row, column));
            };
            if (!equalTexts(text(Name), name)) continue;
            groups.push_back({.name = name,
                              .kind = text(Kind),
                              .unit = text(Unit),
                              .sex = text(Sex),
                              .served = text(Served),
                              .youngest = age(Youngest),
                              .oldest = age(Oldest),
                              .leastFarrowings = options.integer(row, Farrowings),
                              .value = Money{options.integer(row, Worth)}});
            break;
        }
    return groups;
}

QString Sonderbericht(int number, QDate onlyInHerd) {
    const QString served = later("L_Belegung", "L_Ferkelung"), pregnant = later("L_Trächtigkeit", "L_Ferkelung"),
                  suckling = later("L_Ferkelung", "L_Absetzung");
    const std::array<QString, 15> conditions{"",
                                             "Art = 'Sau'",
                                             "Art = 'Eber'",
                                             "Art = 'Mast'",
                                             "Mechanische_Amme = 'J'",
                                             served,
                                             pregnant,
                                             suckling,
                                             "L_Ferkelung IS NOT NULL",
                                             later("L_Belegung", "L_Trächtigkeit"),
                                             pregnant,
                                             suckling,
                                             later("L_Absetzung", "L_Belegung"),
                                             served,
                                             later("L_Ferkelung", "L_Belegung")};
    QString condition = conditions.at(static_cast<size_t>(number));
    if (!onlyInHerd.isValid()) return condition;
    // Behind an "or" it binds to the last alternative alone.
    if (!condition.isEmpty()) condition += " and ";
    return condition + QStringLiteral("(Abgangsdatum IS NULL or Abgangsdatum < %1)").arg(sqlDay(onlyInHerd));
}

std::vector<qint64> Tiere_zaehlen(const Database& db, const QStringList& conditions,
                                  const std::function<bool(qint64)>& go) {
    if (conditions.isEmpty()) return {};
    QStringList sums;
    for (const QString& condition : conditions)
        sums += condition.isEmpty() ? QStringLiteral("count(*)") : QStringLiteral("sum(iif(%1, 1, 0))").arg(condition);
    const auto counted = db.table("select " + sums.join(QStringLiteral(", ")) + " from Sauen", go);
    std::vector<qint64> counts;
    for (int column = 0; counted && column < counted->columnCount(); ++column)
        counts.push_back(counted->value(0, column).toInt());
    return counts;
}

}  // namespace koben
