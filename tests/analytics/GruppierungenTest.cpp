// The groupings with awkward values: each row, column and figure, and that every figure adds up from its bookings.
#include "analytics/PB_Gruppierungen.h"
#include "tests/analytics/Auswertungshof.h"

namespace koben {
namespace {

struct Gruppierungstest : testing::Test, Auswertungshof {
    void SetUp() override {
        catalogue.add<PB_Gruppierungen>("PB_Gruppierungen");
        tier("10", "Sau", "Gruppe = 'Alt', Stallnr = 'S`1', Geburtsdatum = #07/16/2023#");
        tier("9", "Sau", "Gruppe = 'alt ', Stallnr = '', Rasse = 'DL', Geburtsdatum = #12/31/2025#");
        tier("11", "Sau", "Gruppe = '', Rasse = 'dl', Abgangsdatum = #02/01/2026#");
        tier("12", "Ferkel", "Geburtsdatum = #05/01/2026#, Boxdatum = #07/01/2026#, Stallnr = 'B'");
        const std::pair<int, const char*> services[] = {{1, "'1.2'"},    {1, "'1_2'"}, {1, "''"},    {2, "null"},
                                                        {2, "'Nummer'"}, {3, "'<>'"},  {3, "'O`B'"}, {1, "'o`b '"},
                                                        {4, "'10'"},     {4, "'9'"}};
        for (const auto& [animal, boar] : services)
            sql("insert into Belegung (Kennung, Datum, Ebernr, Kosten) values (%1, #03/01/2026#, %2, %3)", animal, boar,
                animal == 2 ? "null" : "12.555");
        for (const char* litter : {"1, #01/02/2025#, 9, 8, 1", "1, #12/31/2025#, 10, 10, 0", "3, null, 9, null, null"})
            sql("insert into Ferkelung (Kennung, Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot) values (%1)",
                litter);
        for (const char* sale : {"1, 12, 600, 'Maier'", "2, 3, null, 'MAIER'", "1, null, 0.5, null"})
            sql("insert into Ferkelverkauf (Kennung, Anzahl_Verkauf, Einnahmen, Kunde) values (%1)", sale);
    }
    /// What the list shows after a button.
    QStringList shown(PB_Gruppierungen& form, const QString& steps) {
        play(form, steps);
        return gridText(form.datali);
    }
};

TEST_F(Gruppierungstest, ZeilenSpaltenUndZellen) {
    in<PB_Gruppierungen>("PB_Gruppierungen", [&](PB_Gruppierungen& form) {
        play(form, "ok");
        EXPECT_TRUE(says({"! Keine zu listenden Daten gefunden"}));
        EXPECT_EQ(shown(form, "kom(0)=Gruppe; auswertungok(0)"),
                  QStringList({"Gruppe|Anzahl|<>||<>|1_2|1_2|10|9|Nummer|O`B", "|2||||||1|1||", "|2|||1||||||1",
                               "Alt|6|1|1||1|1|||1|1"}));
        EXPECT_EQ(form.Label1.text(), "Ergebnis (Belegung/Ebernr)");
        EXPECT_EQ(shown(form, "auswertungok(3)"),
                  QStringList({"Gruppe|Ferkelungen|Anzahl|9|10", "|1|9|1|", "Alt|2|19|1|1"}));
        EXPECT_EQ(shown(form, "auswertungok(15)"),
                  QStringList({"Gruppe|Buchungen|Anz_Verkauf|<>|Maier", "Alt|3|15||15"}));
        EXPECT_EQ(shown(form, "auswertungok(16)"), QStringList({"Gruppe|<>|2025", "|9|", "Alt||19"}));
        EXPECT_EQ(shown(form, "auswertungok(20)"), QStringList({"Gruppe|<>|2026", "|1|", "||1", "Alt|2|"}));
        EXPECT_EQ(shown(form, "sonstigeok(0)"), QStringList({"Alter_Jahre|Ferkel|Sau", "0|1|", "1||1", "3||1"}));
        EXPECT_EQ(shown(form, "sonstigeok(3)"),
                  QStringList({"Nummer|Stallnr|Ohrmarke|Tätowierung|BoxDatum|Tage", "12|B|||01.07.2026|14"}));
        EXPECT_EQ(form.datali.explanation(1, 6)->value, "14");
        EXPECT_EQ(shown(form, "kom(2)=Rasse; gruppekostenjetier(0)"),
                  QStringList({"Rasse|Buchungen|Kosten_Belegung|Durchschnitt", "|6|75,33|12,555", "DL|2||"}));
        EXPECT_EQ(shown(form, "gruppekostenjetier(5)"),
                  QStringList({"Rasse|Buchungen|Anz_Verkauf|Einnahme|Durchschnitt", "|2|12|600,5|300,25", "DL|1|3||"}));
        EXPECT_EQ(shown(form, "gruppeok(1); ok"), QStringList({"Gruppe|Anzahl", "|1", "Alt|2"}));
        EXPECT_EQ(handedOver(), gridText(form.gridli));
    });
}

TEST_F(Gruppierungstest, JedeZahlAusIhrenBuchungen) {
    in<PB_Gruppierungen>("PB_Gruppierungen", [&](PB_Gruppierungen& form) {
        for (int key = 0; key < 4; ++key) {
            for (auto& choice : form.kom) choice->choose(key);
            for (auto* buttons : {&form.auswertungok, &form.sonstigeok, &form.gruppekostenjetier, &form.gruppeok})
                for (auto& button : *buttons) {
                    button->click();
                    if (form.datali.columnOf(u"Tage") == 0) expectExplained(form.datali, 2);
                }
        }
    });
}

}  // namespace
}  // namespace koben
