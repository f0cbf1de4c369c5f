// Boars by what comes of their services, each with how sure that is.
#include <QHash>
#include <algorithm>
#include <cmath>

#include "core/PZ_Koben_Subs.h"
#include "figures/Faelle.h"

namespace koben {

namespace {

constexpr int openDays = 125, fewest = 5, mostBoars = 25;
constexpr double sure = 1.96;  // of 95 percent

struct Gruppe {
    const Sau* sow;
    qint32 day;
    const Wurf* litter;  ///< that it led to; null for none
    QString boar;
};

quint64 keyOf(qint64 animal, qint32 day) { return static_cast<quint64>(animal) << 32 | static_cast<quint32>(day); }

/// The boar named first on each day of a sow.
QHash<quint64, QString> boarsOf(const Grafikauftrag& order) {
    Statement row = order.db.prepare(
        QStringLiteral("select Kennung, Datum, Ebernr from Belegung where Datum >= %1 and Datum <= %2 and Ebernr <> '' "
                       "order by ID")
            .arg(Sql_Datum(Tag_als_Text(order.period.von)), Sql_Datum(Tag_als_Text(order.period.bis))));
    QHash<quint64, QString> boars;
    while (row.next()) {
        QString& boar = boars[keyOf(row.integer(0), row.day(1))];
        if (boar.isEmpty()) boar = Hochkomma_ersetzen(row.text(2));
    }
    return boars;
}

std::vector<Gruppe> closedGroups(const Grafikauftrag& order, const Sauenbuch& book) {
    const QHash<quint64, QString> boars = boarsOf(order);
    std::vector<Gruppe> groups;
    for (const Sau& sow : book.sauen())
        for (const qint32 day : sow.gruppen) {
            if (!order.period.contains(day) || order.heute - day <= openDays) continue;
            const QString boar = boars.value(keyOf(sow.id, day));
            if (boar.isEmpty()) continue;
            const auto litter = std::find_if(sow.wuerfe.begin(), sow.wuerfe.end(),
                                             [day](const Wurf& one) { return one.belegtAm == day; });
            groups.push_back({&sow, day, litter == sow.wuerfe.end() ? nullptr : &*litter, boar});
        }
    return groups;
}

/// By name, of those with enough services the ones with most; the others have one row behind them.
QStringList rowsOf(const std::vector<Gruppe>& groups) {
    QHash<QString, int> counts;
    for (const Gruppe& group : groups) ++counts[group.boar.toUpper()];
    QStringList boars;
    for (auto boar = counts.cbegin(); boar != counts.cend(); ++boar)
        if (boar.value() >= fewest) boars += boar.key();
    const auto more = [&](const QString& a, const QString& b) {
        return counts[a] != counts[b] ? counts[a] > counts[b] : a < b;
    };
    std::sort(boars.begin(), boars.end(), more);
    const bool others = boars.size() < counts.size() || boars.size() > mostBoars;
    boars = boars.mid(0, mostBoars);
    std::sort(boars.begin(), boars.end());
    return others ? boars + QStringList{QStringLiteral("übrige")} : boars;
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
    const std::vector<Gruppe> groups = closedGroups(order, *book);
    const QStringList boars = rowsOf(groups);
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
        const auto place = boars.indexOf(boar.toUpper());
        const int row = static_cast<int>(place < 0 ? boars.size() : place + 1);
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
