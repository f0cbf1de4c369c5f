// Spreadsheets are read back: unpacked, and every cell rendered as "B5 1.5 rechts #,##0.00".
#include <QXmlStreamReader>
#include <algorithm>

#include "exchange/Zip.h"
#include "output/Tabelle_xlsx.h"
#include "tests/output/Liste.h"

namespace koben {
namespace {

QByteArray member(const ZipReader& spreadsheet, const QString& name) {
    const QTemporaryDir folder;
    const auto& entries = spreadsheet.entries();
    const auto entry = std::find_if(entries.begin(), entries.end(), [&](const auto& e) { return e.name == name; });
    if (entry == entries.end()) throw std::runtime_error("not in the spreadsheet: " + name.toStdString());
    spreadsheet.unpack(static_cast<size_t>(entry - entries.begin()), folder.filePath("x"), {});
    QFile file(folder.filePath("x"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

/// What the file's cell formats come to, in order: " fett", " rechts #,##0.00" or "".
QStringList styles(const QByteArray& xml) {
    QStringList fonts, found;
    QXmlStreamReader reader(xml);
    bool inFormats = false;
    while (!reader.atEnd()) {
        reader.readNext();
        const auto name = reader.name();
        if (name == u"cellXfs") inFormats = reader.isStartElement();
        if (!reader.isStartElement()) continue;
        const auto attribute = [&](const char* key) { return reader.attributes().value(QLatin1String(key)); };
        if (name == u"font") fonts += "";
        if (name == u"b") fonts.last() = " fett";
        if (inFormats && name == u"xf") {
            found += fonts.value(attribute("fontId").toInt());
            if (attribute("numFmtId") == u"4") found.last() += " #,##0.00";
        }
        if (inFormats && name == u"alignment" && attribute("horizontal") == u"right") found.last() += " rechts";
    }
    return found;
}

/// All cells of the file, texts in quotes, numbers bare.
QStringList cells(const QString& path) {
    const ZipReader spreadsheet(path);
    const QStringList formats = styles(member(spreadsheet, "xl/styles.xml"));
    QStringList found;
    QXmlStreamReader reader(member(spreadsheet, "xl/worksheets/sheet1.xml"));
    QString place, style;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement()) continue;
        EXPECT_NE(reader.name(), u"f") << "a formula";
        if (reader.name() == u"c") {
            place = reader.attributes().value(QLatin1String("r")).toString() + " ";
            style = formats.value(reader.attributes().value(QLatin1String("s")).toInt());
        }
        if (reader.name() == u"v") found += place + reader.readElementText() + style;
        if (reader.name() == u"t") found += place + "'" + reader.readElementText() + "'" + style;
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return found;
}

TEST(Tabelle, WhatIsANumber) {
    for (const auto& [cell, number] : std::initializer_list<std::pair<const char*, double>>{
             {"1,5", 1.5}, {"-3,25", -3.25}, {"7", 7}, {" 12 ", 12}, {",5", 0.5}, {"0,1", 0.1}, {"16777217", 16777216}})
        EXPECT_EQ(Tabellenzahl(cell), number) << cell;
    for (const char* text :
         {"1.234,50", "1.5", "12.03.2005", "1,2,3", "", ",", "-", "12E3", "DE 17", "0x10", "1-2", "inf"})
        EXPECT_EQ(Tabellenzahl(text), std::nullopt) << text;
}

TEST(Tabelle, CellsTypesAndFormats) {
    TestRun run;
    const Liste list(run.koben, {"Nummer", ">Betrag", "Termin"},
                     {"7\t1234,5\t12.03.2005", "=1+1\t1.234,50\t-", "@x\t+7\t<&>", ".", "ü"});
    const QString path = run.path("liste.xlsx");
    ASSERT_TRUE(Tabelle_schreiben(list.gridli, path, {}));
    EXPECT_EQ(cells(path), (QStringList{"A1 'Nummer' fett", "B1 'Betrag' fett #,##0.00 rechts", "C1 'Termin' fett",  //
                                        "A2 7", "B2 1234.5 #,##0.00 rechts", "C2 '12.03.2005'",                      //
                                        "A3 '=1+1'", "B3 '1.234,50' #,##0.00 rechts", "C3 '-'",                      //
                                        "A4 '@x'", "B4 7 #,##0.00 rechts", "C4 '<&>'",                               //
                                        "A5 '.'", "A6 'ü'"}));
}

TEST(Tabelle, HeadLinesPushTheTableDown) {
    TestRun run;
    const Liste list(run.koben, {"T"}, {"1"});
    const std::pair<Tabellenform, QStringList> cases[] = {
        {{.datum = "15.07.2026"}, {"A1 '15.07.2026'", "A3 'T' fett", "A4 1"}},
        {{.kopf = "Hof"}, {"A1 'Hof'", "A3 'T' fett", "A4 1"}},
        {{.datum = "15.07.2026", .kopf = "=Hof"}, {"A1 '15.07.2026'", "A2 '=Hof'", "A4 'T' fett", "A5 1"}}};
    for (const auto& [form, expected] : cases) {
        ASSERT_TRUE(Tabelle_schreiben(list.gridli, run.path("x.xlsx"), form));
        EXPECT_EQ(cells(run.path("x.xlsx")), expected);
    }
}

TEST(Tabelle, FormatsStopAtThe52ndColumnButCellsDoNot) {
    TestRun run;
    QStringList titles, row;
    for (int i = 1; i <= 53; ++i) titles += ">S", row += "1";
    const Liste list(run.koben, titles, {row.join(u'\t')});
    ASSERT_TRUE(Tabelle_schreiben(list.gridli, run.path("x.xlsx"), {}));
    EXPECT_EQ(cells(run.path("x.xlsx")).mid(104), (QStringList{"AZ2 1 #,##0.00 rechts", "BA2 1"}));
}

TEST(Tabelle, AFileHeldOpenGetsANumberedNeighbour) {
    TestRun run;
    EXPECT_EQ(Tabellendatei(run.koben.Datenordner), run.path("liste.xlsx"));
    run.write(".~lock.liste.xlsx#", "");
    run.write("~$liste-2.xlsx", "");
    EXPECT_EQ(Tabellendatei(run.koben.Datenordner), run.path("liste-3.xlsx"));
}

}  // namespace
}  // namespace koben
