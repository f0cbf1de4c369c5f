#pragma once
// The early warning: four weekly series watched for a lasting shift to the worse by a cumulative sum (CUSUM). The year
// before gives the base, mean and standard deviation; each week adds by how many deviations it is worse than the mean.
#include <optional>

#include "figures/Sauenbuch.h"
#include "figures/Zeitraum.h"

namespace koben {

enum class Warnreihe : int { Umrauscher, Totgeborene, Verluste, Lebendgeborene };
inline constexpr int WarnreihenAnzahl = 4;

struct Warnart {
    Warnreihe nr;
    const char* id;  ///< "umrauscher"
    const char* name;
    const char* einheit;
    const char* satz;
    int faktor;  ///< of the numerator: 100 for percents
    bool moreIsWorse;
};
const Warnart& warnart(Warnreihe series);

/// With which the farm is watched; what stands here is the default.
struct Warnvorgaben {
    double abzug = 0.5;      ///< slack: so many deviations a week are no sign yet
    double schwelle = 4;     ///< alarm above it
    int wochen = 52;         ///< weeks watched, and as many before them are the base
    int mindestwochen = 30;  ///< weeks with events that the base must have
    bool operator==(const Warnvorgaben&) const = default;
};

struct Warnwoche {
    Zeitraum woche;
    qint64 numerator = 0, denominator = 0;  ///< without the factor
    std::optional<double> x = {}, z = {};   ///< nothing for a week that is passed over
    double c = 0;                           ///< the sum after this week, before it begins anew
    bool alarm = false;
};

/// What came of watching one series in one span of weeks.
struct Warnung {
    Warnreihe reihe = {};
    QString grund;                      ///< why no warning is possible; "" where it is
    int basiswochen = 0;                ///< weeks with events in the base
    double mittel = 0, abweichung = 0;  ///< of the base
    std::vector<Warnwoche> basis, wochen;
    bool possible() const { return grund.isEmpty(); }
    std::vector<qint32> alarms() const;  ///< Mondays of the alarm weeks
    double c() const { return wochen.empty() ? 0 : wochen.back().c; }
    /// An alarm in one of the latest weeks watched.
    bool alarmWithin(int weeks) const;
};

/// How a series would have been watched in earlier years: one span before the other, each on its own base.
struct Rueckblick {
    std::vector<Warnung> spans;  ///< newest first, without the present one; ends where no base is left
    int possible = 0, alarms = 0;
};

/// The weeks of a series with what was booked in each; `weeks` follow each other.
std::vector<Warnwoche> Wochenwerte(const Sauenbuch& book, Warnreihe series, const std::vector<Zeitraum>& weeks);
/// The watch itself: the first weeks are the base, as many weeks as `how` says, the others are watched.
Warnung Wochen_beurteilen(Warnreihe series, std::vector<Warnwoche> weeks, const Warnvorgaben& how);

/// The book must reach back to `Warnbeginn`.
Warnung Fruehwarnung(const Sauenbuch& book, Warnreihe series, const Warnvorgaben& how = {});
Rueckblick Fruehwarnung_zurueck(const Sauenbuch& book, Warnreihe series, const Warnvorgaben& how = {});
/// The first day that the present watch needs.
qint32 Warnbeginn(qint32 heute, const Warnvorgaben& how = {});

/// A booking behind the weeks of a series, and its part.
struct Warnbeitrag {
    const Sau* sau = nullptr;
    qint32 tag = 0;
    QString was, einzelheit;
    qint64 numerator = 0, denominator = 0;
};
/// By day and animal.
std::vector<Warnbeitrag> Warnbeitraege(const Sauenbuch& book, Warnreihe series, Zeitraum weeks);

}  // namespace koben
