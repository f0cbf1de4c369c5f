#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

using Moving = PE_Bewegungsdaten_Verschiebung;

struct VerschiebungTest : testing::Test, Buchungshof {
    VerschiebungTest() {
        for (const char* number : {"12", "40", "50"}) tier(number);
    }
    QString rows() const {
        return show(
            "select Kennung, Datum, Anzahl_Ferkel, Zu_Saunr, Kommentar, Bemerkung from Verschiebung order by "
            "ID");
    }
};

TEST_F(VerschiebungTest, dieGegenbuchungFolgtDerHerdenliste) {
    sql("update Sauen set Abgangsdatum = #06/01/2026# where Nummer = '50'");
    const struct {
        int steps;  ///< of the arrows from 1, up or down
        const char* to;
        const char* rows;
        bool found;
    } cases[] = {
        {2, "40", "1 15.07.2026 3 40 k b | 2 15.07.2026 -3 12 k b", true},
        {-4, "40", "1 15.07.2026 -3 40 k b | 2 15.07.2026 3 12 k b", true},
        {0, "50", "1 15.07.2026 1 50 k b", false},  // sold, so not in the list
        {0, "99", "1 15.07.2026 1 99 k b", false},
        {-200, "40", "1 15.07.2026 -99 40 k b | 2 15.07.2026 99 12 k b", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.rows);
        sql("delete from Verschiebung");
        neu<Moving>(Verschiebung, {1}, [&](Moving& form) {
            EXPECT_EQ(form.kom[0].items(), QStringList({"12", "40", "50"}));  // all sows, also those that left
            for (int i = 0; i < std::abs(c.steps); ++i) c.steps > 0 ? form.UpDown.up() : form.UpDown.down();
            play(form, "kom(0)=%1; kom(1)=k; kom(2)=b; ok(0)", c.to);
        });
        EXPECT_EQ(rows(), c.rows);
        EXPECT_TRUE(says(QStringList(!c.found, "! Es wurde keine Gegenbuchung bei der Sau vorgenommen,*")));
    }
    EXPECT_EQ(liste.datali.row(), 2);
}

TEST_F(VerschiebungTest, ändernUndLöschenLassenDieGegenbuchungStehen) {
    neu<Moving>(Verschiebung, {1}, [&](Moving& form) { play(form, "tz=120; kom(0)=40; ok(0)"); });
    ändern<Moving>(Verschiebung, 1, 1, [&](Moving& form) {
        EXPECT_EQ(textsOf(form, "tz kom(0)"), "120|40");
        play(form, "tz=4; ok(0)");
    });
    EXPECT_TRUE(says({"! Hinweis:*nur bei neuen Buchungen vorgenommen.*"}));
    EXPECT_EQ(rows(), "1 15.07.2026 4 40   | 2 15.07.2026 -120 12  ");
    rahmen(Verschiebung, {1}, [](PE_Bewegungsdaten& frame) { frame.löschen.click(); });
    EXPECT_EQ(rows(), "2 15.07.2026 -120 12  ");
}

TEST_F(VerschiebungTest, regeln) {
    const QString count = "...die Anzahl der zu verschiebenden Ferkel darf nicht 0 sein!";
    const QString date = "...das Datum muß eingegeben werden!";
    const QString sow = "...die Sau, zu der die Ferkel verschoben wurden, angegeben werden muß!";
    const QString other = "...eine Verschiebung muß immer zu einer anderen Sau erfolgen!";
    for (const auto& [steps, lines] : {std::pair{"tz=0; tdat=; kom(0)= ; ok(0)", QStringList{count, date, sow}},
                                       {"tz=3; tdat=03.07.2026; kom(0)=12; ok(0)", QStringList{other}}}) {
        neu<Moving>(Verschiebung, {1}, [&](Moving& form) { play(form, steps); });
        EXPECT_TRUE(says({refusal(lines, "Buchung kann nicht vorgenommen werden")}));
    }
    EXPECT_EQ(rows(), "");
}

}  // namespace
}  // namespace koben
