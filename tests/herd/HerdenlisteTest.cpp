// The main form: what the list shows, how it corrects its filters, and what its doors do.
#include "tests/herd/Herdenhof.h"

namespace koben {
namespace {

const QString Korrektur =
    "! In der aktuellen Einstellung können keine Tiere angezeigt werden.\r\n\r\nDie Anzeige wird korrigiert.";
const QString Gone = "Abgangsdatum = #01/01/2026#";

/// Sows of every status, in stock and gone; a boar, a fattening pig, a piglet.
void herde(Herdenhof& farm) {
    for (const char* status : {"B", "B_T", "B_NTG", "S", "G", ""}) {
        farm.tier(QStringLiteral("s%1").arg(status), "Sau", QStringLiteral("Status = '%1'").arg(status));
    }
    farm.tier("e", "Eber");
    farm.tier("m", "Mast");
    farm.tier("f", "Ferkel");
    farm.tier("xS", "Sau", "Status = 'S', " + Gone);
    farm.tier("xe", "Eber", Gone);
}

TEST(HerdenlisteTest, filter) {
    struct {
        int kind, stock, sows;
        const char* numbers;
    } const table[] = {
        {0, 0, 0, "sB sB_T sB_NTG sS sG s e m f"},
        {0, 1, 0, "xS xe"},
        {0, 2, 0, "sB sB_T sB_NTG sS sG s e m f xS xe"},
        {1, 0, 0, "sB sB_T sB_NTG sS sG s"},
        {1, 0, 1, "sB sB_T sB_NTG"},
        {1, 0, 2, "sB_T"},
        {1, 0, 3, "sS"},
        {1, 0, 4, "sB_NTG sG"},
        {1, 0, 5, "sB_NTG"},
        {1, 1, 3, "xS"},
        {1, 2, 3, "sS xS"},
        {2, 0, 2, "e"},  // the choice of sows counts for sows alone
        {2, 2, 0, "e xe"},
        {3, 0, 0, "m"},
        {4, 0, 0, "f"},
    };
    Herdenhof farm;
    herde(farm);
    farm.start([&](PA_Koben& main) {
        farm.sql("update Sauen set Status = mid(Nummer, 2) where Art = 'Sau'");  // the start derived it anew
        for (const auto& row : table) {
            main.optianzeige.select(row.kind);
            main.optiverkauft.select(row.stock);
            main.optisauen[row.sows].click();
            EXPECT_EQ(nummern(main.datali), row.numbers) << row.kind << row.stock << row.sows;
            EXPECT_EQ(main.optisauen[0].visible(), row.kind == 1);
            EXPECT_EQ(main.Label2.visible(), row.kind == 1);
            EXPECT_EQ(main.datali.row(), 1);
        }
        EXPECT_EQ(farm.texte(), QStringList());
    });
}

TEST(HerdenlisteTest, filterDieAllesVerbergenWerdenGeweitet) {
    struct {
        int kind, stock, sows;  // as chosen
        int messages;
        int kindAfter, stockAfter, sowsAfter;
    } const table[] = {
        {1, 1, 2, 2, 1, 0, 0},  // stock first, then the sows' state
        {3, 0, 0, 1, 0, 0, 0},
        {2, 1, 5, 3, 0, 0, 0},
        {0, 1, 0, 1, 0, 0, 0},
    };
    for (const auto& row : table) {
        Herdenhof farm;
        farm.tier("1");
        farm.start([&](PA_Koben& main) {
            main.optianzeige.select(row.kind);
            main.optisauen.select(row.sows);
            main.optiverkauft[row.stock].click();
            EXPECT_EQ(farm.texte().count(Korrektur), row.messages);
            EXPECT_EQ(main.optianzeige.selected(), row.kindAfter);
            EXPECT_EQ(main.optiverkauft.selected(), row.stockAfter);
            EXPECT_EQ(main.optisauen.selected(), row.sowsAfter);
            EXPECT_EQ(nummern(main.datali), "1");
        });
    }
}

TEST(HerdenlisteTest, zählerzeileUndLöschen) {
    Herdenhof farm;
    farm.tier("1", "Sau", "Anz_Belegungen = 3, Anz_Ferkelungen = 2, Anz_Ferkel_Gesamt = 25, Anz_Ferkel_Lebend = 22");
    farm.tier("2", "Sau", "Anz_Belegungen = 1, Selektiert = 'X'");
    farm.tier("3", "Eber");
    farm.tier("4", "Ferkel", "Selektiert = 'X'");
    for (int animal : {1, 2})
        for (const char* table : {"Belegung", "Ferkelung", "Absetzung", "Trächtigkeit", "Verluste", "Verschiebung",
                                  "Behandlung", "Ferkelverkauf"})
            farm.sql(QStringLiteral("insert into %1 (Kennung) values (%2)").arg(QString::fromUtf8(table)).arg(animal));
    const QString question =
        "? Das Löschen eines Schweines entfernt das markierte Schwein unwiederbringlich mit allen zu diesem Schwein "
        "gehörenden Buchungen aus der Datenbank.\r\n\r\nSoll das markierte Schwein wirklich gelöscht werden? => ";
    farm.start([&](PA_Koben& main) {
        EXPECT_EQ(main.bezstati.text(),
                  "Statistik:   Sauen=2   Eber=1   Mast=0   Belegungen=4   Ferkelungen=2   Ferkel-Gesamt=25   "
                  "Ferkel-Lebend=22   Ferkel-Tot=3   Selektiert=2");
        main.datali.choose(1);
        farm.texte();
        farm.screens.answers = {false, true};
        farm.menue(main, "XB_schweinlöschen");
        EXPECT_EQ(nummern(main.datali), "1 2 3 4");
        farm.menue(main, "XB_schweinlöschen");
        EXPECT_EQ(farm.texte(), (QStringList{question + "nein", question + "ja"}));
        EXPECT_EQ(main.loeschhinweis.text(), "Zum Löschen ausgewählt: Sau 1 mit 8 Buchungen.");
        EXPECT_FALSE(main.loeschhinweis.visible()) << "it stands beside the question only";
        EXPECT_EQ(nummern(main.datali), "2 3 4");
        EXPECT_EQ(main.datali.row(), 1);
        EXPECT_EQ(main.bezstati.text(),
                  "Statistik:   Sauen=1   Eber=1   Mast=0   Belegungen=1   Ferkelungen=0   Ferkel-Gesamt=0   "
                  "Ferkel-Lebend=0   Ferkel-Tot=0   Selektiert=2");
    });
    EXPECT_EQ(farm.zeige("select Nummer from Sauen"), "2 | 3 | 4");
    for (const char* table : {"Belegung", "Ferkelung", "Absetzung", "Trächtigkeit", "Verluste", "Verschiebung",
                              "Behandlung", "Ferkelverkauf"})
        EXPECT_EQ(farm.zeige("select Kennung from " + QString::fromUtf8(table)), "2") << table;
}

TEST(HerdenlisteTest, menüsFolgenDerListe) {
    Herdenhof farm;
    const auto states = [](PA_Koben& main) {
        QStringList on;
        for (const char* name : {"XB_neueschweine", "XB_schweinändern", "XB_schweinlöschen", "XE_Eingabe",
                                 "XE_belegung", "XB_schweineselektieren", "XB_Stallnrneuzuordnen", "A_Auswertungen"})
            on += main.find(QString::fromUtf8(name))->enabled() ? "1" : "0";
        return on.join("");
    };
    farm.start([&](PA_Koben& main) {
        EXPECT_EQ(states(main), "10000010");
        farm.texte();
        main.popzeile[1].click();
        EXPECT_EQ(farm.texte(), QStringList("! Bitte markieren Sie zuerst das Schwein, das Sie ändern oder löschen "
                                            "möchten oder bei dem Sie Buchungen eintragen möchten!"));
        main.cmdok.click();
        EXPECT_EQ(farm.texte(), QStringList("! Bitte markieren Sie erst das Tier, von dem Sie die verschiedenen Daten "
                                            "anzeigen möchten oder machen Sie einen Doppelklick auf das entsprechende "
                                            "Tier."));
        main.comdrucken.click();
        EXPECT_EQ(farm.texte(),
                  QStringList("! Sie müssen zuerst ein Tier auswählen, bevor Sie die Daten listen/drucken "
                              "können."));
    });
    farm.tier("1");
    farm.start([&](PA_Koben& main) {
        EXPECT_EQ(states(main), "11110111");  // there is no screen for services on this farm
        EXPECT_FALSE(main.find(u"btn_beweg_belegung")->enabled());
        EXPECT_TRUE(main.find(u"btn_neuesschwein")->enabled());
    });
}

TEST(HerdenlisteTest, ersterHinweisUndErinnerungAnUpdates) {
    struct {
        int starts, after;
        bool reminder;
    } const table[] = {{0, 1, false}, {19, 20, true}, {20, 21, false}, {30000, 30001, false}, {30001, 2, false}};
    for (const auto& row : table) {
        Herdenhof farm;
        farm.tier("1");
        farm.koben.Konfig_Zahl[Zahl::Starts] = static_cast<qint16>(row.starts);
        Einstellungen_sichern(farm.koben);
        farm.start([&](PA_Koben&) {
            EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::Starts], row.after);
            EXPECT_EQ(farm.texte(), row.reminder
                                        ? QStringList("! Bitte [OK] klicken, um zu prüfen, ob Updates verfügbar "
                                                      "sind.")
                                        : QStringList());
        });
    }
    Herdenhof empty;
    empty.start([&](PA_Koben&) {
        EXPECT_EQ(empty.texte(),
                  QStringList("! HINWEIS!!!\r\n\r\nDie 'ersten Schritte' mit KOBEN sowie eine Kurzbeschreibung aller "
                              "Hauptmenuepunkte können Sie unter der Hilfe nachlesen.\r\nUmfangreiche Hilfe erhalten "
                              "Sie direkt in den verschiedenen Modulen!\r\n\r\nSobald ein Schwein (Sau, Eber, "
                              "Masttier) eingegeben wurde, wird diese Information nicht mehr angezeigt!"));
    });
}

TEST(HerdenlisteTest, startMitKurzerOderBeschädigterEinstellungsdatei) {
    struct {
        const char* content;
        int farrowing, pageRows, kind;  // Konfig_Zahl 0, 49, 62
    } const table[] = {
        {"", 116, 60, 0},
        {" 120 \r\n 3", 120, 60, 0},
        {" 120 \r\nkaputt\r\n 7 \r\n", 120, 60, 0},
        {"\x01\x02\x03", 116, 60, 0},
    };
    for (const auto& row : table) {
        Herdenhof farm;
        farm.tier("1");
        farm.write("Einstellungen.ko2", row.content);
        farm.start([&](PA_Koben& main) {
            EXPECT_EQ(farm.koben.Konfig_Zahl[0], row.farrowing) << row.content;
            EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::BerichtZeilen], row.pageRows);
            EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::BerichtDatum], 1);
            EXPECT_EQ(farm.koben.Konfig_Text[Text::Trenner], " | ");
            EXPECT_EQ(main.optianzeige.selected(), row.kind);
            EXPECT_EQ(nummern(main.datali), "1");
        });
    }
    Herdenhof farm;  // values that no screen would store
    farm.tier("1");
    farm.koben.Konfig_Zahl[Zahl::FilterAnzeige] = 77;
    farm.koben.Konfig_Zahl[Zahl::FilterVerkauft] = -3;
    farm.koben.Konfig_Zahl[Zahl::ListeSortSpalte] = 999;
    farm.koben.Konfig_Zahl[Zahl::ListeSortRichtung] = 9;
    farm.koben.Konfig_Text[Text::Sortierung1] = "Gibtsnicht";
    Einstellungen_sichern(farm.koben);
    farm.start([&](PA_Koben& main) {
        EXPECT_EQ(main.optianzeige.selected(), 0);
        EXPECT_EQ(main.optiverkauft.selected(), 0);
        EXPECT_EQ(nummern(main.datali), "1");
        EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::ListeSortSpalte], 1);
        EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::ListeSortRichtung], 0);
    });
}

TEST(HerdenlisteTest, schließenMerktFilterUndFragtNachDerSicherung) {
    struct {
        const char* last;
        const char* after;
        bool asks;
    } const table[] = {{"", "15.07.2026", false},
                       {"kein Datum", "15.07.2026", false},
                       {"02.07.2026", "02.07.2026", false},
                       {"01.07.2026", "01.07.2026", true}};
    for (const auto& row : table) {
        Herdenhof farm;
        farm.tier("1", "Sau", "Status = 'B_NT'");
        farm.write("report-1.htm", "x");
        farm.write("REPORT-2.HTM", "x");
        farm.write("report.htm", "x");
        farm.koben.Konfig_Text[Text::LetzteSicherung] = row.last;
        farm.koben.Konfig_Zahl[Zahl::FilterSauen] = 3;
        Einstellungen_sichern(farm.koben);
        farm.start([&](PA_Koben& main) {
            farm.texte();
            main.optianzeige.select(1);
            main.optisauen.select(5);  // "Nicht tragend" is never kept
            main.optiverkauft.select(2);
            if (row.asks) farm.screens.answers = {false};
            main.closeBox();
        });
        const QString question =
            "? Sie haben seit dem 01.07.2026 keine Datensicherung mehr gemacht.\r\n\r\nSoll jetzt eine Datensicherung "
            "gemacht werden? => nein";
        EXPECT_EQ(farm.texte(), row.asks ? QStringList(question) : QStringList()) << row.last;
        const QStringList saved = farm.lines("Einstellungen.ko2");
        EXPECT_EQ(saved.mid(62, 3).join(""), " 1  2  3 ");
        EXPECT_EQ(saved.value(101 + 11 + Text::LetzteSicherung), row.after);
        EXPECT_FALSE(farm.exists("report-1.htm"));
        EXPECT_FALSE(farm.exists("REPORT-2.HTM"));
        EXPECT_TRUE(farm.exists("report.htm"));
    }
}

TEST(HerdenlisteTest, sortierungGewähltUndVoreingestellt) {
    Herdenhof farm;
    farm.tier("3", "Sau", "Stallnr = 'B'");
    farm.tier("1", "Sau", "Stallnr = 'A'");
    farm.tier("2", "Eber", "Stallnr = 'B'");
    farm.start([&](PA_Koben& main) {
        EXPECT_EQ(nummern(main.datali), "3 1 2");
        main.datali.sortByUser(main.datali.columnOf(u"Nummer"), 2);
        EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::ListeSortSpalte], 2);
        EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::ListeSortRichtung], 2);
        main.datenschweinelesen();
        EXPECT_EQ(nummern(main.datali), "3 2 1");
        farm.koben.Konfig_Text[Text::Sortierung1] = "Stallnr";
        main.datenschweinelesen();
        EXPECT_EQ(nummern(main.datali), "1 3 2");
        farm.koben.Konfig_Text[Text::Sortierung2] = "Nummer";
        main.datenschweinelesen();
        EXPECT_EQ(nummern(main.datali), "1 2 3");
        main.datali.resizeByUser(2, 77);
        main.datenschweinelesen();
        EXPECT_EQ(main.datali.column(2).width, 77);
        farm.koben.Konfig_Zahl[Zahl::LaufendeNummer] = 1;
        EXPECT_EQ(main.datali.rowTitle(2), "2");
        farm.koben.Konfig_Zahl[Zahl::LaufendeNummer] = 0;
        main.datali.choose(3);
        EXPECT_EQ(main.datali.rowTitle(3), "3");
    });
}

TEST(HerdenlisteTest, sucheUndWeiterschalten) {
    Herdenhof farm;
    for (const char* number : {"1", "12", "123", "A*"}) farm.tier(number);
    farm.start([&](PA_Koben& main) {
        const auto at = [&](const char* typed) {
            main.t.type(typed);
            return main.datali.cell(main.datali.row(), u"Nummer");
        };
        EXPECT_EQ(at("12"), "12");
        EXPECT_EQ(at("123"), "123");
        EXPECT_EQ(at("a"), "A*");
        EXPECT_EQ(at("124"), "12");  // no hit for the third key
        EXPECT_EQ(at("  "), "12");
        main.datali.choose(4);
        main.abwaerts[0].click();
        EXPECT_EQ(main.datali.row(), 1);
        main.abwaerts[1].click();
        EXPECT_EQ(main.datali.row(), 4);
        EXPECT_TRUE(
            main.Text1.text().startsWith("TIERDATEN\r\nArt:                 Sau\r\nNummer:              A*\r\n"));
    });
}

/// What another form changed shows at the return, with the row kept and the status derived before.
TEST(HerdenlisteTest, rückkehrAusEinerMaske) {
    Herdenhof farm;
    for (const char* number : {"1", "2", "3"}) farm.tier(number);
    farm.start([&](PA_Koben& main) {
        main.datali.choose(2);
        farm.menue<PB_Neues_Schwein>(main, "XB_neueschweine", [&](PB_Neues_Schwein& form) {
            wählen(form.kom[0], "Sau");
            eingeben(form.t[0], "4");
            form.ok.click();
        });
        EXPECT_EQ(nummern(main.datali), "1 2 3 4");
        EXPECT_EQ(main.datali.row(), 2);
        EXPECT_EQ(farm.koben.Status_neu_berechnen, 0);
        EXPECT_EQ(farm.zeige("select Status from Sauen where Nummer = '4'"),
                  farm.zeige("select Status from Sauen where Nummer = '3'"));
    });
}

TEST(HerdenlisteTest, komprimierenBehältDieDatenUndBeendet) {
    Herdenhof farm;
    farm.tier("1");
    farm.start([&](PA_Koben& main) {
        farm.texte();
        farm.screens.answers = {true};
        farm.menue(main, "O_Datenbankkomprimieren");
        EXPECT_TRUE(main.closed());
        EXPECT_EQ(
            farm.texte().last(),
            "! Die Komprimierung wurde erfolgreich abgeschlossen.\r\n\r\nKOBEN 2.0 wird nun beendet. Bitte starten "
            "Sie KOBEN neu, damit die Datenbasis geladen wird!");
    });
    EXPECT_FALSE(farm.exists("koben2.$$$"));
    EXPECT_EQ(Herdenhof(farm.platform.data).zeige("select Nummer from Sauen"), "1");
}

}  // namespace
}  // namespace koben
