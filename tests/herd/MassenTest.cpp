// What is done to all marked animals at once: texts, results, and nothing half done.
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>
#include <numeric>

#include "tests/herd/Herdenhof.h"

namespace koben {
namespace {

const QString NichtsMarkiert = "! Es sind keine Schweine markiert!";
const QString MastFrage = "? Sollen die 3 Ferkel neu als Masttiere verwaltet werden? => ";
const QString BuchungsFrage =
    "? Soll jetzt eine automatische Verkaufsbuchung mit dem Kunden 'Eigenbetrieb' und Kommentar 'In Mast umgebucht' "
    "angelegt werden?\r\n\r\nDurch diese Buchung sind die Ferkel künftig auch im Bestandsregister nach VVVO richtig "
    "geführt. => ";

/// A sow and three piglets; the sow and two piglets get marked.
void anlegen(Herdenhof& farm) {
    farm.tier("10");
    for (const char* number : {"F1", "F2", "F3"}) farm.tier(number, "Ferkel");
}

TEST(MassenTest, ferkelInDieMast) {
    struct {
        std::vector<int> marks;
        std::deque<bool> answers;
        QStringList texts;
        const char *kinds, *sales;
        int status;
    } const table[] = {
        {{}, {}, {NichtsMarkiert}, "Sau | Ferkel | Ferkel | Ferkel", "", 0},
        {{1, 2, 4}, {false}, {MastFrage + "nein"}, "Sau | Ferkel | Ferkel | Ferkel", "", 0},
        {{1, 2, 4}, {true, false}, {MastFrage + "ja", BuchungsFrage + "nein"}, "Sau | Mast | Ferkel | Mast", "", 1},
        {{1, 2, 4},
         {true, true},
         {MastFrage + "ja", BuchungsFrage + "ja"},
         "Sau | Mast | Ferkel | Mast",
         "15.07.2026 0 2 0 0 0 0 0 Eigenbetrieb  In Mast gebucht 0",
         1},
        {{1},
         {true},
         {"? Sollen die 1 Ferkel neu als Masttiere verwaltet werden? => ja"},
         "Sau | Ferkel | Ferkel | Ferkel",
         "",
         1},
    };
    for (const auto& row : table) {
        Herdenhof farm;
        anlegen(farm);
        farm.start([&](PA_Koben& main) {
            farm.texte();
            main.datali.mark(row.marks);
            farm.screens.answers = row.answers;
            farm.menue(main, "XB_Markierte_Ferkel_in_Mast");
            EXPECT_EQ(farm.texte(), row.texts);
            EXPECT_EQ(farm.koben.Status_neu_berechnen, row.status);
        });
        EXPECT_EQ(farm.zeige("select Art from Sauen"), row.kinds);
        EXPECT_EQ(farm.zeige("select Datum, Anzahl_Einkauf, Anzahl_Verkauf, Preis_je_Stück, Einnahmen, Ausgaben, "
                             "Stück_Gewicht_kg, Gesamtgewicht_kg, Kunde, Muttersau, Kommentar, Kennung from "
                             "Ferkelverkauf"),
                  row.sales);
    }
}

/// A whole barn is moved at once, in more than one booking where its field cannot hold the count.
TEST(MassenTest, vieleFerkelInDieMast) {
    Herdenhof farm;
    farm.tier("F", "Ferkel");
    for (int i = 0; i < 15; ++i)
        farm.sql("insert into Sauen (Art, Nummer, Selektiert) select Art, Nummer, Selektiert from Sauen");
    farm.start([&](PA_Koben& main) {
        std::vector<int> rows(32768);
        std::iota(rows.begin(), rows.end(), 1);
        main.datali.mark(rows);
        farm.screens.answers = {true, true};
        farm.menue(main, "XB_Markierte_Ferkel_in_Mast");
    });
    EXPECT_EQ(farm.zeige("select Art, count(*) from Sauen group by Art"), "Mast 32768");
    EXPECT_EQ(farm.zeige("select Anzahl_Verkauf from Ferkelverkauf"), "32767 | 1");
}

TEST(MassenTest, neueStallnummer) {
    const QString question = "? Sollen bei den 2 Schweinen neue Stallnummern zugeordnet werden? => ";
    const QString prompt = "?= Welche Stallnr soll den markierten Sauen neu zugeordnet werden? => ";
    const QString none = "! Es wurde keine Stall-Nr eingegeben. Die Aktion wird nicht ausgeführt.";
    struct {
        std::vector<int> marks;
        bool answer;
        QString input;
        QStringList texts;
        const char* stalls;
    } const table[] = {
        {{}, false, {}, {NichtsMarkiert}, "- | - | - | -"},
        {{2, 3}, false, {}, {question + "nein"}, "- | - | - | -"},
        {{2, 3}, true, "", {question + "ja", prompt, none}, "- | - | - | -"},
        {{2, 3}, true, "          B7", {question + "ja", prompt + "          B7", none}, "- | - | - | -"},
        {{2, 3}, true, " Abteil'7-123", {question + "ja", prompt + " Abteil'7-123"}, "- | Abteil`7- | Abteil`7- | -"},
    };
    for (const auto& row : table) {
        Herdenhof farm;
        anlegen(farm);
        farm.start([&](PA_Koben& main) {
            farm.texte();
            main.datali.mark(row.marks);
            if (!row.marks.empty()) farm.screens.answers = {row.answer};
            if (row.answer) farm.screens.inputs = {row.input};
            farm.menue(main, "XB_Stallnrneuzuordnen");
            EXPECT_EQ(farm.texte(), row.texts);
        });
        EXPECT_EQ(farm.zeige("select Stallnr from Sauen"), row.stalls);
        EXPECT_EQ(farm.zeige("select count(*) from Stammdaten_Stallnummer"), "0");
    }
}

TEST(MassenTest, festeSaunummer) {
    struct {
        const char* input;
        const char* numbers;
        bool refused = false;
    } const table[] = {
        {"4", "0004 | 00A7 | 0022 | 12345 | 0000"},
        {"1", "4 | A7 | 22 | 12345 | 0"},
        {"0", "4 | A7 | 22 | 12345 | -", true},
        {"16", "4 | A7 | 22 | 12345 | -", true},
        {"", "4 | A7 | 22 | 12345 | -", true},
        {"viele", "4 | A7 | 22 | 12345 | -", true},
        {"15", "000000000000004 | 0000000000000A7 | 000000000000022 | 000000000012345 | 000000000000000"},
    };
    for (const auto& row : table) {
        Herdenhof farm;
        farm.tier("4");
        farm.tier("A7", "Eber");
        farm.tier("22", "Sau", "Abgangsdatum = #01/01/2026#");
        farm.tier("12345", "Mast");
        farm.sql("insert into Sauen (Art) values ('Sau')");
        farm.sql("insert into Verluste (Muttersau, Kennung) values ('4', 1)");
        farm.start([&](PA_Koben& main) {
            farm.screens.answers = {true};
            farm.screens.inputs = {row.input};
            farm.menue(main, "XB_Feste_Saunummer_zuordnen");
            EXPECT_EQ(farm.texte().contains("! Falsche Eingabe!"), row.refused) << row.input;
        });
        EXPECT_EQ(farm.zeige("select Nummer from Sauen"), row.numbers) << row.input;
        EXPECT_EQ(farm.zeige("select Muttersau from Verluste"), "4");
    }
}

void inDieMast(Herdenhof& farm) {
    farm.start([&](PA_Koben& main) {
        main.datali.mark({1, 2, 3, 4});
        farm.screens.answers = {true, true};
        farm.menue(main, "XB_Markierte_Ferkel_in_Mast");
    });
}

/// Kinds and sales after the action was killed at its n-th writing statement; nothing where it got to its end.
std::optional<QString> nachAbschuss(int nth, const QString& folder) {
    const pid_t child = fork();
    if (child == 0) {
        Herdenhof farm(folder);
        Workspace::setFaultHook([count = 0, nth](const QString& text) mutable {
            const bool ours = text.contains("Art") || text.contains("Ferkelverkauf");
            if (ours && ++count == nth) raise(SIGKILL);
        });
        inDieMast(farm);
        _exit(0);  // without closing anything
    }
    int status = 0;
    waitpid(child, &status, 0);
    const Herdenhof after(folder);
    const QString left =
        after.zeige("select Art from Sauen") + " / " + after.zeige("select count(*) from Ferkelverkauf");
    if (WIFEXITED(status)) {
        EXPECT_EQ(left, "Sau | Mast | Mast | Mast / 1");
        return std::nullopt;
    }
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    return left;
}

TEST(MassenTest, einAbschussLässtNichtsHalbesZurück) {
    QTemporaryDir folder;
    {
        Herdenhof farm;
        anlegen(farm);
        farm.koben.workspace.closeAll();
        QFile::copy(farm.koben.Datenbankpfad, folder.filePath("koben2.mdb"));
    }
    int nth = 0;
    std::optional<QString> left;
    do {
        left = nachAbschuss(++nth, folder.path() + "/");
        EXPECT_EQ(left.value_or("Sau | Ferkel | Ferkel | Ferkel / 0"), "Sau | Ferkel | Ferkel | Ferkel / 0") << nth;
    } while (left && nth < 30);
    EXPECT_GT(nth, 2);  // the piglets and the booking
}

}  // namespace
}  // namespace koben
