// Dates as texts: the date test, completing of half-typed dates, sort keys and literals. Parsed and written by hand,
// since the recomputing loops do it by the million.
#include <algorithm>
#include <optional>

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

QStringView withoutBlanks(QStringView text) {
    while (!text.isEmpty() && text.front() == u' ') text = text.mid(1);
    while (!text.isEmpty() && text.back() == u' ') text.chop(1);
    return text;
}

/// Takes `least` to `most` digits off the front of `rest`.
std::optional<int> takeNumber(QStringView& rest, int least, int most) {
    int value = 0;
    int count = 0;
    while (count < most && count < rest.size() && isDigit(rest[count]))
        value = value * 10 + (rest[count++].unicode() - u'0');
    if (count < least) return std::nullopt;
    rest = rest.mid(count);
    return value;
}

bool take(QStringView& rest, QChar mark) {
    if (rest.isEmpty() || rest.front() != mark) return false;
    rest = rest.mid(1);
    return true;
}

/// True for "" and for a time of day " h:mm" or " h:mm:ss".
bool isTimeOfDay(QStringView rest) {
    if (rest.isEmpty()) return true;
    if (!take(rest, u' ')) return false;
    const auto hour = takeNumber(rest, 1, 2);
    if (!hour || *hour > 23 || !take(rest, u':')) return false;
    const auto minute = takeNumber(rest, 2, 2);
    if (!minute || *minute > 59) return false;
    if (rest.isEmpty()) return true;
    if (!take(rest, u':')) return false;
    const auto second = takeNumber(rest, 2, 2);
    return second && *second <= 59 && rest.isEmpty();
}

/// Year of two or four digits; two digits stand for 1930 to 2029, and four begin at 0100.
std::optional<int> takeYear(QStringView& rest) {
    const qsizetype before = rest.size();
    const auto year = takeNumber(rest, 2, 4);
    if (!year) return std::nullopt;
    switch (before - rest.size()) {
        case 2:
            return *year < 30 ? 2000 + *year : 1900 + *year;
        case 4:
            return *year < 100 ? std::nullopt : year;
        default:
            return std::nullopt;
    }
}

QDate parse(QStringView text) {
    QStringView rest = withoutBlanks(text);
    const auto day = takeNumber(rest, 1, 2);
    if (!day || !take(rest, u'.')) return {};
    const auto month = takeNumber(rest, 1, 2);
    if (!month || !take(rest, u'.')) return {};
    const auto year = takeYear(rest);
    if (!year || !isTimeOfDay(rest)) return {};
    return QDate(*year, *month, *day);
}

void put(QChar* to, int value, int digits) {
    for (int i = digits - 1; i >= 0; --i, value /= 10) to[i] = QChar(u'0' + value % 10);
}

/// `text` as dd.mm.yyyy where it is a date, else as it is.
QString reshaped(const QString& text) {
    const QDate date = parse(text);
    return date.isValid() ? Datum_als_Anzeige(date) : text;
}

QString twoDigits(QStringView digits) { return digits.toString().rightJustified(2, u'0'); }

/// "3", "45", "0302", "030226", "03022026".
QString fromDigits(const QString& s, const QString& heute) {
    const QString monthAndYear = heute.mid(2);  // .mm.yyyy
    const QString year = heute.mid(5);          // .yyyy
    switch (s.size()) {
        case 1:
            return u'0' + s + monthAndYear;
        case 2:
            return Wert(s) > 31 ? u'0' + s.left(1) + QStringLiteral(".0") + s.mid(1) + year : s + monthAndYear;
        case 4:
            return s.left(2) + u'.' + s.mid(2) + year;
        case 6:
            return s.left(2) + u'.' + s.mid(2, 2) + u'.' + heute.mid(6, 2) + s.mid(4);
        case 8:
            return s.left(2) + u'.' + s.mid(2, 2) + u'.' + s.mid(4);
        default:
            return s;
    }
}

/// "3.2": of the month only two characters count.
QString fromOnePoint(const QString& s, const QString& heute) {
    const qsizetype dot = s.indexOf(u'.');
    const QStringView view(s);
    return twoDigits(view.left(dot)) + u'.' + twoDigits(view.mid(dot + 1, 2)) + heute.mid(5);
}

/// "3.2.26".
QString fromManyPoints(QString s, const QString& heute) {
    if (s.mid(1, 1) == u".") s.prepend(u'0');
    if (s.mid(4, 1) == u".") s.insert(3, u'0');
    if (s.size() == 8) return s.left(6) + heute.mid(6, 2) + s.right(2);
    return s;
}

}  // namespace

bool Ist_Datum(const QString& text) { return parse(text).isValid(); }

QDate Datum_aus_Text(const QString& text) { return parse(text); }

QString Datum_als_Anzeige(QDate date) {
    if (!date.isValid()) return {};
    int year = 0, month = 0, day = 0;
    date.getDate(&year, &month, &day);
    QString text(10, u'.');
    put(text.data(), day, 2);
    put(text.data() + 3, month, 2);
    put(text.data() + 6, year, 4);
    return text;
}

QString Datum_ergaenzen(const QString& text, const QString& heute) {
    QString s = withoutBlanks(text).toString();
    if (s.isEmpty()) return {};
    if (const QDate date = parse(s); date.isValid()) return Datum_als_Anzeige(date);
    if (s.endsWith(u'.')) s.chop(1);
    if (s.size() != 10) {
        const qsizetype dots = s.count(u'.');
        s = dots == 0 ? fromDigits(s, heute) : dots == 1 ? fromOnePoint(s, heute) : fromManyPoints(s, heute);
    }
    return Datum_als_Anzeige(parse(s));
}

QString Jahr_ergaenzen(const QString& text, const QString& heute) {
    const QString s = withoutBlanks(text).toString();
    switch (s.size()) {
        case 0:
            return heute.mid(6, 4);
        case 1:
            return QStringLiteral("200") + s;
        case 2:
            return (s >= QStringLiteral("50") ? QStringLiteral("19") : QStringLiteral("20")) + s;
        case 3:
            return {};
        default:
            return s;
    }
}

QString Datum_als_Text(QString& date) {
    if (date.size() == 8) date = reshaped(date);
    const QStringView view(date);
    QString key;
    key.reserve(8);
    return key.append(view.mid(6, 4)).append(view.mid(3, 2)).append(view.left(2));
}

QString Datum_als_Text(QString&& date) { return Datum_als_Text(date); }

QString Sql_Datum(QString& date) {
    date = reshaped(date);
    const QStringView view(date);
    QString literal;
    literal.reserve(12);
    literal.append(u'#').append(view.mid(3, 2)).append(u'/').append(view.left(2)).append(u'/');
    return literal.append(view.mid(6, 4)).append(u'#');
}

QString Sql_Datum(QString&& date) { return Sql_Datum(date); }

QString Datum_kurz(const QString& date) {
    const QString full = Datum_als_Anzeige(parse(date));
    return full.isEmpty() ? QString(8, u' ') : full.left(6) + full.right(2);
}

}  // namespace koben
