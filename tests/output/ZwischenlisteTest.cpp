#include "output/PA_Zwischenliste.h"

#include <QRegularExpression>

#include "forms/Erklaerung.h"
#include "forms/Liste.h"
#include "output/PA_Erklaerung.h"
#include "output/PA_Textausgabe.h"
#include "tests/output/Liste.h"

namespace koben {
namespace {

/// A run that knows both screens of this folder.
struct Ausgabelauf : TestRun {
    Ausgabelauf() {
        catalogue.add<PA_Zwischenliste>("PA_Zwischenliste");
        catalogue.add<PA_Textausgabe>("PA_Textausgabe");
        catalogue.add<PA_Erklärung>("PA_Erklärung");
        koben.Konfig_Zahl[46] = 0;
    }
    /// A report hands its list over; the user works the list screen.
    void handOver(const QStringList& titles, const QStringList& rows,
                  const std::function<void(PA_Zwischenliste&)>& script) {
        const Liste list(koben, titles, rows);
        screens.workIn<PA_Zwischenliste>(script);
        Liste_uebergeben(koben, list.gridli);
        EXPECT_EQ(screens.waiting, 0) << "the wait cursor stays";
    }
};

const QString Empty = "! Es sind keine Daten in der Liste.";

TEST(Zwischenliste, LoadMarksDateColumnsByTheFirstRow) {
    Ausgabelauf run;
    run.handOver({"Nr", "Termin", "Bemerkung", ">Betrag"}, {"12\t01.02.2026\tam 5.\t1,5", "13\tx\t01.02.2026\t2"},
                 [](PA_Zwischenliste& f) {
                     std::vector<Sort> sorts;
                     for (int c = 1; c <= 4; ++c) sorts.push_back(f.gridli.column(c).sort);
                     EXPECT_EQ(sorts, (std::vector{Sort::Text, Sort::Date, Sort::Text, Sort::Text}));
                     EXPECT_EQ(f.gridli.cell(2, 3), "01.02.2026");
                 });
}

TEST(Zwischenliste, TextListGoesToTheViewer) {
    Ausgabelauf run;
    run.koben.Konfig_Zahl[46] = 1;
    run.koben.Konfig_Text[25] = "Hof Böhm";
    run.koben.Konfig_Text[4] = "";
    run.handOver({"Nr", ">kg"}, {"1\t2,5", ".", "S\t2,5", "."}, [&](PA_Zwischenliste& f) {
        run.screens.workIn<PA_Textausgabe>([](PA_Textausgabe& viewer) { viewer.abbv.click(); });
        f.comtext.click();
    });
    EXPECT_EQ(run.screens.log,
              (QStringList{"+ PA_Zwischenliste", "+ PA_Textausgabe", "- PA_Textausgabe", "- PA_Zwischenliste"}));
    EXPECT_EQ(run.koben.Ausgabedatei, run.path("LISTE.TXT"));
    EXPECT_EQ(run.lines("LISTE.TXT"), (QStringList{"Datum: 15.07.2026", "Hof Böhm", "", "Nr |  kg", "--------",
                                                   "1  | 2,5", "--------", "S  | 2,5", "", ""}));
    EXPECT_EQ(run.koben.Konfig_Text[4], " | ");
}

/// What explains a cell goes with the list, finds it after sorting, and its rows can be handed on.
TEST(Zwischenliste, AFigureIsExplainedWhereverItsRowStands) {
    Ausgabelauf run;
    Liste list(run.koben, {"Sau", ">Wert"}, {"c\t3", "a\t1", "b\t2"});
    list.gridli.sort(1, 1);  // handed over as a, b, c
    list.gridli.explain = [](int row, int column) -> std::optional<Explanation> {
        if (column == 1) return {};
        return Explanation{.sentence = QStringLiteral("Zeile %1").arg(row),
                           .denominator = QStringLiteral("7"),
                           .columns = {{.key = "tag", .title = "Tag"}},
                           .lines = {{.cells = {QDate(2026, 7, 15)}, .animal = 12}}};
    };
    QStringList shown;
    run.screens.workIn<PA_Zwischenliste>([&](PA_Zwischenliste& f) {
        f.gridli.sortByUser(2, 2);
        run.screens.workIn<PA_Erklärung>([&](PA_Erklärung& why) {
            shown = {why.satz.text(), why.bez[0].text(), why.wert[0].text(), why.gridli.cell(1, 1)};
            EXPECT_FALSE(why.wert[1].visible());
            EXPECT_EQ(why.gridli.animal(1), 12);
            run.screens.workIn<PA_Zwischenliste>(
                [](PA_Zwischenliste& again) { EXPECT_FALSE(again.gridli.explanation(1, 1)); });
            why.ok.click();
        });
        Zelle_erklaeren(f.gridli, 3, 2);  // the row of a, added as the second
        Zelle_erklaeren(f.gridli, 3, 1);
        EXPECT_TRUE(f.gridli.load(run.path("gridli.txt")));
        EXPECT_FALSE(f.gridli.explanation(1, 2)) << "a list from its file alone has nobody who explains it";
    });
    Liste_uebergeben(run.koben, list.gridli);
    EXPECT_EQ(shown, (QStringList{"Zeile 2", "Nenner", "7", "15.07.2026"}));
    EXPECT_EQ(run.screens.log.filter("Herleitung").size(), 1);
}

TEST(Zwischenliste, TheFileCountsWhereItSaysSomethingElse) {
    Ausgabelauf run;
    const Liste report(run.koben, {"Nr"}, {"1"}), other(run.koben, {"Nr"}, {"2"});
    const HandedList handed{report.gridli, report.gridli.fileText()};
    const struct {
        const HandedList* handed;
        const Grid& written;
        QString number;
    } cases[] = {{&handed, report.gridli, "1"}, {&handed, other.gridli, "2"}, {nullptr, other.gridli, "2"}};
    for (const auto& c : cases) {
        ASSERT_TRUE(c.written.save(run.path("gridli.txt")));
        run.koben.handedList = c.handed;
        Liste screen(run.koben, {}, {});
        EXPECT_TRUE(Liste_uebernehmen(run.koben, screen.gridli));
        EXPECT_EQ(screen.gridli.cell(1, 1), c.number);
    }
    QFile::remove(run.path("gridli.txt"));
    run.koben.handedList = &handed;
    Liste screen(run.koben, {"Nr"}, {"3"});
    EXPECT_FALSE(Liste_uebernehmen(run.koben, screen.gridli));
    EXPECT_EQ(screen.gridli.columnCount(), 0);
}

TEST(Zwischenliste, AnEmptyListHasNoTextAndNoSpreadsheet) {
    Ausgabelauf run;
    run.handOver({"Nr"}, {}, [&](PA_Zwischenliste& f) { f.comtext.click(), f.popzeile[1].click(); });
    EXPECT_EQ(run.screens.log, (QStringList{"+ PA_Zwischenliste", Empty, Empty, "- PA_Zwischenliste"}));
    EXPECT_TRUE(!run.exists("LISTE.TXT") && run.platform.opened.isEmpty());
}

TEST(Zwischenliste, ButtonsAndMenuHandOverTheSame) {
    Ausgabelauf run;
    run.handOver({"Nr"}, {"1"}, [&](PA_Zwischenliste& f) {
        for (Button* button : std::initializer_list<Button*>{&f.comexcel, &f.popzeile[1], &f.roexplorer[0],
                                                             &f.roexplorer[1], &f.popzeile[2], &f.popzeile[3]})
            button->click();
        EXPECT_FALSE(f.closed());
        EXPECT_TRUE(run.screens.takeLog().filter("! ").isEmpty());
        run.platform.opens = false;
        f.comexcel.click();
        EXPECT_EQ(run.screens.log, QStringList("! Excel konnte nicht geöffnet werden!"));
        f.popzeile[5].click();
        EXPECT_TRUE(f.closed());
    });
    const QString sheet = run.path("liste.xlsx"), report = run.path("report.htm");
    EXPECT_EQ(run.platform.opened, (QStringList{sheet, sheet, report, report, report, report, sheet}));
    EXPECT_TRUE(run.exists("liste.xlsx") && run.exists("report.htm"));
}

TEST(Zwischenliste, TheSettingHandsOverAtOnceAndTheListStaysOpen) {
    const struct {
        int setting;
        QStringList log, opened;
    } cases[] = {
        {0, {"+ PA_Zwischenliste", "- PA_Zwischenliste"}, {}},
        {1, {"+ PA_Zwischenliste", "- PA_Zwischenliste"}, {"report.htm"}},
        {2, {"+ PA_Zwischenliste", "+ PA_Textausgabe", "- PA_Textausgabe", "- PA_Zwischenliste"}, {}},
    };
    for (const auto& c : cases) {
        Ausgabelauf run;
        run.koben.Konfig_Zahl[45] = static_cast<qint16>(c.setting);
        if (c.setting == 2) run.screens.workIn<PA_Textausgabe>([](PA_Textausgabe& f) { f.abbv.click(); });
        bool shown = false;
        run.handOver({"Nr"}, {"1"}, [&](PA_Zwischenliste& f) { shown = !f.closed(); });
        EXPECT_TRUE(shown) << c.setting;
        EXPECT_EQ(run.screens.log, c.log) << c.setting;
        QStringList opened;
        for (const QString& path : run.platform.opened) opened += QFileInfo(path).fileName();
        EXPECT_EQ(opened, c.opened) << c.setting;
    }
}

TEST(Zwischenliste, ReportHeadFootAndPageNumbers) {
    const struct {
        std::array<qint16, 4> settings;  // date, page numbers, count, rows a page
        QString text;
        QStringList first, last;  // headings and paragraphs of the pages
    } cases[] = {{{0, 0, 0, 2}, "", {}, {}},
                 {{1, 1, 1, 2},
                  "Hof",
                  {"15.07.2026   Hof", "Seite 1 von 2"},
                  {"15.07.2026   Hof", "Seite 2 von 2", "Anzahl Datensätze: 3"}},
                 {{1, 1, 1, 60}, "", {"15.07.2026", "Anzahl Datensätze: 3"}, {}},  // one page has no number
                 {{0, 0, 1, 2}, "Hof", {"Hof"}, {"Hof", "Anzahl Datensätze: 3"}}};
    for (const auto& c : cases) {
        Ausgabelauf run;
        std::copy(c.settings.begin(), c.settings.end(), run.koben.Konfig_Zahl.begin() + 46);
        run.koben.Konfig_Text[25] = c.text;
        run.handOver({"Nr"}, {"1", "2", "3"}, [&](PA_Zwischenliste& f) { f.roexplorer[0].click(); });
        const auto texts = [&](const char* name) {
            QStringList found;
            if (!run.exists(name)) return found;
            static const QRegularExpression text("<(h1|p)>(.*)</\\1>");
            auto hit = text.globalMatch(QString::fromUtf8(run.bytes(name)));
            while (hit.hasNext()) found += hit.next().captured(2);
            return found;
        };
        EXPECT_EQ(texts("report.htm"), c.first);
        EXPECT_EQ(texts("report-2.htm"), c.last);
    }
}

/// Cancelled at any time, a hand-over leaves what an earlier one wrote, shows nothing and says nothing.
TEST(Zwischenliste, CancellingLeavesTheEarlierOutput) {
    QStringList rows;
    for (int i = 0; i < 500; ++i) rows += QString::number(i);
    const QStringList files{"LISTE.TXT", "liste.xlsx", "report.htm", "report-2.htm"};
    for (int enough = 0; enough < 95; enough += 13) {
        Ausgabelauf run;
        run.koben.Konfig_Zahl[49] = 60;
        const QDir folder(run.koben.Datenordner);
        for (const QString& name : files) run.write(name, "alt");
        int told = 0;
        run.screens.onProgress = [&](const QString&, int percent) { return ++told, percent < enough; };
        run.handOver({"Nr"}, rows, [&](PA_Zwischenliste& f) {
            for (Button* button : {&f.comtext, &f.comexcel, &f.roexplorer[0]}) button->click();
        });
        EXPECT_GE(told, 3);
        EXPECT_EQ(run.screens.log, (QStringList{"+ PA_Zwischenliste", "- PA_Zwischenliste"})) << enough;
        EXPECT_TRUE(run.platform.opened.isEmpty()) << enough;
        for (const QString& name : files) EXPECT_EQ(run.bytes(name.toUtf8()), "alt") << enough;
        EXPECT_EQ(folder.entryList({"*.neu"}, QDir::Files), QStringList()) << enough;
    }
}

TEST(Zwischenliste, BestWidthsFollowTheContent) {
    Ausgabelauf run;
    run.koben.Konfig_Zahl[54] = 1;
    run.handOver({"A", "B", "Überschrift"}, {"\t" + QString(40, u'x') + "\tx"}, [](PA_Zwischenliste& f) {
        EXPECT_EQ(f.gridli.column(1).width, 27) << "the least width";
        EXPECT_GT(f.gridli.column(2).width, 40 * 7);
        EXPECT_GT(f.gridli.column(3).width, 11 * 6) << "a title longer than its cells counts";
    });
}

}  // namespace
}  // namespace koben
