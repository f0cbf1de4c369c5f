// The rules of selection, and the way from selection to marking and back.
#include "tests/herd/Herdenhof.h"

namespace koben {
namespace {

TEST(SelektierenTest, regeln) {
    Herdenhof farm;
    const char* const animals[][2] = {
        {"Sau",
         "Gruppe = 'A', Rasse = 'DL', Anz_Belegungen = 3, Anz_Ferkelungen = 2, L_Belegung = #05/02/2026#, "
         "L_Ferkelung = #05/01/2026#, Stallnr = '1'"},
        {"Sau", "Gruppe = 'B', L_Belegung = #05/01/2026#, L_Ferkelung = #05/02/2026#, Anz_Belegungen = 2"},
        {"Eber", "Stallnr = '10', Anz_Ferkelungen = 1"},
        {"Sau", "Mechanische_Amme = 'J', L_Ferkelung = #05/01/2026#"},
        {"Sau", "Gruppe = '', Mechanische_Amme = 'N', L_Belegung = #05/01/2026#"},
        {"Sau", "L_Belegung = #05/01/2026#, L_Ferkelung = #05/01/2026#"},
        {"Sau", "Gruppe = 'A', Rasse = 'DL', Mechanische_Amme = 'J', Stallnr = '1', Abgangsdatum = #05/20/2026#"}};
    int number = 0;
    for (const auto& [art, more] : animals) farm.tier(QString::number(++number), art, more);
    const struct {
        const char *input, *numbers;
        int rule;
    } table[] = {{"kom(0)=Sau", "", 0},         {"kom(0)=Sau", "1 2 3 4 5 6", 1}, {"kom(0)=Eber", "3", 2},
                 {"kom(1)=A", "1", 3},          {"kom(1)=", "3 4 5 6", 3},        {"kom(2)=DL", "1", 4},
                 {"kom(3)=2", "1 2", 5},        {"kom(3)=0", "1 2 3 4 5 6", 5},   {"kom(4)=2", "1", 6},
                 {"kom(4)=99999999999", "", 6}, {"kom(4)=", "1 2 3 4 5 6", 6},    {"kom(5)=1", "1", 10},
                 {"kom(5)=1", "4", 7},          {"kom(5)=1", "1 5", 8},           {"kom(5)=1", "2 4", 9}};
    farm.start([&](PA_Koben& main) {
        farm.screens.answers = {false};
        farm.menue<PB_Selektieren>(main, "XB_schweineselektieren", [&](PB_Selektieren& form) {
            for (const auto& row : table)
                for (const bool clear : {false, true}) {
                    farm.sql("update Sauen set Selektiert = '%1'", clear ? "X" : "");
                    if (!clear) farm.sql("update Sauen set Selektiert = 'X' where ID > 6");  // gone, and stays as it is
                    form.kon.setChecked(clear);
                    play(form, "%1; entselekt(%2)", row.input, row.rule);
                    const QString stays = clear || row.rule == 0 ? "" : " 7";
                    const QStringList found =
                        farm.show("select Nummer from Sauen where Selektiert = 'X' order by ID").split(" | ");
                    EXPECT_EQ(found.join(u' '), (row.numbers + stays).trimmed())
                        << "rule " << row.rule << " " << row.input << clear;
                }
            form.entselekt[1].click();
            EXPECT_EQ(main.datali.cell(1, u"Selektiert"), "X");  // the list behind is already up to date
            form.abbv.click();
        });
    });
}

TEST(SelektierenTest, vonDerSelektionZurMarkierungUndZurück) {
    Herdenhof farm;
    for (const char* number : {"1", "2", "3", "4"}) farm.tier(number);
    farm.tier("5", "Sau", "Abgangsdatum = #01/01/2026#, Selektiert = 'X'");
    const QString hint = "! Sie können die Schweine auch mit gedrückter STRG-Taste und der Maus markieren.";
    farm.start([&](PA_Koben& main) {
        const auto marked = [&] { return nummern(main.datali, main.datali.markedRows()); };
        main.datali.mark({2, 4});
        farm.menue(main, "XB_markierteschweineselektieren");
        EXPECT_EQ(farm.show("select Nummer from Sauen where Selektiert = 'X'"), "2 | 4");
        EXPECT_EQ(marked(), "1");  // as the list is new
        farm.texts();
        farm.screens.answers = {true};
        farm.menue<PB_Selektieren>(main, "XB_schweineselektieren", [](PB_Selektieren& form) { form.abbv.click(); });
        EXPECT_TRUE(farm.says({"? Es sind 2 Schweine selektiert.*ja", hint}));
        EXPECT_EQ(marked(), "2 4");
        EXPECT_EQ(main.datali.row(), 2);
        farm.menue<PB_Selektieren>(main, "XB_schweineselektieren", [](auto& form) { form.entselekt[0].click(); });
        EXPECT_TRUE(farm.says({}));  // nothing selected, nothing asked
        farm.menue(main, "XB_selektiertetieremarkieren");
        EXPECT_TRUE(farm.says({hint}));
        EXPECT_EQ(marked(), "");
    });
    EXPECT_EQ(farm.actions, (QStringList{"2 Sauen selektiert", "Selektion aufgehoben"}));
}

}  // namespace
}  // namespace koben
