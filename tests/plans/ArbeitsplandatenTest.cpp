// The pair of screens over the kinds of work: rules, storing, the way through the rows, deleting, handing over.
#include "tests/plans/Planhof.h"

namespace koben {
namespace {

using Liste = PV_Arbeitsplandaten;
using Eingabe = PV_Arbeitsplandaten_Eingabe;

struct Arbeitsplandaten : testing::Test, Planhof {
    void list(std::function<void(Liste&)> script) { in<Liste>("PV_Arbeitsplandaten", std::move(script)); }
    /// The entry screen for a row of the list, or for a new one.
    void entry(int row, std::function<void(Eingabe&)> script) {
        list([&](Liste& form) {
            screens.workIn<Eingabe>(script);
            if (row == 0) return form.neu.click();
            form.li.choose(row);
            form.li.doubleClick();
        });
    }
    QStringList rows() const {
        return show(
                   "select Arbeitsart, Tage_von, Tage_bis, Bezugstermin, Aktiv_gross, Aktiv_klein, Erledigt_gross, "
                   "Erledigt_klein from Arbeitsplanoptionen order by ID")
            .split(" | ");
    }
};

const QStringList Seed{"Belegung 4 8 Letzte Absetzung   Letzte Belegung Letzte Absetzung",
                       "Ferkelung 113 119 Letzte Belegung   Letzte Ferkelung Letzte Belegung",
                       "Absetzung 28 32 Letzte Ferkelung   Letzte Absetzung Letzte Ferkelung",
                       "Trächtigkeitskontr. 20 24 Letzte Belegung   Letzte Trächtigkeit Letzte Belegung"};

TEST_F(Arbeitsplandaten, GathersAllBrokenRulesAndStoresNothing) {
    const QString name = "...der Arbeitsplan eingegeben werden muß.", twice = "...Der Arbeitsplan bereits existiert.";
    const QString days = "...die 'Tage von' nicht höher sein dürfen als die 'Tage bis'.";
    const QString date = "...der Bezugstermin eingegeben werden muß.";
    const QString pair = "...in den Erledigungs-Gruppen (Rahmenfelder) entweder in beiden *";
    const std::pair<const char*, QStringList> cases[] = {
        {"t=; tz(0)=1; tz(1)=1", {name, date}},
        {"t=  ; tz(0)=9; tz(1)=8; kom(0)=Letzte Belegung", {name, days}},
        {"t=BELEGUNG ; tz(0)=2; tz(1)=0; kom(1)=Letzte Belegung; kom(4)=Letzte Belegung", {twice, days, date, pair}},
        {"t=Neu; kom(0)=Letzte Belegung; kom(2)=Letzte Belegung", {pair}},
        {"t=Neu; kom(0)=Letzte Belegung; kom(3)=Letzte Belegung", {pair}}};
    for (const auto& [steps, lines] : cases)
        entry(0, [&](Eingabe& form) {
            play(form, "%1; ok(0)", steps);
            EXPECT_TRUE(says({refusal(lines)}));
            EXPECT_FALSE(form.closed());
        });
    EXPECT_EQ(rows(), Seed);
}

TEST_F(Arbeitsplandaten, NewRowIsStoredWithItsBackticksAndConfirmedByATone) {
    entry(0, [&](Eingabe& form) {
        EXPECT_FALSE(form.ok[1].visible() || form.ok[2].visible());
        form.UpDown[0].down();
        EXPECT_EQ(textsOf(form, "tz(0) tz(1)"), "1|1");
        play(form, "tz(0)=-9x9,8");
        form.UpDown[0].up();
        form.UpDown[0].up();
        EXPECT_EQ(form.tz[0].text(), "999");
        play(form,
             "tz(0)=0; t= O'Impfung ; tz(1)=7; kom(0)=Letzte Ferkelung; kom(1)=Zugangsdatum; kom(2)=Geburtsdatum");
        form.ok[0].click();
        EXPECT_TRUE(form.closed());
    });
    EXPECT_EQ(rows(), Seed + QStringList("O`Impfung 1 7 Letzte Ferkelung Zugangsdatum Geburtsdatum  "));
    EXPECT_TRUE(says({"~ 1000 15"}));
}

TEST_F(Arbeitsplandaten, HandsTheTickedColumnsOver) {
    list([&](Liste& form) {
        form.li.resizeByUser(1, 140);
        form.li.resizeByUser(3, 5);
        play(form, "konlist(0); konlist(2); listen");
    });
    EXPECT_EQ(handedOver(), (QStringList{"Arbeitsart|Tage bis...", "Absetzung|32", "Belegung|8", "Ferkelung|119",
                                         "Trächtigkeitskontr.|24"}));
    list([&](Liste& form) {
        EXPECT_EQ(form.li.column(1).width, 140);
        EXPECT_EQ(form.li.column(3).width, 25) << "a column cannot be lost";
        form.listen.click();
        EXPECT_TRUE(form.konlist[7].checked());
    });
    EXPECT_EQ(handedOver().first(),
              "Arbeitsart|Tage von...|Tage bis...|Bezugstermin|Aktiv (groß)|Aktiv (klein)|Erledigt (groß)|Erledigt "
              "(klein)");
    sql("delete from Arbeitsplanoptionen");
    list([&](Liste& form) { form.listen.click(); });
    EXPECT_TRUE(says({"! Keine zu listenden Daten gefunden"}));
}

}  // namespace
}  // namespace koben
