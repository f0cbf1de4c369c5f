// Losses of piglets by cause, and by the age that the litter had.
#include <QHash>
#include <algorithm>
#include <numeric>

#include "core/PZ_Koben_Subs.h"
#include "figures/Faelle.h"
#include "figures/Interned.h"

namespace koben {

namespace {

constexpr size_t mostCauses = 10;
constexpr int singleDays = 8;

struct Verlust {
    const Sau* sow;
    qint32 day;
    int piglets, cause;
};

std::vector<Verlust> lossesOf(const Grafikauftrag& order, const Sauenbuch& book, Interned& causes) {
    Statement row = order.db.prepare(QStringLiteral("select Kennung, Datum, Anzahl_Ferkel, Grund from Verluste") +
                                     periodCondition(order));
    QHash<qint64, const Sau*> sows;
    sows.reserve(static_cast<qsizetype>(book.sauen().size()));
    for (const Sau& sow : book.sauen()) sows.insert(sow.id, &sow);
    std::vector<Verlust> losses;
    while (row.next()) {
        const qint32 day = row.day(1);
        if (!order.period.contains(day)) continue;
        const Sau* sow = sows.value(row.integer(0));
        if (sow) losses.push_back({sow, day, static_cast<int>(row.integer(2)), causes.of(row.text(3))});
    }
    return losses;
}

/// The row of each cause, most piglets first, and the rows' names; causes beyond the last row share it.
std::pair<std::vector<int>, QStringList> rowsOf(const std::vector<Verlust>& losses, const QStringList& causes) {
    std::vector<int> piglets(static_cast<size_t>(causes.size())), order(piglets.size()), rows(piglets.size());
    for (const Verlust& loss : losses) piglets[static_cast<size_t>(loss.cause)] += loss.piglets;
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) {
        const int more = piglets[static_cast<size_t>(a)] - piglets[static_cast<size_t>(b)];
        return more != 0 ? more > 0 : causes[a] < causes[b];
    });
    QStringList names;
    const bool others = order.size() > mostCauses;
    for (size_t place = 0; place < order.size(); ++place) {
        const bool own = !others || place + 1 < mostCauses;
        if (own || static_cast<size_t>(names.size()) < mostCauses)
            names += own ? causes[order[place]] : QStringLiteral("übrige Gründe");
        rows[static_cast<size_t>(order[place])] = static_cast<int>(names.size());
    }
    return {rows, names};
}

QStringList ages() {
    QStringList names;
    for (int day = 0; day < singleDays; ++day) names += QString::number(day);
    return names + QStringList{QStringLiteral("W2"), QStringLiteral("W3"), QStringLiteral("W4"), QStringLiteral("W5+"),
                               QStringLiteral("?")};
}

/// Place of an age among them; a sow without a litter before has none.
int ageOf(const Verlust& loss) {
    const Wurf* born = nullptr;
    for (const Wurf& litter : loss.sow->wuerfe)
        if (litter.tag <= loss.day) born = &litter;
    if (!born) return singleDays + 4;
    const int days = loss.day - born->tag;
    return days < singleDays ? days : singleDays + std::min((days - singleDays) / 7, 3);
}

}  // namespace

Grafikinhalt Grafik_Verluste(const Grafikauftrag& order) {
    enum { Klasse = 1, Teil, Ferkel, Anteil };
    const auto book = bookFor(order);
    Interned known([](const QString& text) {
        const QString cause = Hochkomma_ersetzen(text);
        return cause.isEmpty() ? QStringLiteral("ohne Grund") : cause;
    });
    const auto losses = std::make_shared<const std::vector<Verlust>>(lossesOf(order, *book, known));
    const auto [rowsOfCauses, causes] = rowsOf(*losses, known.names());
    const int before = static_cast<int>(causes.size());
    const auto byCause = [rows = rowsOfCauses](const Verlust& loss) { return rows[static_cast<size_t>(loss.cause)]; };
    const auto byAge = [before](const Verlust& loss) { return before + ageOf(loss) + 1; };
    const Fallspalte piglets{"Ferkel", Fallspalte::Art::Summe, 0, "Verlust"};
    Faelle cases(book, "Klasse", causes + ages(),
                 {{"Nach", Fallspalte::Art::Given, isText}, piglets, {"Anteil %", Fallspalte::Art::Given, 1}});
    qint64 all = 0;
    for (const Verlust& loss : *losses) {
        cases.add(byCause(loss), Ferkel, loss.piglets);
        cases.add(byAge(loss), Ferkel, loss.piglets);
        all += loss.piglets;
    }
    const int rows = before + static_cast<int>(ages().size());
    for (int row = 1; row <= rows; ++row) {
        cases.set(row, Teil, row <= before ? QStringLiteral("Grund") : QStringLiteral("Alter in Tagen"));
        cases.set(row, Anteil, share(cases.sum(row, Ferkel), all));
    }
    Grafikinhalt content = cases.finish();
    content.behind = [=, keep = book, table = content.table](int row, int column) {
        if (row < 1 || row > rows || column != Ferkel) return std::optional<Explanation>();
        std::vector<Faelle::Fall> own;
        for (const Verlust& loss : *losses)
            if (row == (row <= before ? byCause(loss) : byAge(loss))) own.push_back({loss.day, loss.sow, loss.piglets});
        return std::optional(Faelle::explain(std::move(own), piglets, table.cell(row, column)));
    };
    content.chart.sideBySide = true;
    content.chart.panels = {{.unit = QStringLiteral("Ferkel nach Grund"),
                             .lastRow = std::max(before, 1),
                             .series = {{Ferkel}},
                             .level = true},
                            {.unit = QStringLiteral("Ferkel nach Alter"),
                             .classTitle = QStringLiteral("Tage seit dem Wurf (W2: zweite Woche, ?: ohne Wurf)"),
                             .firstRow = before + 1,
                             .series = {{Ferkel}}}};
    return content;
}

}  // namespace koben
