// Who belongs to a group: the ends of the ages, and random animals against a walk that tests one by one.
#include "stock/Bestand.h"

#include <random>

#include "core/PZ_Koben_Subs.h"
#include "stock/Bestandsregister.h"
#include "tests/support/Hof.h"

namespace koben {
namespace {

TEST(Alter, endsOfMonthsAreKept) {
    const struct {
        const char *from, *unit;
        int count;
        const char* to;
    } cases[] = {{"31.01.2026", "Monate", 1, "28.02.2026"}, {"31.01.2024", "Monate", 1, "29.02.2024"},
                 {"29.02.2024", "Jahre", 1, "28.02.2025"},  {"28.02.2026", "Monate", 1, "28.03.2026"},
                 {"31.12.2025", "Wochen", 2, "14.01.2026"}, {"31.12.2025", "Tage", 60, "01.03.2026"}};
    for (const auto& c : cases)
        EXPECT_EQ(Datum_als_Anzeige(Alter_addieren(Datum_aus_Text(c.from), QString::fromUtf8(c.unit), c.count)),
                  QString::fromUtf8(c.to))
            << c.from;
}

/// One animal born on each of 900 days; a group takes those whose ages the day lies within, both ends counted.
TEST(Bestandsgruppe, takesTheAgesAtBothEnds) {
    Hof hof;
    const QDate first(2023, 11, 1);
    for (int i = 0; i < 900; ++i)
        hof.sql("insert into Sauen (Art, Nummer, Geburtsdatum) values ('Sau', '%1', %2)", QString::number(i),
                Sql_Datum(Datum_als_Anzeige(first.addDays(i))));
    for (const char* day : {"28.02.2026", "31.03.2026", "29.02.2024", "30.04.2026", "01.03.2025"})
        for (const char* unit : {"Tage", "Wochen", "Monate", "Jahre"})
            for (const auto& [from, to] : {std::pair(0, 0), {1, 1}, {0, 1}, {1, 13}, {6, 25}, {5, 3}}) {
                const QDate on = Datum_aus_Text(day);
                const Bestandsgruppe group{.name = "G",
                                           .kind = "Alle",
                                           .unit = unit,
                                           .sex = "E",
                                           .served = "N",
                                           .youngest = from,
                                           .oldest = to,
                                           .leastFarrowings = 0,
                                           .value = {}};
                qint64 expected = 0;
                for (int i = 0; i < 900; ++i) {
                    const QDate born = first.addDays(i);
                    expected += Alter_addieren(born, unit, from) <= on && on <= Alter_addieren(born, unit, to);
                }
                EXPECT_EQ(Tiere_zaehlen(hof.db, {group.condition(on, false)}).front(), expected)
                    << day << ' ' << unit << ' ' << from << '-' << to;
            }
}

struct Animal {
    QString kind;
    QDate born, arrived, left, served;
    std::optional<int> farrowings;
};

bool belongs(const Animal& a, const Bestandsgruppe& g, QDate day, bool inHerd) {
    if (!a.born.isValid() || (g.kind != "Alle" && g.kind != a.kind)) return false;
    if (!(g.sex == "E" || (g.sex == "W" && a.kind == "Sau") || (g.sex == "M" && a.kind == "Eber"))) return false;
    if (g.youngest && g.oldest &&
        (Alter_addieren(a.born, g.unit, *g.youngest) > day || Alter_addieren(a.born, g.unit, *g.oldest) < day))
        return false;
    const QDate from = a.arrived.isValid() ? a.arrived : QDate(1901, 1, 1);
    const QDate to = a.left.isValid() ? a.left : QDate(2099, 12, 12);
    if (inHerd && (from > day || to < day)) return false;
    return a.farrowings.value_or(0) >= g.leastFarrowings &&
           (g.served == "N" || (g.served == "J" && a.served.isValid()));
}

TEST(Bestandsgruppe, countsAsAWalkOverTheAnimalsDoes) {
    std::mt19937 random(11);
    const auto number = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
    const auto day = [&] { return number(4) == 0 ? QDate() : QDate(2023, 1, 1).addDays(number(1200)); };
    const QStringList kinds{"Sau", "Eber", "Mast", "Ferkel"}, units{"Tage", "Wochen", "Monate", "Jahre"};
    Hof hof;
    std::vector<Animal> herd;
    for (int i = 0; i < 300; ++i) {
        herd.push_back(
            {kinds[number(3)], day(), day(), day(), day(), number(3) == 0 ? std::nullopt : std::optional(number(4))});
        const Animal& a = herd.back();
        const auto sql = [](QDate d) { return d.isValid() ? Sql_Datum(Datum_als_Anzeige(d)) : QString("Null"); };
        hof.sql(
            "insert into Sauen (Art, Geburtsdatum, Zugangsdatum, Abgangsdatum, L_Belegung, Anz_Ferkelungen) values "
            "('%1', %2, %3, %4, %5, %6)",
            a.kind, sql(a.born), sql(a.arrived), sql(a.left), sql(a.served),
            a.farrowings ? QString::number(*a.farrowings) : QString("Null"));
    }
    for (int i = 0; i < 200; ++i) {
        const Bestandsgruppe group{.name = "G",
                                   .kind = number(2) == 0 ? "Alle" : kinds[number(3)],
                                   .unit = units[number(3)],
                                   .sex = QStringList{"E", "W", "M", ""}[number(3)],
                                   .served = QStringList{"N", "J", ""}[number(2)],
                                   .youngest = number(5) == 0 ? std::nullopt : std::optional<qint64>(number(20)),
                                   .oldest = number(40),
                                   .leastFarrowings = number(3),
                                   .value = {}};
        const QDate on = number(9) == 0 ? QDate(1899, 5, 5) : number(9) == 0 ? QDate(2100, 1, 1) : QDate(2025, 6, 30);
        const bool inHerd = number(1) == 1;
        const auto expected =
            std::count_if(herd.begin(), herd.end(), [&](const Animal& a) { return belongs(a, group, on, inHerd); });
        EXPECT_EQ(Tiere_zaehlen(hof.db, {group.condition(on, inHerd)}).front(), expected) << i;
    }
}

TEST(Bestandsregister, breaksItsPagesBehindFiftyRows) {
    for (const auto& [rows, breaks] : {std::pair(0, 0), {50, 0}, {51, 1}, {100, 1}, {101, 2}}) {
        const std::vector<Bestandsbewegung> movements(static_cast<size_t>(rows), Bestandsbewegung{.day = "01.01.2026"});
        const QStringList lines = Bestandsregister_schreiben({}, movements).split("\r\n");
        EXPECT_EQ(lines.count("#"), breaks) << rows;
        EXPECT_EQ(lines.filter("Seite " + QString::number(breaks + 1)).size(), 1) << rows;
    }
}

}  // namespace
}  // namespace koben
