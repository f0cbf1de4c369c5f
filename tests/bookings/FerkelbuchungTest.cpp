// Losses and trade of piglets: the rows that are written, balances, refusals, purchases into stock, and the lists.
#include "tests/bookings/Ferkelhof.h"

namespace koben {
namespace {

using FerkelbuchungTest = Ferkelhof;

TEST_F(FerkelbuchungTest, neueZeilen) {
    neu<Sauverlust>(Verluste, {2}, [&](Sauverlust& form) {
        EXPECT_EQ(form.kom[0].items(), QStringList({"Verhungert", "Totgelegen", "Grätscher", "Sonstiges"}));
        eingeben(form.tz[0], "0");
        EXPECT_EQ(form.tz[0].text(), "1");
        form.UpDown.up();
        eingeben(form.tz[1], "12,5");
        eingeben(form.kom[0], "Fuchs");
        eingeben(form.kom[1], "nachts");
        eingeben(form.kom[2], "Zaun");
        form.ok[2].click();
        EXPECT_EQ(form.kom[0].items().last() + form.kom[1].items().join(u' ') + form.kom[2].items().join(u' '),
                  "FuchsnachtsZaun");
    });
    hofneu<Hofverlust>([&](Hofverlust& form) {
        eingeben(form.tz[0], "3");
        eingeben(form.tz[1], "1,5");  // digits alone
        EXPECT_EQ(form.tz[1].text(), "15,00");
        eingeben(form.kom[1], "fremd");
        eingeben(form.kom[3], "ohne Sau");
        form.ok[0].click();
    });
    EXPECT_EQ(verluste(), "15.07.2026 2 Fuchs 12,5 12 nachts Zaun 2 | 15.07.2026 3  15 fremd  ohne Sau 0");
    EXPECT_EQ(zeige("select * from Stammdaten_Bemerkung"), "Zaun");

    ferkelung(1, "06/01/2026", 30);
    neu<Sauverkauf>(Ferkelverkauf, {1}, [&](Sauverkauf& form) {
        eingeben(form.tz[0], "4");
        eingeben(form.tz[1], "20,5");
        eingeben(form.tz[3], "8,25");
        eingeben(form.kom[0], "Meier");
        eingeben(form.kom[1], "bar");
        form.optiverkauf[1].click();
        form.gridli.mark({});
        form.ok[0].click();
    });
    hofneu<Hofhandel>([&](Hofhandel& form) {
        eingeben(form.tz[0], "4");
        eingeben(form.tz[4], "90");
        eingeben(form.kom[0], "meier");
        form.ok[2].click();
        EXPECT_EQ(form.kom[0].items(), QStringList("Meier"));
        form.abbrechen.click();
    });
    EXPECT_EQ(handel(), "15.07.2026 0 4 20,5 82 0 8,25 33 Meier 11 bar 1 | 15.07.2026 4 0 22,5 0 90 0 0 meier   0");
    EXPECT_EQ(zeige("select * from Stammdaten_Kunde"), "Meier");
}

/// Changed on the frame, a purchase's own fields stay.
TEST_F(FerkelbuchungTest, geänderteZeilenBehaltenIhreSau) {
    sql("insert into Ferkelverkauf (Kennung, Datum, Anzahl_Einkauf, Ausgaben, Muttersau, Anzahl_Verkauf, "
        "Preis_je_Stück, Einnahmen) values (1, #07/01/2026#, 7, 8, 'alt', 2, 10, 20)");
    sql("insert into Verluste (Kennung, Datum, Muttersau, Anzahl_Ferkel) values (1, #07/01/2026#, 'alt', 2)");
    ferkelung(1, "06/01/2026", 90);
    ändern<Sauverkauf>(Ferkelverkauf, 1, 1, [&](Sauverkauf& form) {
        EXPECT_EQ(form.tz[0].text() + ' ' + form.tz[1].text(), "2 10,00");
        EXPECT_EQ(form.gridli.markedCount(), 0);  // an old sale takes no piglets by being looked at
        eingeben(form.tz[0], "3");
        form.gridli.mark({});
        form.ok[0].click();
    });
    ändern<Sauverlust>(Verluste, 1, 1, [&](Sauverlust& form) {
        eingeben(form.tz[0], "4");
        form.ok[0].click();
    });
    EXPECT_EQ(handel(), "01.07.2026 7 3 10 30 8 0 0  alt  1");
    EXPECT_EQ(zeige("select Muttersau, Anzahl_Ferkel from Verluste"), "alt 4");
    EXPECT_EQ(texte(), QStringList());
}

/// On the frame the price is taken off, on the losses of the farm the costs, on its sales the count.
TEST_F(FerkelbuchungTest, bilanzDerSau) {
    struct Fall {
        int screen;
        const char *count, *amount;
        std::optional<int> rest;  // in the question
    };
    const Fall cases[] = {{0, "1", "50", -10}, {0, "99", "40,99", {}}, {0, "1", "41", -1}, {1, "1", "41", -1},
                          {1, "99", "40", {}}, {2, "41", "1", -1},     {2, "40", "99", {}}};
    ferkelung(1, "06/01/2020", 50);  // over all time
    ferkelung(2, "06/01/2026", 99);
    ferkel("Verluste", 1, "07/01/2026", 8);
    sql("insert into Ferkelverkauf (Kennung, Datum, Anzahl_Verkauf) values (1, #07/01/2026#, 2)");
    for (const auto& c : cases) {
        if (c.rest) screens.answers = {false};
        const auto save = [&](auto& form, int count, int amount) {
            eingeben(form.tz[count], c.count);
            eingeben(form.tz[amount], c.amount);
            form.gridli.mark({});
            form.ok[0].click();
            EXPECT_EQ(form.closed(), !c.rest) << c.screen << c.count << c.amount;
        };
        const QString before = handel() + verluste();
        if (c.screen == 0)
            neu<Sauverkauf>(Ferkelverkauf, {1}, [&](Sauverkauf& form) {
                eingeben(form.kom[1], "Komm.");
                save(form, 0, 1);
            });
        if (c.screen == 1)
            hofneu<Hofverlust>([&](Hofverlust& form) {
                eingeben(form.kom[1], "11");
                save(form, 0, 1);
            });
        if (c.screen == 2)
            hofneu<Hofhandel>([&](Hofhandel& form) {
                eingeben(form.kom[1], "11");
                save(form, 1, 2);
            });
        EXPECT_EQ(texte(),
                  c.rest ? QStringList(Restfrage(c.screen == 0 ? "Komm." : "11", *c.rest) + "nein") : QStringList());
        EXPECT_EQ(before == handel() + verluste(), c.rest.has_value());
        sql("delete from Ferkelverkauf where ID > 1");
        sql("delete from Verluste where ID > 1");
    }
}

TEST_F(FerkelbuchungTest, beimÄndernZähltDieAlteAnzahlNicht) {
    ferkelung(1, "06/01/2026", 10);
    sql("insert into Ferkelverkauf (Kennung, Muttersau, Datum, Anzahl_Verkauf) values (1, '11', #07/01/2026#, 10)");
    hofändern<Hofhandel>(1, [&](Hofhandel& form) {
        form.ok[2].click();
        EXPECT_EQ(texte(), QStringList({"+ PB_Verkauf_Ferkel", "+ PB_Verkauf_Ferkel_Eingabe"}).mid(2));
        eingeben(form.tz[1], "12");
        form.gridli.mark({});
        screens.answers = {true};
        form.ok[0].click();
        EXPECT_EQ(texte(), QStringList(Restfrage("11", -2) + "ja"));
    });
    EXPECT_EQ(zeige("select Anzahl_Verkauf, Kennung from Ferkelverkauf"), "12 1");
    sql("delete from Ferkelverkauf");
    sql("insert into Verluste (Kennung, Muttersau, Datum, Anzahl_Ferkel, Kosten) values (1, '11', #07/01/2026#, 10, "
        "11)");
    hofändern<Hofverlust>(1, [&](Hofverlust& form) {
        screens.answers = {true};
        form.ok[0].click();
        EXPECT_EQ(texte(), QStringList(Restfrage("11", -1) + "ja"));
    });
}

TEST_F(FerkelbuchungTest, fragenUndAblehnungenInIhrerReihenfolge) {
    const QString head = "! Die Eingabe kann nicht übernommen werden, weil...\r\n\r\n";
    const struct {
        const char *day, *bought, *sold, *income, *costs, *sow, *lines;
    } cases[] = {
        {"x", "0", "0", "5", "6", "11",
         "...das Buchungsdatum nicht korrekt ist.\r\n...Anzahl (Einkauf oder Verkauf) fehlt.\r\n"
         "...nicht Einnahmen und Ausgaben gebucht werden können."},
        {"1", "2", "", "0,01", "0,01", "11",
         "...nicht Einnahmen und Ausgaben gebucht werden können.\r\n"
         "...ein Einkauf keiner Muttersau zugeordnet werden darf."},
        {"1", "", "", "", "", "", "...Anzahl (Einkauf oder Verkauf) fehlt."},
    };
    for (const auto& c : cases)
        hofneu<Hofhandel>([&](Hofhandel& form) {
            markieren(form, {1});
            form.optiverkauf[0].click();  // no question while rules are broken
            eingeben(form.tdat, c.day);
            eingeben(form.tz[0], c.bought);
            eingeben(form.tz[1], c.sold);
            eingeben(form.tz[3], c.income);
            eingeben(form.tz[4], c.costs);
            eingeben(form.kom[1], c.sow);
            form.ok[0].click();
            EXPECT_EQ(texte(), QStringList(head + QString(c.lines)));
        });
    hofneu<Hofverlust>([&](Hofverlust& form) {
        eingeben(form.tdat, "");
        form.ok[0].click();
    });
    EXPECT_EQ(texte(), QStringList(head + "...das Buchungsdatum nicht korrekt ist.\r\n...die Anzahl Verluste fehlt."));
    screens.answers = {true, false};  // first the stock, then the balance
    neu<Sauverkauf>(Ferkelverkauf, {1}, [&](Sauverkauf& form) {
        markieren(form, {1});
        form.optiverkauf[0].click();
        eingeben(form.tz[1], "3");
        form.ok[0].click();
        EXPECT_EQ(texte(), QStringList({Bestandsfrage + "ja", Restfrage("", -3) + "nein"}));
        screens.answers = {false};
        form.ok[0].click();
        EXPECT_EQ(texte(), QStringList(Bestandsfrage + "nein"));
    });
    EXPECT_EQ(handel() + verluste(), "");
}

TEST_F(FerkelbuchungTest, beiMehrerenSauenWirdNichtGeprüft) {
    screens.answers = {true};
    neu<Sauverkauf>(Ferkelverkauf, {1, 2}, [&](Sauverkauf& form) {
        markieren(form, {1});
        form.optiverkauf[0].click();
        eingeben(form.tz[1], "30");
        form.ok[0].click();
    });
    EXPECT_EQ(texte(), QStringList("? Es sind mehere Schweine ausgewählt. Soll die Buchung bei allen 2 Schweinen "
                                   "vorgenommen werden?\r\n\r\nBei Sammelbuchungen wird nicht geprüft, ob die "
                                   "ausgewählten Schwein auch so viele Ferkel säugen, wie zum Verkauf angeboten "
                                   "wurden! => ja"));
    EXPECT_EQ(zeige("select Muttersau, Einnahmen, Kennung from Ferkelverkauf"), "11 30 1 | 12 30 2");
}

TEST_F(FerkelbuchungTest, einkaufInDenBestand) {
    tier("B-2", "Ferkel");
    const auto buy = [&](Hofhandel& form) {
        eingeben(form.tdat, "0807");
        eingeben(form.tz[0], "3");
        eingeben(form.tz[5], "7,5");
        eingeben(form.kom[0], "Händler");
        eingeben(form.kom[3], "B");
        form.ok[2].click();
        EXPECT_EQ(form.kom[3].text() + form.kom[3].items().join(u' '), "BB");  // the box stays for the next purchase
    };
    koben.Liste_neu_laden = 0;
    hofneu<Hofhandel>(buy);
    EXPECT_EQ(koben.Liste_neu_laden, 1);
    const QString same = " B 08.07.2026 08.07.2026 - 7,5 Händler Zukauf N 0 0 0 0 0 0  ";
    EXPECT_EQ(zeige("select Nummer, Stallnr, BoxDatum, Zugangsdatum, Geburtsdatum, Zugangsgewicht_kg, Lieferant, "
                    "Zugangsgrund, Mechanische_Amme, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, "
                    "Anz_Ferkel_Lebend, Einkaufspreis, Verkaufspreis, Gruppe, Status from Sauen where Stallnr = 'B'"),
              "B-1" + same + " | B-3" + same + " | B-4" + same);
    EXPECT_EQ(zeige("select * from Stammdaten_Stallnummer"), "B");
    hofändern<Hofhandel>(1, [&](Hofhandel& form) {
        EXPECT_EQ(form.kom[3].text(), "");
        eingeben(form.kom[3], "B");
        form.ok[0].click();  // takes them in once more
    });
    EXPECT_EQ(zeige("select count(*) from Sauen where Stallnr = 'B'"), "6");
    EXPECT_EQ(zeige("select count(*) from Ferkelverkauf"), "1");
}

TEST_F(FerkelbuchungTest, wasNichtPasstUndWasScheitertLässtNichtsZurück) {
    const auto all = [&] { return stand() + handel() + zeige("select * from Stammdaten_Kunde"); };
    const QString before = all();
    const auto trade = [&](const char* box, const char* bought, const char* sold) {
        hofneu<Hofhandel>([&](Hofhandel& form) {
            eingeben(form.tz[0], bought);
            eingeben(form.tz[1], sold);
            eingeben(form.kom[0], "Neu");
            eingeben(form.kom[3], box);
            form.optiverkauf[2].click();
            form.ok[0].click();
        });
    };
    trade("eine viel zu lange Box", "2", "0");
    trade("B", "99999", "0");
    EXPECT_EQ(texte().filter("Es wurde nichts gespeichert.").size(), 2);
    EXPECT_EQ(all(), before);
    for (const bool sale : {false, true}) {
        bool failed = true;
        int nth = 0;
        while (failed && nth < 50) {
            failed = false;
            ++nth;
            Workspace::setFaultHook([&, count = 0](const QString& text) mutable {
                if (++count != nth) return;
                failed = true;
                throw DatabaseError(DatabaseError::Kind::Io, text);
            });
            try {
                trade("C", sale ? "0" : "2", sale ? "2" : "0");
            } catch (const DatabaseError&) {
                EXPECT_EQ(all(), before) << nth;
            }
        }
        Workspace::setFaultHook({});
        EXPECT_GT(nth, 3);
        EXPECT_NE(all(), before);
        sql("delete from Ferkelverkauf");
        sql("delete from Stammdaten_Kunde");
        sql("delete from Stammdaten_Stallnummer");
        sql("delete from Sauen where Stallnr = 'C'");
        EXPECT_EQ(all() == before, !sale);
    }
}

TEST_F(FerkelbuchungTest, dieListe) {
    for (const auto& [list, table, count] : {std::tuple{Verlustliste, "Verluste", "Anzahl_Ferkel"},
                                             std::tuple{Handelsliste, "Ferkelverkauf", "Anzahl_Verkauf"}}) {
        aufListe(list, [&](Ferkelliste& form) {
            form.ändern.click();
            form.löschen.click();
            form.kopieren.click();
        });
        EXPECT_EQ(texte(), QStringList({"! Bitte markieren Sie zuerst den Datensatz, den Sie ändern möchten.",
                                        "! Bitte markieren Sie zuerst den Datensatz, den Sie löschen möchten.",
                                        "! Bitte markieren Sie zuerst einen Datensatz, der kopiert werden soll!"}));
        for (int i = 1; i <= 3; ++i)
            sql(QStringLiteral("insert into %1 (Datum, %2, Kennung, Kommentar) values (#07/0%3/2026#, %4, 1, 'k')")
                    .arg(QString(table), QString(count))
                    .arg(4 - i)
                    .arg(i));
        const auto rows = [&] {
            return zeige("select Datum, " + QString(count) + ", Kennung, Kommentar from " + QString(table) +
                         " order by ID");
        };
        aufListe(list, [&](Ferkelliste& form) {
            EXPECT_EQ(form.li.row(), 3);  // the newest
            form.li.choose(2);
            screens.inputs = {"  ", "31.2.", "1207"};
            for (int i = 0; i < 3; ++i) form.kopieren.click();
            EXPECT_EQ(screens.inputTitle, "Datum-Eingabe");
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
        EXPECT_EQ(rows(), "03.07.2026 1 1 k | 02.07.2026 2 1 k | 12.07.2026 2 1 k");
        EXPECT_EQ(texte().filter("Datum nicht korrekt"),
                  QStringList("! Es wird keine Kopie erstellt, weil das Datum nicht korrekt ist!"));
    }
}

TEST_F(FerkelbuchungTest, ändernGehtDurchDieListe) {
    for (int i = 1; i <= 3; ++i)
        sql(QStringLiteral(
                "insert into Verluste (Datum, Anzahl_Ferkel, Kosten, Grund) values (#07/0%1/2026#, %1, 2.5, 'g')")
                .arg(i));
    hofändern<Hofverlust>(3, [&](Hofverlust& form) {
        EXPECT_EQ(form.tdat.text() + form.tz[0].text() + form.tz[1].text() + form.kom[0].text(), "03.07.202632,50g");
        eingeben(form.tz[0], "30");
        form.ok[2].click();
        EXPECT_EQ(form.tz[0].text(), "1");
        form.ok[1].click();
        EXPECT_EQ(form.tz[0].text(), "30");
        form.ok[1].click();
        EXPECT_EQ(form.tz[0].text(), "2");
        form.abbrechen.click();
    });
    EXPECT_EQ(zeige("select Anzahl_Ferkel, Kosten from Verluste order by ID"), "1 2,5 | 2 2,5 | 30 2,5");
}

}  // namespace
}  // namespace koben
