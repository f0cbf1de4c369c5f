#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

using Service = PE_Bewegungsdaten_Belegung;
using Check = PE_Bewegungsdaten_Trächtigkeit;
using Farrowing = PE_Bewegungsdaten_Ferkelung;
using Weaning = PE_Bewegungsdaten_Absetzung;
using Moving = PE_Bewegungsdaten_Verschiebung;

struct EingabeTest : testing::Test, Buchungshof {
    EingabeTest() {
        for (const char* number : {"11", "12", "13"}) tier(number);
    }
};

TEST_F(EingabeTest, neueBelegungen) {
    koben.Konfig_Zahl[Zahl::TonAus] = 0;
    neu<Service>(Belegung, {2}, [&](Service& form) {
        EXPECT_EQ(form.bezschwein[1].text(), "12");
        EXPECT_EQ(form.tdat.text(), "15.07.2026");
        EXPECT_FALSE(form.ok[1].visible());
        play(form, "tdat=3; kom(0)=  E'7, der lange Name; tz(0)=");
        EXPECT_EQ(textsOf(form, "tdat kom(0) tz(0)"), "03.07.2026|E'7, der lang|1");
        play(form, "tz(0)=250; tz(1)=12,5x");
        EXPECT_EQ(textsOf(form, "tz(0) tz(1)"), "250|12,50");
        form.UpDown[0].down();
        EXPECT_EQ(form.tz[0].text(), "99");
        play(form, "kom(4)=rauscht; ok(2)");
        EXPECT_FALSE(form.closed());  // the date is kept for a series, all else as at the start
        EXPECT_EQ(textsOf(form, "tdat kom(0) tz(0) kom(1) tz(1)"), "03.07.2026||1|K|0,00");
        EXPECT_TRUE(form.kom[0].items().contains("E'7, der lang"));
        EXPECT_EQ(form.kom[4].items(), QStringList("rauscht"));
        play(form, "kom(1)=N; ok(0)");
        EXPECT_TRUE(form.closed());
    });
    EXPECT_EQ(show("select Datum, Ebernr, Deckanzahl, Belegungart, Belegungsstation, Kosten, Kommentar, Bemerkung, "
                   "Kennung, ID from Belegung order by ID"),
              "03.07.2026 E`7, der lang 99 K  12,5  rauscht 2 1 | 03.07.2026  1 N  0   2 2");
    EXPECT_EQ(show("select * from Stammdaten_Bemerkung"), "rauscht");
    EXPECT_TRUE(says({"~ 1000 15", "~ 1000 15"}));
}

TEST_F(EingabeTest, ohneDatumWirdNichtsGeschrieben) {
    const QString before = everything();
    for (const Buchung kind : {Belegung, Trächtigkeit, Absetzung}) {
        rahmen(kind, {1}, [&](PE_Bewegungsdaten& frame) {
            screens.work([&](Form& form) {
                play(form, "tdat=31.2.2026; ok(0)");
                EXPECT_FALSE(form.closed());
            });
            frame.neu.click();
        });
        EXPECT_TRUE(says({"! Das Datum muß eingegeben werden!"}));
    }
    EXPECT_EQ(everything(), before);
}

TEST_F(EingabeTest, mehrereTiere) {
    const struct {
        int current;
        bool answer;
        const char* booked;
    } cases[] = {{1, true, "1 | 3"}, {1, false, "1"}, {2, true, "1 | 3"}, {2, false, ""}};
    for (const auto& c : cases) {
        sql("delete from Trächtigkeit");
        rahmen(Trächtigkeit, {1}, [&](PE_Bewegungsdaten& frame) {
            frame.schweinli.choose(c.current);
            frame.schweinli.mark({1, 3});
            screens.answers = {c.answer};
            screens.workIn<Check>([](Check& form) { form.ok[0].click(); });
            frame.neu.click();
        });
        EXPECT_TRUE(says({QString("? Es sind mehere *bei allen 2 Schweinen*=> ") + (c.answer ? "ja" : "nein")}));
        EXPECT_EQ(show("select Kennung from Trächtigkeit order by ID"), c.booked) << c.current << c.answer;
    }
}

TEST_F(EingabeTest, hinweiseKommenNachDemSpeichernJeTier) {
    koben.Konfig_Zahl[Zahl::ZyklusPruefen] = 1;
    koben.Konfig_Zahl[Zahl::TonAus] = 0;
    screens.answers = {true};
    neu<Check>(Trächtigkeit, {1, 3}, [](Check& form) { form.ok[0].click(); });
    EXPECT_TRUE(says({"? *ja", "! HINWEIS: *Saunummer: 11\r\n*", "! HINWEIS: *Saunummer: 13\r\n*", "~ *"}));
    EXPECT_EQ(show("select count(*) from Trächtigkeit"), "2");
}

TEST_F(EingabeTest, ändernGehtDurchDieBuchungen) {
    for (const char* day : {"01", "02", "03"})
        sql("insert into Belegung (Kennung, Datum, Ebernr, Deckanzahl, Belegungart, Kosten) values (1, #06/%1/2026#, "
            "'E%1', 2, 'K', 7)",
            day);
    ändern<Service>(Belegung, 1, 2, [&](Service& form) {
        EXPECT_TRUE(form.ok[1].visible());
        const auto shown = [&] { return textsOf(form, "tdat kom(0) tz(1)"); };
        EXPECT_EQ(shown(), "02.06.2026|E02|7,00");
        EXPECT_EQ(form.kom[1].text(), "N");  // whatever was stored
        play(form, "tdat=09.06.2026; ok(2)");
        EXPECT_EQ(shown(), "03.06.2026|E03|7,00");
        form.ok[2].click();
        EXPECT_EQ(shown(), "01.06.2026|E01|7,00");
        form.ok[1].click();
        EXPECT_EQ(shown(), "03.06.2026|E03|7,00");
        form.ok[1].click();
        EXPECT_EQ(shown(), "09.06.2026|E02|7,00");  // the changed row as it is now
        form.abbrechen.click();
    });
    EXPECT_EQ(show("select Datum, Ebernr, Deckanzahl, Belegungart, Kosten, Kennung, ID from Belegung order by ID"),
              "01.06.2026 E01 2 N 7 1 1 | 09.06.2026 E02 2 N 7 1 2 | 03.06.2026 E03 2 N 7 1 3");
}

TEST_F(EingabeTest, einAnderesTierNimmtNurDasDatumMit) {
    sql("insert into Belegung (Kennung, Datum, Ebernr) values (2, #06/01/2026#, 'E1')");
    neu<Service>(Belegung, {3}, [&](Service& form) {
        play(form, "tdat=3; kom(0)=E9; nextschwein(1)");  // wraps to the first
        EXPECT_EQ(form.bezschwein[1].text() + '|' + textsOf(form, "tdat kom(0)"), "11|03.07.2026|");
        form.ok[0].click();
    });
    EXPECT_EQ(show("select Kennung from Belegung order by ID"), "2 | 1");
    ändern<Service>(Belegung, 2, 1, [&](Service& form) {
        form.nextschwein[1].click();
        EXPECT_EQ(form.bezschwein[1].text(), "13");
        for (int i = 0; i < 3; ++i) EXPECT_FALSE(form.ok[i].enabled()) << i;
        form.nextschwein[0].click();
        EXPECT_EQ(form.kom[0].text(), "E1");
        EXPECT_TRUE(form.ok[0].enabled());
    });
}

TEST_F(EingabeTest, trächtigkeitZeigtAllesAusserJaAlsNein) {
    sql("insert into Trächtigkeit (Kennung, Datum, Trächtig) values (1, #06/01/2026#, '')");
    sql("insert into Trächtigkeit (Kennung, Datum, Trächtig) values (1, #06/02/2026#, 'J')");
    ändern<Check>(Trächtigkeit, 1, 1, [&](Check& form) {
        EXPECT_EQ(form.kom[0].text() + form.tz.text(), "N0,00");
        form.ok[2].click();
        EXPECT_EQ(form.kom[0].text(), "J");
    });
    EXPECT_EQ(show("select Trächtig from Trächtigkeit order by ID"), "N | J");
}

TEST_F(EingabeTest, ferkelzahlenZiehenEinanderNach) {
    // what is typed into the total, the live or the dead count, and all three afterwards
    const std::vector<std::pair<const char*, const char*>> cases[] = {
        {{"tz(0)=12", "12|12|0"}, {"tz(2)=2", "12|10|2"}, {"tz(1)=8", "10|8|2"}},
        {{"tz(0)=3", "3|3|0"}, {"tz(2)=5", "3|0|5"}},
        {{"tz(2)=1", "1|0|1"}, {"tz(0)=0", "1|0|1"}, {"tz(0)=", "1|0|1"}},
    };
    for (const auto& steps : cases)
        neu<Farrowing>(Ferkelung, {1}, [&](Farrowing& form) {
            for (const auto& [step, counts] : steps) {
                play(form, step);
                EXPECT_EQ(textsOf(form, "tz(0) tz(1) tz(2)"), counts);
            }
        });
    neu<Farrowing>(Ferkelung, {1}, [&](Farrowing& form) {
        form.UpDown[1].up();
        EXPECT_EQ(form.tz[0].text(), "2");
        form.UpDown[2].down();
        EXPECT_EQ(form.tz[2].text(), "0");
        form.tz[2].setText("5");
        form.tdat.setText("");
        form.ok[0].click();
    });
    EXPECT_TRUE(says({refusal({"...das Datum muß eingegeben werden!",
                               "...die Summe der lebendig und toten Ferkel gleich sein muß wie die Gesamtzahl."})}));
    EXPECT_EQ(show("select * from Ferkelung"), "");
}

TEST_F(EingabeTest, ferkelungGibtDieLebendenWeiter) {
    neu<Farrowing>(Ferkelung, {1}, [&](Farrowing& form) {
        play(form, "tz(0)=12; tz(2)=1");
        screens.answers = {true};  // the balance does not see the litter that is not saved yet
        screens.workIn<Weaning>([&](Weaning& weaning) {
            EXPECT_EQ(weaning.tz[0].text(), "11");
            weaning.ok[0].click();
        });
        form.roCommand1.click();
        EXPECT_EQ(textsOf(form, "tz(0) tz(1)"), "12|11");  // what was typed stays
        EXPECT_EQ(koben.Uebergabe_Marke, "");
        EXPECT_EQ(koben.Uebergabe_Anzahl, "11");
        screens.workIn<Moving>([](Moving& moving) { EXPECT_EQ(moving.tz.text(), "11"); });
        play(form, "ok_Verschiebung; ok(0)");
    });
    EXPECT_EQ(koben.Uebergabe_Anzahl, "");
    EXPECT_EQ(show("select Ferkel_Lebendig from Ferkelung") + '/' + show("select Anzahl_Ferkel from Absetzung"),
              "11/11");
}

/// From a farrowing that is being changed there is no weaning to change: one of the same number must stay as it is.
TEST_F(EingabeTest, ausEinerÄnderungHerausWirdKeineFremdeBuchungGeändert) {
    ferkelung(1, "06/01/2026", 9);
    ferkel("Absetzung", 1, "07/01/2026", 8);
    const QString before = everything();
    ändern<Farrowing>(Ferkelung, 1, 1, [&](Farrowing& form) {
        screens.workIn<Weaning>([&](Weaning& weaning) {
            EXPECT_EQ(weaning.tz[0].text(), "9");
            weaning.ok[0].click();
            EXPECT_FALSE(weaning.closed());
        });
        form.roCommand1.click();
    });
    EXPECT_TRUE(says({refusal({"...in der Liste der Bewegungsdaten keine Buchung dieser Art steht, *"},
                              "Buchung kann nicht vorgenommen werden")}));
    EXPECT_EQ(everything(), before);
}

}  // namespace
}  // namespace koben
