// Boars by what comes of their services, each with how sure that is.
#include <QHash>
#include <algorithm>
#include <cmath>

#include "core/PZ_Koben_Subs.h"
#include "figures/Faelle.h"
#include "figures/Interned.h"

namespace koben {

namespace {

constexpr int openDays = 125, fewest = 5;
constexpr size_t mostBoars = 25;
constexpr double sure = 1.96;  // of 95 percent

struct Gruppe {
    const Sau* sow;
    qint32 day;
    const Wurf* litter;  ///< that it led to; null for none
    int boar;
};

quint64 keyOf(qint64 animal, qint32 day) { return static_cast<quint64>(animal) << 32 | static_cast<quint32>(day); }

/// The boar named first on each day of a sow.
QHash<quint64, int> boarsOf(const Grafikauftrag& order, Interned& boars) {
    Statement row = order.db.prepare(QStringLiteral("select Kennung, Datum, Ebernr from Belegung") +
                                     periodCondition(order) + QStringLiteral(" order by ID"));
    QHash<quint64, int> named;
    while (row.next()) {
        if (!order.period.contains(row.day(1))) continue;
        const int boar = boars.of(row.text(2));
        const quint64 key = keyOf(row.integer(0), row.day(1));
        if (!boars.names()[boar].isEmpty() && !named.contains(key)) named.insert(key, boar);
    }
    return named;
}

std::vector<Gruppe> closedGroups(const Grafikauftrag& order, const Sauenbuch& book, Interned& boars) {
    const QHash<quint64, int> named = boarsOf(order, boars);
    std::vector<Gruppe> groups;
    for (const Sau& sow : book.sauen())
        for (const qint32 day : sow.gruppen) {
            if (!order.period.contains(day) || order.heute - day <= openDays) continue;
            const int boar = named.value(keyOf(sow.id, day), -1);
            if (boar < 0) continue;
            const auto litter = std::find_if(sow.wuerfe.begin(), sow.wuerfe.end(),
                                             [day](const Wurf& one) { return one.belegtAm == day; });
            groups.push_back({&sow, day, litter == sow.wuerfe.end() ? nullptr : &*litter, boar});
        }
    return groups;
}

/// The row of each boar, by name, and the rows' names; boars with few services, and those beyond the ones with most,
/// share the last.
std::pair<std::vector<int>, QStringList> boarRows(const std::vector<Gruppe>& groups, const QStringList& boars) {
    std::vector<int> counts(static_cast<size_t>(boars.size())), rows(counts.size());
    for (const Gruppe& group : groups) ++counts[static_cast<size_t>(group.boar)];
    std::vector<int> shown;
    for (int boar = 0; boar < boars.size(); ++boar)
        if (counts[static_cast<size_t>(boar)] >= fewest) shown.push_back(boar);
    std::sort(shown.begin(), shown.end(), [&](int a, int b) {
        const int more = counts[static_cast<size_t>(a)] - counts[static_cast<size_t>(b)];
        return more != 0 ? more > 0 : boars[a] < boars[b];
    });
    if (shown.size() > mostBoars) shown.resize(mostBoars);
    std::sort(shown.begin(), shown.end(), [&](int a, int b) { return boars[a] < boars[b]; });
    QStringList names;
    for (const int boar : shown) names += boars[boar], rows[static_cast<size_t>(boar)] = static_cast<int>(names.size());
    bool others = false;
    for (size_t boar = 0; boar < rows.size(); ++boar)
        if (rows[boar] == 0) rows[boar] = static_cast<int>(shown.size()) + 1, others = others || counts[boar] > 0;
    return {rows, others ? names + QStringList{QStringLiteral("übrige")} : names};
}

double tenths(double value) { return std::round(value * 10) / 10; }

/// The interval of a share by Wilson, in percent.
std::pair<double, double> intervalOf(double hits, double all) {
    const double square = sure * sure, middle = (hits + square / 2) / (all + square);
    const double half = sure * std::sqrt(hits * (all - hits) / all + square / 4) / (all + square);
    return {tenths(100 * (middle - half)), tenths(100 * (middle + half))};
}

}  // namespace

Grafikinhalt Grafik_Eber(const Grafikauftrag& order) {
    enum { Eber = 1, Rate, RateVon, RateBis, Belegungen, Lebend, LebendVon, LebendBis, Wuerfe };
    using Art = Fallspalte::Art;
    const auto book = bookFor(order);
    Interned known([](const QString& text) { return Hochkomma_ersetzen(text).toUpper(); });
    const std::vector<Gruppe> groups = closedGroups(order, *book, known);
    const auto [rowOf, boars] = boarRows(groups, known.names());
    Faelle cases(book, "Eber", boars,
                 {{"Abferkelrate %", Art::Prozent, 1, "Belegung"},
                  {"von %", Art::Given, 1},
                  {"bis %", Art::Given, 1},
                  {"Belegungen", Art::Summe, 0, "Belegung"},
                  {"Lebend geboren je Wurf", Art::Mittel, 1, "Wurf, lebend geboren"},
                  {"von", Art::Given, 1},
                  {"bis", Art::Given, 1},
                  {"Würfe", Art::Summe, 0, "Wurf"}});
    std::vector<double> squares(static_cast<size_t>(boars.size()));
    for (const auto& [sow, day, litter, boar] : groups) {
        const int row = rowOf[static_cast<size_t>(boar)];
        cases.count(row, Rate, *sow, day, litter ? 1 : 0);
        cases.count(row, Belegungen, *sow, day);
        if (!litter) continue;
        cases.count(row, Lebend, *sow, litter->tag, litter->lebend);
        cases.count(row, Wuerfe, *sow, litter->tag);
        squares[static_cast<size_t>(row) - 1] += static_cast<double>(litter->lebend) * litter->lebend;
    }
    for (int row = 1; row <= boars.size(); ++row) {
        const auto [low, high] =
            intervalOf(static_cast<double>(cases.sum(row, Rate)), static_cast<double>(cases.bookings(row, Rate)));
        cases.set(row, RateVon, low), cases.set(row, RateBis, high);
        const auto litters = static_cast<double>(cases.sum(row, Wuerfe));
        if (litters < 2) continue;
        const double mean = static_cast<double>(cases.sum(row, Lebend)) / litters;
        const double spread = (squares[static_cast<size_t>(row) - 1] - litters * mean * mean) / (litters - 1);
        const double half = sure * std::sqrt(std::max(spread, 0.0) / litters);
        cases.set(row, LebendVon, tenths(mean - half)), cases.set(row, LebendBis, tenths(mean + half));
    }
    Grafikinhalt content = cases.finish();
    for (Grid::Row& row : content.table.rows)
        row[0] = QStringLiteral("%1 (n=%2)").arg(row[0].toText()).arg(row[Belegungen - 1].toInt());
    content.chart.sideBySide = true;
    const auto panel = [](const char* unit, const Series& series) {
        return ChartPanel{.unit = QString::fromUtf8(unit), .series = {series}, .fromZero = false, .level = true};
    };
    content.chart.panels = {
        panel("Abferkelrate in Prozent", {Rate, Series::Kind::Points, Look::First, RateVon, RateBis}),
        panel("Lebend geborene Ferkel je Wurf", {Lebend, Series::Kind::Points, Look::First, LebendVon, LebendBis})};
    return content;
}

}  // namespace koben
