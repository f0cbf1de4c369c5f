#pragma once
// The values that travel between the database and the program: typed, nullable, exact where money is concerned.
#include <QDate>
#include <QString>
#include <compare>
#include <variant>

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

/// One field value; default-constructed it is Null.
class Value {
public:
    Value() = default;
    Value(bool v) : m_value(v) {}
    Value(int v) : m_value(static_cast<qint32>(v)) {}
    Value(qint64 v) : m_value(v) {}
    Value(float v) : m_value(v) {}
    Value(double v) : m_value(v) {}
    Value(Money v) : m_value(v) {}
    Value(DateTime v) : m_value(v) {}
    Value(QDate v) : m_value(DateTime::of(v)) {}
    Value(const QString& v) : m_value(v) {}
    Value(const char16_t* v) : m_value(QString::fromUtf16(v)) {}
    static Value null() { return {}; }

    bool isNull() const { return m_value.index() == 0; }
    bool isText() const { return std::holds_alternative<QString>(m_value); }
    bool isDate() const { return std::holds_alternative<DateTime>(m_value); }

    /// As the program shows any value: Null is "", dates are dd.mm.yyyy (with " hh:mm:ss" where there is a time),
    /// numbers have a decimal comma and no trailing zeros.
    QString toText() const;
    /// The numeric value; texts by their leading number, Null is 0.
    double toDouble() const;
    qint64 toInt() const;
    Money toMoney() const;
    /// Invalid for anything that is not a date (no guessing from texts).
    QDate toDate() const;

    const auto& variant() const { return m_value; }
    bool operator==(const Value&) const = default;

private:
    std::variant<std::monostate, bool, qint32, qint64, float, double, Money, DateTime, QString> m_value;
};

}  // namespace koben
