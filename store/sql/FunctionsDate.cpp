#include "store/sql/FunctionsDate.h"

#include "store/Convert.h"
#include "store/IsoDate.h"

namespace koben::sql {
namespace {

constexpr qint64 kSecondsPerDay = 86400;

struct Parts {
    int year = 0, month = 0, day = 0;
    explicit Parts(DateTime d) { splitDay(d.julianDay, year, month, day); }
};

DateTime date(const Value& v) { return std::get<DateTime>(v.variant()); }

qint64 seconds(DateTime d) { return d.julianDay * kSecondsPerDay + d.second; }

[[noreturn]] void badInterval(const QString& interval) {
    throw ConversionError{DatabaseError::Kind::Type,
                          QStringLiteral("Das Intervall \"%1\" ist unbekannt").arg(interval)};
}

[[noreturn]] void outOfRange() {
    throw ConversionError{DatabaseError::Kind::Type,
                          QStringLiteral("Das Datum liegt nicht zwischen den Jahren 100 und 9999")};
}

QString intervalOf(const Value& v) { return v.toText().toLower(); }

/// Weeks begin with Sunday.
qint64 week(DateTime d) { return (d.julianDay + 1) / 7; }

qint64 floorDiv(qint64 a, qint64 b) { return a >= 0 ? a / b : -((-a + b - 1) / b); }

int dayOfYear(DateTime d) { return d.julianDay - julianDay(Parts(d).year, 1, 1) + 1; }

int weekday(DateTime d, int first) { return ((d.julianDay + 1) % 7 - (first - 1) + 7) % 7 + 1; }

DateTime dayOrThrow(qint64 year, qint64 month, qint64 day, qint32 second) {
    const auto julian = normalizedDay(year, month, day);
    if (!julian) outOfRange();
    return {*julian, second};
}

DateTime addMonths(DateTime d, qint64 months) {
    const Parts p(d);
    DateTime result = dayOrThrow(p.year, p.month + months, 1, d.second);
    const Parts first(result);
    const int last = dayOrThrow(first.year, first.month + 1, 0, 0).julianDay - result.julianDay + 1;
    result.julianDay += std::min(p.day, last) - 1;
    return result;
}

DateTime addSeconds(DateTime d, qint64 count) {
    const qint64 sum = seconds(d) + count;
    const qint64 day = floorDiv(sum, kSecondsPerDay);
    if (day < julianDay(100, 1, 1) || day > julianDay(9999, 12, 31)) outOfRange();
    return {static_cast<qint32>(day), static_cast<qint32>(sum - day * kSecondsPerDay)};
}

Value number(qint64 n) { return n == static_cast<qint32>(n) ? Value(static_cast<qint32>(n)) : Value(n); }

const char* const kDays[] = {"Sonntag", "Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag"};
const char* const kMonths[] = {"Januar", "Februar", "März",      "April",   "Mai",      "Juni",
                               "Juli",   "August",  "September", "Oktober", "November", "Dezember"};

QString padded(int number, qsizetype digits) { return QString::number(number).rightJustified(digits, u'0'); }

/// One run of equal letters of a date pattern.
QString datePiece(DateTime d, QChar letter, qsizetype count) {
    const Parts p(d);
    switch (letter.toLower().unicode()) {
        case u'd':
            if (count <= 2) return padded(p.day, count);
            return QString::fromUtf8(kDays[weekday(d, 1) - 1]).left(count == 3 ? 2 : -1);
        case u'm':
            if (count <= 2) return padded(p.month, count);
            return QString::fromUtf8(kMonths[p.month - 1]).left(count == 3 ? 3 : -1);
        case u'y':
            return count <= 2 ? padded(p.year % 100, 2) : padded(p.year, 4);
        case u'h':
            return padded(d.second / 3600, std::min<qsizetype>(count, 2));
        case u'n':
            return padded(d.second / 60 % 60, std::min<qsizetype>(count, 2));
        case u's':
            return padded(d.second % 60, std::min<qsizetype>(count, 2));
        default:
            return QString(count, letter);
    }
}

}  // namespace

Value dateDiff(std::span<const Value> a) {
    const QString interval = intervalOf(a[0]);
    const DateTime from = date(a[1]), to = date(a[2]);
    const Parts p(from), q(to);
    if (interval == u"d" || interval == u"y") return number(to.julianDay - from.julianDay);
    if (interval == u"yyyy") return number(q.year - p.year);
    if (interval == u"m") return number((q.year - p.year) * 12 + q.month - p.month);
    if (interval == u"q") return number((q.year - p.year) * 4 + (q.month - 1) / 3 - (p.month - 1) / 3);
    if (interval == u"ww") return number(week(to) - week(from));
    if (interval == u"w") return number((to.julianDay - from.julianDay) / 7);
    if (interval == u"h") return number(floorDiv(seconds(to), 3600) - floorDiv(seconds(from), 3600));
    if (interval == u"n") return number(floorDiv(seconds(to), 60) - floorDiv(seconds(from), 60));
    if (interval == u"s") return Value(seconds(to) - seconds(from));
    badInterval(a[0].toText());
}

Value dateAdd(std::span<const Value> a) {
    const QString interval = intervalOf(a[0]);
    const qint64 count = a[1].toInt();
    if (count < -4000000000 || count > 4000000000) outOfRange();
    const DateTime d = date(a[2]);
    if (interval == u"d" || interval == u"y" || interval == u"w") return addSeconds(d, count * kSecondsPerDay);
    if (interval == u"ww") return addSeconds(d, count * 7 * kSecondsPerDay);
    if (interval == u"m") return addMonths(d, count);
    if (interval == u"q") return addMonths(d, count * 3);
    if (interval == u"yyyy") return addMonths(d, count * 12);
    if (interval == u"h") return addSeconds(d, count * 3600);
    if (interval == u"n") return addSeconds(d, count * 60);
    if (interval == u"s") return addSeconds(d, count);
    badInterval(a[0].toText());
}

Value datePart(std::span<const Value> a) {
    const QString interval = intervalOf(a[0]);
    const DateTime d = date(a[1]);
    const Parts p(d);
    if (interval == u"yyyy") return p.year;
    if (interval == u"q") return (p.month + 2) / 3;
    if (interval == u"m") return p.month;
    if (interval == u"y") return dayOfYear(d);
    if (interval == u"d") return p.day;
    if (interval == u"w") return weekday(d, 1);
    if (interval == u"ww") return number(week(d) - week({julianDay(p.year, 1, 1), 0}) + 1);
    if (interval == u"h") return d.second / 3600;
    if (interval == u"n") return d.second / 60 % 60;
    if (interval == u"s") return d.second % 60;
    badInterval(a[0].toText());
}

Value dateSerial(std::span<const Value> a) {
    const qint64 year = a[0].toInt();
    return dayOrThrow(year >= 0 && year < 100 ? fullYear(static_cast<int>(year)) : year, a[1].toInt(), a[2].toInt(), 0);
}

Value weekdayOf(std::span<const Value> a) {
    const qint64 first = a.size() > 1 ? a[1].toInt() : 1;
    return weekday(date(a[0]), static_cast<int>(std::clamp<qint64>(first, 1, 7)));
}

Value yearOf(std::span<const Value> a) { return Parts(date(a[0])).year; }
Value monthOf(std::span<const Value> a) { return Parts(date(a[0])).month; }
Value dayOf(std::span<const Value> a) { return Parts(date(a[0])).day; }
Value hourOf(std::span<const Value> a) { return date(a[0]).second / 3600; }
Value minuteOf(std::span<const Value> a) { return date(a[0]).second / 60 % 60; }
Value secondOf(std::span<const Value> a) { return date(a[0]).second % 60; }

QString formatDate(DateTime d, const QString& pattern) {
    QString result;
    for (qsizetype i = 0; i < pattern.size();) {
        qsizetype end = i + 1;
        while (end < pattern.size() && pattern[end] == pattern[i]) ++end;
        result += datePiece(d, pattern[i], end - i);
        i = end;
    }
    return result;
}

}  // namespace koben::sql
