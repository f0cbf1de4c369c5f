#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

class RahmenTest : public testing::Test, public Buchungshof {};

TEST_F(RahmenTest, ohneTiereSchliesstErSofort) {
    koben.Uebergabe_Anzahl = "7";
    koben.open("PE_Bewegungsdaten");
    EXPECT_EQ(screens.log,
              QStringList({"+ PE_Bewegungsdaten",
                           "! Es sind noch keine Tiere eingegeben. Bevor Sie Bewegungsdaten verwalten können, müssen "
                           "Tiere eingegeben werden. Das Modul wird deshalb wieder geschlossen.",
                           "- PE_Bewegungsdaten"}));
    EXPECT_EQ(koben.Status_neu_berechnen, 1);
    EXPECT_EQ(koben.Uebergabe_Anzahl, "");
}

TEST_F(RahmenTest, zeigtDieBuchungenDesTiers) {
    tier("12", "Sau", "A1");
    tier("13");
    ferkel("Absetzung", 1, "06/30/2026", 9);
    ferkel("Absetzung", 1, "01/31/2026", 8);
    ferkel("Verluste", 2, "02/01/2026", 1);
    rahmen(Absetzung, {1}, [&](PE_Bewegungsdaten& frame) {
        EXPECT_EQ(frame.caption(), "Bewegungsdaten für das Schwein:  12 / A1");
        EXPECT_EQ(frame.li.rowCount(), 2);
        EXPECT_EQ(frame.li.row(), 2);
        EXPECT_EQ(frame.li.cell(2, u"Anzahl_Ferkel"), "9");
        frame.schweinli.choose(2);
        EXPECT_EQ(frame.caption(), "Bewegungsdaten für das Schwein:  13 / ");
        EXPECT_EQ(frame.li.rowCount(), 0);
        frame.opti[Verluste].click();
        EXPECT_EQ(koben.Buchungsart_Nr, Verluste);
        EXPECT_EQ(frame.li.cell(1, u"Datum"), "01.02.2026");
        frame.nextschwein1[1].click();  // wraps
        EXPECT_EQ(frame.schweinli.row(), 1);
        EXPECT_EQ(frame.schweinli.markedRows(), std::vector<int>{1});
        frame.nextschwein1[0].click();
        EXPECT_EQ(frame.schweinli.row(), 2);
        EXPECT_EQ(frame.li.rowCount(), 1);
    });
}

TEST_F(RahmenTest, uebernimmtDieMarkierungDerHerdenliste) {
    for (const char* number : {"1", "2", "3"}) tier(number);
    liste.datenschweinelesen();
    liste.datali.setRow(1);
    liste.datali.mark({2, 3});
    screens.workIn<PE_Bewegungsdaten>([](PE_Bewegungsdaten& frame) {
        EXPECT_EQ(frame.schweinli.markedRows(), (std::vector<int>{2, 3}));
        EXPECT_EQ(frame.schweinli.row(), 2);
        EXPECT_EQ(frame.schweinli.columnCount(), 16);
    });
    koben.open("PE_Bewegungsdaten");
}

const QString Mehrere =
    "! Sie haben für Sammelbuchungen mehrere Schweine markiert. Für Sammelbuchungen dürfen nur Tiere einer Art (nur "
    "Sauen, nur Eber oder nur Masttiere) ausgewählt werden!. Bitte ändern Sie deshalb Ihre Auswahl entsprechend ab!";
const QString KeineSau =
    "! Sie haben zur Zeit kein Schwein der Art 'Sau' ausgewählt. Die gewünschte Aktion macht eigentlich nur bei Sauen "
    "Sinn. Das Modul für die Eingabe wird jetzt trotzdem geöffnet!";
const QString NurEine = "! Bei Verschiebungen darf nur ein Schwein markiert sein!";
const QString NurEineÄndern = "! Bei Änderungen darf nur ein Schwein markiert sein!";
const QString KeineBuchung = "! Bitte markieren Sie zuerst den Datensatz, den Sie ändern möchten.";

TEST_F(RahmenTest, neuUndÄndernJeNachAuswahl) {
    // rows: 1 Eber, 2 Ferkel, 3 Mast, 4 and 5 Sau
    const char* const animals[][2] = {{"1", "Eber"}, {"2", "Ferkel"}, {"3", "Mast"}, {"4", "Sau"}, {"5", "Sau"}};
    for (const auto& [number, sort] : animals) tier(number, sort);
    const QStringList opens{"+ PE_Bewegungsdaten_Belegung", "- PE_Bewegungsdaten_Belegung"};
    const struct {
        Buchung kind;
        std::vector<int> marks;
        QStringList neu, ändern;
    } cases[] = {
        {Belegung, {4}, opens, {KeineBuchung}},
        {Belegung, {4, 5}, opens, {NurEineÄndern}},
        {Belegung, {1}, QStringList(KeineSau) + opens, {KeineBuchung}},
        {Belegung, {2, 3}, QStringList(KeineSau) + opens, {NurEineÄndern}},
        {Belegung, {1, 4}, {Mehrere}, {NurEineÄndern}},
        {Belegung, {1, 3}, {Mehrere}, {NurEineÄndern}},
        {Belegung, {3, 4}, {Mehrere}, {NurEineÄndern}},
        {Verschiebung, {4, 5}, {NurEine}, {NurEineÄndern}},
        {Verschiebung, {2, 3}, {KeineSau, NurEine}, {NurEineÄndern}},
        {Behandlung, {1}, {}, {KeineBuchung}},  // treatments are for every animal
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.marks) + " Art " + std::to_string(c.kind));
        rahmen(c.kind, c.marks, [&](PE_Bewegungsdaten& frame) {
            screens.takeLog();
            frame.neu.click();
            EXPECT_EQ(screens.takeLog(), c.neu);
            frame.popzeile[1].click();
            EXPECT_EQ(screens.takeLog(), c.ändern);
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
        EXPECT_EQ(frame.li.rowCount(), 1);
        EXPECT_EQ(frame.li.row(), 1);
        EXPECT_EQ(zeige("select Ferkel_Gesamt, LNr, LNrJahr from Ferkelung"), "11 1 1");
        koben.Konfig_Zahl[Zahl::LoeschenBestaetigen] = 0;
        frame.li.key(Key::Delete);
        texte();
        frame.löschen.click();
        EXPECT_EQ(texte(), QStringList("! Bitte markieren Sie zuerst den Datensatz, den Sie löschen möchten."));
    });
    EXPECT_EQ(zeige("select * from Ferkelung"), "");
}

TEST_F(RahmenTest, kopiertAufEinAnderesDatum) {
    tier("12");
    tier("40");
    const QString input =
        "?= Bitte geben Sie an, zu welchem neuen Datum der markierte Datensatz kopiert und eingetragen werden soll! "
        "Wenn Sie nichts eintragen, wird der Datensatz nicht kopiert.\r\n\r\nTipp: Das Datum kann in Kurzschreibweise "
        "(2, 4 oder 6-stellig) eingegeben werden. => ";
    sql("insert into Ferkelung (Kennung, Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot, Kosten, Bemerkung) "
        "values (1, #03/01/2026#, 12, 11, 1, 1.5, 'x')");
    rahmen(Ferkelung, {1}, [&](PE_Bewegungsdaten& frame) {
        screens.inputs = {"", "3113", "1502"};
        texte();
        for (int i = 0; i < 3; ++i) frame.popzeile[5].click();
        EXPECT_EQ(texte(),
                  QStringList({input, input + "3113", "! Die markierte Buchung wurde nicht kopiert.", input + "1502",
                               "! Die markierte Buchung wurde auf das Datum 15.02.2026 kopiert."}));
        EXPECT_EQ(frame.li.rowCount(), 2);
        EXPECT_EQ(frame.li.cell(1, u"Datum"), "15.02.2026");
    });
    EXPECT_EQ(zeige("select Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot, Stück_Gewicht_kg, Kosten, Bemerkung, "
                    "Kennung, LNr, ID from Ferkelung order by ID"),
              "01.03.2026 12 11 1 - 1,5 x 1 2 1 | 15.02.2026 12 11 1 - 1,5 x 1 1 2");
    sql("insert into Verschiebung (Kennung, Datum, Anzahl_Ferkel, Zu_Saunr) values (1, #03/01/2026#, 3, '40')");
    rahmen(Verschiebung, {1, 2}, [&](PE_Bewegungsdaten& frame) {
        screens.inputs = {"020326"};
        frame.kopieren.click();
    });
    EXPECT_EQ(zeige("select Datum, Anzahl_Ferkel, Zu_Saunr, Kennung from Verschiebung order by ID"),
              "01.03.2026 3 40 1 | 02.03.2026 3 40 1");
    rahmen(Verschiebung, {2}, [&](PE_Bewegungsdaten& frame) {
        texte();
        frame.kopieren.click();
        EXPECT_EQ(texte(), QStringList("! Bitte markieren Sie zuerst einen Datensatz, der kopiert und unter einem "
                                       "anderen Datum wieder eingefügt werden soll!"));
    });
}

TEST_F(RahmenTest, wähltNachStall) {
    sql("insert into Stammdaten_Stallnummer (Inhalt) values ('B2')");
    sql("insert into Stammdaten_Stallnummer (Inhalt) values ('A1')");
    sql("insert into Stammdaten_Stallnummer (Inhalt) values ('leer')");
    const char* const stalls[] = {"A1", "B2", "A1", ""};
    for (int i = 0; i < 4; ++i) tier(QString::number(i + 1), "Sau", stalls[i]);
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
        texte();
        frame.kom.choose(2);
        EXPECT_EQ(texte(), QStringList("? ACHTUNG!!!\r\n\r\nEs wurden keine Tiere im ausgewählten Stall gefunden. "
                                       "Deshalb wird das erste Tier markiert. => nein"));
        EXPECT_EQ(frame.schweinli.markedRows(), std::vector<int>{1});
        EXPECT_EQ(frame.schweinli.row(), 1);
    });
}

TEST_F(RahmenTest, hältSpaltenbreitenJeArt) {
    tier("12");
    rahmen(Belegung, {1}, [&](PE_Bewegungsdaten& frame) {
        frame.li.resizeByUser(frame.li.columnOf(u"Ebernr"), 10);
        frame.opti[Trächtigkeit].click();
        frame.li.resizeByUser(frame.li.columnOf(u"Kosten"), 80);
    });
    EXPECT_EQ(platform.settings["0bewegungsdaten/ColWidths"], "Ebernr=25");
    EXPECT_EQ(platform.settings["1bewegungsdaten/ColWidths"], "Kosten=80");
    rahmen(Belegung, {1}, [&](PE_Bewegungsdaten& frame) {
        EXPECT_EQ(frame.li.column(frame.li.columnOf(u"Ebernr")).width, 25);
        EXPECT_EQ(frame.li.column(frame.li.columnOf(u"Kosten")).width, 0);
    });
}

TEST_F(RahmenTest, rechnetErstBeimSchliessen) {
    tier("12");
    rahmen(Belegung, {1}, [&](PE_Bewegungsdaten& frame) {
        sql("insert into Belegung (Kennung, Datum) values (1, #07/01/2026#)");
        EXPECT_EQ(zeige("select L_Belegung, N_Ferkelung from Sauen"), "- -");
        koben.Status_neu_berechnen = koben.Liste_neu_laden = 0;
        frame.closeBox();
    });
    EXPECT_EQ(zeige("select L_Belegung, N_Ferkelung, Anz_Belegungen, Status from Sauen"), "01.07.2026 25.10.2026 1 -");
    EXPECT_EQ(koben.Status_neu_berechnen + koben.Liste_neu_laden, 2);
    EXPECT_EQ(screens.waiting, 0);
}

}  // namespace
}  // namespace koben
