// The list of animals within a waiting time, at its edges.
#include "plans/PB_Wartezeiten.h"

#include "tests/plans/Planhof.h"

namespace koben {
namespace {

struct Wartezeiten : testing::Test, Planhof {
    void SetUp() override { catalogue.add<PB_Wartezeiten>("PB_Wartezeiten"); }
    void block(int animal, const QString& until) {
        add("Behandlung", {{"Kennung", QString::number(animal)}, {"Wartezeit_Datum", until}});
    }
};

TEST_F(Wartezeiten, BisZumLetztenTagUndNurDasSpätesteEnde) {
    add("Sauen", {{"Nummer", "30"}, {"Art", "Sau"}, {"Gruppe", "G"}, {"Stallnr", "S1"}});
    add("Sauen", {{"Nummer", "20"}, {"Art", "Mast"}, {"Abgangsdatum", "01.07.2026"}});
    for (const char* number : {"10", "05"}) add("Sauen", {{"Nummer", number}, {"Art", "Eber"}});
    block(1, "20.07.2026");
    block(1, "01.08.2026");
    block(1, "");
    block(2, "15.07.2026");  // today; left the farm
    block(3, "14.07.2026");
    block(4, "");
    block(99, "01.08.2026");  // of no animal
    in<PB_Wartezeiten>("PB_Wartezeiten", [&](PB_Wartezeiten& form) { form.ok.click(); });
    EXPECT_EQ(handedOver(), QStringList({"Nummer|Art|Gruppe|Stallnr|Sperre_bis|Tage", "20|Mast|||15.07.2026|0",
                                         "30|Sau|G|S1|01.08.2026|17"}));
    koben.Heute = "02.08.2026";
    koben.open("PB_Wartezeiten");
    EXPECT_TRUE(says({"! Es wurden keine Wartezeiten ab dem aktuellen Datum 02.08.2026 gefunden.*"}));
}

}  // namespace
}  // namespace koben
