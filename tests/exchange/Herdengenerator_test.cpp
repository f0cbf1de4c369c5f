#include <algorithm>
#include <set>

#include "tests/exchange/Importlauf.h"
#include "tools/herdengenerator/Output.h"

namespace koben {
namespace {

QByteArray csv(const Vorgaben& vorgaben) {
    const TestRun run;
    EXPECT_TRUE(writeCsv(makeHerde(vorgaben), run.path("herde.csv")));
    return run.bytes("herde.csv");
}

TEST(Herdengenerator, beispielIstVonHeuteUndVonHier) {
    QFile file(QStringLiteral(KOBEN_SOURCE_DIR "/beispiel/herde.csv"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), csv({.sauen = 130, .jahre = 3, .seed = 2026, .ferkelAnteil = 13}));
}

/// What a farmer would check first.
TEST(Herdengenerator, herdeIstGlaubhaft) {
    const Herde herde = makeHerde({.sauen = 200, .jahre = 7, .seed = 3});
    std::set<std::pair<int, int>> dienste;  // sow and day
    for (const Belegung& b : herde.belegungen) dienste.emplace(b.sau, b.tag);
    double tragen = 0, saeugen = 0, lebend = 0, abgesetzt = 0;
    for (const Wurfbuchung& w : herde.wuerfe) {
        const auto dienst = std::prev(dienste.upper_bound({w.sau, w.tag - 100}));
        ASSERT_EQ(dienst->first, w.sau) << "a litter without a service";
        tragen += w.tag - dienst->second;
        lebend += w.lebend;
        if (w.absetzung == 0) continue;
        saeugen += w.absetzung - w.tag;
        ++abgesetzt;
    }
    const auto wuerfe = static_cast<double>(herde.wuerfe.size());
    EXPECT_NEAR(wuerfe / static_cast<double>(dienste.size()), 0.82, 0.04);  // the last ones have not farrowed yet
    EXPECT_NEAR(tragen / wuerfe, 115, 0.5);
    EXPECT_NEAR(saeugen / abgesetzt, 27, 1);
    EXPECT_NEAR(lebend / wuerfe, 15, 1);
    const int ende = static_cast<int>(herde.vorgaben.ende.toJulianDay());
    const auto gegangen = std::count_if(herde.tiere.begin(), herde.tiere.end(),
                                        [&](const Tier& t) { return t.art[0] == 'S' && t.abgang > ende - 730; });
    EXPECT_NEAR(static_cast<double>(gegangen) / 2 / herde.vorgaben.sauen, 0.45, 0.06);
}

}  // namespace
}  // namespace koben
