#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

using Moving = PE_Bewegungsdaten_Verschiebung;

class VerschiebungTest : public testing::Test, public Buchungshof {
protected:
    void SetUp() override {
        for (const char* number : {"12", "40", "50"}) tier(number);
    }
    QString rows() const {
        return zeige(
            "select Kennung, Datum, Anzahl_Ferkel, Zu_Saunr, Kommentar, Bemerkung from Verschiebung order by "
            "ID");
    }
};

const QString NichtGefunden =
    "! Es wurde keine Gegenbuchung bei der Sau vorgenommen, zu/von der die Ferkel verschoben "
    "wurde, weil diese nicht gefunden wurde!";

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
            eingeben(form.kom[0], c.to);
            eingeben(form.kom[1], "k");
            eingeben(form.kom[2], "b");
            form.ok[0].click();
        });
        EXPECT_EQ(rows(), c.rows);
        EXPECT_EQ(texte(), c.found ? QStringList() : QStringList(NichtGefunden));
    }
    EXPECT_EQ(liste.datali.row(), 2);
}

TEST_F(VerschiebungTest, ändernUndLöschenLassenDieGegenbuchungStehen) {
    neu<Moving>(Verschiebung, {1}, [&](Moving& form) {
        eingeben(form.tz, "120");
        eingeben(form.kom[0], "40");
        form.ok[0].click();
    });
    texte();
    ändern<Moving>(Verschiebung, 1, 1, [&](Moving& form) {
        EXPECT_EQ(form.tz.text() + ' ' + form.kom[0].text(), "120 40");
        eingeben(form.tz, "4");
        form.ok[0].click();
    });
    EXPECT_EQ(texte(), QStringList("! Hinweis:\r\n\r\nDie Gegenbuchung bei der Sau, zu/von der die Ferkel verschoben "
                                   "wurden, wird nur bei neuen Buchungen vorgenommen. Bitte nehmen Sie die Korrektur "
                                   "also ggf. auch bei der beteiligten Sau manuell vor!"));
    EXPECT_EQ(rows(), "1 15.07.2026 4 40   | 2 15.07.2026 -120 12  ");
    rahmen(Verschiebung, {1}, [](PE_Bewegungsdaten& frame) { frame.löschen.click(); });
    EXPECT_EQ(rows(), "2 15.07.2026 -120 12  ");
}

TEST_F(VerschiebungTest, regeln) {
    const struct {
        const char *count, *date, *to;
        QStringList lines;
    } cases[] = {
        {"0",
         "",
         " ",
         {"...die Anzahl der zu verschiebenden Ferkel darf nicht 0 sein!", "...das Datum muß eingegeben werden!",
          "...die Sau, zu der die Ferkel verschoben wurden, angegeben werden muß!"}},
        {"-3", "03.07.2026", "12", {"...eine Verschiebung muß immer zu einer anderen Sau erfolgen!"}},
    };
    for (const auto& c : cases)
        neu<Moving>(Verschiebung, {1}, [&](Moving& form) {
            form.tz.setText(c.count);
            form.tdat.setText(c.date);
            form.kom[0].setText(c.to);
            texte();
            form.ok[0].click();
            EXPECT_EQ(texte(), QStringList("! Die Buchung kann nicht vorgenommen werden, weil...\r\n\r\n" +
                                           c.lines.join("\r\n")));
        });
    EXPECT_EQ(rows(), "");
}

/// From the farrowing screen several sows may be marked: the piglets move at the current one.
TEST_F(VerschiebungTest, buchtNurBeiDerAktuellenSau) {
    neu<PE_Bewegungsdaten_Ferkelung>(Ferkelung, {1, 3}, [&](PE_Bewegungsdaten_Ferkelung& form) {
        screens.workIn<Moving>([](Moving& moving) {
            eingeben(moving.kom[0], "40");
            moving.ok[0].click();
        });
        form.ok_Verschiebung.click();
    });
    EXPECT_EQ(texte(), QStringList());
    EXPECT_EQ(rows(), "1 15.07.2026 1 40   | 2 15.07.2026 -1 12  ");
}

}  // namespace
}  // namespace koben
