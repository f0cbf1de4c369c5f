// Numbers, amounts and texts of the screens. Dates stand in Datum.cpp.
#include "core/PZ_Koben_Subs.h"

#include <QDir>
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace koben {
namespace {

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }
bool isSign(QChar c) { return c == u'-' || c == u'+'; }

/// Blanks alone, as the program's texts are trimmed; tabs and line breaks stay.
QStringView trimmedBlanks(QStringView text) {
    while (!text.isEmpty() && text.front() == u' ') text = text.mid(1);
    while (!text.isEmpty() && text.back() == u' ') text.chop(1);
    return text;
}

/// An unrounded decimal number: value = 0.DIGITS * 10^point, so that nothing passes through a float.
struct Decimal {
    bool negative = false;
    QString digits;
    qsizetype point = 0;  ///< digits before the decimal point; may be negative
};

/// Reads sign, digits, mark and digits off the front of `rest`; nothing where there is no digit.
std::optional<Decimal> takeDecimal(QStringView& rest, QChar mark) {
    Decimal number;
    qsizetype at = 0;
    if (at < rest.size() && isSign(rest[at])) number.negative = rest[at++] == u'-';
    const qsizetype whole = at;
    while (at < rest.size() && isDigit(rest[at])) ++at;
    number.digits = rest.mid(whole, at - whole).toString();
    number.point = number.digits.size();
    if (at < rest.size() && rest[at] == mark) {
        const qsizetype fraction = ++at;
        while (at < rest.size() && isDigit(rest[at])) ++at;
        number.digits += rest.mid(fraction, at - fraction);
    }
    if (number.digits.isEmpty()) return std::nullopt;
    rest = rest.mid(at);
    return number;
}

/// A text that is a number as a whole, decimal comma, with or without exponent.
std::optional<Decimal> wholeDecimal(QStringView text) {
    QStringView rest = trimmedBlanks(text);
    auto number = takeDecimal(rest, u',');
    if (!number || rest.isEmpty()) return number;
    if (rest.front().toLower() != u'e') return std::nullopt;
    bool ok = false;
    const int exponent = rest.mid(1).toInt(&ok);
    if (!ok || exponent < -308 || exponent > 308) return std::nullopt;
    number->point += exponent;
    return number;
}

/// Adds one to a row of digits; true where it overflowed to zeros.
bool increment(QString& digits) {
    for (qsizetype i = digits.size() - 1; i >= 0; --i) {
        if (digits[i] != u'9') {
            digits[i] = QChar(digits[i].unicode() + 1);
            return false;
        }
        digits[i] = u'0';
    }
    return true;
}

/// Cuts to `decimals` places, half away from zero or half to even; at least one digit stands before the point.
void roundTo(Decimal& number, int decimals, bool halfToEven) {
    QString& digits = number.digits;
    if (number.point < 1) {
        digits.prepend(QString(1 - number.point, u'0'));
        number.point = 1;
    }
    const qsizetype end = number.point + decimals;
    if (digits.size() <= end) {
        digits.append(QString(end - digits.size(), u'0'));
        return;
    }
    const QStringView cut = QStringView(digits).mid(end);
    bool up = cut.front() >= u'5';
    if (up && halfToEven && cut.front() == u'5' &&
        std::all_of(cut.begin() + 1, cut.end(), [](QChar c) { return c == u'0'; })) {
        up = (digits[end - 1].unicode() - u'0') % 2 == 1;
    }
    digits.truncate(end);
    if (up && increment(digits)) {
        digits.prepend(u'1');
        ++number.point;
    }
}

/// The rounded number with a decimal comma, never "-0".
QString asText(Decimal number, int decimals) {
    roundTo(number, decimals, false);
    qsizetype zeros = 0;
    while (zeros < number.point - 1 && number.digits[zeros] == u'0') ++zeros;
    QString text = number.digits.mid(zeros, number.point - zeros);
    if (decimals > 0) text += u',' + number.digits.mid(number.point);
    const bool zero = std::all_of(text.begin(), text.end(), [](QChar c) { return c == u'0' || c == u','; });
    if (number.negative && !zero) text.prepend(u'-');
    return text;
}

/// Nothing for amounts beyond the type.
std::optional<Money> asAmount(Decimal number) {
    roundTo(number, 4, true);
    bool ok = false;
    const qint64 value = number.digits.toLongLong(&ok);
    return ok ? std::optional(Money{number.negative ? -value : value}) : std::nullopt;
}

QStringView withoutLeading(QStringView text) {
    while (!text.isEmpty() && (text.front() == u' ' || text.front() == u'\t')) text = text.mid(1);
    return text;
}

void replaceFirst(QString& text, QChar from, QChar to) {
    if (const qsizetype at = text.indexOf(from); at >= 0) text[at] = to;
}

/// "0.00" of an amount, half away from zero.
QString twoPlaces(Money amount) {
    const bool negative = amount.tenThousandths < 0;
    const auto raw = static_cast<quint64>(amount.tenThousandths);
    const quint64 cents = ((negative ? 0 - raw : raw) + 50) / 100;
    const QString text = QString::number(cents).rightJustified(3, u'0');
    const QString sign = negative && cents != 0 ? QStringLiteral("-") : QString();
    return sign + text.chopped(2) + u'.' + text.right(2);
}

}  // namespace

double Wert(const QString& text) {
    QStringView rest = withoutLeading(text);
    const QStringView whole = rest;
    if (!takeDecimal(rest, u'.')) return 0;
    const double value = whole.chopped(rest.size()).toDouble();
    constexpr double limit = std::numeric_limits<double>::max();
    return std::clamp(value, -limit, limit) + 0.0;  // + 0.0: no minus zero
}

float Zahl_aus_Text(QString& text) {
    replaceFirst(text, u',', u'.');
    constexpr double limit = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(Wert(text), -limit, limit));
}

float Zahl_aus_Text(QString&& text) { return Zahl_aus_Text(text); }

Money Betrag_aus_Text(QString& text) {
    replaceFirst(text, u',', u'.');
    QStringView rest = withoutLeading(text);
    const auto number = takeDecimal(rest, u'.');
    if (!number) return {};
    constexpr Money end{std::numeric_limits<qint64>::max()};
    return asAmount(*number).value_or(number->negative ? Money{-end.tenThousandths} : end);
}

Money Betrag_aus_Text(QString&& text) { return Betrag_aus_Text(text); }

std::optional<Money> Betrag_lesen(const QString& text) {
    QString withComma = text;
    replaceFirst(withComma, u'.', u',');
    const auto number = wholeDecimal(withComma);
    return number ? asAmount(*number) : std::nullopt;
}

bool severalSeparators(const QString& text) {
    const QStringView number = trimmedBlanks(text);
    const auto isSeparator = [](QChar c) { return c == u'.' || c == u','; };
    return std::count_if(number.begin(), number.end(), isSeparator) > 1 &&
           std::any_of(number.begin(), number.end(), isDigit) &&
           std::all_of(number.begin(), number.end(),
                       [&](QChar c) { return isDigit(c) || isSign(c) || isSeparator(c); });
}

Reading readAmount(const QString& text) {
    if (severalSeparators(text)) return Reading::Unreadable;
    QString withPoint = text;
    replaceFirst(withPoint, u',', u'.');
    QStringView rest = withoutLeading(withPoint);
    const auto number = takeDecimal(rest, u'.');
    return !number || asAmount(*number) ? Reading::Fits : Reading::TooLarge;
}

Reading readWeight(const QString& text) {
    if (severalSeparators(text)) return Reading::Unreadable;
    QString withPoint = text;
    replaceFirst(withPoint, u',', u'.');
    return std::abs(Wert(withPoint)) > std::numeric_limits<float>::max() ? Reading::TooLarge : Reading::Fits;
}

QString withoutControls(const QString& text, bool keepLineBreaks) {
    const auto isControl = [keepLineBreaks](QChar c) {
        return (c < u' ' && !(keepLineBreaks && (c == u'\r' || c == u'\n'))) || c == QChar(0x7f);
    };
    if (std::none_of(text.begin(), text.end(), isControl)) return text;
    QString clean = text;
    std::replace_if(clean.begin(), clean.end(), isControl, QChar(u' '));
    return clean;
}

QString Zahl_formatieren(QString& wert, int decimals) {
    if (wert.isEmpty()) wert = QStringLiteral("0");
    replaceFirst(wert, u'.', u',');
    return asText(wholeDecimal(wert).value_or(Decimal{false, QStringLiteral("0"), 1}), std::max(decimals, 0));
}

QString Zahl_formatieren(QString&& wert, int decimals) { return Zahl_formatieren(wert, decimals); }

QString Betrag_formatieren(int width, Money amount) {
    return twoPlaces(amount).leftJustified(std::max(width, 0), u' ', true);
}

QString Betrag_als_Punkttext(Money amount) { return twoPlaces(amount); }

QString Hochkomma_ersetzen(const QString& text) {
    const QStringView trimmed = trimmedBlanks(text);
    QString result = trimmed.size() == text.size() ? text : trimmed.toString();
    if (result.contains(u'\'')) result.replace(u'\'', u'`');
    return result;
}

QString Hochkomma_ersetzen(const Value& value) {
    if (const QString* text = std::get_if<QString>(&value.variant())) return Hochkomma_ersetzen(*text);
    return Hochkomma_ersetzen(value.toText());
}

QString Text_links(const QString& text, int width) {
    return trimmedBlanks(text).toString().leftJustified(std::max(width, 0), u' ', true);
}

QString Text_rechts(const QString& text, int width) {
    return trimmedBlanks(text).toString().rightJustified(std::max(width, 0), u' ', true);
}

int Nur_Ziffern(int key) {
    const bool pass = (key >= '0' && key <= '9') || key == '*' || (key >= 8 && key <= 10) || key == 13;
    return pass ? key : 0;
}

int Nur_Zahlzeichen(int key) { return key == '.' || key == ',' || key == '-' ? key : Nur_Ziffern(key); }

bool Ordner_existiert(const QString& path) { return !path.isEmpty() && QDir(path).exists(); }

}  // namespace koben
