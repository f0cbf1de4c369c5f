#include "store/IsoDate.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace koben {
namespace {

constexpr qint32 kJulianOfUnixEpoch = 2440588;
constexpr qint32 kJulianOfSerialZero = 2415019;
constexpr qint32 kSecondsPerDay = 86400;

/// Up to `max` numbers of a text, cut at any of the separators.
struct Numbers {
    std::array<int, 3> value{};
    std::array<int, 3> digits{};
    int count = 0;
};

bool scan(QStringView text, char16_t separator, Numbers& out) {
    out = {};
    for (const QStringView part : text.split(QChar(separator))) {
        if (out.count == 3 || part.isEmpty() || part.size() > 4) return false;
        int number = 0;
        for (const QChar c : part) {
            if (c < u'0' || c > u'9') return false;
            number = number * 10 + (c.unicode() - u'0');
        }
        out.value[static_cast<size_t>(out.count)] = number;
        out.digits[static_cast<size_t>(out.count)] = static_cast<int>(part.size());
        ++out.count;
    }
    return true;
}

std::optional<qint32> scanTime(QStringView text) {
    Numbers n;
    if (!scan(text, u':', n) || n.count < 2 || n.value[0] > 23 || n.value[1] > 59 || n.value[2] > 59) return {};
    return n.value[0] * 3600 + n.value[1] * 60 + n.value[2];
}

/// Day, month and year at the given places of a text with one separator.
std::optional<qint32> scanDay(QStringView text, char16_t separator, size_t year, size_t month, size_t day) {
    Numbers n;
    if (!scan(text, separator, n) || n.count != 3) return {};
    if (n.digits[year] != 4 && n.digits[year] > 2) return {};
    const int y = n.digits[year] <= 2 ? fullYear(n.value[year]) : n.value[year];
    if (!validDate(y, n.value[month], n.value[day])) return {};
    return julianDay(y, n.value[month], n.value[day]);
}

template <typename ScanDay>
std::optional<DateTime> withTime(QStringView text, ScanDay scanDayPart) {
    text = text.trimmed();
    const auto gap = text.indexOf(QChar(u' '));
    const auto day = scanDayPart(gap < 0 ? text : text.left(gap));
    if (!day) return {};
    DateTime result{*day, 0};
    if (gap >= 0) {
        const auto second = scanTime(text.mid(gap + 1).trimmed());
        if (!second) return {};
        result.second = *second;
    }
    return result;
}

int digitsAt(const char* text, int count) {
    int number = 0;
    for (int i = 0; i < count; ++i) {
        if (text[i] < '0' || text[i] > '9') return -1;
        number = number * 10 + (text[i] - '0');
    }
    return number;
}

}  // namespace

qint32 julianDay(int year, int month, int day) {
    const int y = year - (month <= 2 ? 1 : 0);
    const int era = (y >= 0 ? y : y - 399) / 400;
    const int yearOfEra = y - era * 400;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468 + kJulianOfUnixEpoch;
}

void splitDay(qint32 julian, int& year, int& month, int& day) {
    const int z = julian - kJulianOfUnixEpoch + 719468;
    const int era = (z >= 0 ? z : z - 146096) / 146097;
    const int dayOfEra = z - era * 146097;
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int shifted = (5 * dayOfYear + 2) / 153;
    day = dayOfYear - (153 * shifted + 2) / 5 + 1;
    month = shifted + (shifted < 10 ? 3 : -9);
    year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
}

bool validDate(int year, int month, int day) {
    if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
    static constexpr int kLength[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return day <= kLength[month - 1] + (month == 2 && leap ? 1 : 0);
}

std::optional<qint32> normalizedDay(qint64 year, qint64 month, qint64 day) {
    const auto within = [](qint64 n, qint64 limit) { return n >= -limit && n <= limit; };
    if (!within(year, 20000) || !within(month, 200000) || !within(day, 5000000)) return {};
    qint64 months = year * 12 + month - 1;
    const qint64 y = months >= 0 ? months / 12 : (months - 11) / 12;
    const qint64 julian = julianDay(static_cast<int>(y), static_cast<int>(months - y * 12) + 1, 1) + day - 1;
    if (julian < julianDay(100, 1, 1) || julian > julianDay(9999, 12, 31)) return {};
    return static_cast<qint32>(julian);
}

int fullYear(int year) { return year >= 100 ? year : year + (year < 30 ? 2000 : 1900); }

std::optional<DateTime> parseIso(const char* text, int length) {
    if (length < 10 || text[4] != '-' || text[7] != '-') return {};
    const int year = digitsAt(text, 4);
    const int month = digitsAt(text + 5, 2);
    const int day = digitsAt(text + 8, 2);
    if (!validDate(year, month, day)) return {};
    DateTime result{julianDay(year, month, day), 0};
    if (length == 10) return result;
    if (length < 16 || (text[10] != ' ' && text[10] != 'T') || text[13] != ':') return {};
    const int hour = digitsAt(text + 11, 2);
    const int minute = digitsAt(text + 14, 2);
    const int second = length >= 19 && text[16] == ':' ? digitsAt(text + 17, 2) : 0;
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) return {};
    result.second = hour * 3600 + minute * 60 + second;
    return result;
}

int formatIso(DateTime value, char* out) {
    int year = 0, month = 0, day = 0;
    splitDay(value.julianDay, year, month, day);
    const auto put = [&out](int number, int digits) {
        for (int i = digits - 1; i >= 0; --i, number /= 10) out[i] = static_cast<char>('0' + number % 10);
        out += digits;
    };
    put(year, 4), *out++ = '-', put(month, 2), *out++ = '-', put(day, 2);
    if (value.second != 0) {
        *out++ = ' ', put(value.second / 3600, 2), *out++ = ':';
        put(value.second / 60 % 60, 2), *out++ = ':', put(value.second % 60, 2);
    }
    *out = 0;
    return value.second != 0 ? 19 : 10;
}

std::optional<DateTime> parseDateText(QStringView text) {
    return withTime(text, [](QStringView day) {
        return day.contains(u'.') ? scanDay(day, u'.', 2, 1, 0) : scanDay(day, u'-', 0, 1, 2);
    });
}

std::optional<DateTime> parseDateLiteral(QStringView text) {
    return withTime(text, [](QStringView day) {
        return day.contains(u'/') ? scanDay(day, u'/', 2, 0, 1) : scanDay(day, u'-', 0, 1, 2);
    });
}

double serialOf(DateTime value) {
    return value.julianDay - kJulianOfSerialZero + static_cast<double>(value.second) / kSecondsPerDay;
}

std::optional<DateTime> dateOfSerial(double serial) {
    if (!(serial > -700000 && serial < 3000000)) return {};
    const auto seconds = static_cast<qint64>(std::llround(serial * kSecondsPerDay));
    const qint64 day = seconds >= 0 ? seconds / kSecondsPerDay : (seconds - kSecondsPerDay + 1) / kSecondsPerDay;
    const auto julian = static_cast<qint32>(day + kJulianOfSerialZero);
    if (julian < julianDay(100, 1, 1) || julian > julianDay(9999, 12, 31)) return {};
    return DateTime{julian, static_cast<qint32>(seconds - day * kSecondsPerDay)};
}

}  // namespace koben
