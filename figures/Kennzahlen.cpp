#include "figures/Kennzahlen.h"

#include <cstdlib>

namespace koben {
namespace {

qint64 powerOfTen(int exponent) {
    qint64 result = 1;
    while (exponent-- > 0) result *= 10;
    return result;
}

/// The value in units of its last digit, half away from zero.
qint64 digits(const Kennzahlwert& value) {
    const Kennzahl& figure = kennzahl(value.nr);
    const qint64 sign = (value.numerator < 0) != (value.denominator < 0) ? -1 : 1;
    const qint64 above = std::abs(value.numerator) * figure.faktor * powerOfTen(figure.decimals);
    const qint64 below = std::abs(value.denominator);
    return sign * ((2 * above + below) / (2 * below));
}

}  // namespace

std::optional<double> Kennzahlwert::value() const {
    if (empty()) return {};
    return static_cast<double>(numerator * kennzahl(nr).faktor) / static_cast<double>(denominator);
}

QString Kennzahlwert::text() const {
    if (empty()) return {};
    const qint64 scaled = digits(*this);
    const int decimals = kennzahl(nr).decimals;
    QString text = QString::number(std::abs(scaled)).rightJustified(decimals + 1, u'0');
    if (decimals > 0) text.insert(text.size() - decimals, u',');
    return scaled < 0 ? u'-' + text : text;
}

Value Kennzahlwert::rounded() const {
    if (empty()) return {};
    const int decimals = kennzahl(nr).decimals;
    if (decimals == 0) return Value(digits(*this));
    return Value(static_cast<double>(digits(*this)) / static_cast<double>(powerOfTen(decimals)));
}

Kennzahlenstand::Kennzahlenstand() {
    for (const Kennzahl& figure : Kennzahlen()) {
        (*this)[figure.nr].nr = figure.nr;
        if (figure.ausgelassen) (*this)[figure.nr].leftOut = 0;
    }
}

std::optional<double> Kennzahlenstand::meanSows() const {
    if (period.days() == 0) return {};
    return static_cast<double>(productionDays) / period.days();
}

}  // namespace koben
