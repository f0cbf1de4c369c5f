// The sale of many animals: rules, what is written, warnings of running waiting times, whole or not at all.
#include "bookings/PB_Verkauf_Schweine.h"
#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

using Verkauf = PB_Verkauf_Schweine;

struct VerkaufSchweineTest : testing::Test, Buchungshof {
    VerkaufSchweineTest() { catalogue.add<Verkauf>("PB_Verkauf_Schweine"); }
    void sperre(int animal, const char* until) {
        sql("insert into Behandlung (Kennung, Wartezeit_Datum) values (%1, #%2#)", animal, until);
    }
    static QString warning(const QString& number, const QString& until) {
        return "! ACHTUNG!!!*Tier " + number + " *15.07.2026 *" + until + " vor.";
    }
    QString sold() {
        return zeige(
            "select Nummer, Abgangsdatum, Abgangsgewicht_kg, Verkaufspreis, Abgangsgrund, Abnehmer from Sauen where "
            "Abgangsdatum is not null order by ID");
    }
};

TEST_F(VerkaufSchweineTest, listeUndRegeln) {
    tier("200", "Sau", "Stallnr = 'Stall10Zei'");
    tier("9", "Mast");
    tier("123456789012345", "Ferkel");
    tier("weg", "Sau", "Abgangsdatum = #01/01/2026#");
    const QString date = "...das Abgangsdatum nicht korrekt ist.", none = "...kein Tier zum Verkauf markiert wurde.";
    in<Verkauf>("PB_Verkauf_Schweine", [&](Verkauf& form) {
        EXPECT_EQ(form.li.items(),
                  QStringList({"Ferke123456789012345            3", "Mast 9                          2",
                               "Sau  200             Stall10Zei 1"}));
        form.neu.click();
        form.li.mark({0});
        form.neu.click();
        form.li.mark({});
        tun(form, "tdat=1507; neu");
        const char* const what = "Verkäufe können nicht gebucht werden";
        EXPECT_TRUE(sagt({Ablehnung({date, none}, what), Ablehnung({date}, what), Ablehnung({none}, what)}));
        form.li.mark({0, 2});
        screens.answers = {false};
        form.neu.click();
        EXPECT_TRUE(sagt({"? Sollen die 2 markierten Tiere wirklich*nein"}));
    });
    EXPECT_EQ(zeige("select count(*) from Sauen where Abgangsdatum is null"), "3");
    EXPECT_EQ(koben.Liste_neu_laden, 0);
}

/// Four animals sold on 15.07.: until when they are blocked, and what the warning names.
TEST_F(VerkaufSchweineTest, warnungenBisZumLetztenTag) {
    for (const char* number : {"D", "C", "B", "A"}) tier(number);
    sperre(1, "07/14/2026");
    sperre(2, "07/15/2026");
    for (const char* day : {"07/16/2026", "08/01/2026", "07/20/2026", "07/01/2026"}) sperre(3, day);
    sql("insert into Behandlung (Kennung, Wartezeit_Tage) values (4, 30)");
    in<Verkauf>("PB_Verkauf_Schweine", [&](Verkauf& form) {
        tun(form,
            "tdat=15.07.2026; tz(0)=112,5; tz(1)=1234567,89; kom(0)=Schlacht'ung; kom(1)=  Metzger Müller und Söhne");
        form.li.mark({0, 1, 2, 3});
        screens.answers = {true};
        form.neu.click();
        EXPECT_TRUE(sagt({"? *ja", warning("C", "15.07.2026"), warning("B", "01.08.2026")}));
        EXPECT_TRUE(form.li.items().isEmpty());
        EXPECT_EQ(form.kom[1].items(), QStringList("Metzger Müller und"));
    });
    const QString facts = " 15.07.2026 112,5 1234567,89 Schlacht`ung Metzger Müller und";
    EXPECT_EQ(sold(), "D" + facts + " | C" + facts + " | B" + facts + " | A" + facts);
    EXPECT_EQ(zeige("select * from Stammdaten_Abgangsgrund") + '|' + zeige("select * from Stammdaten_Kunde"),
              "Schlacht`ung|Metzger Müller und");
    EXPECT_EQ(koben.Liste_neu_laden, 1);
    EXPECT_EQ(actions, QStringList("Verkauf von 4 Tieren, 15.07.2026"));
}

TEST_F(VerkaufSchweineTest, fünfhundertVonDreißigtausend) {
    {
        Transaction action(db);
        Statement insert = db.prepare("insert into Sauen (Art, Nummer) values ('Mast', ?)");
        for (int i = 1; i <= 30000; ++i) insert.run({QStringLiteral("%1").arg(i, 5, 10, QLatin1Char('0'))});
        action.commit();
    }
    sperre(60, "07/15/2026");
    sperre(61, "07/15/2026");
    int writes = 0, failAt = 400;
    Workspace::setFaultHook([&](const QString&) {
        if (++writes == failAt) throw DatabaseError(DatabaseError::Kind::Io, "Platte voll");
    });
    in<Verkauf>("PB_Verkauf_Schweine", [&](Verkauf& form) {
        eingeben(form.tdat, "15.07.2026");
        std::vector<int> marks;
        for (int row = 59; row < 30000; row += 60) marks.push_back(row);
        form.li.mark(marks);
        screens.answers = {true, true};
        form.neu.click();
        EXPECT_FALSE(texte().filter("nichts davon gespeichert").isEmpty());
        EXPECT_EQ(sold(), "");
        EXPECT_EQ(screens.waiting, 0);
        failAt = 0;
        sql("delete from Sauen where ID = 120");  // gone meanwhile: passed over
        texte();
        form.neu.click();
        EXPECT_TRUE(sagt({"? Sollen die 500 markierten Tiere*ja", warning("00060", "15.07.2026")}));
        EXPECT_EQ(form.li.items().size(), 29500);
        EXPECT_EQ(form.li.markedCount(), 0);
    });
    EXPECT_EQ(zeige("select count(*), min(ID), max(ID) from Sauen where Abgangsdatum = #07/15/2026# and ID mod 60 = 0"),
              "499 60 30000");
    EXPECT_EQ(zeige("select count(*) from Sauen where Abgangsdatum is not null"), "499");
}

}  // namespace
}  // namespace koben
