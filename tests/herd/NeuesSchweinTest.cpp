// The animal's entry: what is refused and how it is said, what is proposed, what reaches the tables.
#include "tests/herd/Herdenhof.h"

namespace koben {
namespace {

using Screen = PB_Neues_Schwein;

/// A farm with the entry screen opened from its main form.
struct NeuesSchwein : testing::Test, Herdenhof {
    void neu(std::function<void(Screen&)> script) { open("XB_neueschweine", 0, std::move(script)); }
    void ändern(int row, std::function<void(Screen&)> script) { open("XB_schweinändern", row, std::move(script)); }
    void open(const char* entry, int row, std::function<void(Screen&)> script) {
        start([&](PA_Koben& main) {
            if (row > 0) main.datali.choose(row);
            screens.takeLog();
            menue<Screen>(main, entry, std::move(script));
        });
    }
};

const QString Kopf = "! Die Eingabe kann nicht übernommen werden, weil...\r\n\r\n";
const QString Frage = "\r\n\r\nSollen die Daten trotzdem akzeptiert werden? => ";

TEST_F(NeuesSchwein, alleGründeStehenInEinerMeldungUndDieEingabeBleibt) {
    tier("12", "Sau", "Abgangsdatum = #01/05/2026#");
    struct {
        const char *number, *born, *in, *out, *box, *reasons, *focus;
    } const table[] = {
        {"", "", "", "", "", "...die Sau-Nummer angegeben werden muß.", "t(0)"},
        {"  ", "", "", "", "", "...die Sau-Nummer angegeben werden muß.", "t(0)"},
        {"12", "", "", "", "", "...die Saunummer bereits existiert.", "t(0)"},
        {"13", "x", "", "", "", "...das Geburtsdatum nicht korrekt ist.", "tdat(0)"},
        {"13", "", "31.02.2026", "1.13.26", "",
         "...das Zugangsdatum nicht korrekt ist.\r\n...das Abgangsdatum nicht "
         "korrekt ist.",
         "tdat(1)"},
        {"12", "?", "?", "?", "?",
         "...die Saunummer bereits existiert.\r\n...das Geburtsdatum nicht korrekt "
         "ist.\r\n...das Zugangsdatum nicht korrekt ist.\r\n...das Abgangsdatum nicht korrekt ist.\r\n...das Box-Datum "
         "nicht korrekt ist.",
         "t(0)"},
    };
    neu([&](Screen& form) {
        struct Focus : Control::View {
            using View::View;
            void changed(Aspect aspect) override {
                if (aspect == Aspect::Focus) hit = true;
            }
            bool hit = false;
        };
        for (const auto& row : table) {
            form.t[0].type(row.number);
            const char* const dates[] = {row.born, row.in, row.out, row.box};
            for (int i = 0; i < 4; ++i) form.tdat[i].type(dates[i]);  // not left, so not yet completed
            const QString focus = row.focus;
            Focus view(focus == "t(0)" ? form.t[0] : form.tdat[focus == "tdat(0)" ? 0 : 1]);
            form.ok.click();
            EXPECT_EQ(texte(), QStringList(Kopf + row.reasons));
            EXPECT_TRUE(view.hit) << row.focus;
            EXPECT_EQ(form.t[0].text(), row.number);
            EXPECT_EQ(form.tdat[3].text(), row.box);
        }
    });
    EXPECT_EQ(zeige("select count(*) from Sauen"), "1");
}

TEST_F(NeuesSchwein, warnungenKönnenÜbergangenWerden) {
    tier("12", "Sau", "Ohrmarke = 'O1', Tätowierung = 'T1'");
    struct {
        const char *ear, *tattoo;
        int silent;  // Konfig_Zahl(67)
        const char* warnings;
    } const table[] = {
        {"O1", "", 0, "...die Ohrmarke bereits existiert."},
        {"o1", "T1", 0, "...die Ohrmarke bereits existiert.\r\n...die Tätowierungs-Nummer bereits existiert."},
        {"O1", "T1", 1, "...die Ohrmarke bereits existiert."},
        {"", "T1", 1, ""},
        {"", "T1", 0, "...die Tätowierungs-Nummer bereits existiert."},
    };
    int number = 100;
    for (const auto& row : table) {
        for (const bool answer : {false, true}) {
            neu([&](Screen& form) {
                koben.Konfig_Zahl[Zahl::TaetowierungDoppelt] = static_cast<qint16>(row.silent);
                koben.Konfig_Zahl[Zahl::TonAus] = 1;
                eingeben(form.t[0], QString::number(++number));
                eingeben(form.t[1], row.ear);
                eingeben(form.t[2], row.tattoo);
                if (*row.warnings) screens.answers = {answer};
                form.ok.click();
                EXPECT_EQ(texte(), *row.warnings ? QStringList(QStringLiteral("? Bitte beachten:\r\n\r\n") +
                                                               row.warnings + Frage + (answer ? "ja" : "nein"))
                                                 : QStringList());
                EXPECT_EQ(form.closed(), answer || !*row.warnings);
            });
        }
        sql("delete from Sauen where ID > 1");
    }
    ändern(1, [&](Screen& form) {  // its own row is no second one
        form.ok.click();
        EXPECT_EQ(texte(), QStringList("~ 1000 15"));
    });
}

TEST_F(NeuesSchwein, jedesFeldErreichtDieTabelleUndKommtZurück) {
    neu([&](Screen& form) {
        wählen(form.kom[0], "Eber");
        eingeben(form.t[0], " O'Hara ");
        const char* const texts[] = {"", "Ohr", "Tat", "Bemerkung zum Eber"};
        for (int i = 1; i < 4; ++i) eingeben(form.t[i], texts[i]);
        const char* const keywords[] = {"", "Gruppe9", "Box9", "Rasse9", "", "Grund9", "Kunde9", "Weg9", "Kunde9"};
        for (int i : {1, 2, 3, 5, 6, 7, 8}) eingeben(form.kom[i], keywords[i]);
        wählen(form.kom[4], "K");
        const char* const dates[] = {"010124", "3", "3.8.", "45"};
        for (int i = 0; i < 4; ++i) eingeben(form.tdat[i], dates[i]);
        const char* const numbers[] = {"100,5 kg", "1234,56", "0", "99,999"};
        for (int i = 0; i < 4; ++i) eingeben(form.tz[i], numbers[i]);
        form.konstatus.click();
        form.ok.click();
        EXPECT_EQ(texte(), QStringList("~ 1000 15"));
    });
    const QString fields =
        "Art, Nummer, Gruppe, Stallnr, BoxDatum, Ohrmarke, Tätowierung, Geburtsdatum, Rasse, Infos, Statusabfrage, "
        "Belegungsart, Mechanische_Amme, Zugangsdatum, Zugangsgewicht_kg, Einkaufspreis, Zugangsgrund, Lieferant, "
        "Abgangsdatum, Abgangsgewicht_kg, Verkaufspreis, Abgangsgrund, Abnehmer, Selektiert, Status, Anz_Belegungen, "
        "Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend";
    const QString stored = zeige("select " + fields + " from Sauen");
    EXPECT_EQ(stored,
              "Eber O`Hara Gruppe9 Box9 04.05.2026 Ohr Tat 01.01.2024 Rasse9 Bemerkung zum Eber N K N 03.07.2026 100,5 "
              "1234,56 Grund9 Kunde9 03.08.2026 0 100 Weg9 Kunde9   0 0 0 0");
    for (const char* table : {"Gruppe = 'Gruppe9'", "Stallnummer = 'Box9'", "Rasse = 'Rasse9'",
                              "Zugangsgrund = 'Grund9'", "Kunde = 'Kunde9'", "Abgangsgrund = 'Weg9'"}) {
        const QStringList part = QString(table).split(" = ");
        EXPECT_EQ(zeige("select count(*) from Stammdaten_" + part[0] + " where Inhalt = " + part[1]), "1") << table;
    }
    koben.Konfig_Zahl[Zahl::FilterVerkauft] = 2;
    Einstellungen_sichern(koben);
    ändern(1, [](Screen& form) { form.ok.click(); });
    EXPECT_EQ(zeige("select " + fields + " from Sauen"), stored);
    ändern(1, [](Screen& form) {  // back into stock
        for (int i = 0; i < 4; ++i) eingeben(form.tdat[i], "");
        form.konstatus.click();
        form.ok.click();
    });
    EXPECT_EQ(zeige("select BoxDatum, Geburtsdatum, Zugangsdatum, Abgangsdatum, Statusabfrage from Sauen"), "- - - - ");
}

TEST_F(NeuesSchwein, einZuLangerWertSchreibtNichts) {
    const QString before = stand();
    neu([&](Screen& form) {
        form.t[0].setText("1");
        form.kom[1].setText("neue Gruppe");
        form.kom[2].setText("12345678901");
        form.ok.click();
        EXPECT_FALSE(form.closed());
        EXPECT_EQ(form.kom[2].text(), "12345678901");
        EXPECT_TRUE(texte().value(0).startsWith("! Die Eingabe kann nicht übernommen werden, weil ein Wert nicht in "));
    });
    EXPECT_EQ(stand(), before);
}

/// Numbers beyond what a field or a type holds are refused or cut, never fatal.
TEST_F(NeuesSchwein, überlangeZahlen) {
    for (const char* digits : {"99999999999999", "999999999999999999999999999999", "-5", "1-2", ",", "*"}) {
        neu([&](Screen& form) {
            eingeben(form.t[0], "9");
            for (auto& field : form.tz) eingeben(*field, digits);
            form.ok.click();
            EXPECT_EQ(form.closed(), zeige("select count(*) from Sauen") == "1") << digits;
        });
        sql("delete from Sauen");
    }
}

TEST_F(NeuesSchwein, eineFremdeArtBleibtErhalten) {
    tier("1", "Zucht");
    tier("2", "sau");
    for (int row : {1, 2}) ändern(row, [](Screen& form) { form.ok.click(); });
    EXPECT_EQ(zeige("select Art from Sauen"), "Zucht | Sau");
}

TEST_F(NeuesSchwein, fortlaufendeNummer) {
    struct {
        const char *last, *next;
        int on = 1;
    } const table[] = {{"12", "13"}, {"0012", "13"},  {"A12", ""},   {"12-1", ""},
                       {"1 2", ""},  {"999", "1000"}, {"12", "", 0}, {"999999999999999", ""}};
    for (const auto& row : table) {
        sql("delete from Sauen");
        tier("77");
        tier(row.last);
        koben.Konfig_Zahl[Zahl::NummerErhoehen] = static_cast<qint16>(row.on);
        Einstellungen_sichern(koben);
        neu([&](Screen& form) { EXPECT_EQ(form.t[0].text(), row.next) << row.last; });
    }
    neu([&](Screen& form) {  // and goes on while entering
        koben.Konfig_Zahl[Zahl::NummerErhoehen] = 1;
        for (const char* number : {"400", "401"}) {
            if (form.t[0].text().isEmpty()) eingeben(form.t[0], "400");
            EXPECT_EQ(form.t[0].text(), number);
            form.oknächster[0].click();
        }
        EXPECT_EQ(form.t[0].text(), "402");
        EXPECT_EQ(nummern(koben.herdList->herd()), "77 999999999999999 400 401");
    });
}

TEST_F(NeuesSchwein, standardmaske) {
    const QStringList mask{"Ferkel", "Läufer", "B1",   "DE-",        "T",     "DL",    "", "Zukauf", "Meyer",
                           "",       "Schulz", "Info", "01.07.2026", "25,00", "60,00", "", "0,00",   "0,00"};
    neu([&](Screen& form) {
        for (auto& field : form.tz) EXPECT_EQ(field->text(), "0,00");
        wählen(form.kom[0], "Ferkel");
        for (int i : {1, 2, 3, 5, 6, 8}) eingeben(form.kom[i], mask[i < 4 ? (i == 3 ? 5 : i) : i + 2]);
        for (int i = 1; i < 4; ++i) eingeben(form.t[i], mask[i == 3 ? 11 : i + 2]);
        eingeben(form.tdat[1], "01.07.");
        eingeben(form.tz[0], "25");
        eingeben(form.tz[1], "60");
        form.standard.click();
        EXPECT_EQ(texte(), QStringList("! Die Standardwerte wurden gesichert und werden ab sofort bei jeder "
                                       "Schwein-Neueingabe als Standardwerte vorgegeben."));
    });
    EXPECT_EQ(lines("PB_Neues_Schwein.ko1"), mask);
    const auto shown = [](Screen& form) {
        QStringList texts;
        for (const TextBox* box : std::initializer_list<TextBox*>{
                 &form.kom[0], &form.kom[1], &form.kom[2], &form.t[1], &form.t[2], &form.kom[3], &form.kom[4],
                 &form.kom[5], &form.kom[6], &form.kom[7], &form.kom[8], &form.t[3], &form.tdat[1], &form.tz[0],
                 &form.tz[1], &form.tdat[2], &form.tz[2], &form.tz[3]})
            texts += box->text();
        return texts;
    };
    neu([&](Screen& form) {
        EXPECT_EQ(shown(form), mask);
        EXPECT_EQ(form.t[0].text(), "");
    });
    write("PB_Neues_Schwein.ko1", "Kuh\r\nLäufer\r\n12345678901234");  // damaged, and cut off
    neu([&](Screen& form) {
        EXPECT_EQ(shown(form).mid(0, 4), (QStringList{"", "Läufer", "1234567890", ""}));
        EXPECT_EQ(form.tz[3].text(), "0,00");
    });
}

TEST_F(NeuesSchwein, umnummernTrifftNurDieMutterInVerlustenUndVerkäufen) {
    tier("12");
    tier("A7", "Eber");
    sql("insert into Verluste (Muttersau, Kennung) values ('12', 1)");
    sql("insert into Verluste (Muttersau, Kennung) values ('13', 9)");
    sql("insert into Ferkelverkauf (Muttersau, Kennung) values ('12', 0)");
    sql("insert into Verschiebung (Zu_Saunr, Kennung) values ('12', 2)");
    sql("insert into Belegung (Ebernr, Kennung) values ('12', 1)");
    ändern(1, [](Screen& form) {
        eingeben(form.t[0], "B'12");
        form.ok.click();
    });
    EXPECT_EQ(zeige("select Nummer from Sauen"), "B`12 | A7");
    EXPECT_EQ(zeige("select Muttersau from Verluste"), "B`12 | 13");
    EXPECT_EQ(zeige("select Muttersau from Ferkelverkauf"), "B`12");
    EXPECT_EQ(zeige("select Zu_Saunr from Verschiebung"), "12");
    EXPECT_EQ(zeige("select Ebernr from Belegung"), "12");
    sql("update Sauen set Nummer = '' where ID = 1");  // as an import may leave it
    sql("insert into Ferkelverkauf (Muttersau, Kennung) values ('', 0)");
    ändern(1, [](Screen& form) {
        eingeben(form.t[0], "5");
        form.ok.click();
    });
    EXPECT_EQ(zeige("select Muttersau from Ferkelverkauf"), "B`12 | ");
}

TEST_F(NeuesSchwein, weiterschaltenGehtImKreis) {
    for (const char* number : {"1", "2", "3"}) tier(number);
    ändern(3, [&](Screen& form) {
        QStringList shown;
        for (int index : {0, 0, 1, 1, 1}) {
            shown += form.t[0].text();
            form.oknächster[index].click();
        }
        EXPECT_EQ(shown.join(u' '), "3 1 2 1 3");
        EXPECT_EQ(form.t[0].text(), "2");
        eingeben(form.t[0], "3");  // goes nowhere while a rule fails
        form.oknächster[0].click();
        EXPECT_EQ(koben.herdList->herd().row(), 2);
    });
    sql("delete from Sauen where ID > 1");
    ändern(1, [](Screen& form) {
        form.oknächster[0].click();
        EXPECT_EQ(form.t[0].text(), "1");
    });
}

TEST_F(NeuesSchwein, wartezeitWarntNachDemSpeichern) {
    struct {
        const char *sale, *until;
    } const table[] = {{"20.07.2026", "20.07.2026"}, {"19.07.2026", "20.07.2026"}, {"21.07.2026", ""}, {"", ""}};
    tier("12");
    tier("13");
    sql("insert into Behandlung (Kennung, Wartezeit_Datum) values (1, #07/20/2026#)");
    sql("insert into Behandlung (Kennung, Wartezeit_Datum) values (1, #07/19/2026#)");
    sql("insert into Behandlung (Kennung, Wartezeit_Datum) values (2, #12/31/2026#)");
    koben.Konfig_Zahl[Zahl::TonAus] = 1;
    koben.Konfig_Zahl[Zahl::FilterVerkauft] = 2;
    Einstellungen_sichern(koben);
    for (const auto& row : table) {
        ändern(1, [&](Screen& form) {
            eingeben(form.tdat[2], row.sale);
            form.ok.click();
        });
        const QString warning =
            QStringLiteral(
                "! ACHTUNG!!!\r\n\r\nSie haben beim Tier 12 das Verkaufsdatum %1 eingetragen. Laut den "
                "Medizingaben liegt für das Tier eine Schlacht-/Verkaufssperre bis zum %2 vor.")
                .arg(row.sale, row.until);
        EXPECT_EQ(texte(), *row.until ? QStringList(warning) : QStringList()) << row.sale;
        EXPECT_EQ(zeige("select Abgangsdatum from Sauen where ID = 1"), *row.sale ? row.sale : "-");
    }
}

TEST_F(NeuesSchwein, dieTierartBestimmtWasZuSehenIst) {
    struct {
        const char* art;
        bool nurse, boar, frame;
    } const table[] = {{"Sau", true, false, true},
                       {"Eber", false, true, false},
                       {"Mast", false, false, false},
                       {"Ferkel", false, false, false}};
    const auto look = [](Screen& form, const auto& row) {
        EXPECT_EQ(form.konamme.visible(), row.nurse) << row.art;
        EXPECT_EQ(form.bez[20].visible(), row.boar) << row.art;
        EXPECT_EQ(form.kom[4].visible(), row.boar) << row.art;
        EXPECT_EQ(form.rahmen[0].visible(), row.frame) << row.art;
        EXPECT_EQ(form.bezinfo[9].visible(), row.frame) << row.art;
    };
    for (const auto& row : table) tier(row.art, row.art);
    neu([&](Screen& form) {
        for (const auto& row : table) {
            wählen(form.kom[0], row.art);
            look(form, row);
        }
    });
    int line = 0;
    for (const auto& row : table) ändern(++line, [&](Screen& form) { look(form, row); });
}

TEST_F(NeuesSchwein, derKalenderGehörtZuSeinemFeld) {
    neu([](Screen& form) {
        eingeben(form.tdat[2], "3.2.2025");
        form.calender[2].click();
        EXPECT_TRUE(form.calend.visible());
        EXPECT_EQ(form.calend.date(), QDate(2025, 2, 3));
        form.calender[0].click();  // another field's month, not the end of the first
        EXPECT_TRUE(form.calend.visible());
        form.calend.pick(QDate(2024, 2, 29));
        EXPECT_FALSE(form.calend.visible());
        EXPECT_EQ(form.tdat[0].text(), "29.02.2024");
        EXPECT_EQ(form.tdat[2].text(), "03.02.2025");
    });
}

TEST_F(NeuesSchwein, eineFehlschlagendeAnweisungLässtNichtsZurück) {
    tier("12");
    sql("insert into Verluste (Muttersau, Kennung) values ('12', 1)");
    sql("insert into Ferkelverkauf (Muttersau, Kennung) values ('12', 0)");
    const QString before = stand();
    int nth = 0;
    for (bool failed = true; failed && nth < 99;) {
        failed = false;
        ++nth;
        ändern(1, [&](Screen& form) {
            eingeben(form.t[0], "13");
            eingeben(form.kom[1], "neue Gruppe");
            eingeben(form.kom[6], "neuer Kunde");
            Workspace::setFaultHook([&, count = 0](const QString& text) mutable {
                if (++count != nth) return;
                failed = true;
                throw DatabaseError(DatabaseError::Kind::Io, text);
            });
            try {
                form.ok.click();
            } catch (const DatabaseError&) {
                EXPECT_EQ(form.kom[1].text(), "neue Gruppe");
            }
            Workspace::setFaultHook({});
        });
        if (failed) {
            EXPECT_EQ(stand(), before) << nth;
        }
    }
    EXPECT_GT(nth, 5);
    EXPECT_EQ(zeige("select Nummer, Gruppe, Lieferant from Sauen"), "13 neue Gruppe neuer Kunde");
}

}  // namespace
}  // namespace koben
