#include "store/Convert.h"

#include <cmath>
#include <limits>

#include "store/IsoDate.h"
#include "store/Numbers.h"

namespace koben {
namespace {

using Kind = DatabaseError::Kind;

[[noreturn]] void refuse(const Value& value, Type to) {
    throw ConversionError{Kind::Type,
                          QStringLiteral("Der Wert \"%1\" ist nicht als %2 lesbar").arg(value.toText(), typeText(to))};
}

[[noreturn]] void overflow(const Value& value, Type to) {
    throw ConversionError{Kind::Type,
                          QStringLiteral("Der Wert %1 ist zu groß für %2").arg(value.toText(), typeText(to))};
}

double number(const Value& value, Type to) {
    if (!value.isText()) return value.toDouble();
    const auto result = wholeNumber(std::get<QString>(value.variant()));
    if (!result) refuse(value, to);
    return *result;
}

Value whole(const Value& value, Type to, double low, double high) {
    const double rounded = roundHalfEven(number(value, to));
    if (!(rounded >= low && rounded <= high)) overflow(value, to);
    return static_cast<qint32>(rounded);
}

Value money(const Value& value) {
    std::optional<Money> result;
    if (value.isText()) {
        number(value, Type::Currency);
        QByteArray ascii;
        scanNumber(std::get<QString>(value.variant()), ascii);
        result = moneyOfDigits(ascii);
    } else if (const auto* single = std::get_if<float>(&value.variant())) {
        result = moneyOfDigits(QByteArray::number(*single, 'g', 7));
    } else if (std::holds_alternative<Money>(value.variant())) {
        return value;
    } else {
        result = moneyOf(value.toDouble());
    }
    if (!result) overflow(value, Type::Currency);
    return *result;
}

Value single(const Value& value) {
    const double d = number(value, Type::Single);
    if (std::abs(d) > static_cast<double>(std::numeric_limits<float>::max())) overflow(value, Type::Single);
    return static_cast<float>(d);
}

Value date(const Value& value) {
    if (value.isDate()) return value;
    const auto result =
        value.isText() ? parseDateText(std::get<QString>(value.variant())) : dateOfSerial(value.toDouble());
    if (!result) refuse(value, Type::Date);
    return *result;
}

}  // namespace

QString typeText(Type type) {
    switch (type) {
        case Type::Bool:
            return QStringLiteral("Ja/Nein-Wert");
        case Type::Short:
        case Type::Long:
            return QStringLiteral("ganze Zahl");
        case Type::Single:
        case Type::Double:
            return QStringLiteral("Zahl");
        case Type::Currency:
            return QStringLiteral("Betrag");
        case Type::Date:
            return QStringLiteral("Datum");
        case Type::Text:
        case Type::Null:
            break;
    }
    return QStringLiteral("Text");
}

Value convert(const Value& value, Type to) {
    if (value.isNull()) return value;
    switch (to) {
        case Type::Null:
            return value;
        case Type::Bool:
            return number(value, to) != 0;
        case Type::Short:
            return whole(value, to, -32768, 32767);
        case Type::Long:
            return whole(value, to, -2147483648.0, 2147483647.0);
        case Type::Single:
            return single(value);
        case Type::Double:
            return number(value, to);
        case Type::Currency:
            return money(value);
        case Type::Date:
            return date(value);
        case Type::Text:
            return value.isText() ? value : Value(value.toText());
    }
    return value;
}

Value assign(const Value& value, Type to, int size, const QString& name) {
    Value result;
    try {
        result = convert(value, to);
    } catch (ConversionError& e) {
        e.what += QStringLiteral(" (Feld \"%1\")").arg(name);
        throw;
    }
    if (to == Type::Text && size > 0 && !result.isNull() && std::get<QString>(result.variant()).size() > size)
        throw ConversionError{Kind::TooLong,
                              QStringLiteral("Der Text \"%1\" ist zu lang für das Feld \"%2\" (höchstens %3 Zeichen)")
                                  .arg(std::get<QString>(result.variant()), name)
                                  .arg(size)};
    return result;
}

}  // namespace koben
