// The animal's entry: what is refused and how it is said, what is proposed, what reaches the tables.
#include "tests/herd/Herdenhof.h"

namespace koben {
namespace {

using Screen = PB_Neues_Schwein;

/// A farm with the entry screen opened from its main form.
struct NeuesSchwein : testing::Test, Herdenhof {
    void neu(std::function<void(Screen&)> script) { open("XB_neueschweine", 0, std::move(script)); }
    void ändern(int row, std::function<void(Screen&)> script) { open("XB_schweinändern", row, std::move(script)); }
    void ändern(int row, const char* steps) {
        ändern(row, [=](Screen& form) { play(form, steps); });
    }
    void open(const char* entry, int row, std::function<void(Screen&)> script) {
        start([&](PA_Koben& main) {
            if (row > 0) main.datali.choose(row);
            screens.takeLog();
            menue<Screen>(main, entry, std::move(script));
        });
    }
};

TEST_F(NeuesSchwein, alleGründeStehenInEinerMeldungUndDieEingabeBleibt) {
    const QString none = "...die Sau-Nummer angegeben werden muß.", twice = "...die Saunummer bereits existiert.";
    const auto date = [](const char* which) { return QStringLiteral("...das %1 nicht korrekt ist.").arg(which); };
    const QString born = date("Geburtsdatum"), in = date("Zugangsdatum"), out = date("Abgangsdatum");
    const struct {
        const char *number, *born, *in, *out, *box;
        QStringList reasons;
        const char* focus;
    } table[] = {
        {"  ", "", "", "", "", {none}, "t(0)"},
        {"12", "", "", "", "", {twice}, "t(0)"},
        {"13", "x", "", "", "", {born}, "tdat(0)"},
        {"13", "", "31.02.2026", "1.13.26", "", {in, out}, "tdat(1)"},
        {"12", "?", "?", "?", "?", {twice, born, in, out, date("Box-Datum")}, "t(0)"},
    };
    tier("12", "Sau", "Abgangsdatum = #01/05/2026#");
    neu([&](Screen& form) {
        struct Focus : Control::View {
            using View::View;
            void changed(Aspect aspect) override { hit |= aspect == Aspect::Focus; }
            bool hit = false;
        };
        for (const auto& row : table) {
            form.t[0].type(row.number);
            const char* const dates[] = {row.born, row.in, row.out, row.box};
            for (int i = 0; i < 4; ++i) form.tdat[i].type(dates[i]);  // not left, so not yet completed
            Focus view(fieldAt(form, row.focus));
            form.ok.click();
            EXPECT_TRUE(says({refusal(row.reasons)}));
            EXPECT_TRUE(view.hit) << row.focus;
            EXPECT_EQ(textsOf(form, "t(0) tdat(3)"), QString(row.number) + '|' + row.box);
        }
    });
    EXPECT_EQ(show("select count(*) from Sauen"), "1");
}

TEST_F(NeuesSchwein, warnungenKönnenÜbergangenWerden) {
    const QString ear = "...die Ohrmarke bereits existiert.", tattoo = "...die Tätowierungs-Nummer bereits existiert.";
    const struct {
        const char *ear, *tattoo;
        int silent;  // about tattoos
        QStringList warnings;
    } table[] = {{"o1", "T1", 0, {ear, tattoo}}, {"O1", "T1", 1, {ear}}, {"", "T1", 1, {}}, {"", "T1", 0, {tattoo}}};
    tier("12", "Sau", "Ohrmarke = 'O1', Tätowierung = 'T1'");
    int number = 100;
    for (const auto& row : table) {
        for (const bool answer : {false, true}) {
            neu([&](Screen& form) {
                koben.Konfig_Zahl[Zahl::TaetowierungDoppelt] = static_cast<qint16>(row.silent);
                koben.Konfig_Zahl[Zahl::TonAus] = 1;
                if (!row.warnings.empty()) screens.answers = {answer};
                play(form, "t(0)=%1; t(1)=%2; t(2)=%3; ok", ++number, row.ear, row.tattoo);
                EXPECT_TRUE(
                    says(QStringList(!row.warnings.empty(), "? Bitte beachten:\r\n\r\n" + row.warnings.join("\r\n") +
                                                                "\r\n\r\nSollen *" + (answer ? "ja" : "nein"))));
                EXPECT_EQ(form.closed(), answer || row.warnings.empty());
            });
        }
        sql("delete from Sauen where ID > 1");
    }
    ändern(1, "ok");  // its own row is no second one
    EXPECT_TRUE(says({"~ 1000 15"}));
}

TEST_F(NeuesSchwein, jedesFeldErreichtDieTabelleUndKommtZurück) {
    neu([&](Screen& form) {
        play(
            form,
            "kom(0)=Eber; t(0)= O'Hara ; t(1)=Ohr; t(2)=Tat; t(3)=Bemerkung zum Eber; kom(1)=Gruppe9; kom(2)=Box9; "
            "kom(3)=Rasse9; kom(5)=Grund9; kom(6)=Kunde9; kom(7)=Weg9; kom(8)=Kunde9; kom(4)=K; tdat(0)=010124; "
            "tdat(1)=3; tdat(2)=3.8.; tdat(3)=45; tz(0)=100,5 kg; tz(1)=1234,56; tz(2)=0; tz(3)=99,999; konstatus; ok");
        EXPECT_TRUE(says({"~ 1000 15"}));
    });
    const QString all =
        "select Art, Nummer, Gruppe, Stallnr, BoxDatum, Ohrmarke, Tätowierung, Geburtsdatum, Rasse, Infos, "
        "Statusabfrage, Belegungsart, Mechanische_Amme, Zugangsdatum, Zugangsgewicht_kg, Einkaufspreis, Zugangsgrund, "
        "Lieferant, Abgangsdatum, Abgangsgewicht_kg, Verkaufspreis, Abgangsgrund, Abnehmer, Selektiert, Status, "
        "Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend from Sauen";
    const QString stored = show(all);
    EXPECT_EQ(stored,
              "Eber O`Hara Gruppe9 Box9 04.05.2026 Ohr Tat 01.01.2024 Rasse9 Bemerkung zum Eber N K N 03.07.2026 100,5 "
              "1234,56 Grund9 Kunde9 03.08.2026 0 100 Weg9 Kunde9   0 0 0 0");
    for (const auto& [table, keyword] : {std::pair{"Gruppe", "Gruppe9"},
                                         {"Stallnummer", "Box9"},
                                         {"Rasse", "Rasse9"},
                                         {"Zugangsgrund", "Grund9"},
                                         {"Kunde", "Kunde9"},
                                         {"Abgangsgrund", "Weg9"}})
        EXPECT_EQ(show(QStringLiteral("select count(*) from Stammdaten_%1 where Inhalt = '%2'").arg(table, keyword)),
                  "1");
    koben.Konfig_Zahl[Zahl::FilterVerkauft] = 2;
    Einstellungen_sichern(koben);
    ändern(1, "ok");
    EXPECT_EQ(show(all), stored);
    ändern(1, "tdat(0)=; tdat(1)=; tdat(2)=; tdat(3)=; konstatus; ok");  // back into stock
    EXPECT_EQ(show("select BoxDatum, Geburtsdatum, Zugangsdatum, Abgangsdatum, Statusabfrage from Sauen"), "- - - - ");
}

TEST_F(NeuesSchwein, eineFremdeArtBleibtErhalten) {
    tier("1", "Zucht");
    tier("2", "sau");
    for (int row : {1, 2}) ändern(row, "ok");
    EXPECT_EQ(show("select Art from Sauen"), "Zucht | Sau");
}

TEST_F(NeuesSchwein, fortlaufendeNummer) {
    const struct {
        const char *last, *next;
        int on = 1;
    } table[] = {{"12", "", 0}, {"0012", "13"}, {"A12", ""}, {"12-1", ""}, {"999", "1000"}, {"999999999999999", ""}};
    for (const auto& row : table) {
        sql("delete from Sauen");
        tier("77");
        tier(row.last);
        koben.Konfig_Zahl[Zahl::NummerErhoehen] = static_cast<qint16>(row.on);
        Einstellungen_sichern(koben);
        neu([&](Screen& form) { EXPECT_EQ(form.t[0].text(), row.next) << row.last; });
    }
    neu([&](Screen& form) {  // and goes on while entering
        play(form, "t(0)=400; oknächster(0); oknächster(0)");
        EXPECT_EQ(form.t[0].text(), "402");
        EXPECT_EQ(nummern(koben.herdList->herd()), "77 999999999999999 400 401");
    });
}

TEST_F(NeuesSchwein, umnummernTrifftNurDieMutterInVerlustenUndVerkäufen) {
    tier("12");
    tier("A7", "Eber");
    for (const char* row :
         {"Verluste (Muttersau, Kennung) values ('12', 1)", "Verluste (Muttersau, Kennung) values ('13', 9)",
          "Ferkelverkauf (Muttersau, Kennung) values ('12', 0)", "Verschiebung (Zu_Saunr, Kennung) values ('12', 2)",
          "Belegung (Ebernr, Kennung) values ('12', 1)"})
        sql("insert into %1", row);
    ändern(1, "t(0)=B'12; ok");
    EXPECT_EQ(show("select Nummer from Sauen"), "B`12 | A7");
    EXPECT_EQ(show("select Muttersau from Verluste"), "B`12 | 13");
    EXPECT_EQ(show("select Muttersau from Ferkelverkauf"), "B`12");
    EXPECT_EQ(show("select Zu_Saunr from Verschiebung") + show("select Ebernr from Belegung"), "1212");
    sql("update Sauen set Nummer = '' where ID = 1");  // as an import may leave it
    sql("insert into Ferkelverkauf (Muttersau, Kennung) values ('', 0)");
    ändern(1, "t(0)=5; ok");
    EXPECT_EQ(show("select Muttersau from Ferkelverkauf"), "B`12 | ");
}

TEST_F(NeuesSchwein, wartezeitWarntNachDemSpeichern) {
    tier("12");
    tier("13");
    for (const char* row : {"1, #07/20/2026#", "1, #07/19/2026#", "2, #12/31/2026#"})
        sql("insert into Behandlung (Kennung, Wartezeit_Datum) values (%1)", row);
    koben.Konfig_Zahl[Zahl::TonAus] = 1;
    koben.Konfig_Zahl[Zahl::FilterVerkauft] = 2;
    Einstellungen_sichern(koben);
    for (const auto& [sale, warns] :
         {std::pair{"20.07.2026", true}, {"19.07.2026", true}, {"21.07.2026", false}, {"", false}}) {
        ändern(1, [&](Screen& form) { play(form, "tdat(2)=%1; ok", sale); });
        EXPECT_TRUE(says(QStringList(warns, QStringLiteral("! ACHTUNG!!!*Tier 12 *%1*20.07.2026 vor.").arg(sale))));
        EXPECT_EQ(show("select Abgangsdatum from Sauen where ID = 1"), *sale ? sale : "-");
    }
}

TEST_F(NeuesSchwein, weiterschaltenGehtImKreis) {
    for (const char* number : {"1", "2", "3"}) tier(number);
    ändern(3, [&](Screen& form) {
        QString shown;
        for (int index : {0, 0, 1, 1, 1}) {
            shown += form.t[0].text();
            form.oknächster[index].click();
        }
        EXPECT_EQ(shown + form.t[0].text(), "312132");
        play(form, "t(0)=3; oknächster(0)");  // goes nowhere while a rule fails
        EXPECT_EQ(koben.herdList->herd().row(), 2);
    });
    sql("delete from Sauen where ID > 1");
    ändern(1, [](Screen& form) {
        form.oknächster[0].click();
        EXPECT_EQ(form.t[0].text(), "1");
    });
}

}  // namespace
}  // namespace koben
