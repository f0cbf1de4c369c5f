// The piglets in stock on the four screens: marks and counts, and what becomes of the marked ones.
#include "tests/bookings/Ferkelhof.h"

namespace koben {
namespace {

using FerkelbestandTest = Ferkelhof;

TEST_F(FerkelbestandTest, jedeAuswahlAufJedemSchirm) {
    const QString ofLoss = "09.07.2026 - - wie`s ist -", ofSale = "09.07.2026 8,5 25 - wie`s ist";
    for (int screen = 0; screen < 4; ++screen)
        for (int option = 0; option < 3; ++option) {
            SCOPED_TRACE(std::to_string(screen) + " option " + std::to_string(option));
            const bool loss = screen == 0 || screen == 2, asks = option == 0 && !loss;
            sql("delete from Sauen where Art = 'Ferkel'");
            for (const char* number : {"A", "B", "C", "D"}) tier(number, "Ferkel");
            if (asks) screens.answers = {true};
            /// Marks the second and third piglet of the list and saves with the option.
            const auto work = [&](auto& form, const char* fields) {
                markieren(form, {2, 3});
                play(form, "tdat=0907; %1; kom(0)=wie's ist; optiverkauf(%2); ok(0)", fields, option);
                EXPECT_TRUE(form.closed());
            };
            ferkelung(1, "06/01/2026", 100);
            koben.Liste_neu_laden = 0;
            if (screen == 0) neu<Sauverlust>(Verluste, {1}, [&](auto& form) { work(form, "tz(1)=25"); });
            if (screen == 1)
                neu<Sauverkauf>(Ferkelverkauf, {1}, [&](auto& form) { work(form, "tz(3)=8,5; tz(1)=25"); });
            if (screen == 2) hof<Hofverlust>([&](auto& form) { work(form, "tz(1)=25"); });
            if (screen == 3) hof<Hofhandel>([&](auto& form) { work(form, "tz(5)=8,5; tz(2)=25"); });
            EXPECT_EQ(imBestand(), option == 0 ? "A | B | C | D" : "A | D");
            const QString left = loss ? ofLoss : ofSale;
            EXPECT_EQ(show("select Abgangsdatum, Abgangsgewicht_kg, Verkaufspreis, Abgangsgrund, Abnehmer from Sauen "
                           "where Nummer in ('B', 'C')"),
                      option == 0   ? "- - - - - | - - - - -"
                      : option == 1 ? ""
                                    : left + " | " + left);
            EXPECT_EQ(koben.Liste_neu_laden, option == 2 ? 1 : 0);
            EXPECT_TRUE(says(QStringList(asks, Bestandsfrage + "ja")));
            EXPECT_EQ(show(loss ? "select last(Anzahl_Ferkel) from Verluste"
                                : "select last(Anzahl_Verkauf) from Ferkelverkauf"),
                      "2");
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
    hof<Hofhandel>([&](Hofhandel& form) { tryOut(form, form.tz[1]); });
}

TEST_F(FerkelbestandTest, einVerlustZähltNurDieMarkierten) {
    const auto tryOut = [&](auto& form) {
        EXPECT_EQ(form.gridli.cell(1, u"Nummer"), "F1");
        typeInto(form.tz[0], "2");
        EXPECT_EQ(form.gridli.markedCount(), 0);
        markieren(form, {1, 2, 3});
        markieren(form, {});
        EXPECT_EQ(form.tz[0].text() + QString::number(form.optiverkauf.selected()), "31");
    };
    neu<Sauverlust>(Verluste, {1}, [&](Sauverlust& form) { tryOut(form); });
    hof<Hofverlust>([&](Hofverlust& form) { tryOut(form); });
}

/// In a series the list shows who is still there, and nobody is marked for the next booking.
TEST_F(FerkelbestandTest, eineSerieNimmtKeinFerkelZweimal) {
    hof<Hofhandel>([&](Hofhandel& form) {
        for (const char* left : {"F1 | F2 | F3", "F1"}) {
            play(form, "tz(1)=2; optiverkauf(1); ok(2)");
            EXPECT_EQ(imBestand(), left);
            EXPECT_EQ(form.gridli.markedCount(), 0);
        }
        EXPECT_EQ(form.gridli.rowCount(), 1);
    });
}

}  // namespace
}  // namespace koben
