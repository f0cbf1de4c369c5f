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

TEST(Herdengenerator, beispielOrdnetSichSelbstZu) {
    Importlauf run;
    run.importieren(QStringLiteral(KOBEN_SOURCE_DIR "/beispiel/herde.csv"), {true}, [](S_Importtabelle& form) {
        for (int i = 0; i < form.kom.count(); ++i) EXPECT_EQ(form.kom[i].current(), i + 1);
    });
    EXPECT_GT(run.anzahl(), 250);
    EXPECT_LT(run.anzahl(), 350);
    EXPECT_EQ(run.zeilen("select count(*) as n from Sauen where Geburtsdatum IS NULL or Zugangsdatum IS NULL"), "0");
    EXPECT_EQ(run.zeilen("select DISTINCT Art from Sauen order by Art"), "Eber; Ferkel; Mast; Sau");
}

/// What a farmer would check first.
TEST(Herdengenerator, herdeIstGlaubhaft) {
    const Herde herde = makeHerde({.sauen = 200, .jahre = 7, .seed = 3});
    std::set<std::pair<int, int>> dienste;  // sow and day
    for (const Belegung& b : herde.belegungen) dienste.emplace(b.sau, b.tag);
    double tragen = 0, saeugen = 0, lebend = 0, abgesetzt = 0;
    for (const Wurf& w : herde.wuerfe) {
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

TEST(Herdengenerator, datenbankStimmtInSich) {
    Importlauf run;
    const Herde herde = makeHerde({.sauen = 30, .jahre = 2, .seed = 5});
    writeDatabase(herde, run.path("gross.mdb"));
    run.db = run.koben.workspace.open(run.path("gross.mdb"));
    EXPECT_EQ(run.anzahl(), static_cast<qint64>(herde.tiere.size() + herde.ferkel.size()));
    EXPECT_EQ(run.zeilen("select count(*) as n from Ferkelung"), QString::number(herde.wuerfe.size()));
    // bookings hang on sows, and on the right ones
    EXPECT_EQ(run.zeilen("select count(*) as n from Sauen, Ferkelung where Sauen.ID = Kennung and Art = 'Sau'"),
              QString::number(herde.wuerfe.size()));
    EXPECT_EQ(run.zeilen("select count(*) as n from Sauen, Verluste where Sauen.ID = Kennung and Nummer <> Muttersau"),
              "0");
    EXPECT_EQ(run.zeilen("select count(*) as n from Sauen, Belegung where Sauen.ID = Kennung and Abgangsdatum < Datum"),
              "0");
    // derived data and status are those of the bookings
    EXPECT_EQ(run.zeilen("select sum(Anz_Ferkelungen) as n from Sauen"), QString::number(herde.wuerfe.size()));
    EXPECT_NE(run.zeilen("select count(*) as n from Sauen where Status = 'S'"), "0");
    EXPECT_NE(run.zeilen("select count(*) as n from Sauen where Status = 'B_T'"), "0");
    // litter numbers as the program would give them
    const QString vorher = run.zeilen("select LNr, LNrJahr from Ferkelung order by ID");
    for (size_t i = 0; i < 50; ++i) Wurfnummern_berechnen(run.db, static_cast<qint64>(i));
    EXPECT_EQ(run.zeilen("select LNr, LNrJahr from Ferkelung order by ID"), vorher);
}

}  // namespace
}  // namespace koben
