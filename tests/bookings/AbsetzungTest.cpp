#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

using Weaning = PE_Bewegungsdaten_Absetzung;

class AbsetzungTest : public testing::Test, public Buchungshof {
protected:
    void SetUp() override {
        tier("12");
        tier("40");
    }
};

const QString NewPiglets =
    "select Art, Nummer, Gruppe, Stallnr, BoxDatum, Tätowierung, Geburtsdatum from Sauen where Art <> 'Sau' order by "
    "ID";
const QString Verlustfrage =
    "? Es ist ein Verlust von 1 Ferkel als Verlust eingetragen. Soll dieser Verlust jetzt "
    "gebucht werden? => ";

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
        const auto book = [&](const Buchungen& rows, auto&& add) {
            for (const auto& [day, count] : rows)
                add(QStringLiteral("06/%1/2026").arg(day).toUtf8().constData(), count);
        };
        for (const char* table : {"Ferkelung", "Verluste", "Verschiebung", "Absetzung"})
            sql("delete from " + QString::fromUtf8(table) + " where Kennung = 1");
        book(c.litters, [&](const char* day, int count) { ferkelung(1, day, count); });
        book(c.losses, [&](const char* day, int count) { ferkel("Verluste", 1, day, count); });
        book(c.moves, [&](const char* day, int count) { ferkel("Verschiebung", 1, day, count); });
        book(c.weanings, [&](const char* day, int count) { ferkel("Absetzung", 1, day, count); });
        neu<Weaning>(Absetzung, {1}, [&](Weaning& form) { EXPECT_EQ(form.tz[0].text(), c.proposed); });
    }
}

TEST_F(AbsetzungTest, verlustWirdAusDemFehlbestandVorgeschlagen) {
    ferkelung(1, "06/10/2026", 9);
    neu<Weaning>(Absetzung, {1}, [&](Weaning& form) {
        EXPECT_EQ(form.tz[2].text(), "0");
        EXPECT_EQ(form.kom[3].items(), QStringList({"Verhungert", "Totgelegen", "Grätscher", "Sonstiges"}));
        const char* const steps[][2] = {{"8", "1"}, {"9", "0"}, {"12", "0"}, {"", "9"}};
        for (const auto& [count, loss] : steps) {
            eingeben(form.tz[0], count);
            EXPECT_EQ(form.tz[2].text(), loss) << count;
        }
        form.UpDown.up();
        EXPECT_EQ(form.tz[0].text() + ' ' + form.tz[2].text(), "1 8");
        form.UpDown2.down();
        EXPECT_EQ(form.tz[0].text() + ' ' + form.tz[2].text(), "1 7");
        for (int i = 0; i < 9; ++i) form.UpDown2.down();
        EXPECT_EQ(form.tz[2].text(), "0");
    });
}

TEST_F(AbsetzungTest, verlustNurNachRückfrage) {
    ferkelung(1, "06/10/2026", 9);
    for (const bool answer : {false, true}) {
        sql("delete from Absetzung");
        neu<Weaning>(Absetzung, {1}, [&](Weaning& form) {
            eingeben(form.tdat, "0907");
            eingeben(form.tz[0], "8");
            eingeben(form.tz[1], "7,25");
            form.kom[3].choose(1);
            screens.answers = {answer};
            form.ok[0].click();
        });
        EXPECT_EQ(texte(), QStringList(Verlustfrage + (answer ? "ja" : "nein")));
        EXPECT_EQ(zeige("select Datum, Anzahl_Ferkel, Stück_Gewicht_kg, Kennung from Absetzung"),
                  "09.07.2026 8 7,25 1");
        EXPECT_EQ(zeige("select Datum, Anzahl_Ferkel, Grund, Kosten, Kommentar, Bemerkung, Muttersau, Kennung from "
                        "Verluste"),
                  answer ? "09.07.2026 1 Totgelegen 0   12 1" : "");
    }
}

/// A booking of `count` piglets for a sow with 12 alive, 2 lost, 1 moved away, 9 weaned where told.
TEST_F(AbsetzungTest, bilanzfrage) {
    ferkelung(1, "06/10/2026", 12);
    ferkel("Verluste", 1, "06/11/2026", 2);
    ferkel("Verschiebung", 1, "06/11/2026", 1);
    const QString question =
        "? Lt. den aktuellen Dateneingaben ist die Summe der Ferkel seit der letzten Ferkelung "
        "(Lebendzugang - Verluste - Verschiebung - Absetzung) bei der Sau %1 auf %2 (also unter "
        "0).\r\n\r\nSoll die Buchung trotzdem gespeichert werden? => ";
    const struct {
        bool weaned, change;
        const char* count;
        const char* remark;
        const char* rest;  ///< in the question; "" for no question
    } cases[] = {
        {false, false, "9", "", ""},   {false, false, "10", "", "-1"}, {true, false, "0", "", ""},
        {true, false, "1", "x", "-1"}, {true, true, "9", "", ""},      {true, true, "10", "", "-1"},
    };
    for (const auto& c : cases)
        for (const bool answer : {false, true}) {
            SCOPED_TRACE(std::string(c.count) + (c.weaned ? " weaned" : "") + (c.change ? " change" : ""));
            sql("delete from Absetzung");
            if (c.weaned) ferkel("Absetzung", 1, "07/01/2026", 9);
            const QString before = stand();
            const auto script = [&](Weaning& form) {
                form.tz[0].setText(c.count);
                form.kom[1].setText(c.remark);
                if (*c.rest) screens.answers = {answer};
                texte();
                form.ok[0].click();
                EXPECT_EQ(form.closed(), answer || !*c.rest);
            };
            if (c.change)
                ändern<Weaning>(Absetzung, 1, 1, script);
            else
                neu<Weaning>(Absetzung, {1}, script);
            EXPECT_EQ(texte(),
                      *c.rest ? QStringList(question.arg(c.remark, c.rest) + (answer ? "ja" : "nein")) : QStringList());
            if (*c.rest && !answer)
                EXPECT_EQ(stand(), before);
            else
                EXPECT_EQ(zeige("select top 1 Anzahl_Ferkel from Absetzung order by ID DESC"), c.count);
        }
}

TEST_F(AbsetzungTest, dieBilanzNachEinerÄnderungZähltDenNeuenWert) {
    ferkelung(1, "06/10/2026", 9);
    ferkel("Absetzung", 1, "07/01/2026", 5);
    ändern<Weaning>(Absetzung, 1, 1, [&](Weaning& form) {
        form.tz[0].setText("9");
        form.ok[1].click();
        form.ok[1].click();  // 9 of 9 once more: no question
    });
    EXPECT_EQ(zeige("select Anzahl_Ferkel from Absetzung"), "9");
}

TEST_F(AbsetzungTest, ändernBietetWederVerlustNochEinbuchung) {
    ferkelung(1, "06/10/2026", 9);
    ferkel("Absetzung", 1, "07/01/2026", 5);
    ändern<Weaning>(Absetzung, 1, 1, [&](Weaning& form) {
        for (Control* control : std::initializer_list<Control*>{&form.tz[2], &form.UpDown2, &form.kom[2], &form.kom[3],
                                                                &form.kom[4], &form.kon, &form.Label3})
            EXPECT_FALSE(control->visible()) << control->address().toStdString();
        EXPECT_EQ(form.tz[0].text(), "5");
        eingeben(form.tz[0], "4");
        form.kom[2].setText("B1");
        form.tz[2].setText("3");
        form.ok[0].click();
    });
    EXPECT_EQ(texte(), QStringList());
    EXPECT_EQ(zeige("select * from Verluste") + zeige(NewPiglets), "");
    neu<Weaning>(Absetzung, {1}, [](Weaning& form) { EXPECT_TRUE(form.tz[2].visible() && form.kon.visible()); });
}

TEST_F(AbsetzungTest, ferkelKommenInDenBestand) {
    ferkelung(1, "06/10/2026", 2);
    tier("B1-2", "Ferkel", "B1");
    sql("update Sauen set Abgangsdatum = #06/01/2026# where Nummer = 'B1-2'");  // a number in use for all that
    koben.Liste_neu_laden = 0;
    neu<Weaning>(Absetzung, {1}, [&](Weaning& form) {
        eingeben(form.tdat, "0907");
        eingeben(form.tz[1], "7,25");
        eingeben(form.kom[2], "B1");
        eingeben(form.kom[4], "Läufer");
        form.ok[2].click();
        EXPECT_TRUE(form.kom[2].items().contains("B1"));
        EXPECT_EQ(form.kom[2].text(), "B1");  // stays for the next sow
        form.kon.click();
        form.tz[0].setText("1");
        screens.answers = {true};
        form.ok[0].click();
    });
    EXPECT_EQ(zeige(NewPiglets),
              "Ferkel B1-2 - B1 - - - | Ferkel B1-1 Läufer B1 09.07.2026 12-1 10.06.2026 | "
              "Ferkel B1-3 Läufer B1 09.07.2026 12-2 10.06.2026 | Mast B1-4 Läufer B1 09.07.2026 12-1 10.06.2026");
    EXPECT_EQ(zeige("select Ohrmarke, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, Rasse, "
                    "Belegungsart, Status, Statusabfrage, Infos, Selektiert, Mechanische_Amme, Zugangsdatum, "
                    "Zugangsgewicht_kg, Einkaufspreis, Zugangsgrund, Lieferant, Abgangsdatum, Abgangsgewicht_kg, "
                    "Verkaufspreis, Abgangsgrund, Abnehmer, L_Belegung, N_Belegung from Sauen where Nummer = 'B1-1'"),
              " 0 0 0 0       N 09.07.2026 7,25 0 Eigene Zucht  - 0 0   - -");
    EXPECT_EQ(zeige("select * from Stammdaten_Stallnummer"), "B1");
    EXPECT_EQ(zeige("select count(*) from Stammdaten_Gruppe where Inhalt = 'Läufer'"), "1");
    EXPECT_EQ(koben.Liste_neu_laden, 1);
}

TEST_F(AbsetzungTest, mehrereSauenFragenJeSauUndTeilenSichDieNummern) {
    koben.Konfig_Zahl[Zahl::ZyklusPruefen] = 1;
    tier("50");
    ferkelung(1, "06/10/2026", 3);
    ferkelung(3, "06/11/2026", 3);
    neu<Weaning>(Absetzung, {1, 2, 3}, [&](Weaning& form) {
        eingeben(form.tz[0], "2");
        eingeben(form.kom[2], "B1");
        screens.answers = {true, true, false, true};
        form.ok[0].click();
    });
    const QString hint =
        "! HINWEIS: Folgende Datumangaben liegen gegenseitig außerhalb der Toleranzen\r\nSaunummer: %1"
        "\r\n\r\n...Absetzung ohne vorherige Ferkelung eingetragen.\r\n\r\n";
    EXPECT_EQ(texte(), QStringList({"? Es sind mehere Schweine ausgewählt. Soll die Buchung bei allen 3 Schweinen "
                                    "vorgenommen werden?\r\n\r\nBei mehreren Schweinen findet keine Prüfung bezüglich "
                                    "der vorhandenen Ferkel statt. => ja",
                                    Verlustfrage + "ja", Verlustfrage + "nein",
                                    "! Von der Sau 40 können die Ferkel nicht in den Bestand übernommen werden, weil "
                                    "keine Ferkelung gefunden wurde.",
                                    Verlustfrage + "ja", hint.arg("12"), hint.arg("40"), hint.arg("50")}));
    EXPECT_EQ(zeige("select Kennung, Anzahl_Ferkel from Absetzung order by ID"), "1 2 | 2 2 | 3 2");
    EXPECT_EQ(zeige("select Muttersau, Anzahl_Ferkel from Verluste order by ID"), "12 1 | 50 1");
    EXPECT_EQ(zeige("select Nummer, Tätowierung, Geburtsdatum from Sauen where Art = 'Ferkel' order by ID"),
              "B1-1 12-1 10.06.2026 | B1-2 12-2 10.06.2026 | B1-3 50-1 11.06.2026 | B1-4 50-2 11.06.2026");
}

TEST_F(AbsetzungTest, eineZuLangeBoxSchreibtNichts) {
    ferkelung(1, "06/10/2026", 3);
    const QString before = stand();
    neu<Weaning>(Absetzung, {1}, [&](Weaning& form) {
        eingeben(form.kom[2], "Abferkelstall 3");
        form.ok[0].click();
        EXPECT_FALSE(form.closed());
    });
    EXPECT_TRUE(texte().value(0).contains("Stallnr"));
    EXPECT_EQ(stand(), before);
}

}  // namespace
}  // namespace koben
