#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

using Weaning = PE_Bewegungsdaten_Absetzung;

struct AbsetzungTest : testing::Test, Buchungshof {
    AbsetzungTest() {
        tier("12");
        tier("40");
    }
    QString newPiglets() const {
        return show(
            "select Art, Nummer, Gruppe, Stallnr, BoxDatum, Tätowierung, Geburtsdatum from Sauen where Art <> 'Sau' "
            "order by ID");
    }
};

const QString Verlustfrage = "? Es ist ein Verlust von 1 Ferkel als Verlust eingetragen.*=> ";

/// Bookings of sow 12 in June 2026, by day and count, and the count that the screen proposes.
TEST_F(AbsetzungTest, restferkelNachDerLetztenFerkelung) {
    using Buchungen = std::vector<std::array<int, 2>>;
    const struct {
        Buchungen litters, losses, moves, weanings;
        const char* proposed;
    } cases[] = {
        {{}, {{1, 2}}, {{1, -5}}, {}, "0"},
        {{{10, 12}}, {{9, 4}, {10, 2}}, {{11, 1}}, {}, "9"},  // those of the litter's own day count
        {{{10, 12}}, {}, {{12, -3}}, {}, "15"},               // taken in
        {{{10, 2}}, {{12, 5}}, {}, {}, "0"},
        {{{10, 12}}, {}, {}, {{20, 5}}, "12"},  // weaned ones are not taken off
        {{{20, 8}, {10, 12}}, {{15, 3}, {21, 1}}, {}, {}, "7"},
    };
    ferkel("Verluste", 2, "06/20/2026", 3);  // another sow's
    for (const auto& c : cases) {
        for (const auto& [table, rows] : {std::pair{"Ferkelung", &c.litters},
                                          {"Verluste", &c.losses},
                                          {"Verschiebung", &c.moves},
                                          {"Absetzung", &c.weanings}}) {
            sql("delete from " + QString::fromUtf8(table) + " where Kennung = 1");
            for (const auto& [number, count] : *rows) {
                const QByteArray day = QStringLiteral("06/%1/2026").arg(number).toUtf8();
                rows == &c.litters ? ferkelung(1, day, count) : ferkel(table, 1, day, count);
            }
        }
        neu<Weaning>(Absetzung, {1}, [&](Weaning& form) { EXPECT_EQ(form.tz[0].text(), c.proposed); });
    }
}

TEST_F(AbsetzungTest, verlustWirdAusDemFehlbestandVorgeschlagen) {
    ferkelung(1, "06/10/2026", 9);
    neu<Weaning>(Absetzung, {1}, [&](Weaning& form) {
        EXPECT_EQ(form.tz[2].text(), "0");
        const char* const steps[][2] = {{"8", "1"}, {"9", "0"}, {"12", "0"}, {"", "9"}};
        for (const auto& [count, loss] : steps) {
            typeInto(form.tz[0], count);
            EXPECT_EQ(form.tz[2].text(), loss) << count;
        }
        form.UpDown.up();
        EXPECT_EQ(textsOf(form, "tz(0) tz(2)"), "1|8");
        form.UpDown2.down();
        EXPECT_EQ(textsOf(form, "tz(0) tz(2)"), "1|7");
        for (int i = 0; i < 9; ++i) form.UpDown2.down();
        EXPECT_EQ(form.tz[2].text(), "0");
    });
}

/// A booking of `count` piglets for a sow with 12 alive, 2 lost, 1 moved away, 9 weaned where told.
TEST_F(AbsetzungTest, bilanzfrage) {
    ferkelung(1, "06/10/2026", 12);
    ferkel("Verluste", 1, "06/11/2026", 2);
    ferkel("Verschiebung", 1, "06/11/2026", 1);
    const struct {
        bool weaned, change;
        const char *count, *remark, *rest;  ///< in the question; "" for no question
    } cases[] = {
        {false, false, "9", "", ""},   {false, false, "10", "", "-1"}, {true, false, "0", "", ""},
        {true, false, "1", "x", "-1"}, {true, true, "9", "", ""},      {true, true, "10", "", "-1"},
    };
    for (const auto& c : cases)
        for (const bool answer : {false, true}) {
            SCOPED_TRACE(std::string(c.count) + (c.weaned ? " weaned" : "") + (c.change ? " change" : ""));
            sql("delete from Absetzung");
            if (c.weaned) ferkel("Absetzung", 1, "07/01/2026", 9);
            const QString before = everything();
            const auto script = [&](Weaning& form) {
                form.tz[0].setText(c.count);
                form.kom[1].setText(c.remark);
                if (*c.rest) screens.answers = {answer};
                texts();
                form.ok[0].click();
                EXPECT_EQ(form.closed(), answer || !*c.rest);
            };
            c.change ? ändern<Weaning>(Absetzung, 1, 1, script) : neu<Weaning>(Absetzung, {1}, script);
            EXPECT_TRUE(says(QStringList(
                *c.rest != 0,
                QStringLiteral("? *bei der Sau %1 auf %2 (also *%3").arg(c.remark, c.rest, answer ? "ja" : "nein"))));
            if (*c.rest && !answer)
                EXPECT_EQ(everything(), before);
            else
                EXPECT_EQ(show("select top 1 Anzahl_Ferkel from Absetzung order by ID DESC"), c.count);
        }
}

TEST_F(AbsetzungTest, dieBilanzNachEinerÄnderungZähltDenNeuenWert) {
    ferkelung(1, "06/10/2026", 9);
    ferkel("Absetzung", 1, "07/01/2026", 5);
    ändern<Weaning>(Absetzung, 1, 1, [&](Weaning& form) { play(form, "tz(0)=9; ok(1); ok(1)"); });  // no question
    EXPECT_EQ(show("select Anzahl_Ferkel from Absetzung"), "9");
}

TEST_F(AbsetzungTest, ändernBietetWederVerlustNochEinbuchung) {
    ferkelung(1, "06/10/2026", 9);
    ferkel("Absetzung", 1, "07/01/2026", 5);
    ändern<Weaning>(Absetzung, 1, 1, [&](Weaning& form) {
        for (Control* control : std::initializer_list<Control*>{&form.tz[2], &form.UpDown2, &form.kom[2], &form.kom[3],
                                                                &form.kom[4], &form.kon, &form.Label3})
            EXPECT_FALSE(control->visible()) << control->address().toStdString();
        EXPECT_EQ(form.tz[0].text(), "5");
        play(form, "tz(0)=4; kom(2)=B1; tz(2)=3; ok(0)");
    });
    EXPECT_TRUE(says({}));
    EXPECT_EQ(show("select * from Verluste") + newPiglets(), "");
    neu<Weaning>(Absetzung, {1}, [](Weaning& form) { EXPECT_TRUE(form.tz[2].visible() && form.kon.visible()); });
}

TEST_F(AbsetzungTest, ferkelKommenInDenBestand) {
    ferkelung(1, "06/10/2026", 2);
    tier("B1-2", "Ferkel", "Stallnr = 'B1', Abgangsdatum = #06/01/2026#");  // a number in use for all that
    koben.Liste_neu_laden = 0;
    neu<Weaning>(Absetzung, {1}, [&](Weaning& form) {
        play(form, "tdat=0907; tz(1)=7,25; kom(2)=B1; kom(4)=Läufer; ok(2)");
        EXPECT_TRUE(form.kom[2].items().contains("B1"));
        EXPECT_EQ(form.kom[2].text(), "B1");  // stays for the next sow
        form.tz[0].setText("1");
        screens.answers = {true};
        play(form, "kon; ok(0)");
    });
    EXPECT_EQ(newPiglets(),
              "Ferkel B1-2 - B1 - - - | Ferkel B1-1 Läufer B1 09.07.2026 12-1 10.06.2026 | "
              "Ferkel B1-3 Läufer B1 09.07.2026 12-2 10.06.2026 | Mast B1-4 Läufer B1 09.07.2026 12-1 10.06.2026");
    EXPECT_EQ(show("select Ohrmarke, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, Rasse, "
                   "Belegungsart, Status, Statusabfrage, Infos, Selektiert, Mechanische_Amme, Zugangsdatum, "
                   "Zugangsgewicht_kg, Einkaufspreis, Zugangsgrund, Lieferant, Abgangsdatum, Abgangsgewicht_kg, "
                   "Verkaufspreis, Abgangsgrund, Abnehmer, L_Belegung, N_Belegung from Sauen where Nummer = 'B1-1'"),
              " 0 0 0 0       N 09.07.2026 7,25 0 Eigene Zucht  - 0 0   - -");
    EXPECT_EQ(show("select * from Stammdaten_Stallnummer"), "B1");
    EXPECT_EQ(show("select count(*) from Stammdaten_Gruppe where Inhalt = 'Läufer'"), "1");
    EXPECT_EQ(koben.Liste_neu_laden, 1);
}

TEST_F(AbsetzungTest, mehrereSauenFragenJeSauUndTeilenSichDieNummern) {
    koben.Konfig_Zahl[Zahl::ZyklusPruefen] = 1;
    tier("50");
    ferkelung(1, "06/10/2026", 3);
    ferkelung(3, "06/11/2026", 3);
    neu<Weaning>(Absetzung, {1, 2, 3}, [&](Weaning& form) {
        screens.answers = {true, true, false, true};
        play(form, "tdat=0907; tz(0)=2; tz(1)=7,25; kom(2)=B1; kom(3)=Totgelegen; ok(0)");
    });
    const QString hint = "! HINWEIS: *Saunummer: %1\r\n\r\n...Absetzung ohne vorherige Ferkelung eingetragen.\r\n\r\n";
    EXPECT_TRUE(says({"? Es sind mehere *bei allen 3 Schweinen *keine Prüfung bezüglich der vorhandenen Ferkel *ja",
                      Verlustfrage + "ja", Verlustfrage + "nein",
                      "! Von der Sau 40 können die Ferkel nicht in den Bestand übernommen werden,*",
                      Verlustfrage + "ja", hint.arg("12"), hint.arg("40"), hint.arg("50")}));
    EXPECT_EQ(show("select Datum, Kennung, Anzahl_Ferkel, Stück_Gewicht_kg from Absetzung order by ID"),
              "09.07.2026 1 2 7,25 | 09.07.2026 2 2 7,25 | 09.07.2026 3 2 7,25");
    EXPECT_EQ(show("select Datum, Anzahl_Ferkel, Grund, Kosten, Kommentar, Bemerkung, Muttersau, Kennung from Verluste "
                   "order by ID"),
              "09.07.2026 1 Totgelegen 0   12 1 | 09.07.2026 1 Totgelegen 0   50 3");
    EXPECT_EQ(show("select Nummer, Tätowierung, Geburtsdatum from Sauen where Art = 'Ferkel' order by ID"),
              "B1-1 12-1 10.06.2026 | B1-2 12-2 10.06.2026 | B1-3 50-1 11.06.2026 | B1-4 50-2 11.06.2026");
}

}  // namespace
}  // namespace koben
