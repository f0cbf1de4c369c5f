// The settings' screen: every control reaches its slot and comes back, the hint, the standard values.
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "cycle/PO_Einstellungen.h"
#include "tests/support/Fakes.h"

namespace koben {
namespace {

struct Einstellungenmaske : testing::Test, TestRun {
    Einstellungenmaske() {
        catalogue.add<PO_Einstellungen>("PO_Einstellungen");
        Datenbank_anlegen(koben.workspace, koben.Datenbankpfad);
        Einstellungen_sichern(koben);
    }
    void in(std::function<void(PO_Einstellungen&)> script) {
        screens.workIn<PO_Einstellungen>(std::move(script));
        koben.open("PO_Einstellungen");
    }
    QStringList texte() {
        QStringList texts;
        for (const QString& line : screens.takeLog())
            if (!line.startsWith("+ ") && !line.startsWith("- ")) texts += line;
        return texts;
    }
};

void eingeben(TextBox& field, const QString& text) {
    field.enter();
    field.type(text);
    field.leave();
}

// slots by index of tzahl and kon
const int Numbers[] = {34, 40, 0, 1, 39, 41, 42, 49, 50, 52};
const int Switches[] = {43, 44, 46, 47, 48, 51, 54, 55, 57, 67, 24};

TEST_F(Einstellungenmaske, jedesFeldHatSeinenPlatz) {
    koben.Konfig_Zahl[Zahl::BerichtDatum] = 0;
    const auto before = koben.Konfig_Zahl;
    in([&](PO_Einstellungen& form) {
        for (int i = 0; i < 10; ++i) {
            EXPECT_EQ(form.tzahl[i].text(), QString::number(before[static_cast<size_t>(Numbers[i])])) << i;
            form.tzahl[i].setText(QString::number(25 + i));
        }
        form.tzahl[2].setText("110");
        form.tzahl[1].setText("7");
        for (auto& box : form.kon) {
            EXPECT_FALSE(box->checked());
            box->click();
        }
        form.opti[2].click();
        eingeben(form.tsonst[0], "Hof Süd");
        form.kom[0].choose(form.kom[0].items().indexOf("Stallnr"));
        form.kom[1].choose(form.kom[1].items().indexOf("Nummer"));
        form.ok.click();
        EXPECT_TRUE(form.closed());
    });
    EXPECT_EQ(texte(), QStringList());
    auto expected = before;
    for (int i = 0; i < 10; ++i) expected[static_cast<size_t>(Numbers[i])] = static_cast<qint16>(25 + i);
    expected[0] = 110;
    expected[40] = 7;
    for (int slot : Switches) expected[static_cast<size_t>(slot)] = 1;
    expected[45] = 2;
    EXPECT_EQ(koben.Konfig_Zahl, expected);
    const QStringList file = lines("Einstellungen.ko2");
    EXPECT_EQ(file.size(), 173);
    EXPECT_EQ(file.value(0), " 110 ");
    EXPECT_EQ(file.value(112 + 25), "Hof Süd");
    EXPECT_EQ(file.value(112 + 33), "Stallnr");
    EXPECT_EQ(file.value(112 + 34), "Nummer");
    in([&](PO_Einstellungen& form) {
        for (auto& box : form.kon) EXPECT_TRUE(box->checked()) << box->index();
        EXPECT_EQ(form.opti.selected(), 2);
        EXPECT_EQ(form.tsonst[0].text(), "Hof Süd");
        EXPECT_EQ(form.kom[0].text(), "Stallnr");
        EXPECT_EQ(form.kom[1].text(), "Nummer");
        form.kon[0].click();
        form.tzahl[0].setText("1");
        form.abbrechen.click();  // changes nothing
    });
    EXPECT_EQ(koben.Konfig_Zahl, expected);
    EXPECT_EQ(lines("Einstellungen.ko2"), file);
}

TEST_F(Einstellungenmaske, ungewöhnlicheAbstände) {
    const QString weaning = "...der Abstand Ferkelung-Absetzung = 30 Tage",
                  service =
                      "...der Abstand "
                      "Absetzung-Belegung = 6 Tage",
                  farrowing = "...der Abstand Belegung-Ferkelung = 116 Tage",
                  test = "...der Abstand Belegung-Trächtigkeitskontrolle = 22 Tage";
    struct {
        const char *weaning, *service, *farrowing, *test;
        QStringList lines;
    } const table[] = {
        {"20", "3", "102", "10", {}},
        {"40", "14", "130", "34", {}},
        {"19", "2", "101", "9", {weaning, service, farrowing, test}},
        {"41", "15", "131", "35", {weaning, service, farrowing, test}},
        {"", "6", "116", "22", {weaning}},
        {"30", "6", "99999", "", {farrowing, test}},
    };
    for (const auto& row : table) {
        in([&](PO_Einstellungen& form) {
            eingeben(form.tzahl[0], row.weaning);
            eingeben(form.tzahl[1], row.service);
            eingeben(form.tzahl[2], row.farrowing);
            eingeben(form.tzahl[4], row.test);
            form.ok.click();
        });
        EXPECT_EQ(texte(), row.lines.isEmpty()
                               ? QStringList()
                               : QStringList("! Bitte beachten Sie folgende durchschnittliche Abstände:\r\n\r\n" +
                                             row.lines.join("\r\n") +
                                             "\r\n\r\nSie haben (zum Teil) diese Abstände wesentlich überschritten. "
                                             "Dies ist unlogisch und sollte korrigiert werden. Trotzdem wird Ihre "
                                             "Eingabe jetzt akzeptiert."));
        EXPECT_EQ(koben.Konfig_Zahl[34], QString(row.weaning).toInt());  // the values stay
        EXPECT_EQ(koben.Konfig_Zahl[1], QString(row.weaning).toInt() + QString(row.service).toInt());
    }
    EXPECT_EQ(koben.Konfig_Zahl[0], 32767);  // as much as a slot holds
}

TEST_F(Einstellungenmaske, dieSummeFolgtBeiJedemVerlassen) {
    in([](PO_Einstellungen& form) {
        eingeben(form.tzahl[3], "99");  // left itself
        EXPECT_EQ(form.tzahl[3].text(), "36");
        form.tzahl[3].enter();
        form.tzahl[3].type("99");
        eingeben(form.tzahl[9], "1200");
        EXPECT_EQ(form.tzahl[3].text(), "36");
        eingeben(form.tzahl[0], "2a8");  // digits alone
        EXPECT_EQ(form.tzahl[0].text(), "28");
        EXPECT_EQ(form.tzahl[3].text(), "34");
    });
}

TEST_F(Einstellungenmaske, zweiteSortierungNurNebenEinerErsten) {
    struct {
        const char *first, *second, *stored;
    } const table[] = {{"", "Nummer", ""}, {"Art", "Art", ""}, {"Art", "Nummer", "Nummer"}, {"Art", "", ""}};
    for (const auto& row : table) {
        in([&](PO_Einstellungen& form) {
            form.kom[0].choose(form.kom[0].items().indexOf(row.first));
            form.kom[1].choose(form.kom[1].items().indexOf(row.second));
            form.ok.click();
        });
        EXPECT_EQ(koben.Konfig_Text[33], row.first);
        EXPECT_EQ(koben.Konfig_Text[34], row.stored) << row.first << row.second;
    }
}

TEST_F(Einstellungenmaske, dieListeWirdNurNeuGeladenWennSieAndersAussieht) {
    const auto reload = [&](std::function<void(PO_Einstellungen&)> change) {
        koben.Liste_neu_laden = 0;
        in([&](PO_Einstellungen& form) {
            change(form);
            form.ok.click();
        });
        return koben.Liste_neu_laden;
    };
    EXPECT_EQ(reload([](PO_Einstellungen& form) { form.kon[6].click(); }), 0);
    EXPECT_EQ(reload([](PO_Einstellungen& form) { form.kon[5].click(); }), 1);
    EXPECT_EQ(reload([](PO_Einstellungen& form) { form.kom[0].choose(2); }), 1);
    EXPECT_EQ(reload([](PO_Einstellungen&) {}), 0);
    EXPECT_EQ(reload([](PO_Einstellungen& form) { form.kom[0].choose(0); }), 1);
}

TEST_F(Einstellungenmaske, standardwerte) {
    in([&](PO_Einstellungen& form) {
        for (auto& field : form.tzahl) field->setText("1");
        for (auto& box : form.kon) box->setChecked(true);
        form.opti.select(1);
        form.tsonst[0].setText("Hof");
        form.kom[0].setCurrent(1);
        screens.answers = {false};
        form.standard.click();
        EXPECT_EQ(form.tzahl[0].text(), "1");
        screens.answers = {true};
        form.standard.click();
        QStringList numbers;
        for (auto& field : form.tzahl) numbers += field->text();
        EXPECT_EQ(numbers.join(u' '), "30 6 116 36 22 365 14 60 14 1000");
        QString boxes;
        for (auto& box : form.kon) boxes += box->checked() ? '1' : '0';
        EXPECT_EQ(boxes, "00000000011");
        EXPECT_EQ(form.opti.selected(), 0);
        EXPECT_EQ(form.tsonst[0].text(), "Hof");
        EXPECT_EQ(form.kom[0].text(), "Art");
        EXPECT_EQ(texte().last(),
                  "? Sollen die aktuellen Werte wirklich mit den Standard-Werten überschrieben werden? => ja");
    });
    EXPECT_EQ(koben.Konfig_Zahl[Zahl::ListenDarstellung], 0);  // not before OK
    EXPECT_EQ(koben.Konfig_Text[Text::Berichtskopf], "");
}

}  // namespace
}  // namespace koben
