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
        return show(
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
        play(form, "tdat=1507; neu");
        const char* const what = "Verkäufe können nicht gebucht werden";
        EXPECT_TRUE(says({refusal({date, none}, what), refusal({date}, what), refusal({none}, what)}));
        form.li.mark({0, 2});
        screens.answers = {false};
        form.neu.click();
        EXPECT_TRUE(says({"? Sollen die 2 markierten Tiere wirklich*nein"}));
    });
    EXPECT_EQ(show("select count(*) from Sauen where Abgangsdatum is null"), "3");
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
        play(form,
             "tdat=15.07.2026; tz(0)=112,5; tz(1)=1234567,89; kom(0)=Schlacht'ung; kom(1)=  Metzger Müller und Söhne");
        form.li.mark({0, 1, 2, 3});
        screens.answers = {true};
        form.neu.click();
        EXPECT_TRUE(says({"? *ja", warning("C", "15.07.2026"), warning("B", "01.08.2026")}));
        EXPECT_TRUE(form.li.items().isEmpty());
        EXPECT_EQ(form.kom[1].items(), QStringList("Metzger Müller und"));
    });
    const QString facts = " 15.07.2026 112,5 1234567,89 Schlacht`ung Metzger Müller und";
    EXPECT_EQ(sold(), "D" + facts + " | C" + facts + " | B" + facts + " | A" + facts);
    EXPECT_EQ(show("select * from Stammdaten_Abgangsgrund") + '|' + show("select * from Stammdaten_Kunde"),
              "Schlacht`ung|Metzger Müller und");
    EXPECT_EQ(koben.Liste_neu_laden, 1);
    EXPECT_EQ(actions, QStringList("Verkauf von 4 Tieren, 15.07.2026"));
}

}  // namespace
}  // namespace koben
