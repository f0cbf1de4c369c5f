// Losses of piglets by cause, and by the age that the litter had.
#include <algorithm>

#include "core/PZ_Koben_Subs.h"
#include "figures/Faelle.h"

namespace koben {

namespace {

constexpr int mostCauses = 10, singleDays = 8;

struct Verlust {
    const Sau* sow;
    qint32 day;
    int piglets;
    QString cause;
};

std::vector<Verlust> lossesOf(const Grafikauftrag& order, const Sauenbuch& book) {
    Statement row = order.db.prepare(
        QStringLiteral("select Kennung, Datum, Anzahl_Ferkel, Grund from Verluste where Datum >= %1 and Datum <= %2")
            .arg(Sql_Datum(Tag_als_Text(order.period.von)), Sql_Datum(Tag_als_Text(order.period.bis))));
    std::vector<Verlust> losses;
    const auto sows = book.sauen();
    while (row.next()) {
        const qint64 id = row.integer(0);
        const auto at = std::lower_bound(sows.begin(), sows.end(), id, [](const Sau& s, qint64 i) { return s.id < i; });
        if (at == sows.end() || at->id != id) continue;
        const QString cause = Hochkomma_ersetzen(row.text(3));
        losses.push_back({&*at, row.day(1), static_cast<int>(row.integer(2)),
                          cause.isEmpty() ? QStringLiteral("ohne Grund") : cause});
    }
    return losses;
}

/// Causes with their piglets, most first; those beyond the last row are told by one name.
QStringList causesOf(const std::vector<Verlust>& losses) {
    QHash<QString, int> piglets;
    for (const Verlust& loss : losses) piglets[loss.cause] += loss.piglets;
    QStringList causes = piglets.keys();
    std::sort(causes.begin(), causes.end(), [&](const QString& a, const QString& b) {
        return piglets[a] != piglets[b] ? piglets[a] > piglets[b] : a < b;
    });
    if (causes.size() <= mostCauses) return causes;
    return causes.mid(0, mostCauses - 1) + QStringList{QStringLiteral("übrige Gründe")};
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
    const std::vector<Verlust> losses = lossesOf(order, *book);
    const QStringList causes = causesOf(losses);
    const int before = static_cast<int>(causes.size());
    Faelle cases(book, "Klasse", causes + ages(),
                 {{"Nach", Fallspalte::Art::Given, isText},
                  {"Ferkel", Fallspalte::Art::Summe, 0, "Verlust"},
                  {"Anteil %", Fallspalte::Art::Given, 1}});
    qint64 all = 0;
    for (const Verlust& loss : losses) {
        const auto cause = causes.indexOf(loss.cause);
        cases.count(static_cast<int>(cause < 0 ? before : cause + 1), Ferkel, *loss.sow, loss.day, loss.piglets);
        cases.count(before + ageOf(loss) + 1, Ferkel, *loss.sow, loss.day, loss.piglets);
        all += loss.piglets;
    }
    const int rows = before + static_cast<int>(ages().size());
    for (int row = 1; row <= rows; ++row) {
        cases.set(row, Teil, row <= before ? QStringLiteral("Grund") : QStringLiteral("Alter in Tagen"));
        cases.set(row, Anteil, share(cases.sum(row, Ferkel), all));
    }
    Grafikinhalt content = cases.finish();
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
