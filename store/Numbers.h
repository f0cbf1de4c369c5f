#pragma once
// Numbers and money: rounding, reading and writing.
#include <QByteArray>
#include <QString>
#include <optional>

#include "store/Scalars.h"

namespace koben {

/// Finds the number at the start of a text: blanks, sign, digits with a decimal comma or point, exponent.
/// `ascii` gets it with a decimal point; the result is the length read, 0 where there is no number.
qsizetype scanNumber(QStringView text, QByteArray& ascii);
/// The whole text (but for blanks around it) as number; empty where it is none.
std::optional<double> wholeNumber(QStringView text);

/// Half to even at the fourth decimal; empty outside the 64-bit range.
std::optional<Money> moneyOf(double value);
/// Exactly from decimal digits ("-12.34567", "1e3"), half to even at the fourth decimal; empty outside the range.
std::optional<Money> moneyOfDigits(const QByteArray& ascii);
/// a / b, half to even; b is not 0.
qint64 divideHalfEven(qint64 a, qint64 b);

/// Half to even to whole numbers.
double roundHalfEven(double value);

/// The user's form: decimal comma, no trailing zeros.
QString textOf(double value);
QString textOf(float value);
QString textOf(Money value);
QString textOf(DateTime value);

}  // namespace koben
