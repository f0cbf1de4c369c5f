// The work plan: its rules, its lists whole, its file for the pocket device, and its messages.
#include "tests/plans/Planhof.h"

namespace koben {
namespace {

using Plan = PB_Arbeitsplan;

qint64 day(const QString& text) { return Datum_aus_Text(text).toJulianDay(); }

TEST(Ueberschneidung, WindowsAgainstTheFirstWeekOfMarch) {
    const Zeitraum week{static_cast<qint32>(day("01.03.2026")), static_cast<qint32>(day("07.03.2026"))};
    struct Case {
        QString from, to;
        bool hit;
    };
    for (const Case& c : std::vector<Case>{{"05.03.2026", "10.03.2026", true},
                                           {"20.02.2026", "28.02.2026", false},
                                           {"20.02.2026", "01.03.2026", true},
                                           {"07.03.2026", "07.03.2026", true},
                                           {"08.03.2026", "12.03.2026", false},
                                           {"28.02.2026", "10.03.2026", true},
                                           {"10.03.2026", "28.02.2026", false},
                                           {"10.03.2026", "02.03.2026", true}})
        EXPECT_EQ(trifft(day(c.from), day(c.to), week), c.hit) << c.from.toStdString() << " " << c.to.toStdString();
}

struct Arbeitsplan : testing::Test, Planhof {
    void plan(std::function<void(Plan&)> script) { in<Plan>("PB_Arbeitsplan", std::move(script)); }
    void sow(const QString& number, std::map<QString, QString> fields) {
        fields.insert({{"Nummer", number}, {"Art", "Sau"}});
        add("Sauen", fields);
    }
    /// A kind of work due 0 to 2 days after the last service.
    void onlyWork(const QString& activeLater, const QString& activeEarlier, const QString& doneLater = {},
                  const QString& doneEarlier = {}) {
        db.execute("delete from Arbeitsplanoptionen");
        Recordset rows = db.open("select * from Arbeitsplanoptionen");
        rows.addNew();
        const std::vector<Value> values{
            QString("Arbeit"), 0, 2, QString("Letzte Belegung"), activeLater, activeEarlier, doneLater, doneEarlier};
        for (size_t i = 0; i < values.size(); ++i) rows.set(static_cast<int>(i), values[i]);
        rows.update();
    }
    /// The numbers on the list of one week from the 15th of July.
    QStringList listed() {
        QFile::remove(path("gridli.txt"));
        plan([](Plan& form) {
            form.woche[0].click();
            form.ok[0].click();
        });
        QStringList numbers;
        if (exists("gridli.txt"))
            for (const QString& line : handedOver().mid(1)) numbers += line.section('|', 3, 3);
        return numbers;
    }
};

TEST_F(Arbeitsplan, ActiveAndDonePassWhereTheDatesAreEqual) {
    // service 15.07., check one day earlier, on the day, one day later; none
    for (const auto& [number, check] :
         std::map<QString, QString>{{"1", "14.07.2026"}, {"2", "15.07.2026"}, {"3", "16.07.2026"}, {"4", ""}})
        sow(number, {{"L_Belegung", "15.07.2026"}, {"L_Trächtigkeit", check}});
    sow("5", {{"L_Trächtigkeit", "15.07.2026"}});  // no reference date
    const QString B = "Letzte Belegung", T = "Letzte Trächtigkeit";
    struct Case {
        QString activeLater, activeEarlier, doneLater, doneEarlier;
        QStringList numbers;
    };
    for (const Case& c : std::vector<Case>{{"", "", "", "", {"1", "2", "3", "4"}},
                                           {B, T, "", "", {"1", "2", "4"}},
                                           {T, B, "", "", {"2", "3"}},
                                           {"", "", T, B, {"1", "2", "4"}},
                                           {"", "", B, T, {"2", "3"}},
                                           {B, T, B, T, {"2"}},
                                           {"", T, B, "", {"1", "2", "3", "4"}},
                                           {"Irgendwas", T, T, "", {"1", "2", "3", "4"}},
                                           {B, B, B, B, {"1", "2", "3", "4"}}}) {
        onlyWork(c.activeLater, c.activeEarlier, c.doneLater, c.doneEarlier);
        EXPECT_EQ(listed(), c.numbers)
            << QStringList{c.activeLater, c.activeEarlier, c.doneLater, c.doneEarlier}.join('/').toStdString();
    }
}

TEST_F(Arbeitsplan, SaleBlockCountsFromTheFirstDayOn) {
    onlyWork("", "");
    for (const auto& [number, ends] : std::map<QString, QStringList>{{"vorbei", {"14.07.2026"}},
                                                                     {"heute", {"15.07.2026", "01.07.2026"}},
                                                                     {"lang", {"16.07.2026", "30.09.2026", ""}},
                                                                     {"ohne", {""}}}) {
        sow(number, {});
        const QString id = db.table("select max(ID) as x from Sauen").text(0, 0);
        for (const QString& end : ends) add("Behandlung", {{"Kennung", id}, {"Wartezeit_Datum", end}});
    }
    plan([](Plan& form) {
        form.wartezeit.click();
        form.kon[0].click();
        form.ok[0].click();
    });
    EXPECT_EQ(handedOver(), (QStringList{"Vom|Bis|Termin|Nummer", "15.07.2026|15.07.2026|Fleischverkaufssperre|heute",
                                         "15.07.2026|30.09.2026|Fleischverkaufssperre|lang"}));
}

TEST_F(Arbeitsplan, DayChartAndPocketFileAsAWhole) {
    sow("B2", {{"Stallnr", "7"}, {"L_Absetzung", "28.12.2025"}, {"L_Belegung", "01.09.2025"}});
    sow("a1", {{"Stallnr", "9'"}, {"L_Ferkelung", "30.11.2025"}});
    sow("b1", {{"Stallnr", "7"}, {"L_Ferkelung", "30.11.2025"}});
    sow("B10", {{"Stallnr", "7"}, {"L_Absetzung", "26.12.2025"}, {"L_Belegung", "27.12.2025"}});
    sow("weg", {{"L_Absetzung", "28.12.2025"}, {"Abgangsdatum", "01.01.2026"}});
    plan([](Plan& form) {
        form.woche[0].click();
        form.tdat.type("291225");
        form.tdat.leave();
        EXPECT_EQ(form.Bezeichnung1.text(), "bis 04.01.2026");
        form.kon[0].click();
        form.kon[2].click();
        form.optisort[2].click();
        form.t[1].type("-");
        form.ok[1].click();
    });
    EXPECT_EQ(handedOver(), (QStringList{"Nummer|Stallnr|WT|WT|WT|WT|WT|WT|WT|Termin|Vom|Bis",  //
                                         "||Mo|Di|Mi|Do|Fr|Sa|So|||",                           //
                                         "||29|30|31|01|02|03|04|||",                           //
                                         "||12|12|12|01|01|01|01|||",                           //
                                         "||25|25|25|26|26|26|26|||",                           //
                                         "|||||||||||",                                         //
                                         "b1|7|X|X|X|X|-|-|-|Absetzung|28.12.2025|01.01.2026",
                                         "B2|7|-|-|-|X|X|X|X|Belegung|01.01.2026|05.01.2026",
                                         "B2|7|X|-|-|-|-|-|-|Ferkelung|23.12.2025|29.12.2025",
                                         "a1|9`|X|X|X|X|-|-|-|Absetzung|28.12.2025|01.01.2026"}));
    QByteArray header = "\t\t\t\t\t\r\n";
    EXPECT_EQ(bytes("PB_Arbeitsplan_Pocket.txt"), header.repeated(5) +
                                                      "28.12.2025\t01.01.2026\tAbsetzung\tb1\t7\t\r\n"
                                                      "01.01.2026\t05.01.2026\tBelegung\tB2\t7\t\r\n"
                                                      "23.12.2025\t29.12.2025\tFerkelung\tB2\t7\t\r\n"
                                                      "28.12.2025\t01.01.2026\tAbsetzung\ta1\t9`\t\r\n");
}

TEST_F(Arbeitsplan, PocketFileIsWindows1252AndLeavesUntickedFieldsOut) {
    sow("Ää", {{"L_Belegung", "25.06.2026"}});
    plan([](Plan& form) {
        form.kon[1].click();
        form.ok[0].click();
    });
    EXPECT_EQ(bytes("PB_Arbeitsplan_Pocket.txt"),
              "15.07.2026\t19.07.2026\tTr\xe4"
              "chtigkeitskontr.\t\r\n");
    plan([](Plan& form) { form.ok[0].click(); });
    EXPECT_EQ(bytes("PB_Arbeitsplan_Pocket.txt"),
              "15.07.2026\t19.07.2026\tTr\xe4"
              "chtigkeitskontr.\t\xc4\xe4\t\t\r\n");
}

TEST_F(Arbeitsplan, SaysWhatIsMissingInTheOrderOfARun) {
    const QString open = "+ PB_Arbeitsplan", closed = "- PB_Arbeitsplan";
    const QString nothing = "! Keine zu listenden Daten gefunden";
    const QString animals = "! Es wurden lt. den aktuellen Einstellungen keine Tiere gefunden!";
    write("PB_Arbeitsplan_Pocket.txt", "alt");
    plan([&](Plan& form) {
        form.t[0].type("o");
        form.t[1].type("o");
        form.tdat.type("31.02.2026");
        form.ok[1].click();
        EXPECT_EQ(form.t[0].text() + form.t[1].text(), "X ");
        form.tdat.type("15.7.26");
        form.tdat.leave();
        form.ok[0].click();
        EXPECT_EQ(bytes("PB_Arbeitsplan_Pocket.txt"), "alt");
        EXPECT_EQ(form.liarplan.markedCount(), 4);
        EXPECT_TRUE(form.kon[3].checked());
    });
    EXPECT_EQ(screens.takeLog(),
              (QStringList{open,
                           "! Sie dürfen keinesfalls für die vorhandenen und freien Termine das gleiche Zeichen "
                           "verwenden. KOBEN ersetzt deshalb Ihre Angaben durch Standard-Werte.",
                           "! Die Arbeitspläne können nicht berechnet werden, weil...\r\n\r\n...die "
                           "Berechnungszeiträume falsche Datumangaben enthalten.",
                           animals, closed}));
    add("Sauen", {{"Nummer", "Eb"}, {"Art", "Eber"}, {"L_Belegung", "25.06.2026"}});
    plan([&](Plan& form) {
        form.konnurweiblich.click();
        form.ok[0].click();
        form.konnurweiblich.click();
        form.liarplan.mark({0});
        form.ok[0].click();
        EXPECT_EQ(bytes("PB_Arbeitsplan_Pocket.txt"), "");
    });
    EXPECT_EQ(screens.takeLog(), (QStringList{open, animals, nothing, closed}));
    db.execute("delete from Arbeitsplanoptionen");
    plan([](Plan& form) { form.ok[0].click(); });
    EXPECT_EQ(screens.takeLog(),
              (QStringList{open,
                           "! Hinweis:\r\n\r\nLegen Sie in den Optionen die Arbeitspläne fest (sonst können keine "
                           "Arbeitspläne erstellt werden)!",
                           nothing, closed}));
    EXPECT_EQ(screens.waiting, 0);
}

TEST_F(Arbeitsplan, ChoicesAreKeptWithTheClosingButtonButTheMarkedWorkIsNotMarkedAgain) {
    plan([](Plan& form) {
        form.woche[3].click();
        form.optisort[3].click();
        form.kon[1].click();
        form.wartezeit.click();
        form.konnurweiblich.click();
        form.t[0].type("ja");
        form.t[1].type(".");
        form.liarplan.mark({0, 3});
        form.closeBox();
    });
    EXPECT_EQ(koben.Konfig_Text[Text::PlanArten], ";Belegung;Trächtigkeitskontr.;");
    koben.Konfig_Zahl[Zahl::PlanFeldGruppe] = 2;
    plan([](Plan& form) {
        EXPECT_EQ(form.Bezeichnung1.text(), "bis 11.08.2026");
        EXPECT_EQ(form.optisort.selected(), 3);
        EXPECT_TRUE(form.kon[1].checked() && form.wartezeit.checked() && form.konnurweiblich.checked());
        EXPECT_FALSE(form.kon[0].checked() || form.kon[3].checked());
        EXPECT_EQ(form.t[0].text() + form.t[1].text(), "ja.");
        EXPECT_EQ(form.liarplan.markedCount(), 0);
    });
}

TEST_F(Arbeitsplan, UnwritablePocketFileKeepsItsContentAndTheListStillComes) {
    sow("1", {{"L_Belegung", "25.06.2026"}});
    ASSERT_TRUE(QDir().mkdir(path("PB_Arbeitsplan_Pocket.txt")));
    plan([](Plan& form) { form.ok[0].click(); });
    ASSERT_EQ(screens.log.size(), 5);
    EXPECT_TRUE(screens.log[1].contains("kann nicht geschrieben werden")) << screens.log[1].toStdString();
    EXPECT_EQ(screens.log[2], "+ PA_Zwischenliste");
}

TEST_F(Arbeitsplan, ProgressCountsAllButInactiveAndDoneWork) {
    onlyWork("Letzte Belegung", "Letzte Trächtigkeit");
    sow("1", {{"L_Belegung", "15.07.2026"}});
    sow("2", {});
    sow("3", {{"L_Trächtigkeit", "15.07.2026"}});  // inactive
    const Table animals = db.table("select * from Sauen");
    const auto works = Arbeiten_lesen(db.table("select * from Arbeitsplanoptionen"), {"ARBEIT", "fehlt"});
    int steps = 0;
    Arbeitsplan_berechnen(animals, works, {0, 1}, {}, [&](int done) { steps = done; });
    EXPECT_EQ(steps, 2 + 3);
}

}  // namespace
}  // namespace koben
