#include <QXmlStreamReader>

#include "output/Bericht_html.h"
#include "tests/output/Liste.h"

namespace koben {
namespace {

/// A page as text; it must be well-formed.
QString page(const TestRun& run, const QString& name) {
    const QByteArray bytes = run.bytes(name);
    QXmlStreamReader reader(bytes);
    while (!reader.atEnd()) reader.readNext();
    EXPECT_FALSE(reader.hasError()) << name.toStdString() << ": " << reader.errorString().toStdString();
    return QString::fromUtf8(bytes);
}

QStringList body(const TestRun& run, const QString& name) {
    const QString text = page(run, name);
    return text.mid(text.indexOf("<body>") + 7).split(u'\n');
}

TEST(Bericht, TwoPagesWhole) {
    TestRun run;
    const Liste list(run.koben, {"Nr & <Art>", ">Wert"}, {"<b>ä\t1,5", "2\t", ".", "3\t\"x\"", ".", "."});
    const Berichtsform form{.kopf = "15.07.2026   Hof <Süd>",
                            .zeilenJeSeite = 2,
                            .seitenkopf = [](int p, int n) { return QStringLiteral("Seite %1 von %2").arg(p).arg(n); },
                            .seitenfuss = [](int p, int n) { return p == n ? QString("A & O") : QString(); }};
    ASSERT_TRUE(Bericht_schreiben(list.gridli, form, run.koben.Datenordner));
    const QString firstLinks =
        "<nav><span>Erste Seite</span><span>Vorige Seite</span><a href=\"report-2.htm\">Nächste Seite</a>"
        "<a href=\"report-2.htm\">Letzte Seite</a></nav>";
    const QString lastLinks =
        "<nav><a href=\"report.htm\">Erste Seite</a><a href=\"report.htm\">Vorige Seite</a>"
        "<span>Nächste Seite</span><span>Letzte Seite</span></nav>";
    const QString head = "<h1>15.07.2026   Hof &lt;Süd&gt;</h1>";
    const QStringList top{
        "<table>", "<thead><tr><th scope=\"col\">Nr &amp; &lt;Art&gt;</th><th scope=\"col\">Wert</th></tr></thead>",
        "<tbody>"};
    const QStringList bottom{"</tbody>", "</table>"}, end{"</body>", "</html>", ""};
    EXPECT_EQ(body(run, "report.htm"),
              QStringList({firstLinks, head, "<p>Seite 1 von 2</p>"}) + top +
                  QStringList({"<tr><td>&lt;b&gt;ä</td><td>1,5</td></tr>", "<tr><td>2</td><td></td></tr>",
                               "<tr class=\"strich\"><td colspan=\"2\"></td></tr>"}) +
                  bottom + QStringList{firstLinks} + end);
    EXPECT_EQ(body(run, "report-2.htm"), QStringList({lastLinks, head, "<p>Seite 2 von 2</p>"}) + top +
                                             QStringList({"<tr><td>3</td><td>&quot;x&quot;</td></tr>",
                                                          "<tr class=\"block\"><td colspan=\"2\"></td></tr>"}) +
                                             bottom + QStringList({"<p>A &amp; O</p>", lastLinks}) + end);
    const QString text = page(run, "report.htm");
    EXPECT_TRUE(text.startsWith("<!DOCTYPE html>\n<html lang=\"de\">\n<head>\n<meta charset=\"utf-8\"/>"));
    EXPECT_TRUE(text.contains("th:nth-child(2),td:nth-child(2){text-align:right}"));
}

TEST(Bericht, RowsPerPage) {
    const struct {
        int rows, perPage, pages;
    } cases[] = {{0, 60, 1}, {5, 1, 5}, {60, 60, 1}, {61, 60, 2}, {120, 60, 2}, {61, 0, 2}, {61, -3, 2}};
    TestRun run;  // one folder for all: a shorter report removes the pages of a longer one
    for (const auto& c : cases) {
        QStringList rows;
        for (int i = 0; i < c.rows; ++i) rows += QString::number(i);
        const Liste list(run.koben, {"Nr"}, rows);
        ASSERT_TRUE(Bericht_schreiben(list.gridli, {.zeilenJeSeite = c.perPage}, run.koben.Datenordner));
        const QStringList pages = QDir(run.koben.Datenordner).entryList({"report*.htm"});
        EXPECT_EQ(pages.size(), c.pages) << c.rows << " rows, " << c.perPage << " per page";
        qsizetype found = 0;
        for (const QString& name : pages) found += page(run, name).count("<tr><td>");
        EXPECT_EQ(found, c.rows);
    }
}

TEST(Bericht, WideListsLieAcrossThePaperAndControlCharactersDoNotSpoilThePage) {
    TestRun run;
    const Liste wide(run.koben, QStringList(30, "Spalte"), {"1"});
    Liste narrow(run.koben, {"Nr"}, {"1"});
    narrow.gridli.setCell(1, 1, QString("a\x01\r\nb"));
    ASSERT_TRUE(Bericht_schreiben(wide.gridli, {}, run.koben.Datenordner));
    EXPECT_TRUE(page(run, "report.htm").contains("@page{size:A4 landscape"));
    ASSERT_TRUE(Bericht_schreiben(narrow.gridli, {}, run.koben.Datenordner));
    EXPECT_TRUE(page(run, "report.htm").contains("@page{size:A4 portrait"));
    EXPECT_TRUE(page(run, "report.htm").contains("<td>a\nb</td>"));
}

}  // namespace
}  // namespace koben
