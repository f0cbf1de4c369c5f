// Treatments: proposals from the medicines, dose and cost, days and date of the waiting time, and what a save writes.
#include "bookings/PE_Bewegungsdaten_Behandlung.h"

#include <numeric>
#include <random>

#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

using Treatment = PE_Bewegungsdaten_Behandlung;
enum Input { Menge, Tage, Kosten };
enum List { Medikament, Einheit, Weg, Tierarzt, Kommentar, Bemerkung, Art };

struct BehandlungTest : testing::Test, Buchungshof {
    BehandlungTest() {
        catalogue.add<Treatment>("PE_Bewegungsdaten_Behandlung");
        tier("12");
        tier("40");
    }
    void medikament(const QString& name, double dose, const QString& unit, int days, double cost,
                    const QString& kind = {}, const QString& way = {}) {
        sql("insert into Medikamente (Medikament, Menge, Einheit, Wartezeit_Tage, Kosten_je_Gabe, Behandlungsart, "
            "Verabreichungsart) values ('%1', %2, '%3', %4, %5, '%6', '%7')",
            name, dose, unit, days, cost, kind, way);
    }
    void neu(const std::vector<int>& marks, std::function<void(Treatment&)> script) {
        Buchungshof::neu<Treatment>(Behandlung, marks, std::move(script));
    }
    QString medikamente() { return show("select * from Medikamente order by ID"); }
};

QString inputs(const Treatment& form) { return textsOf(form, "tz(0) kom(1) kom(2) tz(2) tz(1) tdat(1)"); }

TEST_F(BehandlungTest, medikamentFülltDieFelder) {
    medikament("Penicillin", 2, "ml", 7, 5, "Husten", "Spritze");
    medikament("Salbe", 0, "", 0, 9.5, "Wunde");
    medikament("Pulver", 0.125, "dl", 999, 1, "Husten", "Futter");
    const std::pair<const char*, const char*> steps[] = {
        {"kom(0)=Unbekannt", "0,00|||0,00|0|"},
        {"kom(0)=penicillin", "2,00|ml|Spritze|5,00|7|08.03.2026"},
        {"kom(0)=", "2,00|ml|Spritze|5,00|7|08.03.2026"},
        {"kom(0)=Salbe", "0,00|||0,00|0|"},
        {"kom(6)=Husten", "0,00|||0,00|0|"},                    // two remedies: no proposal
        {"kom(0)=Pulver", "0,13||Futter|1,04|999|24.11.2028"},  // this screen knows no dl
        {"kom(6)=Wunde", "0,00|||0,00|0|"},
    };
    neu({1}, [&](Treatment& form) {
        typeInto(form.tdat, "01.03.");
        for (const auto& [step, expected] : steps) {
            play(form, step);
            EXPECT_EQ(inputs(form), expected) << step;
        }
        EXPECT_EQ(form.kom[Medikament].text(), "Salbe");
        form.tz[Kosten].setText("77,00");
        form.kom[Medikament].enter();
        form.kom[Medikament].leave();
        EXPECT_EQ(form.tz[Kosten].text(), "77,00") << "an unchanged text proposes nothing";
    });
}

TEST_F(BehandlungTest, dosisUndKostenWartetageUndDatumImGleichschritt) {
    medikament("Penicillin", 2, "ml", 7, 5);
    neu({1}, [](Treatment& form) {
        const auto nach = [&](const char* steps) {
            play(form, steps);
            return textsOf(form, "tz(0) tz(2) tz(1) tdat(1)");
        };
        EXPECT_EQ(nach("tdat(0)=01.03.; kom(0)=Penicillin; tz(0)=4"), "4,00|10,00|7|08.03.2026");
        form.calend.pick(QDate(2026, 3, 25));
        EXPECT_EQ(form.tdat1.text(), "01.04.2026") << "over the end of a month";
        EXPECT_EQ(nach("tdat(0)=05.03.; tdat(1)=1003"), "4,00|10,00|5|10.03.2026");
        form.calender1.click();
        form.calend.pick(QDate(2026, 3, 11));
        EXPECT_EQ(textsOf(form, "tz(1) tdat(0)"), "6|05.03.2026");
        form.UpDown.up();
        EXPECT_EQ(form.tdat1.text(), "12.03.2026");
        EXPECT_EQ(nach("tdat(1)=05.03.2026"), "4,00|10,00|0|") << "the day of treatment itself";
        EXPECT_EQ(nach("tz(0)=0; tz(2)=3,01; tz(0)=2"), "2,00|3,01|0|") << "nothing to scale from";
        EXPECT_EQ(nach("tz(0)=1"), "1,00|1,51|0|") << "half a cent upwards";
        EXPECT_EQ(nach("tdat(0)=31.2.2026; tz(1)=1"), "1,00|1,51|1|16.07.2026") << "without a date from today";
        EXPECT_EQ(nach("tdat(1)=20.07.2026"), "1,00|1,51|1|20.07.2026") << "nothing to count from";
    });
}

/// The rules once more, in whole cents and days, against random work on the screen.
struct Modell {
    struct Mittel {
        const char* name;
        int dose, cost, days;
    };
    QDate date{2026, 7, 15}, until;
    int days = 0, dose = 0, cost = 0;
    void setDays(int n) {
        days = n;
        until = n == 0 ? QDate() : (date.isValid() ? date : QDate(2026, 7, 15)).addDays(n);
    }
    void setDate(QDate d) { date = d, setDays(days); }
    void setUntil(QDate d) {
        until = d;
        if (!date.isValid() || !d.isValid()) return;
        days = static_cast<int>(std::max(date.daysTo(d), qint64(0)));
        if (days == 0) until = QDate();
    }
    void setDose(int cents) {
        if (dose != 0 && cents != dose) cost = static_cast<int>((2LL * cost * cents + dose) / (2LL * dose));
        dose = cents;
    }
    void choose(const Mittel& m) {
        dose = m.dose;
        cost = m.dose == 0 ? 0 : m.cost;
        setDays(m.days);
    }
    static QString amount(int cents) {
        return QStringLiteral("%1,%2").arg(cents / 100).arg(cents % 100, 2, 10, QLatin1Char('0'));
    }
    QString text() const {
        return QStringList{Datum_als_Anzeige(date), QString::number(days), Datum_als_Anzeige(until), amount(dose),
                           amount(cost)}
            .join(u'|');
    }
};

TEST_F(BehandlungTest, zufälligeArbeitGegenDasModell) {
    const Modell::Mittel medicines[] = {{"A", 200, 500, 7}, {"B", 50, 1234, 0}, {"C", 0, 900, 28}, {"D", 1000, 1, 999}};
    for (const auto& m : medicines) medikament(m.name, m.dose / 100.0, "ml", m.days, m.cost / 100.0, m.name);
    std::mt19937 random(20260715);
    const auto pick = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    neu({1}, [&](Treatment& form) {
        Modell model;
        for (int i = 0; i < 3000; ++i) {
            const QDate day = pick(6) == 0 ? QDate() : QDate(2026, 1, 20).addDays(pick(90));
            const QString typed = day.isValid() ? day.toString("dMMyy").rightJustified(6, u'0') : "99.99.";
            const int n = pick(4) == 0 ? 0 : pick(120), m = pick(4), what = pick(6);
            const QString fields[] = {"tdat(0)=" + typed,
                                      "tdat(1)=" + typed,
                                      "tz(1)=" + QString::number(n),
                                      "tz(0)=" + Modell::amount(n),
                                      QStringLiteral("kom(0)=; kom(0)=") + medicines[m].name,
                                      QStringLiteral("kom(6)=; kom(6)=") + medicines[m].name};
            play(form, fields[what]);
            if (what == 0) model.setDate(day);
            if (what == 1) model.setUntil(day);
            if (what == 2) model.setDays(n);
            if (what == 3) model.setDose(n);
            if (what > 3) model.choose(medicines[m]);
            if (model.cost > 100000) typeInto(form.tz[Kosten], "5"), model.cost = 500;
            ASSERT_EQ(textsOf(form, "tdat(0) tz(1) tdat(1) tz(0) tz(2)"), model.text())
                << "step " << i << ": " << fields[what].toStdString();
        }
    });
}

TEST_F(BehandlungTest, verletzteRegelnSchreibenNichts) {
    const QString date = "...das Datum muß eingegeben werden!";
    const QString kind = "...die Behandlungsart eingetragen werden muß!";
    const QString dose = "...wenn ein Medikament eingetragen ist, muß auch die Menge eingetragen werden.";
    const std::pair<const char*, QStringList> cases[] = {{"tdat(0)=; kom(6)= ; kom(0)=X; tz(0)=0", {date, kind, dose}},
                                                         {"tdat(0)=31.02.2026; kom(6)=a; kom(0)=; tz(0)=0", {date}},
                                                         {"tdat(0)=1.1.2026; kom(6)=; kom(0)=; tz(0)=0", {kind}},
                                                         {"tdat(0)=1.1.2026; kom(6)=a; kom(0)=X; tz(0)=", {dose}}};
    neu({1}, [&](Treatment& form) {
        for (const auto& [steps, lines] : cases) {
            play(form, "%1; ok(0)", steps);
            EXPECT_TRUE(says({refusal(lines)}));
            EXPECT_FALSE(form.closed());
        }
        form.kom[Medikament].setText({});
        form.ok[0].click();  // the same without the medicine passes
    });
    EXPECT_EQ(show("select Datum, Behandlungsart, Menge, Wartezeit_Datum from Behandlung"), "01.01.2026 a 0 -");
    sql("delete from Behandlung");
    rahmen(Behandlung, {1}, [&](PE_Bewegungsdaten&) {
        koben.Buchungsmodus = "Ändern";
        screens.workIn<Treatment>([&](Treatment& form) {
            EXPECT_FALSE(form.ok[0].enabled());
            form.ok[0].click();
            EXPECT_TRUE(says({"! Änderungen sind nur möglich, wenn ein Datensatz ausgewählt wurde!"}));
        });
        koben.open("PE_Bewegungsdaten_Behandlung");
    });
}

const QString Alles =
    "tdat(0)=10.07.2026; kom(6)=Husten; kom(0)=O'Mittel; tz(0)=2,5; kom(1)=ml; kom(2)=Spritze; tz(1)=10; "
    "kom(3)=Dr. Ä; t=B-17; tz(2)=1234567,89; kom(4)=k; kom(5)=neu";
const QString Medikamentfrage = "? Das Medikament O'Mittel ist noch nicht in der Medikamentenliste*=> ";

TEST_F(BehandlungTest, zweihundertTiereMitNeuemMedikamentSindEineBuchung) {
    for (int i = 3; i <= 200; ++i) tier("T" + QString::number(1000 + i));
    std::vector<int> all(200);
    std::iota(all.begin(), all.end(), 1);
    neu(all, [&](Treatment& form) {
        play(form, Alles);
        texts();
        screens.answers = {true, true};
        form.ok[0].click();
        EXPECT_TRUE(says({"? Es sind mehere *bei allen 200 *ja", Medikamentfrage + "ja"}));
    });
    EXPECT_EQ(show("select count(*), count(ID), min(Kennung), max(Kennung), max(Wartezeit_Datum) from Behandlung"),
              "200 200 1 200 20.07.2026");
    EXPECT_EQ(show("select top 1 Datum, Behandlungsart, Medikament, Menge, Einheit, Verabreichungsart, Wartezeit_Tage, "
                   "Wartezeit_Datum, Tierarzt, Beleg_Nr, Kosten, Kommentar, Bemerkung from Behandlung"),
              "10.07.2026 Husten O`Mittel 2,5 ml Spritze 10 20.07.2026 Dr. Ä B-17 1234567,89 k neu");
    EXPECT_EQ(medikamente(), "O`Mittel 2,5 ml 10 1234567,89 Husten Spritze 1");
    EXPECT_EQ(show("select * from Stammdaten_Bemerkung"), "neu");
}

TEST_F(BehandlungTest, medikamentNurNachRückfrageUndNurWennEsFehlt) {
    neu({1}, [&](Treatment& form) {
        play(form, Alles);
        screens.answers = {false};
        form.ok[2].click();
        EXPECT_FALSE(form.closed());
        EXPECT_EQ(inputs(form) + textsOf(form, "kom(0) t tdat(0)"), "0,00|||0,00|0|||10.07.2026") << "the date is kept";
        EXPECT_EQ(form.kom[Medikament].items() + form.kom[Tierarzt].items() + form.kom[Art].items() +
                      form.kom[Bemerkung].items() + form.kom[Weg].items(),
                  QStringList({"O'Mittel", "Dr. Ä", "Husten", "neu"}));
        EXPECT_EQ(medikamente(), "");
        medikament("o`mittel", 1, "", 3, 1);
        play(form, Alles);
        form.ok[0].click();
    });
    EXPECT_TRUE(says({Medikamentfrage + "nein"}));
    EXPECT_EQ(show("select count(*) from Medikamente"), "1");
    EXPECT_EQ(show("select Wartezeit_Tage, Wartezeit_Datum from Behandlung"), "10 20.07.2026 | 10 20.07.2026")
        << "typed again after the proposal";
}

TEST_F(BehandlungTest, ändernLässtDieSperreStehen) {
    medikament("Husten", 1, "", 1, 1, "Nur im Bestand");
    // of elsewhere: the date alone, other days than the date says, a unit that is none of the entries
    sql("insert into Behandlung (Kennung, Datum, Behandlungsart, Einheit, Wartezeit_Datum) values (1, #07/01/2026#, "
        "'a', 'ml', #08/01/2026#)");
    sql("insert into Behandlung (Kennung, Datum, Behandlungsart, Einheit, Wartezeit_Datum, Wartezeit_Tage) values (1, "
        "#07/02/2026#, 'b', 'dl', #08/01/2026#, 3)");
    sql("insert into Behandlung (Kennung, Datum, Behandlungsart, Wartezeit_Tage) values (1, #07/03/2026#, 'a', 0)");
    ändern<Treatment>(Behandlung, 1, 1, [&](Treatment& form) {
        EXPECT_EQ(form.kom[Art].items(), QStringList({"a", "b", "Nur im Bestand"}));
        for (const char* expected : {"0,00|ml||0,00|31|01.08.2026", "0,00|||0,00|30|01.08.2026", "0,00|||0,00|0|"}) {
            form.tdat.enter();
            form.tdat.leave();
            EXPECT_EQ(inputs(form), expected);
            form.ok[2].click();
        }
        EXPECT_EQ(form.tdat.text(), "01.07.2026") << "around to the first";
    });
    EXPECT_EQ(show("select Wartezeit_Tage, Wartezeit_Datum from Behandlung order by ID"),
              "31 01.08.2026 | 30 01.08.2026 | 0 -");
}

}  // namespace
}  // namespace koben
