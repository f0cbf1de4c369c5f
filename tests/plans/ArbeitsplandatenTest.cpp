// The pair of screens over the kinds of work: rules, storing, the way through the rows, deleting, handing over.
#include "tests/plans/Planhof.h"

namespace koben {
namespace {

using Liste = PV_Arbeitsplandaten;
using Eingabe = PV_Arbeitsplandaten_Eingabe;

const QString B = "Letzte Belegung", F = "Letzte Ferkelung";

struct Arbeitsplandaten : testing::Test, Planhof {
    void list(std::function<void(Liste&)> script) { in<Liste>("PV_Arbeitsplandaten", std::move(script)); }
    void neu(Liste& form, std::function<void(Eingabe&)> script) {
        screens.workIn<Eingabe>(std::move(script));
        form.neu.click();
    }
    void change(Liste& form, int row, std::function<void(Eingabe&)> script) {
        screens.workIn<Eingabe>(std::move(script));
        form.li.choose(row);
        form.li.doubleClick();
    }

    static void enter(Eingabe& form, const QString& name, const QString& from, const QString& to,
                      const QStringList& dates) {
        form.t.type(name);
        form.t.leave();
        form.tz[0].type(from);
        form.tz[0].leave();
        form.tz[1].type(to);
        form.tz[1].leave();
        for (int i = 0; i < dates.size(); ++i)
            form.kom[i].choose(static_cast<int>(form.kom[i].items().indexOf(dates[i])));
    }

    QStringList rows() {
        FakeZwischenliste form(koben);
        Grid grid(form, "grid");
        grid.bind(
            db.table("select Arbeitsart, Tage_von, Tage_bis, Bezugstermin, Aktiv_gross, Aktiv_klein, "
                     "Erledigt_gross, Erledigt_klein from Arbeitsplanoptionen order by ID"));
        return gridText(grid).mid(1);
    }
};

const QStringList Seed{"Belegung|4|8|Letzte Absetzung|||Letzte Belegung|Letzte Absetzung",
                       "Ferkelung|113|119|Letzte Belegung|||Letzte Ferkelung|Letzte Belegung",
                       "Absetzung|28|32|Letzte Ferkelung|||Letzte Absetzung|Letzte Ferkelung",
                       "Trächtigkeitskontr.|20|24|Letzte Belegung|||Letzte Trächtigkeit|Letzte Belegung"};

TEST_F(Arbeitsplandaten, GathersAllBrokenRulesAndStoresNothing) {
    const QString name = "...der Arbeitsplan eingegeben werden muß.", twice = "...Der Arbeitsplan bereits existiert.";
    const QString days = "...die 'Tage von' nicht höher sein dürfen als die 'Tage bis'.";
    const QString date = "...der Bezugstermin eingegeben werden muß.";
    const QString pair =
        "...in den Erledigungs-Gruppen (Rahmenfelder) entweder in beiden Auswahlfelder ein Termin ausgewählt werden "
        "muß oder in keinem.";
    struct Case {
        QString name, from, to;
        QStringList dates;
        QStringList lines;
    };
    const std::vector<Case> cases{{"", "1", "1", {}, {name, date}},
                                  {"  ", "9", "8", {B}, {name, days}},
                                  {"BELEGUNG ", "2", "0", {"", B, "", "", B}, {twice, days, date, pair}},
                                  {"Neu", "1", "1", {B, "", B}, {pair}},
                                  {"Neu", "1", "1", {B, B, B, B, ""}, {pair}}};
    list([&](Liste& form) {
        for (const Case& c : cases)
            neu(form, [&](Eingabe& entry) {
                enter(entry, c.name, c.from, c.to, c.dates);
                screens.takeLog();
                entry.ok[0].click();
                EXPECT_EQ(screens.takeLog(), QStringList("! Die Eingabe kann nicht übernommen werden, weil...\r\n\r\n" +
                                                         c.lines.join("\r\n")));
                EXPECT_FALSE(entry.closed());
            });
    });
    EXPECT_EQ(rows(), Seed);
}

TEST_F(Arbeitsplandaten, NewRowIsStoredWithItsBackticksAndConfirmedByATone) {
    list([&](Liste& form) {
        neu(form, [&](Eingabe& entry) {
            EXPECT_EQ(entry.tz[1].text(), "1");
            EXPECT_FALSE(entry.ok[1].visible() || entry.ok[2].visible());
            enter(entry, " O'Impfung ", "7", "7", {F, B, B});
            entry.ok[0].click();
            EXPECT_TRUE(entry.closed());
        });
        EXPECT_EQ(form.li.rowCount(), 5);
    });
    EXPECT_EQ(rows(), Seed + QStringList{"O`Impfung|7|7|Letzte Ferkelung|Letzte Belegung|Letzte Belegung||"});
    EXPECT_EQ(screens.takeLog(), (QStringList{"+ PV_Arbeitsplandaten", "+ PV_Arbeitsplandaten_Eingabe",
                                              "- PV_Arbeitsplandaten_Eingabe", "~ 1000 15", "- PV_Arbeitsplandaten"}));
}

TEST_F(Arbeitsplandaten, StoresAndGoesOnToTheNeighbourWithWrap) {
    QStringList seen;
    list([&](Liste& form) {
        change(form, 4, [&](Eingabe& entry) {
            const auto note = [&] { seen += entry.t.text() + " " + entry.tz[0].text(); };
            note();
            entry.UpDown[0].onDown();
            entry.ok[2].click();  // past the last row
            note();
            entry.tz[1].type("33");
            entry.ok[1].click();  // and back over the first
            note();
            entry.ok[1].click();
            note();
            EXPECT_FALSE(entry.closed());
        });
    });
    EXPECT_EQ(seen, (QStringList{"Trächtigkeitskontr. 20", "Absetzung 28", "Trächtigkeitskontr. 19", "Ferkelung 113"}));
    QStringList expected = Seed;
    expected[2] = "Absetzung|28|33|Letzte Ferkelung|||Letzte Absetzung|Letzte Ferkelung";
    expected[3].replace("|20|", "|19|");
    EXPECT_EQ(rows(), expected);
}

TEST_F(Arbeitsplandaten, RowRenamedPastItsNeighboursStaysTheCurrentOne) {
    list([&](Liste& form) {
        change(form, 1, [&](Eingabe& entry) {
            entry.t.type("Zzz");
            entry.ok[2].click();
            EXPECT_EQ(entry.t.text(), "Belegung") << "from the last place on to the first";
        });
    });
}

TEST_F(Arbeitsplandaten, NumbersStayInTheirRange) {
    list([&](Liste& form) {
        neu(form, [&](Eingabe& entry) {
            entry.UpDown[0].down();
            EXPECT_EQ(entry.tz[0].text(), "1");
            entry.tz[0].type("-9x9,8");
            EXPECT_EQ(entry.tz[0].text(), "998");
            entry.UpDown[0].up();
            entry.UpDown[0].up();
            EXPECT_EQ(entry.tz[0].text(), "999");
            entry.tz[0].type("0");
            entry.tz[0].leave();
            EXPECT_EQ(entry.tz[0].text(), "1");
            EXPECT_EQ(entry.kom[4].items(), (QStringList{"", "Geburtsdatum", "Letzte Belegung", "Letzte Trächtigkeit",
                                                         "Letzte Ferkelung", "Letzte Absetzung", "Zugangsdatum"}));
        });
    });
}

TEST_F(Arbeitsplandaten, DeletesTheMarkedRowOnConfirmation) {
    koben.Konfig_Zahl[Zahl::LoeschenBestaetigen] = 1;
    const QString question = "? Soll der markierte Datensatz wirklich unwiederbringlich gelöscht werden? => ";
    list([&](Liste& form) {
        screens.takeLog();
        form.löschen.click();
        form.ändern.click();
        EXPECT_EQ(screens.takeLog(),
                  (QStringList{"! Bitte wählen Sie erst den zu löschenden Datensatz aus. Mit der ENTF-Taste kann der "
                               "ausgewählte Datensatz ebenfalls gelöscht werden!",
                               "! Bitte markieren Sie zuerst den Datensatz, den Sie ändern möchten."}));
        form.li.choose(2);
        screens.answers = {false, true};
        form.löschen.click();
        EXPECT_EQ(form.li.rowCount(), 4);
        form.li.key(Key::Delete);
        EXPECT_EQ(screens.takeLog(), (QStringList{question + "nein", question + "ja"}));
    });
    EXPECT_EQ(rows(), (QStringList{Seed[1], Seed[2], Seed[3]}));
}

TEST_F(Arbeitsplandaten, HandsTheTickedColumnsOver) {
    list([&](Liste& form) {
        form.li.resizeByUser(1, 140);
        form.li.resizeByUser(3, 5);
        form.konlist[0].click();
        form.konlist[2].click();
        form.listen.click();
    });
    EXPECT_EQ(handedOver(), (QStringList{"Arbeitsart|Tage bis...", "Absetzung|32", "Belegung|8", "Ferkelung|119",
                                         "Trächtigkeitskontr.|24"}));
    list([&](Liste& form) {
        EXPECT_EQ(form.li.column(1).width, 140);
        EXPECT_EQ(form.li.column(3).width, 25) << "a column cannot be lost";
        form.listen.click();
        EXPECT_TRUE(form.konlist[7].checked());
    });
    EXPECT_EQ(handedOver().first(),
              "Arbeitsart|Tage von...|Tage bis...|Bezugstermin|Aktiv (groß)|Aktiv (klein)|"
              "Erledigt (groß)|Erledigt (klein)");
    db.execute("delete from Arbeitsplanoptionen");
    screens.takeLog();
    list([&](Liste& form) { form.listen.click(); });
    EXPECT_EQ(screens.takeLog(),
              (QStringList{"+ PV_Arbeitsplandaten", "! Keine zu listenden Daten gefunden", "- PV_Arbeitsplandaten"}));
}

}  // namespace
}  // namespace koben
