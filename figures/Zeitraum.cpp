#include "figures/Zeitraum.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

QDate dateOf(qint32 day) { return QDate::fromJulianDay(day); }
qint32 dayOf(QDate date) { return static_cast<qint32>(date.toJulianDay()); }

}  // namespace

Zeitraum um(Takt pace, qint32 day) {
    const QDate date = dateOf(day);
    if (pace == Takt::Woche) {
        const qint32 monday = day - date.dayOfWeek() + 1;
        return {monday, monday + 6};
    }
    const qint32 first = day - date.day() + 1;
    return {first, first + date.daysInMonth() - 1};
}

QString Taktname(Takt pace, qint32 day) {
    const QDate date = dateOf(day);
    if (pace == Takt::Monat) return date.toString(QStringLiteral("yyyy-MM"));
    int year = 0;
    const int week = date.weekNumber(&year);
    return QStringLiteral("%1-W%2").arg(year, 4, 10, QLatin1Char('0')).arg(week, 2, 10, QLatin1Char('0'));
}

std::vector<Zeitraum> aufteilen(Takt pace, Zeitraum period) {
    std::vector<Zeitraum> parts;
    for (qint32 day = period.von; day <= period.bis; day = parts.back().bis + 1)
        parts.push_back({day, std::min(um(pace, day).bis, period.bis)});
    return parts;
}

std::vector<Zeitraum> rollende_Jahre(qint32 heute, int count) {
    constexpr int monthsBefore = 11;
    const QDate tomorrow = dateOf(heute + 1);
    const QDate newest = tomorrow.addDays(-tomorrow.day());  // the last day of the latest month that has ended
    std::vector<Zeitraum> years;
    for (int back = count - 1; back >= 0; --back) {
        const QDate first(newest.year(), newest.month(), 1);
        const QDate month = first.addMonths(-back);
        years.push_back({dayOf(month.addMonths(-monthsBefore)), dayOf(month) + month.daysInMonth() - 1});
    }
    return years;
}

std::vector<Zeitraum> beendete_Wochen(qint32 heute, int count) {
    const qint32 sunday = um(Takt::Woche, heute + 1).von - 1;
    std::vector<Zeitraum> weeks;
    for (int back = count - 1; back >= 0; --back) weeks.push_back({sunday - 7 * back - 6, sunday - 7 * back});
    return weeks;
}

qint32 Tag_aus_Text(const QString& date) {
    const QDate day = Datum_aus_Text(date);
    return day.isValid() ? dayOf(day) : 0;
}

QString Tag_als_Text(qint32 day) { return day == 0 ? QString() : Datum_als_Anzeige(dateOf(day)); }

QString Zeitraumtext(Zeitraum period) {
    return QStringLiteral("%1 bis %2").arg(Tag_als_Text(period.von), Tag_als_Text(period.bis));
}

}  // namespace koben
