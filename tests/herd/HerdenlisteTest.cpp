// The main form: what the list shows, how it corrects its filters, and what its doors do.
#include "tests/herd/Herdenhof.h"

namespace koben {
namespace {

const QString Korrektur = "! In der aktuellen Einstellung können keine Tiere angezeigt werden.*";

TEST(HerdenlisteTest, filter) {
    const struct {
        int kind, stock, sows;
        const char* numbers;
    } table[] = {
        {0, 0, 0, "sB sB_T sB_NTG sS sG s e m f"},
        {0, 1, 0, "xS xe"},
        {0, 2, 0, "sB sB_T sB_NTG sS sG s e m f xS xe"},
        {1, 0, 0, "sB sB_T sB_NTG sS sG s"},
        {1, 0, 1, "sB sB_T sB_NTG"},
        {1, 0, 2, "sB_T"},
        {1, 0, 3, "sS"},
        {1, 0, 4, "sB_NTG sG"},
        {1, 0, 5, "sB_NTG"},
        {1, 2, 3, "sS xS"},
        {2, 0, 2, "e"},  // the choice of sows counts for sows alone
        {3, 0, 0, "m"},
        {4, 0, 0, "f"},
    };
    Herdenhof farm;
    for (const char* status : {"B", "B_T", "B_NTG", "S", "G", ""}) farm.tier(QStringLiteral("s%1").arg(status));
    for (const auto& [number, art] : {std::pair{"e", "Eber"}, {"m", "Mast"}, {"f", "Ferkel"}}) farm.tier(number, art);
    farm.tier("xS", "Sau", "Abgangsdatum = #01/01/2026#");
    farm.tier("xe", "Eber", "Abgangsdatum = #01/01/2026#");
    farm.start([&](PA_Koben& main) {
        farm.sql("update Sauen set Status = mid(Nummer, 2) where Art = 'Sau'");  // the start derived it anew
        for (const auto& row : table) {
            main.optianzeige.select(row.kind);
            main.optiverkauft.select(row.stock);
            main.optisauen[row.sows].click();
            EXPECT_EQ(nummern(main.datali), row.numbers) << row.kind << row.stock << row.sows;
            EXPECT_EQ(main.optisauen[0].visible(), row.kind == 1);
        }
        EXPECT_TRUE(farm.says({}));
        main.optianzeige.select(1);
        main.optisauen.select(2);
        main.optiverkauft[1].click();  // without the stock's filter one shows, so that of the state stays
        EXPECT_TRUE(farm.says({Korrektur}));
        EXPECT_EQ(nummern(main.datali), "sB_T");
    });
}

TEST(HerdenlisteTest, zählerzeileUndLöschen) {
    const QString Buchungen[] = {"Belegung", "Ferkelung",    "Absetzung",  "Trächtigkeit",
                                 "Verluste", "Verschiebung", "Behandlung", "Ferkelverkauf"};
    Herdenhof farm;
    farm.tier("1", "Sau", "Anz_Belegungen = 3, Anz_Ferkelungen = 2, Anz_Ferkel_Gesamt = 25, Anz_Ferkel_Lebend = 22");
    farm.tier("2", "Sau", "Anz_Belegungen = 1, Selektiert = 'X'");
    farm.tier("3", "Eber");
    farm.tier("4", "Ferkel", "Selektiert = 'X'");
    for (const QString& table : Buchungen)
        for (const char* animal : {"1", "2"}) farm.sql("insert into %1 (Kennung) values (%2)", table, animal);
    farm.start([&](PA_Koben& main) {
        EXPECT_EQ(main.bezstati.text(),
                  "Statistik:   Sauen=2   Eber=1   Mast=0   Belegungen=4   Ferkelungen=2   Ferkel-Gesamt=25   "
                  "Ferkel-Lebend=22   Ferkel-Tot=3   Selektiert=2");
        main.datali.choose(1);
        farm.texts();
        farm.screens.answers = {false, true};
        farm.menue(main, "XB_schweinlöschen");
        EXPECT_EQ(nummern(main.datali), "1 2 3 4");
        farm.menue(main, "XB_schweinlöschen");
        EXPECT_TRUE(farm.says({"? Das Löschen eines Schweines*nein", "? Das Löschen eines Schweines*ja"}));
        EXPECT_EQ(main.loeschhinweis.text(), "Zum Löschen ausgewählt: Sau 1 mit 8 Buchungen.");
        EXPECT_FALSE(main.loeschhinweis.visible()) << "it stands beside the question only";
        EXPECT_EQ(nummern(main.datali), "2 3 4");
        EXPECT_EQ(main.datali.row(), 1);
        EXPECT_TRUE(main.bezstati.text().startsWith("Statistik:   Sauen=1   Eber=1   Mast=0   Belegungen=1   Fe"));
    });
    EXPECT_EQ(farm.actions, QStringList("Sau 1 mit 8 Buchungen gelöscht"));
    EXPECT_EQ(farm.show("select Nummer from Sauen"), "2 | 3 | 4");
    for (const QString& table : Buchungen) EXPECT_EQ(farm.show("select Kennung from " + table), "2");
}

TEST(HerdenlisteTest, erinnerungAnUpdates) {
    const struct {
        int starts, after;
        bool reminder;
    } table[] = {{0, 1, false}, {19, 20, true}, {20, 21, false}, {30000, 30001, false}, {30001, 2, false}};
    for (const auto& row : table) {
        Herdenhof farm;
        farm.tier("1");
        farm.koben.Konfig_Zahl[Zahl::Starts] = static_cast<qint16>(row.starts);
        Einstellungen_sichern(farm.koben);
        farm.start([&](PA_Koben&) {
            EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::Starts], row.after);
            EXPECT_TRUE(farm.says(QStringList(row.reminder, "! Bitte*ob Updates verfügbar sind.")));
        });
    }
}

TEST(HerdenlisteTest, startMitUnmöglichenEinstellungen) {
    Herdenhof farm;
    farm.tier("1");
    farm.koben.Konfig_Zahl[Zahl::FilterAnzeige] = 77;
    farm.koben.Konfig_Zahl[Zahl::FilterVerkauft] = -3;
    farm.koben.Konfig_Zahl[Zahl::ListeSortSpalte] = 999;
    farm.koben.Konfig_Zahl[Zahl::ListeSortRichtung] = 9;
    farm.koben.Konfig_Text[Text::Sortierung1] = "Gibtsnicht";
    Einstellungen_sichern(farm.koben);
    farm.start([&](PA_Koben& main) {
        EXPECT_EQ(main.optianzeige.selected() + main.optiverkauft.selected(), 0);
        EXPECT_EQ(nummern(main.datali), "1");
        EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::ListeSortSpalte], 1);
        EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::ListeSortRichtung], 0);
    });
}

TEST(HerdenlisteTest, schließenMerktFilterUndFragtNachDerSicherung) {
    const struct {
        const char *last, *after;
        bool asks;
    } table[] = {{"", "15.07.2026", false},
                 {"kein Datum", "15.07.2026", false},
                 {"02.07.2026", "02.07.2026", false},
                 {"01.07.2026", "01.07.2026", true}};
    for (const auto& row : table) {
        Herdenhof farm;
        farm.tier("1", "Sau", "Status = 'B_NT'");
        for (const char* file : {"report-1.htm", "REPORT-2.HTM", "report.htm"}) farm.write(file, "x");
        farm.koben.Konfig_Text[Text::LetzteSicherung] = row.last;
        farm.koben.Konfig_Zahl[Zahl::FilterSauen] = 3;
        Einstellungen_sichern(farm.koben);
        farm.start([&](PA_Koben& main) {
            farm.texts();
            main.optianzeige.select(1);
            main.optisauen.select(5);  // "Nicht tragend" is never kept
            main.optiverkauft.select(2);
            if (row.asks) farm.screens.answers = {false};
            main.closeBox();
        });
        EXPECT_TRUE(farm.says(QStringList(row.asks, "? *seit dem 01.07.2026 keine Datensicherung*nein"))) << row.last;
        const QStringList saved = farm.lines("Einstellungen.ko2");
        EXPECT_EQ(saved.mid(62, 3).join(""), " 1  2  3 ");
        EXPECT_EQ(saved.value(101 + 11 + Text::LetzteSicherung), row.after);
        EXPECT_FALSE(farm.exists("report-1.htm") || farm.exists("REPORT-2.HTM"));
        EXPECT_TRUE(farm.exists("report.htm"));
    }
}

TEST(HerdenlisteTest, sortierungGewähltUndVoreingestellt) {
    Herdenhof farm;
    farm.tier("3", "Sau", "Stallnr = 'B'");
    farm.tier("1", "Sau", "Stallnr = 'A'");
    farm.tier("2", "Eber", "Stallnr = 'B'");
    farm.start([&](PA_Koben& main) {
        const auto listed = [&] {
            main.datenschweinelesen();
            return nummern(main.datali);
        };
        EXPECT_EQ(listed(), "3 1 2");
        for (const auto& [running, title] : {std::pair{1, "1"}, {0, "3"}}) {
            farm.koben.Konfig_Zahl[Zahl::LaufendeNummer] = static_cast<qint16>(running);
            EXPECT_EQ(main.datali.rowTitle(1), title);
        }
        main.datali.sortByUser(main.datali.columnOf(u"Nummer"), 2);
        EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::ListeSortSpalte], 2);
        EXPECT_EQ(farm.koben.Konfig_Zahl[Zahl::ListeSortRichtung], 2);
        EXPECT_EQ(listed(), "3 2 1");
        farm.koben.Konfig_Text[Text::Sortierung1] = "Stallnr";
        EXPECT_EQ(listed(), "1 3 2");
        farm.koben.Konfig_Text[Text::Sortierung2] = "Nummer";
        main.datali.resizeByUser(2, 77);
        EXPECT_EQ(listed(), "1 2 3");
        EXPECT_EQ(main.datali.column(2).width, 77);
    });
}

TEST(HerdenlisteTest, sucheUndWeiterschalten) {
    Herdenhof farm;
    for (const char* number : {"1", "12", "123", "A*"}) farm.tier(number);
    farm.start([&](PA_Koben& main) {
        const std::pair<const char*, const char*> table[] = {
            {"12", "12"}, {"123", "123"}, {"a", "A*"}, {"124", "12"}, {"  ", "12"}};  // no hit for the third key
        for (const auto& [typed, found] : table) {
            main.t.type(typed);
            EXPECT_EQ(main.datali.cell(main.datali.row(), u"Nummer"), found);
        }
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
        farm.menue<PB_Neues_Schwein>(main, "XB_neueschweine",
                                     [](PB_Neues_Schwein& form) { play(form, "kom(0)=Sau; t(0)=4; ok"); });
        EXPECT_EQ(nummern(main.datali), "1 2 3 4");
        EXPECT_EQ(main.datali.row(), 2);
        EXPECT_EQ(farm.koben.Status_neu_berechnen, 0);
    });
}

}  // namespace
}  // namespace koben
