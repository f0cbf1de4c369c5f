// The pair over the appointments of the farm.
#include "plans/PV_Termine.h"
#include "plans/PV_Termine_Eingabe.h"
#include "tests/plans/Planhof.h"

namespace koben {
namespace {

using Liste = PV_Termine;
using Eingabe = PV_Termine_Eingabe;

struct Termine : testing::Test, Planhof {
    void SetUp() override {
        koben.Konfig_Zahl[Zahl::TonAus] = 1;
        catalogue.add<Liste>("PV_Termine");
        catalogue.add<Eingabe>("PV_Termine_Eingabe");
        add("Termine", {{"Terminart", "Wiegen"}, {"Datum", "01.08.2026"}, {"Wiederholung", "Monatlich"}});
        add("Termine", {{"Terminart", "Impfen"}, {"Datum", "02.08.2026"}, {"Wiederholung", "Einmalig"}});
    }
    void work(int row, std::function<void(Eingabe&)> script) {
        in<Liste>("PV_Termine", [&](Liste& form) {
            screens.workIn<Eingabe>(script);
            form.li.choose(row);
            (row == 0 ? form.neu : form.ändern).click();
        });
    }
    QString rows() const { return show("select Terminart, Datum, Wiederholung from Termine order by Datum, ID"); }
};

TEST_F(Termine, DieselbeArtZumSelbenTagMitDerselbenWiederholungGibtEsNichtZweimal) {
    const QString kind = "...der Termin eingegeben werden muß.", date = "...das Datum korrekt eingegeben werden muß.";
    const QString twice = "...der Termin bereits existiert.";
    const struct {
        int row;  ///< changed; 0 for a new one
        const char* steps;
        QStringList lines;
    } cases[] = {{0, "t= ; tdat=31.2.; kom=Einmalig", {kind, date}},
                 {0, "t=Wiegen; tdat=; kom=Monatlich", {date}},
                 {0, "t=WIEGEN ; tdat=0108; kom=Monatlich", {twice}},
                 {1, "t=Wiegen; tdat=1.8.26; kom=Monatlich", {twice}}};
    for (const auto& c : cases)
        work(c.row, [&](Eingabe& form) {
            play(form, "%1; ok(0)", c.steps);
            EXPECT_TRUE(says({refusal(c.lines)}));
            EXPECT_FALSE(form.closed());
        });
    work(0, [](Eingabe& form) {
        EXPECT_EQ(textsOf(form, "tdat kom"), "|Einmalig");
        EXPECT_FALSE(form.ok[1].visible() || form.ok[2].visible());
        play(form, "t=Wiegen; tdat=0108; kom=Wöchentlich; ok(0)");
    });
    work(2, [](Eingabe& form) {  // keeps its own
        EXPECT_EQ(textsOf(form, "t tdat kom"), "Wiegen|01.08.2026|Monatlich");
        form.ok[2].click();
        EXPECT_EQ(form.kom.text(), "Wöchentlich");
        form.calend.pick(QDate(2026, 12, 24));
        form.ok[2].click();
        EXPECT_EQ(form.t.text(), "Impfen") << "around to the first";
    });
    EXPECT_EQ(rows(), "Wiegen 01.08.2026 Monatlich | Impfen 02.08.2026 Einmalig | Wiegen 24.12.2026 Wöchentlich");
}

}  // namespace
}  // namespace koben
