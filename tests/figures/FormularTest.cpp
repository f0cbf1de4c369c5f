// The screen of the figures: its period, its rows and where they come from, what is handed on, the settings of the
// watch.
#include "figures/PA_Kennzahlen.h"
#include "tests/support/Hof.h"

namespace koben {
namespace {

void type(TextBox& box, const char* text) {
    box.enter();
    box.type(text);
    box.leave();
}

TEST(PA_Kennzahlen, ZeigtErklaertUndGibtWeiter) {
    Hof hof;
    hof.koben.Heute = "20.01.2021";
    hof.catalogue.add<PA_Kennzahlen>("PA_Kennzahlen");
    hof.tier("1");
    for (const char* day : {"01/01/2020", "05/28/2020", "06/18/2020", "01/04/2021"})
        hof.sql("insert into Belegung (Datum, Kennung) values (#%1#, 1)", day);
    hof.sql(
        "insert into Ferkelung (Datum, Kennung, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot) values (#04/25/2020#, 1, "
        "14, 13, 1)");
    hof.in<PA_Kennzahlen>("PA_Kennzahlen", [&](PA_Kennzahlen& form) {
        EXPECT_EQ(form.tdat[0].text() + form.tdat[1].text(), "01.01.202031.12.2020");
        type(form.tdat[1], "310121");
        EXPECT_EQ(gridText(form.gridli).mid(0, 9),
                  QStringList(
                      {"Kürzel|Kennzahl|Wert|Gezählt|Ausgelassen", "wuerfe_sau_jahr|Würfe je Sau und Jahr|0,95|385|",
                       "abgesetzt_sau_jahr|Abgesetzte Ferkel je Sau und Jahr|0,0|385|",
                       "lebend_wurf|Lebend geborene Ferkel je Wurf|13,0|1|", "tot_prozent|Tot geborene Ferkel|7,1|14|",
                       "abgesetzt_wurf|Abgesetzte Ferkel je Wurf||0|", "verluste_prozent|Verluste bis zum Absetzen||0|",
                       "abferkelrate|Abferkelrate (Belegwoche)|33,3|3|1", "umrauscher|Umrauscherquote|33,3|3|1"}));
        EXPECT_EQ(form.gridli.rowCount(), KennzahlAnzahl);
        const auto told = form.gridli.explanation(7, 3);
        ASSERT_TRUE(told);
        EXPECT_EQ(*told->numerator + "/" + *told->denominator + "=" + *told->value, "1/3=33,3");
        EXPECT_EQ(told->lines.size(), 3u);
        EXPECT_EQ(form.gridli.explanation(7, 5)->value, "1");
        EXPECT_EQ(form.liwarnung.cell(1, 2),
                  "keine Warnung möglich: nur 1 von mindestens 30 Wochen der Basis mit Buchungen");
        type(form.t[3], "x");
        type(form.t[0], "0,25");
        EXPECT_EQ(form.t[3].text() + form.t[0].text(), "300,25");
        form.ok.click();
        EXPECT_EQ(hof.handedOver().value(7),
                  "abferkelrate|Abferkelrate (Belegwoche)|33,3|3|1|%|nach Belegdatum|01.01.2020 bis 20.01.2021");
        type(form.tdat[0], "01.02.2021");
        EXPECT_EQ(form.gridli.rowCount(), 0);
        hof.texts();
        form.ok.click();
        EXPECT_TRUE(
            hof.says({"! Die Auswertung kann nicht erstellt werden, weil...\r\n\r\n...das Datum von kleiner sein muß "
                      "als das Datum bis."}));
    });
    EXPECT_EQ(hof.koben.Konfig_Text[Text::WarnAbzug], "0,25");
}

}  // namespace
}  // namespace koben
