// The pair over the medicines: rules, storing, the next one, deleting, handing over in every choice of columns.
#include "bookings/PV_Medizin.h"
#include "bookings/PV_Medizin_Eingabe.h"
#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

using Liste = PV_Medizin;
using Eingabe = PV_Medizin_Eingabe;

struct Zwischenliste : Form {
    explicit Zwischenliste(Koben& koben_) : Form(koben_, "PA_Zwischenliste", "Daten listen") {}
};

class MedizinTest : public testing::Test, public Buchungshof {
protected:
    void SetUp() override {
        catalogue.add<Liste>("PV_Medizin");
        catalogue.add<Eingabe>("PV_Medizin_Eingabe");
        catalogue.add<Zwischenliste>("PA_Zwischenliste");
        for (const char* row : {"'Salbe', 1, 'g', 0, 2.5, 'Wunde', 'außen'",
                                "'Penicillin', 2, 'ml', 7, 5, 'Husten', ''", "'Zink', 0.5, 'dl', 1, 0, '', ''"})
            sql("insert into Medikamente (Medikament, Menge, Einheit, Wartezeit_Tage, Kosten_je_Gabe, Behandlungsart, "
                "Verabreichungsart) values (" +
                QString::fromUtf8(row) + ")");
    }
    void list(std::function<void(Liste&)> script) {
        screens.workIn<Liste>(std::move(script));
        koben.open("PV_Medizin");
    }
    void in(Button& button, std::function<void(Eingabe&)> script) {
        screens.workIn<Eingabe>(std::move(script));
        button.click();
    }
    QString rows() {
        return zeige(
            "select Medikament, Menge, Einheit, Wartezeit_Tage, Kosten_je_Gabe, Behandlungsart, Verabreichungsart from "
            "Medikamente order by ID");
    }
};

const QString Salbe = "Salbe 1 g 0 2,5 Wunde außen", Penicillin = " | Penicillin 2 ml 7 5 Husten ",
              Zink = " | Zink 0,5 dl 1 0  ";

void enter(Eingabe& form, const QString& name, const QString& dose) {
    eingeben(form.t, name);
    eingeben(form.tz[0], dose);
}

TEST_F(MedizinTest, regeln) {
    const QString twice = "...das Medikament bereits existiert.", name = "...das Medikament eingegeben werden muß.";
    const QString dose = "...die Menge je Verabreichung eingegen werden muß.";
    const struct {
        const char *name, *dose;
        QStringList lines;
    } cases[] = {{" ", "", {name, dose}},
                 {"", "0,00", {name, dose}},
                 {" SALBE ", "1", {twice}},
                 {"Salbe", "x", {twice, dose}},
                 {"Neu", "0,004", {dose}}};  // shown as 0,00
    list([&](Liste& form) {
        in(form.neu, [&](Eingabe& entry) {
            for (const auto& c : cases) {
                enter(entry, c.name, c.dose);
                texte();
                entry.ok[0].click();
                EXPECT_EQ(texte(), QStringList("! Die Eingabe kann nicht übernommen werden, weil...\r\n\r\n" +
                                               c.lines.join("\r\n")));
                EXPECT_FALSE(entry.closed());
            }
        });
        form.li.choose(2);
        in(form.ändern, [&](Eingabe& entry) {
            enter(entry, "zink", "1");
            entry.ok[0].click();
            EXPECT_EQ(texte().last(), "! Die Eingabe kann nicht übernommen werden, weil...\r\n\r\n" + twice);
            enter(entry, "SALBE", "2");  // its own name
            entry.ok[0].click();
            EXPECT_TRUE(entry.closed());
        });
    });
    EXPECT_EQ(rows(), "SALBE 2 g 0 2,5 Wunde außen" + Penicillin + Zink);
}

TEST_F(MedizinTest, neueEinesNachDemAnderen) {
    list([&](Liste& form) {
        EXPECT_EQ(form.li.row(), 3) << "the last row is current";
        in(form.neu, [&](Eingabe& entry) {
            EXPECT_EQ(entry.kom[0].items(), QStringList({"", "kg", "g", "mg", "l", "dl", "ml", "St"}));
            EXPECT_EQ(entry.kom[1].items(), QStringList({"Husten", "Wunde"}));
            EXPECT_FALSE(entry.ok[1].visible());
            enter(entry, "O'Neu", "0,125");
            entry.kom[0].choose(5);
            eingeben(entry.tz[1], "9x8");
            entry.UpDown.up();
            entry.UpDown.down();
            entry.UpDown.down();
            eingeben(entry.tz[2], "1234567,89");
            eingeben(entry.kom[1], "Fieber und mehr als zwanzig");
            entry.ok[2].click();
            EXPECT_EQ(entry.t.text() + '|' + entry.tz[0].text() + '|' + entry.tz[1].text() + '|' + entry.tz[2].text() +
                          '|' + entry.kom[0].text() + '|' + entry.kom[1].text(),
                      "|0,00|0|0,00||");
            EXPECT_EQ(entry.kom[1].items().last(), "Fieber und mehr als");
            enter(entry, "Zwei", "2");
            entry.ok[0].click();
        });
        EXPECT_EQ(form.li.cell(form.li.row(), u"Medikament"), "Zwei");
    });
    EXPECT_EQ(rows(),
              Salbe + Penicillin + Zink + " | O`Neu 0,13 dl 97 1234567,89 Fieber und mehr als  | Zwei 2  0 0  ");
}

TEST_F(MedizinTest, änderungenWandernDurchDieListe) {
    QStringList seen;
    list([&](Liste& form) {
        form.li.choose(3);
        in(form.ändern, [&](Eingabe& entry) {
            const auto note = [&] { seen += entry.t.text() + ' ' + entry.kom[0].text() + ' ' + entry.tz[1].text(); };
            note();
            eingeben(entry.tz[1], "30");
            entry.ok[2].click();
            note();
            entry.ok[1].click();
            note();
        });
    });
    EXPECT_EQ(seen, QStringList({"Zink dl 1", "Penicillin ml 7", "Zink dl 30"}));
    sql("insert into Behandlung (Kennung, Medikament, Wartezeit_Tage) values (1, 'Zink', 1)");
    koben.Konfig_Zahl[Zahl::LoeschenBestaetigen] = 0;
    list([&](Liste& form) {
        form.löschen.click();
        EXPECT_EQ(form.li.rowCount(), 2);
    });
    EXPECT_EQ(rows(), Salbe + Penicillin);
    EXPECT_EQ(zeige("select Medikament, Wartezeit_Tage from Behandlung"), "Zink 1") << "bookings stay as they are";
}

TEST_F(MedizinTest, listenInJederWahlDerSpalten) {
    const QStringList titles{"Medikament",        "Behandlungsmenge", "Behandlungseinheit", "Wartezeit (Tage)",
                             "Kosten je Einheit", "Behandlungsart",   "Verabreichungsart"};
    const QStringList row{"Salbe", "1", "g", "0", "2,5", "Wunde", "außen"};
    for (int choice = 0; choice < 128; ++choice)
        list([&](Liste& form) {
            QStringList expectedTitles, expectedRow;
            for (int i = 0; i < 7; ++i) {
                if (choice >> i & 1) form.konlist[i].click();
                if (choice != 0 && !(choice >> i & 1)) continue;
                expectedTitles += titles[i];
                expectedRow += row[i];
            }
            form.listen.click();
            Grid got(form, "got");
            ASSERT_TRUE(got.load(path("gridli.txt")));
            QStringList gotTitles, gotRow;
            for (int c = 1; c <= got.columnCount(); ++c) {
                gotTitles += got.column(c).title;
                gotRow += got.cell(2, c);
            }
            EXPECT_EQ(gotTitles, expectedTitles);
            EXPECT_EQ(gotRow, expectedRow);
            EXPECT_EQ(got.rowCount(), 3);
            EXPECT_EQ(form.konlist[6].checked(), choice == 0 || choice >> 6) << "the boxes stay set";
        });
    sql("delete from Medikamente");
    texte();
    list([&](Liste& form) {
        form.listen.click();
        form.löschen.click();
        form.li.doubleClick();
    });
    EXPECT_EQ(texte(), QStringList({"! Keine zu listenden Daten gefunden",
                                    "! Bitte wählen Sie erst den zu löschenden Datensatz aus. Mit der ENTF-Taste kann "
                                    "der ausgewählte Datensatz ebenfalls gelöscht werden!",
                                    "! Bitte markieren Sie zuerst den Datensatz, den Sie ändern möchten."}));
}

}  // namespace
}  // namespace koben
