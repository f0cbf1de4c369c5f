// The figures over random herds against a second computation, cases by hand, the list behind each figure, and the
// watch.
#include "figures/PA_Kennzahlen.h"

#include <cmath>
#include <random>

#include "tests/figures/Zufallsherde.h"
#include "tests/support/Hof.h"

namespace koben {
namespace {

void expectSame(const Kennzahlenstand& stand, const naiv::Stand& naive, const std::string& where) {
    for (const Kennzahl& figure : Kennzahlen()) {
        const auto at = naive.find(figure.id);
        const naiv::Zahl wanted = at == naive.end() ? naiv::Zahl{} : at->second;
        const Kennzahlwert& value = stand[figure.nr];
        const std::string which = where + " " + figure.id;
        EXPECT_EQ(static_cast<double>(value.numerator), wanted.zaehler) << which;
        if (figure.quotient) {
            EXPECT_EQ(static_cast<double>(value.denominator), wanted.nenner) << which;
        }
        if (at != naive.end()) {
            EXPECT_EQ(value.counted, wanted.gezaehlt) << which;
        }
        if (figure.ausgelassen && !QString(figure.id).contains(u'.')) {
            EXPECT_EQ(value.leftOut, wanted.ausgelassen) << which;
        }
    }
}

/// Every part of a figure stands in the list behind it.
void expectExplained(const Sauenbuch& book, const Kennzahlenstand& stand) {
    for (const Kennzahl& figure : Kennzahlen()) {
        const Kennzahlwert& value = stand[figure.nr];
        qint64 above = 0, below = 0;
        for (const Beitrag& part : Beitraege(book, figure.nr, stand.period))
            above += part.numerator.value_or(0), below += part.denominator.value_or(0);
        EXPECT_EQ(above, value.numerator) << figure.id;
        EXPECT_EQ(below, figure.quotient ? value.denominator : 0) << figure.id;
        if (figure.ausgelassen) {
            EXPECT_EQ(std::ssize(Ausgelassene(book, figure.nr, stand.period)), *value.leftOut) << figure.id;
        }
        EXPECT_EQ(Kennzahl_herleiten(book, figure.nr, stand.period, Spalte::Gezaehlt).value,
                  QString::number(value.counted))
            << figure.id;
        EXPECT_EQ(Kennzahl_herleiten(book, figure.nr, stand.period).value.value_or(""), value.text()) << figure.id;
    }
}

TEST(Kennzahlen, WieEineZweiteRechnung) {
    Workspace workspace;
    const QTemporaryDir folder;
    for (unsigned seed = 1; seed <= 24; ++seed) {
        const QString path = folder.filePath(QString::number(seed));
        Datenbank_anlegen(workspace, path);
        const Database db = workspace.open(path);
        Zufallsherde random(seed);
        random.write(db);
        std::vector<Zeitraum> periods = rollende_Jahre(Today, 3);
        for (int i = 0; i < 4; ++i) {
            const qint32 von = random.between(day(2018, 1, 1), Today + 5);
            periods.push_back({von, von + random.between(0, 400)});
        }
        for (const Zeitraum week : aufteilen(Takt::Woche, {day(2020, 12, 31), day(2021, 1, 5)}))
            periods.push_back(week);
        const Sauenbuch whole(db, Today, 0);
        const auto stands = Kennzahlen_berechnen(whole, periods);
        for (size_t i = 0; i < periods.size(); ++i) {
            const std::string where = "seed " + std::to_string(seed) + ", " + Zeitraumtext(periods[i]).toStdString();
            expectSame(stands[i], naiv::compute(random.herd(), periods[i].von, periods[i].bis, Today), where);
            // A book that begins with the period says the same, and so does a single run.
            const Sauenbuch book(db, Today, periods[i].von, Lesen::OhneVerluste);
            const auto alone = Kennzahlen_berechnen(book, periods[i]);
            for (const Kennzahl& figure : Kennzahlen())
                EXPECT_EQ(alone[figure.nr].text() + "|" + QString::number(alone[figure.nr].counted),
                          stands[i][figure.nr].text() + "|" + QString::number(stands[i][figure.nr].counted))
                    << where;
        }
        expectExplained(whole, stands[static_cast<size_t>(random.between(0, 6))]);
        if (HasFailure()) return;
    }
}

TEST(Kennzahlen, RundenWegVonNull) {
    const struct {
        Kz figure;
        qint64 numerator, denominator;
        const char* text;
    } cases[] = {{Kz::WuerfeSauJahr, 469, 73000, "2,35"},
                 {Kz::WuerfeSauJahr, 1, 73001, "0,00"},
                 {Kz::LebendWurf, 25, 2, "12,5"},
                 {Kz::LebendWurf, 1225, 100, "12,3"},
                 {Kz::VerlusteProzent, -1, 16, "-6,3"},
                 {Kz::VerlusteProzent, -1, 5000, "0,0"},
                 {Kz::TotProzent, 1, 1000, "0,1"},
                 {Kz::TotProzent, 0, 0, ""},
                 {Kz::NptOffen, 12, 1, "12"},
                 {Kz::Remontierung, 2, 365, "200,0"}};
    for (const auto& c : cases)
        EXPECT_EQ((Kennzahlwert{.nr = c.figure, .numerator = c.numerator, .denominator = c.denominator}.text()),
                  c.text);
}

TEST(Zeitraum, WochenMonateRollendeJahre) {
    EXPECT_EQ(Taktname(Takt::Woche, day(2021, 1, 3)), "2020-W53");
    EXPECT_EQ(Taktname(Takt::Woche, day(2027, 1, 3)), "2026-W53");
    EXPECT_EQ(Taktname(Takt::Woche, day(2024, 12, 30)), "2025-W01");
    EXPECT_EQ(Taktname(Takt::Monat, day(2020, 2, 29)), "2020-02");
    const std::pair<qint32, const char*> ends[] = {{day(2020, 3, 30), "01.03.2019 bis 29.02.2020"},
                                                   {day(2020, 3, 31), "01.04.2019 bis 31.03.2020"},
                                                   {day(2021, 1, 1), "01.01.2020 bis 31.12.2020"}};
    for (const auto& [heute, text] : ends) EXPECT_EQ(Zeitraumtext(rollende_Jahre(heute, 13).back()), text);
    EXPECT_EQ(Zeitraumtext(rollende_Jahre(day(2021, 1, 1), 13).front()), "01.01.2019 bis 31.12.2019");
    EXPECT_EQ(Zeitraumtext(beendete_Wochen(day(2021, 1, 3), 2).front()), "21.12.2020 bis 27.12.2020");
    EXPECT_EQ(Zeitraumtext(beendete_Wochen(day(2021, 1, 2), 1).front()), "21.12.2020 bis 27.12.2020");
    EXPECT_EQ(aufteilen(Takt::Monat, {day(2020, 1, 15), day(2020, 3, 1)}).size(), 3u);
}

/// One sow through two litters, each day counted by hand.
TEST(Kennzahlen, EineSauVonHand) {
    Hof hof;
    const auto value = [&](const char* id, Zeitraum period) {
        const auto book = Sauenbuch_holen(hof.db, Today, period.von);
        return Kennzahlen_berechnen(*book, period)[kennzahl(QString(id))->nr].text();
    };
    const Zeitraum year{day(2020, 1, 1), day(2020, 12, 31)};
    for (const Kennzahl& figure : Kennzahlen())
        EXPECT_EQ(value(figure.id, year), figure.quotient ? "" : "0") << figure.id;
    hof.tier("1");
    for (const char* services : {"01/01/2020", "01/03/2020", "05/28/2020", "06/18/2020"})
        hof.sql("insert into Belegung (Datum, Kennung) values (#%1#, 1)", services);
    hof.sql(
        "insert into Ferkelung (Datum, Kennung, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot) values (#04/25/2020#, 1, "
        "14, 13, 1)");
    hof.sql("insert into Ferkelung (Datum, Kennung, Ferkel_Gesamt, Ferkel_Lebendig) values (#10/11/2020#, 1, 12, 12)");
    hof.sql("insert into Absetzung (Datum, Kennung, Anzahl_Ferkel) values (#05/23/2020#, 1, 11)");
    hof.sql("insert into Verluste (Datum, Kennung, Anzahl_Ferkel) values (#05/01/2020#, 1, 2)");
    // 365 production days from the 2nd of January; idle: 24.05.-18.06. and from the 61st day after the second litter on
    const std::pair<const char*, const char*> cases[] = {{"wuerfe_sau_jahr", "2,00"},
                                                         {"abgesetzt_sau_jahr", "11,0"},
                                                         {"lebend_wurf", "12,5"},
                                                         {"tot_prozent", "3,8"},
                                                         {"abgesetzt_wurf", "11,0"},
                                                         {"verluste_prozent", "15,4"},
                                                         {"abferkelrate", "66,7"},
                                                         {"umrauscher", "33,3"},
                                                         {"umrauscher.18-24", "1"},
                                                         {"absetz_beleg_tage", "5,0"},
                                                         {"zwischenwurfzeit", "169,0"},
                                                         {"npt_sau_jahr", "47,0"},
                                                         {"npt_arten.Belegung bis Umrauschen", "21"},
                                                         {"npt_arten.Absetzen bis Belegung", "5"},
                                                         {"npt_arten.offen", "21"},
                                                         {"remontierung", "100,0"},
                                                         {"wuerfe_verteilung.2", "1"},
                                                         {"wuerfe_verteilung.0", "0"}};
    for (const auto& [id, text] : cases) EXPECT_EQ(value(id, year), text) << id;
    hof.sql("update Sauen set Abgangsdatum = #12/15/2020#");  // the kept book notices
    EXPECT_EQ(value("npt_arten.bis Abgang", year), "5");
    hof.sql("delete from Ferkelung");
    EXPECT_EQ(value("lebend_wurf", year), "");
    // Gone before the period, and yet booked in it.
    hof.sql("update Sauen set Abgangsdatum = #12/31/2019#");
    EXPECT_EQ(value("abgesetzt_sau_jahr", year) + value("umrauscher.18-24", year), "1");
}

/// The watch against a plain loop, and what stands in its way.
TEST(Fruehwarnung, WieEineSchleife) {
    std::mt19937 bits(7);
    int alarms = 0;
    for (int run = 0; run < 300; ++run) {
        const Warnreihe series = run % 2 ? Warnreihe::Lebendgeborene : Warnreihe::Umrauscher;
        const int factor = run % 2 ? 1 : 100;
        const double empty = run % 5 == 0 ? 0.5 : 0.05;
        std::vector<Warnwoche> weeks(104);
        std::vector<double> base;
        for (Warnwoche& week : weeks) {
            if (static_cast<double>(bits() % 1000) < empty * 1000) continue;
            week.numerator = bits() % 20, week.denominator = 1 + bits() % 30;
            week.x = static_cast<double>(factor * week.numerator) / static_cast<double>(week.denominator);
            if (&week < &weeks[52]) base.push_back(*week.x);
        }
        double mean = 0, spread = 0, c = 0;
        for (const double x : base) mean += x;
        mean /= static_cast<double>(base.size());
        for (const double x : base) spread += (x - mean) * (x - mean);
        spread = std::sqrt(spread / static_cast<double>(base.size() - 1));
        const Warnung watch = Wochen_beurteilen(series, weeks, {});
        ASSERT_EQ(watch.possible(), base.size() >= 30);
        if (!watch.possible()) continue;
        for (size_t i = 52; i < 104; ++i) {
            bool alarm = false;
            if (weeks[i].x) {
                c = std::max(0.0, c + (run % 2 ? mean - *weeks[i].x : *weeks[i].x - mean) / spread - 0.5);
                alarm = c > 4;
            }
            EXPECT_NEAR(watch.wochen[i - 52].c, c, 1e-9);
            EXPECT_EQ(watch.wochen[i - 52].alarm, alarm);
            if (alarm) c = 0, ++alarms;
        }
    }
    EXPECT_GT(alarms, 50);
    std::vector<Warnwoche> even(104);
    for (Warnwoche& week : even) week.numerator = 1, week.denominator = 3, week.x = 1.0 / 3;
    EXPECT_EQ(Wochen_beurteilen(Warnreihe::Verluste, even, {}).grund, "alle Wochen der Basis gleich, keine Streuung");
}

/// The weeks of the four series against loops over the bookings.
TEST(Fruehwarnung, WochenwerteWieGebucht) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        Hof hof;
        const Zufallsherde random(seed);
        random.write(hof.db);
        const auto weeks = beendete_Wochen(Today, 104);
        const Sauenbuch book(hof.db, Today, weeks.front().von);
        std::array<std::vector<Warnwoche>, 4> series;
        for (size_t i = 0; i < 4; ++i) series[i] = Wochenwerte(book, static_cast<Warnreihe>(i), weeks);
        for (size_t w = 0; w < weeks.size(); ++w) {
            qint64 services = 0, returns = 0, litters = 0, born = 0, dead = 0, alive = 0, lost = 0;
            for (const naiv::Tier& tier : random.herd()) {
                if (!tier.sau) continue;
                const naiv::Sau sow(tier, Today);
                for (const int g : sow.gruppen)
                    if (weeks[w].contains(g) && weeks[w].bis < Today - 24)
                        ++services, returns += sow.returnAfter(g, 24) != 0;
                for (const auto& [f, l] : sow.wuerfe)
                    if (weeks[w].contains(f)) ++litters, born += l.gesamt, dead += l.tot, alive += l.lebend;
                for (const auto& z : tier.verluste) lost += weeks[w].contains(z.tag) ? z.a : 0;
            }
            const std::pair<qint64, qint64> wanted[] = {
                {returns, services}, {dead, born}, {lost, litters}, {alive, litters}};
            for (size_t i = 0; i < 4; ++i)
                EXPECT_EQ(std::pair(series[i][w].numerator, series[i][w].denominator), wanted[i])
                    << seed << " " << w << " " << i;
        }
    }
}

}  // namespace
}  // namespace koben
