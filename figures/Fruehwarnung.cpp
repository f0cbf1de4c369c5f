#include "figures/Fruehwarnung.h"

#include <algorithm>
#include <cmath>

namespace koben {
namespace {

constexpr int ReturnDays = 24;  // a return by then counts; a week is complete once it lies further back

constexpr Warnart Kinds[] = {
    {Warnreihe::Umrauscher, "umrauscher", "Umrauscher", "% der Belegungen",
     "Anteil der Belegungen der Woche, auf die ohne Wurf dazwischen binnen 24 Tagen eine weitere der Sau folgt. "
     "Wochen, "
     "die noch keine 25 Tage zurückliegen, werden übergangen.",
     100, true},
    {Warnreihe::Totgeborene, "totgeborene", "Tot geborene Ferkel", "% der geborenen",
     "Anteil der tot geborenen an allen geborenen Ferkeln der Würfe der Woche.", 100, true},
    {Warnreihe::Verluste, "verluste", "Verluste", "Ferkel je Wurf der Woche",
     "Als Verlust gebuchte Ferkel der Woche, geteilt durch die Würfe der Woche.", 1, true},
    {Warnreihe::Lebendgeborene, "lebendgeborene", "Lebend geborene Ferkel", "Ferkel je Wurf",
     "Lebend geborene Ferkel der Würfe der Woche, geteilt durch deren Zahl.", 1, false},
};
static_assert(std::size(Kinds) == WarnreihenAnzahl);

/// Whether the service is followed by another one in time, with no litter between.
qint32 returnOf(const Sau& sow, size_t group) {
    if (group + 1 >= sow.gruppen.size()) return 0;
    const qint32 day = sow.gruppen[group], next = sow.gruppen[group + 1];
    if (next - day > ReturnDays) return 0;
    const bool litter =
        std::any_of(sow.wuerfe.begin(), sow.wuerfe.end(), [&](const Wurf& w) { return day < w.tag && w.tag < next; });
    return litter ? 0 : next;
}

/// Each booking of the span that counts in the series: take(day, numerator, denominator, return).
template <class Take>
void walk(const Sau& sow, Warnreihe series, Zeitraum span, qint32 heute, const Take& take) {
    if (series == Warnreihe::Umrauscher) {
        for (size_t i = 0; i < sow.gruppen.size(); ++i) {
            const qint32 day = sow.gruppen[i];
            if (!span.contains(day) || heute - um(Takt::Woche, day).bis <= ReturnDays) continue;
            const qint32 next = returnOf(sow, i);
            take(day, next != 0 ? 1 : 0, 1, next, nullptr);
        }
        return;
    }
    if (series == Warnreihe::Verluste)
        for (const Ferkelbuchung& loss : sow.verluste)
            if (span.contains(loss.tag)) take(loss.tag, loss.anzahl, 0, 0, nullptr);
    for (const Wurf& w : sow.wuerfe) {
        if (!span.contains(w.tag)) continue;
        if (series == Warnreihe::Totgeborene)
            take(w.tag, w.tot, w.gesamt, 0, &w);
        else
            take(w.tag, series == Warnreihe::Lebendgeborene ? w.lebend : 0, 1, 0, &w);
    }
}

/// Mean and deviation of the base; why there are none.
void setBase(Warnung& watch, const Warnvorgaben& how) {
    std::vector<double> xs;
    for (const Warnwoche& week : watch.basis)
        if (week.x) xs.push_back(*week.x);
    watch.basiswochen = static_cast<int>(xs.size());
    const auto n = static_cast<double>(xs.size());
    for (const double x : xs) watch.mittel += x / n;
    double squares = 0;
    for (const double x : xs) squares += (x - watch.mittel) * (x - watch.mittel);
    const auto [least, most] = std::minmax_element(xs.begin(), xs.end());
    if (xs.size() > 1 && *least != *most) watch.abweichung = std::sqrt(squares / (n - 1));
    if (watch.basiswochen < how.mindestwochen)
        watch.grund = QStringLiteral("nur %1 von mindestens %2 Wochen der Basis mit Buchungen")
                          .arg(watch.basiswochen)
                          .arg(how.mindestwochen);
    else if (watch.abweichung == 0)
        watch.grund = QStringLiteral("alle Wochen der Basis gleich, keine Streuung");
}

void watchWeeks(Warnung& watch, const Warnvorgaben& how) {
    const double sign = warnart(watch.reihe).moreIsWorse ? 1 : -1;
    double c = 0;
    for (Warnwoche& week : watch.wochen) {
        if (watch.possible() && week.x) {
            week.z = sign * (*week.x - watch.mittel) / watch.abweichung;
            c = std::max(0.0, c + *week.z - how.abzug);
        }
        week.c = c;
        week.alarm = watch.possible() && week.x && c > how.schwelle;
        if (week.alarm) c = 0;
    }
}

/// The watch over as many weeks as the base has, those before the position `behind`.
Warnung watched(Warnreihe series, const Warnvorgaben& how, const std::vector<Warnwoche>& weeks, size_t behind) {
    const auto end = weeks.begin() + static_cast<std::ptrdiff_t>(behind);
    return Wochen_beurteilen(series, {end - 2 * static_cast<std::ptrdiff_t>(how.wochen), end}, how);
}

/// The first day of a booking that the series looks at; `heute` where there is none.
qint32 firstDay(const Sauenbuch& book) {
    qint32 day = book.heute();
    for (const Sau& sow : book.sauen()) {
        if (!sow.gruppen.empty()) day = std::min(day, sow.gruppen.front());
        if (!sow.wuerfe.empty()) day = std::min(day, sow.wuerfe.front().tag);
    }
    return std::max(day, book.from());
}

QString detail(Warnreihe series, int numerator, qint32 next, const Wurf* litter) {
    if (litter)
        return QStringLiteral("gesamt %1, lebend %2, tot %3").arg(litter->gesamt).arg(litter->lebend).arg(litter->tot);
    if (series == Warnreihe::Verluste) return QStringLiteral("%1 Ferkel").arg(numerator);
    return next != 0 ? QStringLiteral("wieder belegt am %1").arg(Tag_als_Text(next))
                     : QStringLiteral("nicht umgerauscht");
}

}  // namespace

const Warnart& warnart(Warnreihe series) { return Kinds[static_cast<size_t>(series)]; }

std::vector<Warnwoche> Wochenwerte(const Sauenbuch& book, Warnreihe series, const std::vector<Zeitraum>& weeks) {
    std::vector<Warnwoche> result;
    for (const Zeitraum& week : weeks) result.push_back({.woche = week});
    if (weeks.empty()) return result;
    const Zeitraum span{weeks.front().von, weeks.back().bis};
    for (const Sau& sow : book.sauen())
        walk(sow, series, span, book.heute(), [&](qint32 day, int numerator, int denominator, qint32, const Wurf*) {
            Warnwoche& week = result[static_cast<size_t>((day - span.von) / 7)];
            week.numerator += numerator;
            week.denominator += denominator;
        });
    for (Warnwoche& week : result)
        if (week.denominator != 0)
            week.x =
                static_cast<double>(week.numerator * warnart(series).faktor) / static_cast<double>(week.denominator);
    return result;
}

Warnung Wochen_beurteilen(Warnreihe series, std::vector<Warnwoche> weeks, const Warnvorgaben& how) {
    const auto first = weeks.begin() + how.wochen;
    Warnung watch;
    watch.reihe = series;
    watch.basis.assign(weeks.begin(), first);
    watch.wochen.assign(first, weeks.end());
    setBase(watch, how);
    watchWeeks(watch, how);
    return watch;
}

std::vector<qint32> Warnung::alarms() const {
    std::vector<qint32> mondays;
    for (const Warnwoche& week : wochen)
        if (week.alarm) mondays.push_back(week.woche.von);
    return mondays;
}

bool Warnung::alarmWithin(int weeks) const {
    const auto first = std::max<std::ptrdiff_t>(0, std::ssize(wochen) - weeks);
    return std::any_of(wochen.begin() + first, wochen.end(), [](const Warnwoche& week) { return week.alarm; });
}

qint32 Warnbeginn(qint32 heute, const Warnvorgaben& how) { return beendete_Wochen(heute, 2 * how.wochen).front().von; }

Warnung Fruehwarnung(const Sauenbuch& book, Warnreihe series, const Warnvorgaben& how) {
    const auto weeks = Wochenwerte(book, series, beendete_Wochen(book.heute(), 2 * how.wochen));
    return watched(series, how, weeks, weeks.size());
}

Rueckblick Fruehwarnung_zurueck(const Sauenbuch& book, Warnreihe series, const Warnvorgaben& how) {
    const int weeksBack = (book.heute() - firstDay(book)) / 7 + 1;
    const auto weeks = Wochenwerte(book, series, beendete_Wochen(book.heute(), weeksBack));
    Rueckblick past;
    const auto span = static_cast<size_t>(how.wochen);
    for (size_t behind = weeks.size(); behind >= 3 * span; behind -= span) {
        past.spans.push_back(watched(series, how, weeks, behind - span));
        past.possible += past.spans.back().possible() ? 1 : 0;
        past.alarms += static_cast<int>(past.spans.back().alarms().size());
    }
    return past;
}

std::vector<Warnbeitrag> Warnbeitraege(const Sauenbuch& book, Warnreihe series, Zeitraum weeks) {
    std::vector<Warnbeitrag> parts;
    for (const Sau& sow : book.sauen())
        walk(sow, series, weeks, book.heute(),
             [&](qint32 day, int numerator, int denominator, qint32 next, const Wurf* litter) {
                 const char* what = series == Warnreihe::Umrauscher ? "Belegung" : litter ? "Ferkelung" : "Verluste";
                 parts.push_back({&sow, day, QString::fromUtf8(what), detail(series, numerator, next, litter),
                                  numerator, denominator});
             });
    std::stable_sort(parts.begin(), parts.end(),
                     [](const Warnbeitrag& a, const Warnbeitrag& b) { return a.tag < b.tag; });
    return parts;
}

}  // namespace koben
