#pragma once
// The values that travel between the database and the program: typed, nullable, exact where money is concerned.
#include <QString>
#include <variant>

#include "store/Scalars.h"

namespace koben {

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

/// Name, type and width of a result column.
struct Field {
    QString name;
    Type type = Type::Null;
    int size = 0;  ///< characters, for Text; 0 otherwise
};

}  // namespace koben
