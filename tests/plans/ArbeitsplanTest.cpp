// The work plan: its rules, its lists whole, its file for the pocket device, and its messages.
#include "tests/plans/Planhof.h"

namespace koben {
namespace {

using Plan = PB_Arbeitsplan;

qint64 day(const QString& text) { return Datum_aus_Text(text).toJulianDay(); }

TEST(Ueberschneidung, WindowsAgainstTheFirstWeekOfMarch) {
    const Planzeitraum week{static_cast<qint32>(day("01.03.2026")), static_cast<qint32>(day("07.03.2026"))};
    const struct {
        const char *from, *to;
        bool hit;
    } cases[] = {{"05.03.2026", "10.03.2026", true},  {"20.02.2026", "28.02.2026", false},
                 {"20.02.2026", "01.03.2026", true},  {"07.03.2026", "07.03.2026", true},
                 {"08.03.2026", "12.03.2026", false}, {"28.02.2026", "10.03.2026", true},
                 {"10.03.2026", "28.02.2026", false}, {"10.03.2026", "02.03.2026", true}};
    for (const auto& c : cases) EXPECT_EQ(trifft(day(c.from), day(c.to), week), c.hit) << c.from << " " << c.to;
}

struct Arbeitsplan : testing::Test, Planhof {
    void plan(std::function<void(Plan&)> script) { in<Plan>("PB_Arbeitsplan", std::move(script)); }
    void sow(const QString& number, std::map<QString, QString> fields) {
        fields.insert({{"Nummer", number}, {"Art", "Sau"}});
        add("Sauen", fields);
    }
    /// The one kind of work, due 0 to 2 days after the last service; dates as "active later/earlier/done
    /// later/earlier".
    void onlyWork(const QString& dates) {
        sql("delete from Arbeitsplanoptionen");
        sql("insert into Arbeitsplanoptionen (Arbeitsart, Tage_von, Tage_bis, Bezugstermin, Aktiv_gross, Aktiv_klein, "
            "Erledigt_gross, Erledigt_klein) values ('Arbeit', 0, 2, 'Letzte Belegung', '%1')",
            QString(dates).replace("/", "', '"));
    }
    /// The numbers on the list of one week from the 15th of July.
    QString listed() {
        QFile::remove(path("gridli.txt"));
        plan([](Plan& form) { play(form, "woche(0); ok(0)"); });
        QStringList numbers;
        for (const QString& line : handedOver().mid(1)) numbers += line.section('|', 3, 3);
        return numbers.join(u' ');
    }
};

TEST_F(Arbeitsplan, ActiveAndDonePassWhereTheDatesAreEqual) {
    // service 15.07., check one day earlier, on the day, one day later; none
    for (const auto& [number, check] :
         std::map<QString, QString>{{"1", "14.07.2026"}, {"2", "15.07.2026"}, {"3", "16.07.2026"}, {"4", ""}})
        sow(number, {{"L_Belegung", "15.07.2026"}, {"L_Trächtigkeit", check}});
    sow("5", {{"L_Trächtigkeit", "15.07.2026"}});  // no reference date
    const std::pair<const char*, const char*> cases[] = {
        {"///", "1 2 3 4"}, {"B/T//", "1 2 4"}, {"T/B//", "2 3"},     {"//T/B", "1 2 4"},
        {"//B/T", "2 3"},   {"B/T/B/T", "2"},   {"/T/B/", "1 2 3 4"}, {"Irgendwas/T/T/", "1 2 3 4"}};
    for (const auto& [dates, numbers] : cases) {
        onlyWork(QString(dates).replace("B", "Letzte Belegung").replace("T", "Letzte Trächtigkeit"));
        EXPECT_EQ(listed(), numbers) << dates;
    }
}

TEST_F(Arbeitsplan, DayChartAndPocketFileAsAWhole) {
    sow("B2", {{"Stallnr", "7"}, {"L_Absetzung", "28.12.2025"}, {"L_Belegung", "01.09.2025"}});
    sow("a1", {{"Stallnr", "9'"}, {"L_Ferkelung", "30.11.2025"}});
    sow("b1", {{"Stallnr", "7"}, {"L_Ferkelung", "30.11.2025"}});
    sow("B10", {{"Stallnr", "7"}, {"L_Absetzung", "26.12.2025"}, {"L_Belegung", "27.12.2025"}});
    sow("weg", {{"L_Absetzung", "28.12.2025"}, {"Abgangsdatum", "01.01.2026"}});
    plan([](Plan& form) {
        play(form, "woche(0); tdat=291225");
        EXPECT_EQ(form.Bezeichnung1.text(), "bis 04.01.2026");
        play(form, "kon(0); kon(2); optisort(2); t(1)=-; ok(1)");
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
    plan([](Plan& form) { play(form, "kon(1); ok(0)"); });
    EXPECT_EQ(bytes("PB_Arbeitsplan_Pocket.txt"),
              "15.07.2026\t19.07.2026\tTr\xe4"
              "chtigkeitskontr.\t\r\n");
    plan([](Plan& form) { form.ok[0].click(); });
    EXPECT_EQ(bytes("PB_Arbeitsplan_Pocket.txt"),
              "15.07.2026\t19.07.2026\tTr\xe4"
              "chtigkeitskontr.\t\xc4\xe4\t\t\r\n");
}

TEST_F(Arbeitsplan, ATabInANumberIsABlankForTheDevice) {
    sow("A\t1", {{"Stallnr", "x\r\ny"}, {"L_Belegung", "25.06.2026"}});
    plan([](Plan& form) { play(form, "kon(0); kon(2); ok(0)"); });
    EXPECT_TRUE(bytes("PB_Arbeitsplan_Pocket.txt").endsWith("\tA 1\tx  y\t\r\n"));
    EXPECT_EQ(bytes("PB_Arbeitsplan_Pocket.txt").count('\t'), 5);
}

TEST_F(Arbeitsplan, SaysWhatIsMissingInTheOrderOfARun) {
    const QString nothing = "! Keine zu listenden Daten gefunden", animals = "! Es wurden *keine Tiere gefunden!";
    write("PB_Arbeitsplan_Pocket.txt", "alt");
    plan([&](Plan& form) {
        form.t[0].type("o");
        form.t[1].type("o");
        form.tdat.type("31.02.2026");
        form.ok[1].click();
        EXPECT_EQ(textsOf(form, "t(0) t(1)"), "X| ");
        play(form, "tdat=15.7.26; ok(0)");
        EXPECT_EQ(bytes("PB_Arbeitsplan_Pocket.txt"), "alt");
        EXPECT_EQ(form.liarplan.markedCount(), 4);
        EXPECT_TRUE(form.kon[3].checked());
    });
    EXPECT_TRUE(says({"! *das gleiche Zeichen verwenden.*", "! *...die Berechnungszeiträume falsche Datum*", animals}));
    add("Sauen", {{"Nummer", "Eb"}, {"Art", "Eber"}, {"L_Belegung", "25.06.2026"}});
    plan([&](Plan& form) {
        play(form, "konnurweiblich; ok(0); konnurweiblich");
        form.liarplan.mark({0});
        form.ok[0].click();
        EXPECT_EQ(bytes("PB_Arbeitsplan_Pocket.txt"), "");
    });
    EXPECT_TRUE(says({animals, nothing}));
    sql("delete from Arbeitsplanoptionen");
    plan([](Plan& form) { form.ok[0].click(); });
    EXPECT_TRUE(says({"! Hinweis:*Legen Sie in den Optionen die Arbeitspläne fest*", nothing}));
    EXPECT_EQ(screens.waiting, 0);
}

TEST_F(Arbeitsplan, ChoicesAreKeptWithTheClosingButtonButTheMarkedWorkIsNotMarkedAgain) {
    plan([](Plan& form) {
        play(form, "woche(3); optisort(3); kon(1); wartezeit; konnurweiblich; t(0)=ja; t(1)=.");
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
        EXPECT_EQ(textsOf(form, "t(0) t(1)"), "ja|.");
        EXPECT_EQ(form.liarplan.markedCount(), 0);
    });
}

}  // namespace
}  // namespace koben
