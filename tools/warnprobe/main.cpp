// How often the early warning sounds for nothing, and how soon it notices a shift, over generated herds.
#include <QCoreApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cstdio>

#include "figures/Fruehwarnung.h"
#include "tools/herdengenerator/Output.h"

namespace koben {
namespace {

constexpr int FillingYears = 3;

/// What came of one series over many years and herds.
struct Ergebnis {
    int years = 0, impossible = 0, alarms = 0;
    std::vector<int> weeksUntil;  ///< the shift was noticed
    int unnoticed = 0;

    double perYear() const { return years > 0 ? static_cast<double>(alarms) / years : 0; }
    /// So many weeks until this share of the shifts was noticed; 0 where it was not within the year.
    int weeks(double share) {
        std::sort(weeksUntil.begin(), weeksUntil.end());
        const auto at =
            static_cast<size_t>(share * static_cast<double>(weeksUntil.size() + static_cast<size_t>(unnoticed)));
        return at < weeksUntil.size() ? weeksUntil[at] : 0;
    }
};
using Ergebnisse = std::array<Ergebnis, WarnreihenAnzahl>;

void watch(Ergebnis& result, Warnreihe series, std::vector<Warnwoche> weeks) {
    const Warnvorgaben how;
    const Warnung calm = Wochen_beurteilen(series, weeks, how);
    if (!calm.possible()) {
        ++result.impossible;
        return;
    }
    ++result.years;
    result.alarms += static_cast<int>(calm.alarms().size());
    const double shift = warnart(series).moreIsWorse ? calm.abweichung : -calm.abweichung;
    for (auto week = weeks.begin() + how.wochen; week != weeks.end(); ++week)
        if (week->x) *week->x += shift;
    const Warnung shifted = Wochen_beurteilen(series, weeks, how);
    const auto first =
        std::find_if(shifted.wochen.begin(), shifted.wochen.end(), [](const Warnwoche& w) { return w.alarm; });
    if (first == shifted.wochen.end())
        ++result.unnoticed;
    else
        result.weeksUntil.push_back(static_cast<int>(first - shifted.wochen.begin()) + 1);
}

void tryHerd(Ergebnisse& results, const Vorgaben& wanted) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("koben2.mdb"));
    writeDatabase(makeHerde(wanted), path);
    Workspace workspace;
    const Database db = workspace.open(path);
    const auto today = static_cast<qint32>(wanted.ende.toJulianDay());
    const Sauenbuch book(db, today, 0);
    const Warnvorgaben how;
    const int weeks = (wanted.jahre - FillingYears) * how.wochen;
    for (int i = 0; i < WarnreihenAnzahl; ++i) {
        const auto series = static_cast<Warnreihe>(i);
        const auto all = Wochenwerte(book, series, beendete_Wochen(today, weeks));
        for (auto end = all.end(); end - all.begin() >= 2 * how.wochen; end -= how.wochen)
            watch(results[static_cast<size_t>(i)], series, {end - 2 * how.wochen, end});
    }
}

void print(int sows, Ergebnisse& results) {
    for (int i = 0; i < WarnreihenAnzahl; ++i) {
        Ergebnis& r = results[static_cast<size_t>(i)];
        const auto tried = static_cast<double>(r.weeksUntil.size()) + r.unnoticed;
        std::printf("| %d | %s | %d | %d | %.1f | %d | %d | %.0f %% |\n", sows, warnart(static_cast<Warnreihe>(i)).name,
                    r.years, r.impossible, r.perYear(), r.weeks(0.5), r.weeks(0.9),
                    tried > 0 ? 100 * static_cast<double>(r.weeksUntil.size()) / tried : 0);
    }
    std::fflush(stdout);
}

int run(const QStringList& arguments) {
    const auto value = [&](const char* name, const char* preset) {
        const auto at = arguments.indexOf(QString::fromUtf8(name));
        return at >= 0 && at + 1 < arguments.size() ? arguments[at + 1] : QString::fromUtf8(preset);
    };
    std::printf(
        "| Sauen | Reihe | Jahre | nicht möglich | falsche Alarme je Jahr | Wochen bis zum Alarm, Mitte | "
        "neun von zehn | im Jahr bemerkt |\n|---|---|---|---|---|---|---|---|\n");
    for (const QString& sows : value("--sauen", "50,200,1000").split(u',')) {
        Ergebnisse results;
        for (int herd = 0; herd < value("--herden", "10").toInt(); ++herd)
            tryHerd(results, {.sauen = sows.toInt(),
                              .jahre = std::max(value("--jahre", "12").toInt(), FillingYears + 2),
                              .seed = value("--seed", "1").toULongLong() + static_cast<quint64>(herd),
                              .ferkelAnteil = 0});
        print(sows.toInt(), results);
    }
    return 0;
}

}  // namespace
}  // namespace koben

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return koben::run(QCoreApplication::arguments());
}
