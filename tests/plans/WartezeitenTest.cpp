// The list of animals within a waiting time: by hand for the edges, and against a second reckoning over a random herd.
#include "plans/PB_Wartezeiten.h"

#include <random>

#include "tests/plans/Planhof.h"

namespace koben {
namespace {

struct Wartezeiten : testing::Test, Planhof {
    void SetUp() override { catalogue.add<PB_Wartezeiten>("PB_Wartezeiten"); }
    void block(int animal, const QString& until) {
        add("Behandlung", {{"Kennung", QString::number(animal)}, {"Wartezeit_Datum", until}});
    }
    QStringList list() {
        QStringList found;
        in<PB_Wartezeiten>("PB_Wartezeiten", [&](PB_Wartezeiten& form) { found = gridText(form.gridli); });
        return found;
    }
};

TEST_F(Wartezeiten, BisZumLetztenTagUndNurDasSpätesteEnde) {
    add("Sauen", {{"Nummer", "30"}, {"Art", "Sau"}, {"Gruppe", "G"}, {"Stallnr", "S1"}});
    add("Sauen", {{"Nummer", "20"}, {"Art", "Mast"}, {"Abgangsdatum", "01.07.2026"}});
    add("Sauen", {{"Nummer", "10"}, {"Art", "Eber"}});
    add("Sauen", {{"Nummer", "05"}, {"Art", "Ferkel"}});
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
    EXPECT_EQ(screens.takeLog(),
              QStringList({"+ PB_Wartezeiten", "+ PA_Zwischenliste", "- PA_Zwischenliste", "- PB_Wartezeiten"}));
    koben.Heute = "02.08.2026";
    koben.open("PB_Wartezeiten");
    EXPECT_EQ(screens.takeLog(),
              QStringList({"+ PB_Wartezeiten",
                           "! Es wurden keine Wartezeiten ab dem aktuellen Datum 02.08.2026 gefunden. Das Modul wird "
                           "deshalb wieder geschlossen!",
                           "- PB_Wartezeiten"}));
}

TEST_F(Wartezeiten, ZufälligeHerde) {
    std::mt19937 random(7);
    const auto pick = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    const QDate today(2026, 7, 15);
    QStringList expected;
    const Transaction action(db);
    for (int animal = 1; animal <= 300; ++animal) {
        const QString number = QString::number(1000 + animal);
        add("Sauen", {{"Nummer", number}, {"Art", "Mast"}});
        int latest = -1;
        for (int n = pick(4); n > 0; --n) {
            const int days = pick(30) - 20;
            latest = std::max(latest, days);
            block(animal, Datum_als_Anzeige(today.addDays(days)));
        }
        if (latest >= 0)
            expected += number + "|Mast|||" + Datum_als_Anzeige(today.addDays(latest)) + '|' + QString::number(latest);
    }
    EXPECT_GT(expected.size(), 30);
    EXPECT_EQ(list().mid(1), expected);
}

}  // namespace
}  // namespace koben
