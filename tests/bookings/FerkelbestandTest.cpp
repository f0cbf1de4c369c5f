// The piglets in stock on the four screens: marks and counts, and what becomes of the marked ones.
#include "tests/bookings/Ferkelhof.h"

namespace koben {
namespace {

class FerkelbestandTest : public Ferkelhof {
protected:
    /// Marks the second and third piglet of the list on each of the four screens and saves with an option.
    void buche(int screen, int option) {
        const auto work = [&](auto& form, int price) {
            markieren(form, {2, 3});
            eingeben(form.tdat, "0907");
            eingeben(form.tz[price], "25");
            eingeben(form.kom[0], "wie's ist");
            form.optiverkauf[option].click();
            form.ok[0].click();
            EXPECT_TRUE(form.closed()) << screen << option;
        };
        ferkelung(1, "06/01/2026", 100);
        koben.Liste_neu_laden = 0;
        switch (screen) {
            case 0:
                return neu<Sauverlust>(Verluste, {1}, [&](Sauverlust& form) { work(form, 1); });
            case 1:
                return neu<Sauverkauf>(Ferkelverkauf, {1}, [&](Sauverkauf& form) {
                    eingeben(form.tz[3], "8,5");
                    work(form, 1);
                });
            case 2:
                return hofneu<Hofverlust>([&](Hofverlust& form) { work(form, 1); });
            default:
                return hofneu<Hofhandel>([&](Hofhandel& form) {
                    eingeben(form.tz[5], "8,5");
                    work(form, 2);
                });
        }
    }
};

TEST_F(FerkelbestandTest, jedeAuswahlAufJedemSchirm) {
    const QString ofLoss = "09.07.2026 - - wie`s ist -", ofSale = "09.07.2026 8,5 25 - wie`s ist";
    for (int screen = 0; screen < 4; ++screen) {
        const bool loss = screen == 0 || screen == 2;
        for (int option = 0; option < 3; ++option) {
            sql("delete from Sauen where Art = 'Ferkel'");
            for (const char* number : {"A", "B", "C", "D"}) tier(number, "Ferkel");
            screens.answers.clear();
            if (option == 0 && !loss) screens.answers = {true};
            buche(screen, option);
            EXPECT_EQ(imBestand(), option == 0 ? "A | B | C | D" : "A | D") << screen << option;
            const QString left = loss ? ofLoss : ofSale;
            EXPECT_EQ(zeige("select Abgangsdatum, Abgangsgewicht_kg, Verkaufspreis, Abgangsgrund, Abnehmer from Sauen "
                            "where Nummer in ('B', 'C')"),
                      option == 0   ? "- - - - - | - - - - -"
                      : option == 1 ? ""
                                    : left + " | " + left)
                << screen << option;
            EXPECT_EQ(koben.Liste_neu_laden, option == 2 ? 1 : 0) << screen << option;
            EXPECT_EQ(texte(), option == 0 && !loss ? QStringList(Bestandsfrage + "ja") : QStringList());
            EXPECT_EQ(zeige(loss ? "select last(Anzahl_Ferkel) from Verluste"
                                 : "select last(Anzahl_Verkauf) from Ferkelverkauf"),
                      "2");
        }
    }
}

TEST_F(FerkelbestandTest, dieÄltestenWerdenMarkiert) {
    const auto numbers = [](auto& form) {
        QStringList marked;
        for (int row : form.gridli.markedRows()) marked += form.gridli.cell(row, u"Nummer");
        return marked.join(u' ') + " / " + form.gridlisumme.text();
    };
    const auto tryOut = [&](auto& form, TextBox& count) {
        EXPECT_EQ(numbers(form), " / 0 von 5 Ferkeln markiert");
        const char* const cases[][2] = {
            {"3", "F5 F4 F3 / 3"}, {"1", "F5 / 1"}, {"12", "F5 F4 F3 F2 F1 / 5"}, {"0", " / 0"}};
        for (const auto& [typed, marked] : cases) {
            count.type(typed);
            EXPECT_EQ(numbers(form), QString(marked) + " von 5 Ferkeln markiert") << typed;
            EXPECT_EQ(form.optiverkauf.selected(), 0);
        }
        markieren(form, {1, 4, 5});
        EXPECT_EQ(numbers(form) + count.text(), "F5 F2 F1 / 3 von 5 Ferkeln markiert3");
        EXPECT_EQ(form.optiverkauf.selected(), 1);
        markieren(form, {});  // leaves both as they are
        EXPECT_EQ(count.text() + QString::number(form.optiverkauf.selected()), "31");
    };
    neu<Sauverkauf>(Ferkelverkauf, {1}, [&](Sauverkauf& form) { tryOut(form, form.tz[0]); });
    hofneu<Hofhandel>([&](Hofhandel& form) { tryOut(form, form.tz[1]); });
}

TEST_F(FerkelbestandTest, einVerlustZähltNurDieMarkierten) {
    const auto tryOut = [&](auto& form) {
        EXPECT_EQ(form.gridli.cell(1, u"Nummer"), "F1");
        eingeben(form.tz[0], "2");
        EXPECT_EQ(form.gridli.markedCount(), 0);
        markieren(form, {1, 2, 3});
        markieren(form, {});
        EXPECT_EQ(form.tz[0].text() + QString::number(form.optiverkauf.selected()), "31");
    };
    neu<Sauverlust>(Verluste, {1}, [&](Sauverlust& form) { tryOut(form); });
    hofneu<Hofverlust>([&](Hofverlust& form) { tryOut(form); });
}

/// In a series the list shows who is still there, and nobody is marked for the next booking.
TEST_F(FerkelbestandTest, eineSerieNimmtKeinFerkelZweimal) {
    hofneu<Hofhandel>([&](Hofhandel& form) {
        for (const char* left : {"F1 | F2 | F3", "F1"}) {
            form.tz[1].type("2");
            form.tz[1].leave();
            form.optiverkauf[1].click();
            form.ok[2].click();
            EXPECT_EQ(imBestand(), left);
            EXPECT_EQ(form.gridli.markedCount(), 0);
        }
        EXPECT_EQ(form.gridli.rowCount(), 1);
    });
}

TEST_F(FerkelbestandTest, beiMehrerenSauenGehenDieFerkelEinmal) {
    screens.answers = {true};
    neu<Sauverlust>(Verluste, {1, 2}, [&](Sauverlust& form) {
        markieren(form, {1, 2});
        form.ok[0].click();
    });
    EXPECT_EQ(verluste(), "15.07.2026 2  0 11   1 | 15.07.2026 2  0 12   2");
    EXPECT_EQ(imBestand(), "F3 | F4 | F5");
}

TEST_F(FerkelbestandTest, ohneKostenBleibenDieFerkel) {
    const struct { const char *costs, *left; } cases[] = {{"0", "F1 | F2 | F3 | F4 | F5"}, {"1", "F2 | F3 | F4 | F5"}};
    for (const auto& c : cases)
        hofneu<Hofverlust>([&](Hofverlust& form) {
            markieren(form, {1});
            eingeben(form.tz[1], c.costs);
            form.ok[0].click();
            EXPECT_EQ(imBestand(), c.left);
        });
}

/// A pen of piglets is one statement, however many they are.
TEST_F(FerkelbestandTest, vieleFerkelSindWenigeAnweisungen) {
    sql("delete from Sauen where Art = 'Ferkel'");
    {
        Transaction all(db);
        Statement insert = db.prepare("insert into Sauen (Art, Nummer, Geburtsdatum) values (?, ?, ?)");
        for (int i = 0; i < 3000; ++i)  // a sow among them
            insert.run({i == 1000 ? QString("Sau") : QString("Ferkel"), QString::number(i), QDate(2026, 6, 1)});
        all.commit();
    }
    hofneu<Hofhandel>([&](Hofhandel& form) {
        eingeben(form.tz[1], "999");
        form.gridli.mark({});
        eingeben(form.tz[1], "2999");
        form.optiverkauf[1].click();
        int deletes = 0;
        Workspace::setFaultHook([&](const QString& text) { deletes += text.contains("delete", Qt::CaseInsensitive); });
        form.ok[0].click();
        Workspace::setFaultHook({});
        EXPECT_EQ(deletes, 2);
    });
    EXPECT_EQ(zeige("select Art, count(*) from Sauen where Nummer <> 'X' group by Art"), "Sau 3");
}

}  // namespace
}  // namespace koben
