// The settings' screen: every control reaches its slot and comes back, the hint, the standard values.
#include "cycle/PO_Einstellungen.h"
#include "tests/support/Hof.h"

namespace koben {
namespace {

struct Einstellungenmaske : testing::Test, Hof {
    Einstellungenmaske() {
        catalogue.add<PO_Einstellungen>("PO_Einstellungen");
        Einstellungen_sichern(koben);
    }
    void in(std::function<void(PO_Einstellungen&)> script) {
        Hof::in<PO_Einstellungen>("PO_Einstellungen", std::move(script));
    }
    template <class... A>
    void work(const QString& steps, const A&... values) {
        in([&](PO_Einstellungen& form) { play(form, steps, values...); });
    }
};

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
        play(form, "opti(2); tsonst(0)=Hof Süd; kom(0)=Stallnr; kom(1)=Nummer; ok");
        EXPECT_TRUE(form.closed());
    });
    EXPECT_TRUE(says({}));
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
    EXPECT_EQ(file.value(112 + 25) + file.value(112 + 33) + file.value(112 + 34), "Hof SüdStallnrNummer");
    in([&](PO_Einstellungen& form) {
        for (auto& box : form.kon) EXPECT_TRUE(box->checked()) << box->index();
        EXPECT_EQ(form.opti.selected(), 2);
        EXPECT_EQ(textsOf(form, "tsonst(0) kom(0) kom(1)"), "Hof Süd|Stallnr|Nummer");
        play(form, "kon(0); tzahl(0)=1; abbrechen");  // changes nothing
    });
    EXPECT_EQ(koben.Konfig_Zahl, expected);
    EXPECT_EQ(lines("Einstellungen.ko2"), file);
}

TEST_F(Einstellungenmaske, ungewöhnlicheAbstände) {
    const QString lines[] = {
        "...der Abstand Ferkelung-Absetzung = 30 Tage", "...der Abstand Absetzung-Belegung = 6 Tage",
        "...der Abstand Belegung-Ferkelung = 116 Tage", "...der Abstand Belegung-Trächtigkeitskontrolle = 22 Tage"};
    const struct {
        const char *weaning, *service, *farrowing, *test;
        std::vector<int> told;
    } table[] = {
        {"20", "3", "102", "10", {}},          {"40", "14", "130", "34", {}},
        {"19", "2", "101", "9", {0, 1, 2, 3}}, {"41", "15", "131", "35", {0, 1, 2, 3}},
        {"", "6", "116", "22", {0}},           {"30", "6", "32767", "", {2, 3}},
    };
    for (const auto& row : table) {
        work("tzahl(0)=%1; tzahl(1)=%2; tzahl(2)=%3; tzahl(4)=%4; ok", row.weaning, row.service, row.farrowing,
             row.test);
        QStringList told;
        for (int line : row.told) told += lines[line];
        EXPECT_TRUE(says(QStringList(
            !told.empty(), "! Bitte beachten Sie*:\r\n\r\n" + told.join("\r\n") + "\r\n\r\nSie haben (zum Teil)*")));
        EXPECT_EQ(koben.Konfig_Zahl[34], QString(row.weaning).toInt());  // the values stay
        EXPECT_EQ(koben.Konfig_Zahl[1], QString(row.weaning).toInt() + QString(row.service).toInt());
    }
    EXPECT_EQ(koben.Konfig_Zahl[0], 32767);  // as much as a slot holds
    work("tzahl(2)=32768; ok");
    EXPECT_TRUE(says({"! Die Einstellungen können nicht *\"Anzahl Tage zwischen Ferkelung nach Belegung\" zu groß*"}));
    EXPECT_EQ(koben.Konfig_Zahl[0], 32767);
}

TEST_F(Einstellungenmaske, dieListeWirdNurNeuGeladenWennSieAndersAussieht) {
    for (const auto& [change, reloads] :
         {std::pair{"kon(6); ok", 0}, {"kon(5); ok", 1}, {"kom(0)=Nummer; ok", 1}, {"ok", 0}, {"kom(0)=; ok", 1}}) {
        koben.Liste_neu_laden = 0;
        work(change);
        EXPECT_EQ(koben.Liste_neu_laden, reloads) << change;
    }
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
        EXPECT_EQ(textsOf(form, "tsonst(0) kom(0)"), "Hof|Art");
        EXPECT_TRUE(texts().last().startsWith("? Sollen die aktuellen Werte wirklich mit den Standard-Werten"));
    });
    EXPECT_EQ(koben.Konfig_Zahl[Zahl::ListenDarstellung], 0);  // not before OK
    EXPECT_EQ(koben.Konfig_Text[Text::Berichtskopf], "");
}

}  // namespace
}  // namespace koben
