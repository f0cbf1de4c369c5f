// Losses and trade of piglets: the rows that are written, balances, refusals, purchases into stock, and the lists.
#include "tests/bookings/Ferkelhof.h"

namespace koben {
namespace {

using FerkelbuchungTest = Ferkelhof;

/// Changed on the frame, a purchase's own fields stay.
TEST_F(FerkelbuchungTest, geänderteZeilenBehaltenIhreSau) {
    sql("insert into Ferkelverkauf (Kennung, Datum, Anzahl_Einkauf, Ausgaben, Muttersau, Anzahl_Verkauf, "
        "Preis_je_Stück, Einnahmen) values (1, #07/01/2026#, 7, 8, 'alt', 2, 10, 20)");
    sql("insert into Verluste (Kennung, Datum, Muttersau, Anzahl_Ferkel) values (1, #07/01/2026#, 'alt', 2)");
    ferkelung(1, "06/01/2026", 90);
    ändern<Sauverkauf>(Ferkelverkauf, 1, 1, [&](Sauverkauf& form) {
        EXPECT_EQ(textsOf(form, "tz(0) tz(1)"), "2|10,00");
        EXPECT_EQ(form.gridli.markedCount(), 0);  // an old sale takes no piglets by being looked at
        typeInto(form.tz[0], "3");
        form.gridli.mark({});
        form.ok[0].click();
    });
    ändern<Sauverlust>(Verluste, 1, 1, [&](Sauverlust& form) { play(form, "tz(0)=4; ok(0)"); });
    EXPECT_EQ(handel(), "01.07.2026 7 3 10 30 8 0 0  alt  1");
    EXPECT_EQ(show("select Muttersau, Anzahl_Ferkel from Verluste"), "alt 4");
    EXPECT_TRUE(says({}));
}

/// On the frame the price is taken off, on the losses of the farm the costs, on its sales the count.
TEST_F(FerkelbuchungTest, bilanzDerSau) {
    const struct {
        int screen;
        const char* steps;
        std::optional<int> rest;  // in the question
    } cases[] = {{0, "tz(0)=99; tz(1)=40,99", {}}, {0, "tz(0)=1; tz(1)=41", -1}, {1, "tz(0)=1; tz(1)=41", -1},
                 {1, "tz(0)=99; tz(1)=40", {}},    {2, "tz(1)=41; tz(2)=1", -1}, {2, "tz(1)=40; tz(2)=99", {}}};
    ferkelung(1, "06/01/2020", 50);  // over all time
    ferkelung(2, "06/01/2026", 99);
    ferkel("Verluste", 1, "07/01/2026", 8);
    sql("insert into Ferkelverkauf (Kennung, Datum, Anzahl_Verkauf) values (1, #07/01/2026#, 2)");
    for (const auto& c : cases) {
        if (c.rest) screens.answers = {false};
        const QString before = handel() + verluste();
        const auto save = [&](auto& form) {
            play(form, "%1; kom(1)=%2", c.steps, c.screen == 0 ? "Komm." : "11");
            form.gridli.mark({});
            form.ok[0].click();
            EXPECT_EQ(form.closed(), !c.rest) << c.screen << c.steps;
        };
        if (c.screen == 0) neu<Sauverkauf>(Ferkelverkauf, {1}, [&](Sauverkauf& form) { save(form); });
        if (c.screen == 1) hof<Hofverlust>([&](Hofverlust& form) { save(form); });
        if (c.screen == 2) hof<Hofhandel>([&](Hofhandel& form) { save(form); });
        EXPECT_TRUE(says(
            QStringList(c.rest.has_value(), Restfrage(c.screen == 0 ? "Komm." : "11", c.rest.value_or(0), "nein"))));
        EXPECT_EQ(before == handel() + verluste(), c.rest.has_value());
        sql("delete from Ferkelverkauf where ID > 1");
        sql("delete from Verluste where ID > 1");
    }
}

TEST_F(FerkelbuchungTest, beimÄndernZähltDieAlteAnzahlNicht) {
    ferkelung(1, "06/01/2026", 10);
    sql("insert into Ferkelverkauf (Kennung, Muttersau, Datum, Anzahl_Verkauf) values (1, '11', #07/01/2026#, 10)");
    hof<Hofhandel>(
        [&](Hofhandel& form) {
            form.ok[2].click();
            EXPECT_TRUE(says({}));
            typeInto(form.tz[1], "12");
            form.gridli.mark({});
            screens.answers = {true};
            form.ok[0].click();
            EXPECT_TRUE(says({Restfrage("11", -2, "ja")}));
        },
        1);
    EXPECT_EQ(show("select Anzahl_Verkauf, Kennung from Ferkelverkauf"), "12 1");
    sql("delete from Ferkelverkauf");
    sql("insert into Verluste (Kennung, Muttersau, Datum, Anzahl_Ferkel, Kosten) values (1, '11', #07/01/2026#, 10, "
        "11)");
    screens.answers = {true};
    hof<Hofverlust>([&](Hofverlust& form) { form.ok[0].click(); }, 1);
    EXPECT_TRUE(says({Restfrage("11", -1, "ja")}));
}

TEST_F(FerkelbuchungTest, fragenUndAblehnungenInIhrerReihenfolge) {
    const QString date = "...das Buchungsdatum nicht korrekt ist.", count = "...Anzahl (Einkauf oder Verkauf) fehlt.";
    const QString both = "...nicht Einnahmen und Ausgaben gebucht werden können.";
    const std::pair<const char*, QStringList> cases[] = {
        {"tdat=x; tz(0)=0; tz(1)=0; tz(3)=5; tz(4)=6; kom(1)=11", {date, count, both}},
        {"tdat=1; tz(0)=2; tz(1)=; tz(3)=0,01; tz(4)=0,01; kom(1)=11",
         {both, "...ein Einkauf keiner Muttersau zugeordnet werden darf."}},
        {"tdat=1; tz(0)=; tz(1)=; tz(3)=; tz(4)=; kom(1)=", {count}}};
    for (const auto& [steps, lines] : cases)
        hof<Hofhandel>([&](Hofhandel& form) {
            markieren(form, {1});
            play(form, "optiverkauf(0); %1; ok(0)", steps);  // no question while rules are broken
            EXPECT_TRUE(says({refusal(lines)}));
        });
    hof<Hofverlust>([&](Hofverlust& form) { play(form, "tdat=; ok(0)"); });
    EXPECT_TRUE(says({refusal({date, "...die Anzahl Verluste fehlt."})}));
    screens.answers = {true, false};  // first the stock, then the balance
    neu<Sauverkauf>(Ferkelverkauf, {1}, [&](Sauverkauf& form) {
        markieren(form, {1});
        play(form, "optiverkauf(0); tz(1)=3; ok(0)");
        EXPECT_TRUE(says({Bestandsfrage + "ja", Restfrage("", -3, "nein")}));
        screens.answers = {false};
        form.ok[0].click();
        EXPECT_TRUE(says({Bestandsfrage + "nein"}));
    });
    EXPECT_EQ(handel() + verluste(), "");
}

TEST_F(FerkelbuchungTest, beiMehrerenSauenWirdNichtGeprüft) {
    screens.answers = {true};
    neu<Sauverkauf>(Ferkelverkauf, {1, 2}, [&](Sauverkauf& form) {
        markieren(form, {1});
        play(form, "optiverkauf(0); tz(1)=30; ok(0)");
    });
    EXPECT_TRUE(says({"? Es sind mehere *bei allen 2 Schweinen *Bei Sammelbuchungen wird nicht geprüft*ja"}));
    EXPECT_EQ(show("select Muttersau, Einnahmen, Kennung from Ferkelverkauf"), "11 30 1 | 12 30 2");
}

TEST_F(FerkelbuchungTest, dieListe) {
    for (const auto& [list, table, count] :
         {std::tuple<QString, QString, QString>{Verlustliste, "Verluste", "Anzahl_Ferkel"},
          {Handelsliste, "Ferkelverkauf", "Anzahl_Verkauf"}}) {
        aufListe(list, [&](Ferkelliste& form) { play(form, "ändern; löschen; kopieren"); });
        EXPECT_TRUE(says({"! *den Sie ändern möchten.", "! *den Sie löschen möchten.", "! *der kopiert werden soll!"}));
        for (int i = 1; i <= 3; ++i)
            sql("insert into %1 (Datum, %2, Kennung, Kommentar) values (#07/0%3/2026#, %4, 1, 'k')", table, count,
                4 - i, i);
        aufListe(list, [&](Ferkelliste& form) {
            EXPECT_EQ(form.li.row(), 3);  // the newest
            form.li.choose(2);
            screens.inputs = {"  ", "31.2.", "1207"};
            play(form, "kopieren; kopieren; kopieren");
            EXPECT_TRUE(says({"?= *", "?= *", "! Es wird keine Kopie erstellt, weil das Datum nicht*", "?= *"}));
            EXPECT_EQ(form.li.cell(form.li.row(), u"ID"), "2");  // not the copy
            EXPECT_EQ(form.li.cell(4, u"Datum"), "12.07.2026");
            form.li.choose(1);
            koben.Konfig_Zahl[Zahl::LoeschenBestaetigen] = 1;
            screens.answers = {false, true};
            form.löschen.click();
            EXPECT_EQ(form.li.rowCount(), 4);
            form.löschen.click();
            EXPECT_EQ(form.li.rowCount(), 3);
        });
        EXPECT_EQ(show("select Datum, " + count + ", Kennung, Kommentar from " + table + " order by ID"),
                  "03.07.2026 1 1 k | 02.07.2026 2 1 k | 12.07.2026 2 1 k");
        EXPECT_TRUE(actions[0].endsWith("vom 02.07.2026 auf 12.07.2026 kopiert") &&
                    actions[1].endsWith("vom 01.07.2026 gelöscht"));
        actions.clear();
        texts();
    }
}

/// What changes one by one comes to its place in the list, as if all were read.
TEST_F(FerkelbuchungTest, dieListeWieNeuGelesen) {
    const auto cells = [](const Grid& grid) {
        QStringList rows;
        for (int row = 1; row <= grid.rowCount(); ++row)
            rows += grid.cell(row, u"ID") + u' ' + grid.cell(row, u"Datum") + u' ' + grid.cell(row, u"Grund");
        return rows;
    };
    for (int i = 1; i <= 6; ++i) sql("insert into Verluste (Datum, Grund) values (#07/0%1/2026#, 'g')", i * 5 % 7);
    aufListe(Verlustliste, [&](Ferkelliste& form) {
        const auto step = [&](const char* what, const std::function<void()>& action) {
            action();
            Zwischenliste other(koben);
            Grid whole(other, "li");
            whole.bind(db.table("select * from Verluste order by Datum"));
            EXPECT_EQ(cells(form.li), cells(whole)) << what;
            EXPECT_EQ(form.li.row(), form.li.rowCount()) << what;
        };
        const auto enter = [&](int row, const char* fields) {
            return [&, row, fields] {
                if (row > 0) form.li.choose(row);
                screens.workIn<Hofverlust>([&](Hofverlust& entry) { play(entry, fields); });
                (row > 0 ? form.ändern : form.neu).click();
            };
        };
        step("a new one on a day that is there", enter(0, "tdat=0307; tz(0)=2; ok(0)"));
        step("a new one before all", enter(0, "tdat=0106; tz(0)=2; ok(0)"));
        step("another day", enter(2, "tdat=0407; tz(0)=2; ok(0)"));
        step("called off", enter(3, "tdat=0907; abbrechen"));
        step("changed elsewhere", [&] {
            sql("update Verluste set Grund = 'x', Datum = Null where ID = 4");
            enter(0, "abbrechen")();
        });
        step("very many", [&] {
            for (int i = 0; i < 7; ++i) sql("insert into Verluste (Datum, Grund) select Datum, Grund from Verluste");
            enter(0, "abbrechen")();
        });
        step("in another order", [&] {
            form.li.sortByUser(form.li.columnOf(u"ID"), 2);
            enter(0, "tdat=0207; tz(0)=2; ok(0)")();
        });
    });
}

}  // namespace
}  // namespace koben
