#include "output/Textliste.h"

#include "tests/output/Liste.h"

namespace koben {
namespace {

QStringList lines(const QString& text) {
    QStringList found = text.split("\r\n");
    EXPECT_EQ(found.takeLast(), QString()) << "the last line has no end";
    return found;
}

TEST(Textliste, PadsByAlignmentAndTheWidestText) {
    TestRun run;
    const Liste list(run.koben, {"Nr", ">Gewicht", "=Art"}, {"12345\t1,5\tSau", "7\t\tE\tzuviel", "8"});
    EXPECT_EQ(lines(Textliste(list.gridli, {})), (QStringList{"Nr    | Gewicht | Art",  //
                                                              "---------------------",  //
                                                              "12345 |     1,5 | Sau",  //
                                                              "7     |         |   E",  //
                                                              "8     |         |    "}));
}

TEST(Textliste, SeparatorRows) {
    const QString data = "a", dash = "-", gap = "";
    const std::pair<QStringList, QStringList> cases[] = {{{"a", ".", "a"}, {data, dash, data}},  // before a sum
                                                         {{"a", "."}, {data, gap, gap}},         // at the end
                                                         {{"a", ".", ".", "a"}, {data, gap, gap, data}},  // two
                                                         {{"a", ".", "."}, {data, gap, gap}},  // two at the end
                                                         {{"a", ".", ".", ".", "a"}, {data, gap, gap, dash, data}},
                                                         {{".", ".", "."}, {gap, gap, gap, gap}},
                                                         {{".", "a"}, {dash, data}},
                                                         {{". ", ".."}, {". ", ".."}}};  // not quite ones
    TestRun run;
    for (const auto& [rows, expected] : cases) {
        const Liste list(run.koben, {"T"}, rows);
        QStringList found = lines(Textliste(list.gridli, {}));
        for (QString& line : found)
            if (line == "--") line = "-";  // the last case's column is two wide
        EXPECT_EQ(found.first().trimmed(), "T");
        EXPECT_EQ(found.mid(2), expected) << rows.join(u' ').toStdString();
    }
}

TEST(Textliste, HeadLinesAndSeparator) {
    const std::pair<Textlistenform, QStringList> cases[] = {
        {{.trenner = ";"}, {}},
        {{.trenner = ";", .datum = "15.07.2026"}, {"Datum: 15.07.2026", ""}},
        {{.trenner = ";", .kopf = "Hof Böhm"}, {"Hof Böhm", ""}},
        {{.trenner = ";", .datum = "15.07.2026", .kopf = "Hof"}, {"Datum: 15.07.2026", "Hof", ""}}};
    TestRun run;
    const Liste list(run.koben, {"A", "B"}, {"1\t2"});
    for (const auto& [form, head] : cases)
        EXPECT_EQ(lines(Textliste(list.gridli, form)), head + QStringList({"A;B", "---", "1;2"}));
}

TEST(Textliste, DropsColumnsBeyondThe52nd) {
    TestRun run;
    QStringList titles, cells;
    for (int i = 1; i <= 54; ++i) titles += QString::number(i), cells += "x";
    cells[53] = "a very long text that must not count";
    const Liste list(run.koben, titles, {cells.join(u'\t')});
    const QStringList found = lines(Textliste(list.gridli, {.trenner = "|"}));
    EXPECT_TRUE(found[0].endsWith("|51|52"));
    EXPECT_EQ(found[1], QString(9 + 43 * 2 + 51, u'-'));
    EXPECT_EQ(found[0].size(), found[1].size());
    EXPECT_EQ(found[2].count(u'x'), 52);
}

}  // namespace
}  // namespace koben
