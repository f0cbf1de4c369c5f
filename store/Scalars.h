#pragma once
// The types of fields, and the two kinds of value that C++ has not: money and days.
#include <QDate>
#include <compare>

namespace koben {

/// Column types of the dialect. A result column keeps its type through aliases, sums and pivots.
enum class Type : quint8 { Null, Bool, Short, Long, Single, Double, Currency, Date, Text };

/// An exact amount: fixed point with four decimals in 64 bits. Never goes through a float.
struct Money {
    qint64 tenThousandths = 0;
    auto operator<=>(const Money&) const = default;
};

/// A day with an optional time of day. Comparison is chronological.
struct DateTime {
    qint32 julianDay = 0;
    qint32 second = 0;  ///< of the day; 0 for a pure date
    static DateTime of(QDate date) { return {static_cast<qint32>(date.toJulianDay()), 0}; }
    QDate date() const { return QDate::fromJulianDay(julianDay); }
    auto operator<=>(const DateTime&) const = default;
};

}  // namespace koben
