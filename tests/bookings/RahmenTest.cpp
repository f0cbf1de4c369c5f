#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

struct RahmenTest : testing::Test, Buchungshof {};

TEST_F(RahmenTest, ohneTiereSchliesstErSofort) {
    koben.Uebergabe_Anzahl = "7";
    koben.open("PE_Bewegungsdaten");
    EXPECT_TRUE(screens.log.contains("- PE_Bewegungsdaten"));
    EXPECT_TRUE(says({"! Es sind noch keine Tiere eingegeben.*"}));
    EXPECT_EQ(koben.Status_neu_berechnen, 1);
    EXPECT_EQ(koben.Uebergabe_Anzahl, "");
}

TEST_F(RahmenTest, zeigtDieBuchungenDesTiers) {
    tier("12", "Sau", "Stallnr = 'A1'");
    tier("13");
    ferkel("Absetzung", 1, "06/30/2026", 9);
    ferkel("Absetzung", 1, "01/31/2026", 8);
    ferkel("Verluste", 2, "02/01/2026", 1);
    rahmen(Absetzung, {1}, [&](PE_Bewegungsdaten& frame) {
        const auto shown = [&] {
            return frame.caption().section("  ", 1) + " - " + QString::number(frame.li.rowCount()) + " bis " +
                   frame.li.cell(frame.li.row(), u"Datum");
        };
        EXPECT_EQ(shown(), "12 / A1 - 2 bis 30.06.2026");
        frame.schweinli.choose(2);
        EXPECT_EQ(shown(), "13 /  - 0 bis ");
        frame.opti[Verluste].click();
        EXPECT_EQ(koben.Buchungsart_Nr, Verluste);
        EXPECT_EQ(shown(), "13 /  - 1 bis 01.02.2026");
        frame.nextschwein1[1].click();  // wraps
        EXPECT_EQ(frame.schweinli.markedRows(), std::vector<int>{1});
        EXPECT_EQ(shown(), "12 / A1 - 0 bis ");
        frame.nextschwein1[0].click();
        EXPECT_EQ(shown(), "13 /  - 1 bis 01.02.2026");
    });
    liste.datali.setRow(1);
    liste.datali.mark({2});
    in<PE_Bewegungsdaten>("PE_Bewegungsdaten", [](PE_Bewegungsdaten& frame) {
        EXPECT_EQ(frame.schweinli.markedRows(), std::vector<int>{2}) << "as in the herd list";
        EXPECT_EQ(frame.schweinli.row(), 2);
    });
}

TEST_F(RahmenTest, schliesstAufWunschOhneDieWerte) {
    tier("12");
    ferkel("Absetzung", 1, "06/30/2026", 9);
    rahmen(Absetzung, {1}, [&](PE_Bewegungsdaten& frame) {
        screens.answers = {false, true};
        Workspace::setFaultHook([](const QString&) { throw DatabaseError(DatabaseError::Kind::Io, "voll"); });
        frame.cmdschließen.click();
        EXPECT_FALSE(frame.closed());
        frame.cmdschließen.click();
        Workspace::setFaultHook({});
        EXPECT_TRUE(frame.closed());
    });
    const QString told = "! Die Aktion*", asked = "? Die Buchungen sind gespeichert*";
    EXPECT_TRUE(says({told, asked + "nein", told, asked + "ja"}));
}

const QString Mehrere = "! Sie haben für Sammelbuchungen mehrere Schweine markiert.*Tiere einer Art*";
const QString KeineSau = "! Sie haben zur Zeit kein Schwein der Art 'Sau' ausgewählt.*";
const QString NurEine = "! Bei Verschiebungen darf nur ein Schwein markiert sein!";
const QString NurEineÄndern = "! Bei Änderungen darf nur ein Schwein markiert sein!";
const QString KeineBuchung = "! Bitte markieren Sie zuerst den Datensatz, den Sie ändern möchten.";

TEST_F(RahmenTest, neuUndÄndernJeNachAuswahl) {
    // rows: 1 Eber, 2 Ferkel, 3 Mast, 4 and 5 Sau
    const char* const animals[][2] = {{"1", "Eber"}, {"2", "Ferkel"}, {"3", "Mast"}, {"4", "Sau"}, {"5", "Sau"}};
    for (const auto& [number, sort] : animals) tier(number, sort);
    const struct {
        Buchung kind;
        std::vector<int> marks;
        bool opens;
        QStringList neu, ändern;
    } cases[] = {
        {Belegung, {4}, true, {}, {KeineBuchung}},
        {Belegung, {4, 5}, true, {}, {NurEineÄndern}},
        {Belegung, {1}, true, {KeineSau}, {KeineBuchung}},
        {Belegung, {2, 3}, true, {KeineSau}, {NurEineÄndern}},
        {Belegung, {1, 4}, false, {Mehrere}, {NurEineÄndern}},
        {Belegung, {1, 3}, false, {Mehrere}, {NurEineÄndern}},
        {Belegung, {3, 4}, false, {Mehrere}, {NurEineÄndern}},
        {Verschiebung, {4, 5}, false, {NurEine}, {NurEineÄndern}},
        {Verschiebung, {2, 3}, false, {KeineSau, NurEine}, {NurEineÄndern}},
        {Behandlung, {1}, false, {}, {KeineBuchung}},  // treatments are for every animal; no screen of them here
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.marks) + " Art " + std::to_string(c.kind));
        rahmen(c.kind, c.marks, [&](PE_Bewegungsdaten& frame) {
            screens.takeLog();
            frame.neu.click();
            EXPECT_EQ(screens.log.contains("+ PE_Bewegungsdaten_Belegung"), c.opens);
            EXPECT_TRUE(says(c.neu));
            frame.popzeile[1].click();
            EXPECT_TRUE(says(c.ändern));
        });
    }
}

TEST_F(RahmenTest, löschenLässtDieAnderenBuchungenStehen) {
    tier("12");
    tier("40");
    ferkelung(1, "01/10/2025", 10);
    ferkelung(1, "07/10/2025", 11);
    Wurfnummern_berechnen(db, 1);
    rahmen(Ferkelung, {1}, [&](PE_Bewegungsdaten& frame) {
        frame.li.choose(1);
        koben.Konfig_Zahl[Zahl::LoeschenBestaetigen] = 1;
        screens.answers = {false, true};
        frame.löschen.click();
        EXPECT_EQ(frame.li.rowCount(), 2);
        frame.löschen.click();
        EXPECT_EQ(frame.li.rowCount() + frame.li.row(), 2);
        EXPECT_EQ(show("select Ferkel_Gesamt, LNr, LNrJahr from Ferkelung"), "11 1 1");
        koben.Konfig_Zahl[Zahl::LoeschenBestaetigen] = 0;
        frame.li.key(Key::Delete);
        texts();
        frame.löschen.click();
        EXPECT_TRUE(says({"! *den Sie löschen möchten."}));
    });
    EXPECT_EQ(show("select * from Ferkelung"), "");
    EXPECT_EQ(actions, (QStringList{"Ferkelung 12 vom 10.01.2025 gelöscht", "Ferkelung 12 vom 10.07.2025 gelöscht"}));
}

TEST_F(RahmenTest, kopiertAufEinAnderesDatum) {
    tier("12");
    tier("40");
    sql("insert into Ferkelung (Kennung, Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot, Kosten, Bemerkung) "
        "values (1, #03/01/2026#, 12, 11, 1, 1.5, 'x')");
    rahmen(Ferkelung, {1}, [&](PE_Bewegungsdaten& frame) {
        screens.inputs = {"", "3113", "1502"};
        for (int i = 0; i < 3; ++i) frame.popzeile[5].click();
        EXPECT_TRUE(says({"?= *", "?= *3113", "! Die markierte Buchung wurde nicht kopiert.", "?= *1502",
                          "! Die markierte Buchung wurde auf das Datum 15.02.2026 kopiert."}));
        EXPECT_EQ(frame.li.rowCount(), 2);
        EXPECT_EQ(frame.li.cell(1, u"Datum"), "15.02.2026");
    });
    EXPECT_EQ(show("select Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot, Stück_Gewicht_kg, Kosten, Bemerkung, "
                   "Kennung, LNr, ID from Ferkelung order by ID"),
              "01.03.2026 12 11 1 - 1,5 x 1 2 1 | 15.02.2026 12 11 1 - 1,5 x 1 1 2");
    sql("insert into Verschiebung (Kennung, Datum, Anzahl_Ferkel, Zu_Saunr) values (1, #03/01/2026#, 3, '40')");
    rahmen(Verschiebung, {1, 2}, [&](PE_Bewegungsdaten& frame) {
        screens.inputs = {"020326"};
        frame.kopieren.click();
    });
    EXPECT_EQ(show("select Datum, Anzahl_Ferkel, Zu_Saunr, Kennung from Verschiebung order by ID"),
              "01.03.2026 3 40 1 | 02.03.2026 3 40 1");
    EXPECT_EQ(actions, (QStringList{"Ferkelung 12 vom 01.03.2026 auf 15.02.2026 kopiert",
                                    "Verschiebung 12 vom 01.03.2026 auf 02.03.2026 kopiert"}));
    rahmen(Verschiebung, {2}, [&](PE_Bewegungsdaten& frame) {
        texts();
        frame.kopieren.click();
        EXPECT_TRUE(says({"! Bitte markieren Sie zuerst einen Datensatz, der kopiert*"}));
    });
}

TEST_F(RahmenTest, wähltNachStall) {
    for (const char* stall : {"B2", "A1", "leer"})
        sql("insert into Stammdaten_Stallnummer (Inhalt) values ('%1')", stall);
    const char* const stalls[] = {"A1", "B2", "A1", ""};
    for (int i = 0; i < 4; ++i) tier(QString::number(i + 1), "Sau", QStringLiteral("Stallnr = '%1'").arg(stalls[i]));
    rahmen(Belegung, {4}, [&](PE_Bewegungsdaten& frame) {
        EXPECT_EQ(frame.kom.items(), QStringList({"A1", "B2", "leer"}));
        frame.kom.choose(0);
        EXPECT_EQ(frame.schweinli.markedRows(), (std::vector<int>{1, 3}));
        EXPECT_EQ(frame.schweinli.row(), 4);
        frame.konalt.click();
        frame.kom.choose(1);
        EXPECT_EQ(frame.schweinli.markedRows(), (std::vector<int>{1, 2, 3}));
        frame.kom.choose(2);  // earlier marks stay, so there is nothing to report
        EXPECT_EQ(frame.schweinli.markedCount(), 3);
        frame.konalt.click();
        screens.answers = {false};
        frame.kom.choose(2);
        EXPECT_TRUE(says({"? ACHTUNG!!!*keine Tiere im ausgewählten Stall*nein"}));
        EXPECT_EQ(frame.schweinli.markedRows(), std::vector<int>{1});
        EXPECT_EQ(frame.schweinli.row(), 1);
    });
}

}  // namespace
}  // namespace koben
