#include "output/PA_Textausgabe.h"

#include "tests/support/Fakes.h"

namespace koben {
namespace {

const QString Warning =
    "! ACHTUNG:\r\n\r\nDer Text ist über 32 kB groß. Es ist deshalb u.U. nicht alles im Textfeld enthalten. Beim "
    "Ausdruck mit 'Datei drucken' werden trotzdem alle Daten ausgedruckt!";

/// Shows the viewer on LISTE.TXT and works it.
void show(
    TestRun& run, const std::function<void(PA_Textausgabe&)>& script = [](PA_Textausgabe&) {}) {
    run.koben.Ausgabedatei = run.path("LISTE.TXT");
    run.screens.workIn<PA_Textausgabe>(script);
    PA_Textausgabe form(run.koben);
    run.koben.run(form);
    EXPECT_EQ(run.screens.waiting, 0) << "the wait cursor stays";
}

TEST(Textausgabe, ShowsTheFileDecodedAndNamesIt) {
    TestRun run;
    run.write("LISTE.TXT", "Säue\r\n\r\nunix\nohne Ende");
    show(run, [&](PA_Textausgabe& f) {
        EXPECT_EQ(f.t.text(), "Säue\r\n\r\nunix\r\nohne Ende\r\n");
        EXPECT_EQ(f.caption(), "Listen-Ausgabe " + run.path("LISTE.TXT"));
        EXPECT_EQ(f.kom.text(), "Courier New");
        EXPECT_EQ(f.komdrucker.items(), (QStringList{"", "Laser", "Nadel"}));
    });
    EXPECT_EQ(run.screens.takeLog(), (QStringList{"+ PA_Textausgabe", "- PA_Textausgabe"}));
}

TEST(Textausgabe, AMissingFileIsSaidAndTheScreenCloses) {
    TestRun run;
    run.koben.Ausgabedatei = "/x/liste.txt";
    PA_Textausgabe form(run.koben);
    run.koben.run(form);
    EXPECT_EQ(run.screens.log, (QStringList{"+ PA_Textausgabe", "! Die Datei /X/LISTE.TXT existiert nicht",  //
                                            "- PA_Textausgabe"}));
}

TEST(Textausgabe, TheBoxTakesAbout32000Characters) {
    const QString line(98, u'x');  // 100 with its end
    const struct {
        int lines;
        QString last;
        int shown;
        bool warned;
    } cases[] = {{319, line, 32000, false},                       // exactly full
                 {320, line, 32000, true},                        // a line more, not taken
                 {319, line + "y", 32001, true},                  // the last one crosses the limit
                 {319, QString(5000, u'y'), 31900 + 5002, true},  // a long one begins below the limit
                 {2, line, 300, false}};
    for (const auto& c : cases) {
        TestRun run;
        run.write("LISTE.TXT", (line + "\r\n").repeated(c.lines) + c.last + "\r\n");
        show(run, [&](PA_Textausgabe& f) { EXPECT_EQ(f.t.text().size(), c.shown); });
        EXPECT_EQ(run.screens.log.contains(Warning), c.warned) << c.shown;
    }
}

TEST(Textausgabe, StoredSizeAndMarginAreKeptWithinTheirRanges) {
    const struct {
        int size, margin;
        const char *shownSize, *shownMargin;
    } cases[] = {{7, 25, "10", "20"}, {8, 20, "8", "20"}, {40, 0, "30", "0"}, {48, 21, "30", "20"}, {49, 5, "10", "5"}};
    for (const auto& c : cases) {
        TestRun run;
        run.write("LISTE.TXT", "");
        run.koben.Konfig_Zahl[22] = static_cast<qint16>(c.size);
        run.koben.Konfig_Zahl[23] = static_cast<qint16>(c.margin);
        show(run, [&](PA_Textausgabe& f) {
            EXPECT_EQ(f.gr_e.text(), c.shownSize) << c.size;
            EXPECT_EQ(f.tz.text(), c.shownMargin) << c.margin;
        });
    }
}

TEST(Textausgabe, FieldsClampAndTheFontFollows) {
    TestRun run;
    run.write("LISTE.TXT", "");
    show(run, [&](PA_Textausgabe& f) {
        QStringList sizes;
        for (Button* button : {&f.plus1[1], &f.plus1[0], &f.plus5[1], &f.plus5[0], &f.plus5[0], &f.plus5[0]})
            button->click(), sizes += f.gr_e.text();
        EXPECT_EQ(sizes, (QStringList{"11", "10", "15", "10", "5", "4"}));
        f.gr_e.type("29"), f.plus5[1].click();
        EXPECT_EQ(f.gr_e.text(), "30");
        f.kom.choose(0);
        f.kon[0].click();
        EXPECT_EQ(f.schrift().name, "Arial");
        EXPECT_EQ(f.schrift().punkt, 30);
        EXPECT_TRUE(f.schrift().fett && !f.schrift().kursiv);
        for (const auto& [typed, kept] : {std::pair{"2x5", "25"}, {"31", "30"}, {"-7", "7"}, {"*", ""}, {"", ""}}) {
            f.tz.type(typed);
            f.tz.leave();
            EXPECT_EQ(f.tz.text(), kept) << typed;
        }
    });
}

TEST(Textausgabe, ClosingKeepsTheChoices) {
    TestRun run;
    run.write("LISTE.TXT", "");
    show(run, [&](PA_Textausgabe& f) {
        f.kon[1].click();
        f.druckformat[1].click();
        EXPECT_EQ(run.koben.Konfig_Zahl[18], 1) << "at once";
        f.gr_e.type("14");
        f.tz.type("25");
        f.tz.leave();
        f.closeBox();
    });
    const auto& z = run.koben.Konfig_Zahl;
    EXPECT_EQ((std::vector<int>{z[18], z[19], z[20], z[22], z[23]}), (std::vector<int>{1, 0, 1, 14, 25}));
    show(run, [&](PA_Textausgabe& f) {
        EXPECT_TRUE(f.kon[1].checked() && !f.kon[0].checked() && f.druckformat[1].selected());
        EXPECT_EQ(f.tz.text(), "20");
    });
}

TEST(Textausgabe, PrintsTheFileWithMarginAndPages) {
    TestRun run;
    run.write("LISTE.TXT", "eins\r\n # \r\n#2\r\n\r\nzwei");
    show(run, [&](PA_Textausgabe& f) {
        f.t.setText("etwas anderes");
        f.tz.type("3");
        f.komdrucker.choose(2);
        f.dateidrucken.click();
        f.komdrucker.choose(0);
        f.druckformat[1].click();
        f.tz.type("");
        f.kon[0].click();
        f.dateidrucken.click();
    });
    ASSERT_EQ(run.platform.jobs.size(), 2U);
    const PrintedJob &first = *run.platform.jobs[0], &second = *run.platform.jobs[1];
    EXPECT_EQ(first.lines, (QStringList{"{Courier New 10}", "   eins", "{Seite}", "   #2", "   ", "   zwei"}));
    EXPECT_TRUE(first.ended && !first.landscape);
    EXPECT_EQ(first.printer, "Nadel");
    EXPECT_EQ(second.lines, (QStringList{"{Courier New 10 fett}", "eins", "{Seite}", "#2", "", "zwei"}));
    EXPECT_TRUE(second.ended && second.landscape);
    EXPECT_EQ(second.printer, "Nadel") << "the empty entry keeps the current printer";
}

TEST(Textausgabe, FailuresSurfaceForTheFileAndNotForTheText) {
    TestRun run;
    run.write("LISTE.TXT", "1\r\n2\r\n3");
    show(run, [&](PA_Textausgabe& f) {
        run.platform.failAtLine = 3;
        f.dateidrucken.click();
        EXPECT_FALSE(run.platform.jobs.back()->ended);
        f.drucken.click();
        EXPECT_EQ(run.platform.jobs.back()->lines, (QStringList{"{Courier New 10}", "1", "3"}));
        EXPECT_TRUE(run.platform.jobs.back()->ended);
        run.platform.printerReady = false;
        f.dateidrucken.click();
        f.drucken.click();
        run.platform.printerReady = true;
        EXPECT_TRUE(QFile::remove(run.path("DRUCKAUF.TXT")) && QDir().mkdir(run.path("DRUCKAUF.TXT")));
        run.platform.failAtLine = 0;
        f.drucken.click();
        EXPECT_EQ(run.platform.jobs.back()->lines.mid(1), (QStringList{"1", "2", "3", ""}));
        EXPECT_TRUE(QFile::remove(run.path("LISTE.TXT")));
        f.dateidrucken.click();
    });
    EXPECT_EQ(run.screens.log.filter("konnte nicht zu Ende geführt werden").size(), 3)
        << "of the file, not of the text";
}

}  // namespace
}  // namespace koben
