#include "store/Numbers.h"

#include <cmath>

#include "store/IsoDate.h"

namespace koben {
namespace {

constexpr double kMoneyLimit = 9.2233720368547e18;

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

QString germanNumber(double value, int digits) {
    if (value == 0) return QStringLiteral("0");
    QString text = QString::number(value, 'g', digits);
    text.replace(u'.', u',');
    return text.toUpper();
}

}  // namespace

qsizetype scanNumber(QStringView text, QByteArray& ascii) {
    ascii.clear();
    qsizetype at = 0;
    while (at < text.size() && text[at].isSpace()) ++at;
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) {
        if (text[at] == u'-') ascii.append('-');
        ++at;
    }
    bool digits = false, point = false;
    for (; at < text.size(); ++at) {
        if (isDigit(text[at])) {
            ascii.append(static_cast<char>(text[at].unicode()));
            digits = true;
        } else if ((text[at] == u'.' || text[at] == u',') && !point) {
            ascii.append('.');
            point = true;
        } else {
            break;
        }
    }
    if (!digits) return 0;
    qsizetype mark = at + 1;
    if (at < text.size() && text[at].toLower() == u'e') {
        if (mark < text.size() && (text[mark] == u'-' || text[mark] == u'+')) ++mark;
        if (mark < text.size() && isDigit(text[mark])) {
            const qsizetype from = at;
            for (at = mark; at < text.size() && isDigit(text[at]);) ++at;
            ascii.append(text.mid(from, at - from).toLatin1());
        }
    }
    return at;
}

std::optional<double> wholeNumber(QStringView text) {
    QByteArray ascii;
    const qsizetype length = scanNumber(text, ascii);
    if (length == 0 || !text.mid(length).trimmed().isEmpty()) return {};
    bool fits = false;  // "1e999" does not
    const double value = ascii.toDouble(&fits);
    return fits ? std::optional(value) : std::nullopt;
}

double roundHalfEven(double value) {
    // What is a half in 15 digits is a half: 1.00005 * 10000 is not exactly 10000.5.
    const double fraction = std::abs(value - std::trunc(value));
    if (std::abs(fraction - 0.5) < 1e-4 && std::abs(value) < 1e14)
        value = QByteArray::number(value, 'g', 15).toDouble();
    return std::nearbyint(value);
}

std::optional<Money> moneyOf(double value) {
    const double scaled = roundHalfEven(value * 10000.0);
    if (!(scaled > -kMoneyLimit && scaled < kMoneyLimit)) return {};
    return Money{static_cast<qint64>(scaled)};
}

std::optional<Money> moneyOfDigits(const QByteArray& ascii) {
    if (ascii.contains('e') || ascii.contains('E')) return moneyOf(ascii.toDouble());
    const bool negative = ascii.startsWith('-');
    qint64 number = 0;
    int decimals = -1;
    bool rest = false;
    char fifth = '0';
    for (const char c : ascii) {
        if (c == '.') decimals = 0;
        if (c < '0' || c > '9') continue;
        if (decimals >= 4) {
            if (decimals == 4) fifth = c;
            rest = rest || (decimals > 4 && c != '0');
            ++decimals;
            continue;
        }
        if (__builtin_mul_overflow(number, qint64{10}, &number) || __builtin_add_overflow(number, c - '0', &number))
            return {};
        if (decimals >= 0) ++decimals;
    }
    for (int i = std::max(decimals, 0); i < 4; ++i)
        if (__builtin_mul_overflow(number, qint64{10}, &number)) return {};
    const bool up = fifth > '5' || (fifth == '5' && (rest || number % 2 != 0));
    if (up && __builtin_add_overflow(number, qint64{1}, &number)) return {};
    return Money{negative ? -number : number};
}

qint64 divideHalfEven(qint64 a, qint64 b) {
    const qint64 quotient = a / b;
    const qint64 remainder = std::abs(a % b);
    const qint64 other = std::abs(b) - remainder;
    if (remainder < other || (remainder == other && quotient % 2 == 0)) return quotient;
    return quotient + ((a < 0) == (b < 0) ? 1 : -1);
}

QString textOf(double value) { return germanNumber(value, 15); }

QString textOf(float value) { return germanNumber(static_cast<double>(value), 7); }

QString textOf(Money value) {
    const auto raw = static_cast<quint64>(value.tenThousandths);
    const quint64 magnitude = value.tenThousandths < 0 ? 0 - raw : raw;
    QString text = value.tenThousandths < 0 ? QStringLiteral("-") : QString();
    text += QString::number(magnitude / 10000);
    if (const quint64 rest = magnitude % 10000; rest != 0) {
        QString decimals = QString::number(rest).rightJustified(4, u'0');
        while (decimals.endsWith(u'0')) decimals.chop(1);
        text += u',' + decimals;
    }
    return text;
}

QString textOf(DateTime value) {
    int year = 0, month = 0, day = 0;
    splitDay(value.julianDay, year, month, day);
    if (value.second == 0 && year >= 0 && year <= 9999) {
        QString text(10, u'.');
        const auto put = [&text](int last, int number, int digits) {
            for (; digits > 0; --digits, number /= 10) text[last--] = QChar(u'0' + number % 10);
        };
        put(1, day, 2), put(4, month, 2), put(9, year, 4);
        return text;
    }
    char text[32];
    int length = std::snprintf(text, sizeof text, "%02d.%02d.%04d", day, month, year);
    if (value.second != 0)
        length += std::snprintf(text + length, sizeof text - static_cast<size_t>(length), " %02d:%02d:%02d",
                                value.second / 3600, value.second / 60 % 60, value.second % 60);
    return QString::fromLatin1(text, length);
}

}  // namespace koben
