// What is done to all marked animals at once: texts and results.
#include <numeric>

#include "tests/herd/Herdenhof.h"

namespace koben {
namespace {

const QString NichtsMarkiert = "! Es sind keine Schweine markiert!";

/// A sow and three piglets; for each row of a table anew.
struct Stall : Herdenhof {
    Stall() {
        tier("10");
        for (const char* number : {"F1", "F2", "F3"}) tier(number, "Ferkel");
    }
    void work(const std::vector<int>& marks, const char* entry) {
        start([&](PA_Koben& main) {
            texts();
            main.datali.mark(marks);
            menue(main, entry);
        });
    }
};

TEST(MassenTest, ferkelInDieMast) {
    const QString question = "? Sollen die %1 Ferkel neu als Masttiere verwaltet werden? => %2";
    const QString booking = "? Soll jetzt eine automatische Verkaufsbuchung*'Eigenbetrieb'*'In Mast umgebucht'*";
    const char *const before = "Sau | Ferkel | Ferkel | Ferkel", *const after = "Sau | Mast | Ferkel | Mast";
    const struct {
        std::vector<int> marks;
        std::deque<bool> answers;
        QStringList texts;
        const char *kinds, *sales;
        int status;
    } table[] = {
        {{}, {}, {NichtsMarkiert}, before, "", 0},
        {{1, 2, 4}, {false}, {question.arg("3", "nein")}, before, "", 0},
        {{1, 2, 4}, {true, false}, {question.arg("3", "ja"), booking + "nein"}, after, "", 1},
        {{1, 2, 4},
         {true, true},
         {question.arg("3", "ja"), booking + "ja"},
         after,
         "15.07.2026 0 2 0 0 0 0 0 Eigenbetrieb  In Mast gebucht 0",
         1},
        {{1}, {true}, {question.arg("1", "ja")}, before, "", 1},
    };
    for (const auto& row : table) {
        Stall farm;
        farm.screens.answers = row.answers;
        farm.work(row.marks, "XB_Markierte_Ferkel_in_Mast");
        EXPECT_TRUE(farm.says(row.texts));
        EXPECT_EQ(farm.koben.Status_neu_berechnen, row.status);
        EXPECT_EQ(farm.actions.value(0), row.kinds == after ? "2 Ferkel in Mast gebucht"
                                         : row.status       ? "0 Ferkel in Mast gebucht"
                                                            : "");
        EXPECT_EQ(farm.show("select Art from Sauen"), row.kinds);
        EXPECT_EQ(farm.show("select Datum, Anzahl_Einkauf, Anzahl_Verkauf, Preis_je_Stück, Einnahmen, Ausgaben, "
                            "Stück_Gewicht_kg, Gesamtgewicht_kg, Kunde, Muttersau, Kommentar, Kennung from "
                            "Ferkelverkauf"),
                  row.sales);
    }
}

TEST(MassenTest, neueStallnummer) {
    const QString question = "? Sollen bei den 2 Schweinen neue Stallnummern zugeordnet werden? => ";
    const QString prompt = "?= Welche Stallnr*", none = "! Es wurde keine Stall-Nr eingegeben.*";
    const struct {
        std::vector<int> marks;
        std::deque<bool> answers;
        std::deque<QString> inputs;
        QStringList texts;
        const char* stalls;
    } table[] = {
        {{}, {}, {}, {NichtsMarkiert}, "- | - | - | -"},
        {{2, 3}, {false}, {}, {question + "nein"}, "- | - | - | -"},
        {{2, 3}, {true}, {"          B7"}, {question + "ja", prompt, none}, "- | - | - | -"},
        {{2, 3}, {true}, {" Abteil'7-123"}, {question + "ja", prompt}, "- | Abteil`7- | Abteil`7- | -"},
    };
    for (const auto& row : table) {
        Stall farm;
        farm.screens.answers = row.answers;
        farm.screens.inputs = row.inputs;
        farm.work(row.marks, "XB_Stallnrneuzuordnen");
        EXPECT_TRUE(farm.says(row.texts));
        EXPECT_EQ(farm.show("select Stallnr from Sauen"), row.stalls);
        EXPECT_EQ(farm.actions.join(""), row.texts.size() == 2 && row.inputs.front() != "          B7"
                                             ? "Stallnr Abteil`7- für 2 Ferkel"
                                             : "");
        EXPECT_EQ(farm.show("select count(*) from Stammdaten_Stallnummer"), "0");
    }
}

}  // namespace
}  // namespace koben
