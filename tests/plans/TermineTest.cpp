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
    static void enter(Eingabe& form, const QString& kind, const QString& date, int repetition) {
        form.t.type(kind);
        form.t.leave();
        form.tdat.type(date);
        form.tdat.leave();
        form.kom.choose(repetition);
    }
    QStringList rows() {
        QStringList found;
        in<Liste>("PV_Termine", [&](Liste& form) { found = gridText(form.li).mid(1); });
        return found;
    }
};

TEST_F(Termine, DieselbeArtZumSelbenTagMitDerselbenWiederholungGibtEsNichtZweimal) {
    const QString kind = "...der Termin eingegeben werden muß.", date = "...das Datum korrekt eingegeben werden muß.";
    const QString twice = "...der Termin bereits existiert.";
    struct Case {
        int row;  ///< changed; 0 for a new one
        QString kind, date;
        int repetition;
        QStringList lines;
    };
    for (const Case& c : std::vector<Case>{{0, " ", "31.2.", 0, {kind, date}},
                                           {0, "Wiegen", "", 4, {date}},
                                           {0, "", "0108", 4, {kind}},
                                           {0, "WIEGEN ", "0108", 4, {twice}},
                                           {1, "Wiegen", "1.8.26", 4, {twice}}})
        work(c.row, [&](Eingabe& form) {
            enter(form, c.kind, c.date, c.repetition);
            screens.takeLog();
            form.ok[0].click();
            EXPECT_EQ(screens.takeLog(), QStringList("! Die Eingabe kann nicht übernommen werden, weil...\r\n\r\n" +
                                                     c.lines.join("\r\n")));
            EXPECT_FALSE(form.closed());
        });
    work(0, [](Eingabe& form) {
        EXPECT_EQ(form.tdat.text() + '|' + form.kom.text(), "|Einmalig");
        EXPECT_FALSE(form.ok[1].visible() || form.ok[2].visible());
        enter(form, "Wiegen", "0108", 6);
        form.ok[0].click();
    });
    work(2, [](Eingabe& form) {  // keeps its own
        EXPECT_EQ(form.t.text() + '|' + form.tdat.text() + '|' + form.kom.text(), "Wiegen|01.08.2026|Monatlich");
        form.ok[2].click();
        EXPECT_EQ(form.kom.text(), "Wöchentlich");
        form.calend.pick(QDate(2026, 12, 24));
        form.ok[2].click();
        EXPECT_EQ(form.t.text(), "Impfen") << "around to the first";
    });
    EXPECT_EQ(rows(), QStringList({"Impfen|02.08.2026|Einmalig", "Wiegen|01.08.2026|Monatlich",
                                   "Wiegen|24.12.2026|Wöchentlich"}));
}

TEST_F(Termine, LöschenUndKeineAusgabe) {
    in<Liste>("PV_Termine", [&](Liste& form) {
        EXPECT_FALSE(form.listen.visible() || form.popzeile[5].visible());
        form.li.choose(1);
        form.li.key(Key::Delete);
        EXPECT_EQ(form.li.row(), 1) << "the next one becomes current";
    });
    EXPECT_EQ(rows(), QStringList("Wiegen|01.08.2026|Monatlich"));
}

}  // namespace
}  // namespace koben
