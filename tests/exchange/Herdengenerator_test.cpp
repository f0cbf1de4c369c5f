#include <map>

#include "tests/exchange/Importlauf.h"
#include "tools/herdengenerator/Ausgabe.h"

namespace koben {
namespace {

QByteArray csv(const Vorgaben& vorgaben) {
    const TestRun run;
    EXPECT_TRUE(Herde_als_CSV(Herde_erzeugen(vorgaben), run.path("herde.csv")));
    return run.bytes("herde.csv");
}

TEST(Herdengenerator, gleicheAngabenGleicheHerde) {
    const Vorgaben vorgaben{.sauen = 40, .jahre = 2, .seed = 7};
    EXPECT_EQ(csv(vorgaben), csv(vorgaben));
    Vorgaben anders = vorgaben;
    anders.seed = 8;
    EXPECT_NE(csv(vorgaben), csv(anders));
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

/// Measures of a herd that stand in its order: what a farmer would check first.
struct Masse {
    double abferkelrate, tragezeit, saeugezeit, lebend, lebendAlte, verluste, montagDienstag, ersatz;
};

Masse messen(const Herde& herde) {
    std::map<int, int> belegt;  // sow -> day of the last service
    std::map<std::pair<int, int>, int> dienste;
    for (const Belegung& b : herde.belegungen) ++dienste[{b.sau, b.tag}];
    Masse m{};
    double tage = 0, saeugen = 0, lebend = 0, alte = 0, verluste = 0;
    int wuerfe = 0, abgesetzt = 0, alteWuerfe = 0, montags = 0, alle = 0;
    std::multimap<int, int> jeSau;
    for (const auto& [wann, zahl] : dienste) {
        jeSau.emplace(wann.first, wann.second);
        montags += wann.second % 7 <= 1;
        ++alle;
    }
    for (const Wurf& w : herde.wuerfe) {
        int zuletzt = 0;
        for (auto [it, end] = jeSau.equal_range(w.sau); it != end; ++it)
            if (it->second <= w.tag - 100) zuletzt = std::max(zuletzt, it->second);
        tage += w.tag - zuletzt;
        ++wuerfe;
        (w.nummer > 6 ? alte : lebend) += w.lebend;
        alteWuerfe += w.nummer > 6;
        if (w.absetzung == 0) continue;
        saeugen += w.absetzung - w.tag;
        verluste += w.verluste;
        ++abgesetzt;
    }
    const int ende = static_cast<int>(herde.vorgaben.ende.toJulianDay());
    int gegangen = 0;
    for (const Tier& t : herde.tiere) gegangen += t.art[0] == 'S' && t.abgang > ende - 730;
    m.abferkelrate = static_cast<double>(wuerfe) / alle;
    m.tragezeit = tage / wuerfe;
    m.saeugezeit = saeugen / abgesetzt;
    m.lebend = lebend / (wuerfe - alteWuerfe);
    m.lebendAlte = alte / alteWuerfe;
    m.verluste = verluste / abgesetzt;
    m.montagDienstag = static_cast<double>(montags) / alle;
    m.ersatz = gegangen / 2.0 / herde.vorgaben.sauen;
    return m;
}

TEST(Herdengenerator, herdeIstGlaubhaft) {
    const Herde herde = Herde_erzeugen({.sauen = 200, .jahre = 7, .seed = 3});
    const Masse m = messen(herde);
    EXPECT_NEAR(m.abferkelrate, 0.82, 0.04);  // a few of the last services have not farrowed yet
    EXPECT_NEAR(m.tragezeit, 115, 0.5);
    EXPECT_NEAR(m.saeugezeit, 27, 1);
    EXPECT_NEAR(m.lebend, 15, 0.5);
    EXPECT_LT(m.lebendAlte, m.lebend - 1);
    EXPECT_NEAR(m.verluste, 3, 0.3);
    EXPECT_GT(m.montagDienstag, 0.7);
    EXPECT_NEAR(m.ersatz, 0.45, 0.06);
}

TEST(Herdengenerator, datenbankStimmtInSich) {
    Importlauf run;
    const Herde herde = Herde_erzeugen({.sauen = 30, .jahre = 2, .seed = 5});
    Herde_in_Datenbank(herde, run.path("gross.mdb"));
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
