#include "analytics/Kennwert.h"

#include <algorithm>
#include <cmath>

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

constexpr int DaysPerYear = 365, GramsPerKilo = 1000, MonthsPerYear = 12;

Value whole(double value) { return static_cast<qint64>(std::llround(value)); }

QDate dayOf(qint32 julian) { return julian == 0 ? QDate() : QDate::fromJulianDay(julian); }

Value dateOf(qint32 julian) { return julian == 0 ? Value() : Value(dayOf(julian)); }

Zelle quotient(double numerator, double denominator, int factor = 1) {
    Zelle cell{{}, numerator, denominator};
    if (denominator != 0) cell.shown = eine_Stelle(numerator * factor / denominator);
    return cell;
}

/// Bookings without any earlier one give 0,0, none at all an empty cell; by year 0,0 too.
Zelle meanOfDays(const Formel& formel, const Zellenlage& from) {
    const Summe& days = from.sum(formel.of[0]);
    Zelle cell = quotient(days.amount, static_cast<double>(days.found));
    if (cell.shown.isNull() && (days.count > 0 || !from.tier)) cell.shown = eine_Stelle(0);
    return cell;
}

/// From the first service to the last farrowing of the period and on to the next service.
Zelle perYear(const Formel& formel, const Zellenlage& from) {
    const double stored =
        static_cast<double>(formel.of[0] == Groesse::Ferkel ? from.tier->ferkel : from.tier->ferkelungen);
    const Summe &services = from.sum(Groesse::Belegungen), &farrowings = from.sum(Groesse::Ferkelungen);
    const bool dated = !services.undated && services.first != 0 && farrowings.last != 0;
    const int days = dated ? farrowings.last - services.first : 0;
    if (stored == 0 || days <= 0) return {{}, stored, {}};
    return quotient(stored, days + from.zyklustage, DaysPerYear);
}

/// Over the days of all weanings together, not their mean.
Zelle gain(const Zellenlage& from) {
    const double weight = from.sum(Groesse::Gewicht).amount, piglets = from.sum(Groesse::Abgesetzt).amount,
                 days = from.sum(Groesse::Saeugezeit).amount;
    Zelle cell{{}, weight * GramsPerKilo - from.geburtsgewicht * piglets, piglets * days};
    if (weight != 0 && piglets != 0 && days != 0)
        cell.shown = Zahl_formatieren(QString::number(*cell.numerator / piglets / days, 'g', 15), 0);
    return cell;
}

Zelle perMonth(const Summe& services) {
    if (services.count == 0 || services.first == 0) return {{}, static_cast<double>(services.count), {}};
    const QDate from = dayOf(services.first), to = dayOf(services.last);
    return quotient(static_cast<double>(services.count),
                    (to.year() - from.year()) * MonthsPerYear + to.month() - from.month());
}

}  // namespace

QString eine_Stelle(double value) {
    constexpr qsizetype most = 1 << 14;
    static QHash<double, QString> known;  // quotients of small numbers come again and again
    const auto found = known.constFind(value);
    if (found != known.constEnd()) return *found;
    const QString shown = Zahl_formatieren(QString::number(value, 'g', 15), 1);
    if (known.size() >= most) known.clear();
    if (value != 0) known.insert(value, shown);  // 0 and -0 are one key
    return shown;
}

QString Zahlentext(double value) { return Value(value).toText(); }

const Groessenart& art(Groesse quantity) {
    static const Groessenart arten[] = {
        {Tabelle::Belegung},
        {Tabelle::Ferkelung},
        {Tabelle::Absetzung},
        {Tabelle::Ferkelung, 0},
        {Tabelle::Ferkelung, 1},
        {Tabelle::Ferkelung, 2},
        {Tabelle::Verluste, 0},
        {Tabelle::Absetzung, 0},
        {Tabelle::Absetzung, 1},
        {.table = Tabelle::Traechtigkeit, .amount = 0, .chosen = true},
        {.table = Tabelle::Traechtigkeit, .amount = 1, .chosen = true},
        {.table = Tabelle::Verschiebung, .amount = 0, .chosen = true},
        {.table = Tabelle::Verschiebung, .amount = 1, .chosen = true},
        {.table = Tabelle::Ferkelung, .since = Tabelle::Belegung},
        {.table = Tabelle::Absetzung, .since = Tabelle::Ferkelung},
        {.table = Tabelle::Belegung, .since = Tabelle::Absetzung},
        {.table = Tabelle::Absetzung, .since = Tabelle::Belegung},
        {Tabelle::Deckung},
        {.table = Tabelle::Deckung, .amount = 0, .chosen = true},
        {.table = Tabelle::Deckung, .amount = 1, .chosen = true},
    };
    return arten[static_cast<size_t>(quantity)];
}

std::optional<double> part(Groesse quantity, const Zaehlbuchung& booking, Buchungsauszug& bookings) {
    const Groessenart& kind = art(quantity);
    if (kind.since) {
        const qint32 before = bookings.before(*kind.since, booking.place, booking.day);
        return before == 0 ? std::nullopt : std::optional<double>(booking.day - before);
    }
    return kind.amount < 0 ? 1 : booking.amounts[static_cast<size_t>(kind.amount)];
}

void Summe::add(qint32 day, std::optional<double> value) {
    ++count;
    if (value) ++found, amount += *value;
    if (day == 0) {
        undated = true;
        return;
    }
    first = first == 0 ? day : std::min(first, day);
    last = std::max(last, day);
}

const Summe& Summen::of(Groesse quantity, int key) {
    auto& sums = m_sums[quantity];
    if (sums.empty()) {
        sums.resize(static_cast<size_t>(m_keys));
        for (const Zaehlbuchung& booking : m_bookings.rows(art(quantity).table))
            if (const int row = m_key(booking); row >= 0)
                sums[static_cast<size_t>(row)].add(booking.day, part(quantity, booking, m_bookings));
    }
    return sums[static_cast<size_t>(key)];
}

Zelle berechnen(const Formel& formel, const Zellenlage& from) {
    const auto sum = [&](size_t i) { return from.sum(formel.of[i]).amount; };
    switch (formel.kind) {
        case Formel::Fehlt:
            return {};
        case Formel::Strich:
            return {QStringLiteral("-")};
        case Formel::Anzahl:
            return {sum(0) == 0 ? Value() : whole(sum(0))};
        case Formel::Summe:
            return {whole(sum(0))};
        case Formel::Anteil: {
            double denominator = 0;
            for (size_t i = 1; i < formel.of.size(); ++i) denominator += sum(i);
            return quotient(sum(0), denominator, formel.factor);
        }
        case Formel::Abstand:
            return meanOfDays(formel, from);
        case Formel::Bestand:
            return {from.tier->belegungen};
        case Formel::JeJahr:
            return perYear(formel, from);
        case Formel::Zunahme:
            return gain(from);
        case Formel::JeMonat:
            return perMonth(from.sum(formel.of[0]));
        case Formel::JeZwoelftel: {
            Zelle cell = quotient(sum(0), MonthsPerYear);
            return sum(0) == 0 ? Zelle{{}, 0, MonthsPerYear} : cell;
        }
        case Formel::Erste:
            return {dateOf(from.sum(formel.of[0]).first)};
        case Formel::Letzte:
            return {dateOf(from.sum(formel.of[0]).last)};
    }
    return {};
}

}  // namespace koben
