// Today's page: how tiles speak, what targets are, that nothing is written but them.
#include "figures/PA_Tagesblick.h"

#include "tests/support/Hof.h"

namespace koben {
namespace {

Kennzahlwert valueOf(Kz figure, qint64 numerator, qint64 denominator) {
    return {.nr = figure, .numerator = numerator, .denominator = denominator, .counted = denominator};
}

TEST(Kachel, SaysBetterOrWorseByTheFiguresOwnDirection) {
    struct Fall {
        Kz figure;
        std::pair<qint64, qint64> before, now;  // numerator, denominator
        const char* target;
        const char* said;
    };
    const Fall cases[] = {
        {Kz::LebendWurf,
         {125, 10},
         {129, 10},
         "13,0",
         "12,9|▲ besser: +0,4 zum Vorjahr 12,5|Ziel 13,0: nicht erreicht"},
        {Kz::LebendWurf, {125, 10}, {12, 1}, "12,0", "12,0|▼ schlechter: −0,5 zum Vorjahr 12,5|Ziel 12,0: erreicht"},
        {Kz::VerlusteProzent, {15, 100}, {12, 100}, "12,0", "12,0|▼ besser: −3,0 zum Vorjahr 15,0|Ziel 12,0: erreicht"},
        {Kz::VerlusteProzent,
         {-1, 100},
         {1, 100},
         "0,9",
         "1,0|▲ schlechter: +2,0 zum Vorjahr -1,0|Ziel 0,9: nicht erreicht"},
        {Kz::Abferkelrate, {8704, 10000}, {8701, 10000}, "", "87,0|= wie im Vorjahr|kein Ziel"},  // as it reads
        {Kz::LebendWurf, {0, 0}, {12, 1}, "13,0", "12,0|ohne Vorjahr|Ziel 13,0: nicht erreicht"},
        {Kz::LebendWurf, {12, 1}, {0, 0}, "13,0", "|Vorjahr 12,0|Ziel 13,0"},
    };
    for (const Fall& c : cases) {
        const Kachel tile{
            .figure = c.figure,
            .jahre = {valueOf(c.figure, c.before.first, c.before.second), valueOf(c.figure, c.now.first, c.now.second)},
            .ziel = QString::fromUtf8(c.target)};
        EXPECT_EQ(tile.jetzt().text() + '|' + tile.vorjahrtext() + '|' + tile.zieltext(), QString::fromUtf8(c.said));
        for (const QSizeF room : {QSizeF(190, 66), QSizeF(60, 200), QSizeF(40, 10)}) {
            const Sketch sketch = drawKacheln({tile, tile, tile, tile, tile, tile}, room);
            for (const DrawnArea& area : sketch.areas)
                EXPECT_TRUE(QRectF({0, 0}, room).adjusted(-.1, -.1, .1, .1).contains(area.box)) << room.width();
        }
    }
}

/// Stands where the herd list and the booking frame are.
struct Herdenliste final : Form, HerdList {
    explicit Herdenliste(Koben& koben_) : Form(koben_, "PA_Koben", "") {}
    Grid datali{*this, "datali"};
    Grid& herd() override { return datali; }
    void datenschweinelesen() override {}
};
struct Buchungsrahmen final : Form {
    explicit Buchungsrahmen(Koben& koben_) : Form(koben_, "PE_Bewegungsdaten", "") {}
};

class Tagesblick : public testing::Test {
protected:
    Tagesblick() {
        hof.catalogue.add<PA_Tagesblick>("PA_Tagesblick");
        hof.sql(
            "insert into Sauen (Art, Nummer, L_Belegung, L_Ferkelung, Status) values ('Sau', '1', #1/1/2026#, "
            "#6/1/2026#, 'B')");
    }
    void page(std::function<void(PA_Tagesblick&)> script) { hof.in<PA_Tagesblick>("PA_Tagesblick", std::move(script)); }
    Hof hof;
};

TEST_F(Tagesblick, CountsTheDaysWorkAndLeadsToItsAnimals) {
    hof.catalogue.add<Buchungsrahmen>("PE_Bewegungsdaten");
    hof.tier("101", "Sau", "L_Belegung = #03/22/2026#, Stallnr = 'B1'");  // farrows 113 to 119 days later, unchecked
    hof.tier("102", "Sau", "L_Belegung = #02/16/2026#, L_Ferkelung = #06/10/2026#");
    hof.tier("103", "Sau", "L_Belegung = #02/16/2026#, L_Ferkelung = #06/10/2026#, L_Absetzung = #07/09/2026#");
    hof.tier("104", "Sau", "L_Belegung = #06/20/2026#, L_Trächtigkeit = #07/12/2026#");
    hof.tier("105", "Sau", "L_Belegung = #03/22/2026#, Abgangsdatum = #07/01/2026#");
    hof.tier("106", "Mast");
    const std::pair<int, const char*> blocks[] = {{2, "07/19/2026"}, {3, "07/20/2026"}, {4, "07/16/2026"},
                                                  {4, "07/25/2026"}, {5, "07/14/2026"}, {6, "07/16/2026"},
                                                  {7, "07/15/2026"}};
    for (const auto& [animal, until] : blocks)
        hof.sql("insert into Behandlung (Kennung, Wartezeit_Datum) values (%1, #%2#)", animal, until);
    hof.sql(
        "insert into Arbeitsplanoptionen (Arbeitsart, Tage_von, Tage_bis, Bezugstermin) values ('Impfen', 1, 20, "
        "'Letzte Ferkelung')");  // nothing says that it was done
    Herdenliste herd(hof.koben);
    hof.koben.herdList = &herd;
    herd.datali.bind(hof.db.table("select Nummer, ID from Sauen where Nummer <> '1'"));
    page([&](PA_Tagesblick& form) {
        EXPECT_EQ(gridText(form.liarbeit), (QStringList{"Arbeit|Heute|Überfällig", "Belegung|1|0", "Ferkelung|1|0",
                                                        "Absetzung|0|2", "Trächtigkeitskontr.|0|4", "Impfen|0|0"}));
        EXPECT_EQ(gridText(form.lisperren), (QStringList{"Nummer|Bis", "106|15.07.2026", "101|19.07.2026"}));
        EXPECT_EQ(gridText(form.listatus).mid(6), QStringList{"Ohne Zustand|4"});
        form.liarbeit.choose(3);
        form.liarbeit.click();
        EXPECT_EQ(hof.handedOver(),
                  (QStringList{"Vom|Bis|Termin|Nummer|Art|Stallnr|Gruppe", "29.06.2026|03.07.2026|Absetzung|1|Sau||",
                               "08.07.2026|12.07.2026|Absetzung|102|Sau||"}));
        form.gridli.lead(2, 1);
        EXPECT_EQ(herd.datali.cell(herd.datali.row(), u"Nummer"), "102");
        EXPECT_EQ(hof.koben.Buchungsart_Nr, static_cast<int>(Buchungsart::Absetzung));
        form.gridli.lead(1, 1);
        form.lisperren.choose(2);
        form.lisperren.doubleClick();
        EXPECT_EQ(hof.koben.Buchungsart_Nr, static_cast<int>(Buchungsart::Behandlung));
        form.listatus.choose(6);
        form.listatus.doubleClick();
        EXPECT_EQ(hof.handedOver().mid(1, 2), (QStringList{"101|B1||22.03.2026||", "102|||16.02.2026|10.06.2026|"}));
        play(form, "liarbeit:5; ok");
    });
    EXPECT_EQ(hof.screens.takeLog().filter(QRegularExpression("^[+!]")),
              (QStringList{"+ PA_Tagesblick", "+ PA_Zwischenliste", "+ PE_Bewegungsdaten",
                           "! Das Tier steht nicht in der Liste des Hauptmoduls, weil sie zur Zeit nur bestimmte Tiere "
                           "anzeigt. Bitte wählen Sie dort „Alle Tiere“ und „Alles“.",
                           "+ PE_Bewegungsdaten", "+ PA_Zwischenliste",
                           "! Für „Impfen“ ist heute nichts zu tun, und es ist nichts überfällig."}));
    hof.koben.herdList = nullptr;
}

TEST_F(Tagesblick, KeepsTargetsAndWritesNothingElse) {
    const QString before = hof.everything();
    hof.write("Zielwerte.ko2", "npt_sau_jahr=abc\r\nspäter=7,5\r\nlebend_wurf=14,2");
    page([&](PA_Tagesblick& form) {
        EXPECT_EQ(form.likacheln.cell(3, u"ziel"), "14,2");
        EXPECT_EQ(form.likacheln.cell(6, u"ziel"), "");
        for (const auto& [typed, kept] : std::initializer_list<std::pair<const char*, const char*>>{{"28,56", "28,6"},
                                                                                                    {"-1", "28,6"},
                                                                                                    {"1e9", "28,6"},
                                                                                                    {"1.000,5", "28,6"},
                                                                                                    {"0", ""},
                                                                                                    {" 29 ", "29,0"}}) {
            EXPECT_TRUE(form.likacheln.editByUser(1, 4, QString::fromUtf8(typed)));
            EXPECT_EQ(form.likacheln.cell(1, u"ziel"), QString::fromUtf8(kept)) << typed;
        }
        EXPECT_FALSE(form.likacheln.editByUser(1, 2, "1"));
        hof.screens.inputs = {"90", ""};
        form.kacheln.choose("abferkelrate");
        form.kacheln.onClick("abferkelrate");
        form.kacheln.onClick("abferkelrate");
        EXPECT_EQ(form.likacheln.cell(5, u"ziel"), "90,0");
    });
    EXPECT_EQ(hof.lines("Zielwerte.ko2"),
              (QStringList{"abferkelrate=90", "abgesetzt_sau_jahr=29", "lebend_wurf=14,2", "später=7,5"}));
    EXPECT_EQ(hof.everything(), before);
    QDir(hof.koben.Datenordner).mkdir("weg");
    hof.koben.Datenordner += "weg/fort/";
    page([](PA_Tagesblick& form) {
        form.likacheln.editByUser(1, 4, "30");
        EXPECT_EQ(form.likacheln.cell(1, u"ziel"), "");
    });
    EXPECT_TRUE(hof.texts().last().contains("kann nicht gespeichert werden"));
}

/// While the states of the herd are still to be stored, the page counts what they will be.
TEST_F(Tagesblick, CountsTheStatesOfAHerdThatHasChanged) {
    for (const bool stale : {false, true}) {
        hof.koben.Status_neu_berechnen = stale;
        page([&](PA_Tagesblick& form) {
            QStringList counts;
            for (int row = 1; row <= form.listatus.rowCount(); ++row) counts += form.listatus.cell(row, 2);
            EXPECT_EQ(counts.join(u' '), stale ? "0 0 0 1 0 0" : "1 0 0 0 0 0");
        });
    }
}

}  // namespace
}  // namespace koben
