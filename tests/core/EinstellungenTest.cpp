#include "core/Einstellungen.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "tests/core/Texte.h"

namespace koben {
namespace {

class EinstellungenTest : public ::testing::Test {
protected:
    EinstellungenTest() { v.Datenordner = m_folder.path() + u'/'; }
    QString path() const { return v.Datenordner + QStringLiteral("Einstellungen.ko2"); }
    QByteArray read() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
    void write(const QByteArray& bytes) const {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    /// The variables of a fresh start, filled from the file.
    Variablen loaded() const {
        Variablen fresh;
        fresh.Datenordner = v.Datenordner;
        Einstellungen_laden(fresh);
        return fresh;
    }

    Variablen v;

private:
    QTemporaryDir m_folder;
};

TEST_F(EinstellungenTest, TheFileHas173LinesInTheirForms) {
    Einstellungen_vorgeben(v, 2026);
    v.Konfig_Zahl[2] = -3;
    v.Konfig_Betrag[0] = amount(125000);
    v.Konfig_Betrag[1] = amount(1234567890000);  // cut to ten characters
    v.Konfig_Text[4] = QStringLiteral("  Güst; 5 € \u0151 ");
    v.Konfig_Text[5] = QStringLiteral("zwei\r\nZeilen");
    ASSERT_EQ(Einstellungen_sichern(v), QString());
    const QList<QByteArray> lines = read().split('\n');
    ASSERT_EQ(lines.size(), 174);  // and nothing behind the last break
    EXPECT_EQ(lines[173], QByteArray());
    for (int i = 0; i < 173; ++i) EXPECT_TRUE(lines[i].endsWith('\r')) << i;
    EXPECT_EQ(lines[0], QByteArray(" 116 \r"));
    EXPECT_EQ(lines[2], QByteArray("-3 \r"));
    EXPECT_EQ(lines[36], QByteArray(" 2026 \r"));
    EXPECT_EQ(lines[46], QByteArray(" 1 \r"));
    EXPECT_EQ(lines[100], QByteArray(" 0 \r"));
    EXPECT_EQ(lines[101], QByteArray("12.50\r"));
    EXPECT_EQ(lines[102], QByteArray("123456789.\r"));
    EXPECT_EQ(lines[103], QByteArray("0.00\r"));
    EXPECT_EQ(lines[112], QByteArray("\r"));
    EXPECT_EQ(lines[116], QByteArray("  G\xFCst; 5 \x80 ? \r"));
    EXPECT_EQ(lines[117], QByteArray("zwei Zeilen\r"));
}

TEST_F(EinstellungenTest, DamagedAndShortFilesKeepWhatWasRead) {
    const std::pair<const char*, std::array<qint16, 3>> cases[] = {{"", {0, 0, 0}},
                                                                   {" 5 \r\n 6 \r\n 7 \r\n", {5, 6, 7}},
                                                                   {"5\n6\n7", {5, 6, 7}},
                                                                   {" 5 \r\nx\r\n 7 \r\n", {5, 0, 0}},
                                                                   {" 5 \r\n 40000 \r\n 7 \r\n", {5, 0, 0}},
                                                                   {" 5 \r\n\r\n 7 \r\n", {5, 0, 0}},
                                                                   {" 5 \r\n6.5\r\n 7 \r\n", {5, 0, 0}}};
    for (const auto& [content, numbers] : cases) {
        write(content);
        const Variablen back = loaded();
        EXPECT_TRUE(std::equal(numbers.begin(), numbers.end(), back.Konfig_Zahl.begin())) << content;
        EXPECT_EQ(back.Konfig_Text[10], " | ") << content;
    }
}

TEST_F(EinstellungenTest, AnOlderShorterFileLeavesTheRestAsItWas) {
    QByteArray bytes;
    for (int i = 0; i < 101; ++i) bytes += " 1 \r\n";
    for (int i = 0; i < 11; ++i) bytes += "2.25\r\n";
    for (int i = 0; i < 11; ++i) bytes += i == 10 ? "   \r\n" : "alt\r\n";
    write(bytes);
    v.Konfig_Text[11] = QStringLiteral("bleibt");
    Einstellungen_laden(v);
    EXPECT_EQ(v.Konfig_Zahl[100], 1);
    EXPECT_EQ(v.Konfig_Betrag[10], amount(22500));
    EXPECT_EQ(v.Konfig_Text[9], "alt");
    EXPECT_EQ(v.Konfig_Text[10], " | ");
    EXPECT_EQ(v.Konfig_Text[11], "bleibt");
}

TEST_F(EinstellungenTest, DraftsOfEarlierVersionsGoAndCopiesStay) {
    const QStringList drafts{"koben-entwurf", "aBcDeF", "QTiOpa"};
    const QStringList kept{"backup", "Archiv", "NUMMER", "alt", "aBcDeF7", "aB.DeF", "aBcDé1"};
    for (const QString& name : drafts + kept) {
        const QString file = path() + u'.' + name;
        Textdatei_schreiben(file, QStringLiteral("5\r\n"));
        Einstellungen_aufraeumen(v);
        EXPECT_EQ(QFile::exists(file), kept.contains(name)) << name.toStdString();
    }
    Textdatei_schreiben(path() + QStringLiteral(".abcdef"), {});
    Einstellungen_aufraeumen(v);
    EXPECT_FALSE(QFile::exists(path() + QStringLiteral(".abcdef"))) << "empty";
}

TEST_F(EinstellungenTest, AMissingFolderIsReported) {
    v.Datenordner += QStringLiteral("fehlt/");
    EXPECT_NE(Einstellungen_sichern(v), QString());
}

TEST_F(EinstellungenTest, TextFilesHaveWholeLineBreaks) {
    ASSERT_TRUE(Textdatei_schreiben(path(), QStringLiteral("a\r\nb\nc – ß")));
    EXPECT_EQ(read(), QByteArray("a\r\nb\r\nc \x96 \xDF"));
}

TEST(Windows1252, AllBytesSurviveAndTheRestBecomesAQuestionMark) {
    QByteArray all(256, 0);
    for (int i = 0; i < 256; ++i) all[i] = static_cast<char>(i);
    EXPECT_EQ(nachWindows1252(ausWindows1252(all)), all);
    EXPECT_EQ(ausWindows1252(QByteArray("\x80\x84\x9F\xE4")), "€„Ÿä");
    EXPECT_EQ(nachWindows1252(QStringLiteral("Ω🐖ä")), QByteArray("??\xE4"));
}

TEST(VariablenTest, ReadAndSetByName) {
    // NAME|VALUE|READ, without the last one where it is refused
    for (const Row c : {"Konfig_Zahl(62)|4|4",
                        "konfig_zahl( 100 )|-32768|-32768",
                        "Konfig_Zahl(101)|1",
                        "Konfig_Zahl(-1)|1",
                        "Konfig_Zahl(1)|32768",
                        "Konfig_Zahl(1)|x",
                        "Konfig_Zahl|1",
                        "Konfig_Betrag(3)|12,50|12,5",
                        "Konfig_Betrag(11)|1",
                        "Konfig_Betrag(3)|x",
                        "KONFIG_TEXT(25)|a = b|a = b",
                        "Konfig_Text(61)|",
                        "Heute|1.2.2026|01.02.2026",
                        "Heute|morgen",
                        "Heute(1)|01.02.2026",
                        "Datenordner|C:\\x\\|C:\\x\\",
                        "programmordner|p|p",
                        "Datenbankpfad|d|d",
                        "status_NEU_berechnen|1|1",
                        "Liste_neu_laden|1|1",
                        "Start_erledigt|1|1",
                        "Buchungsart_Nr|7|7",
                        "Buchungsmodus|Ändern|Ändern",
                        "Uebergabe_Marke|m|m",
                        "Uebergabe_Anzahl|12|12",
                        "Ausgabedatei|f|f",
                        "Crlf|x",
                        "Unbekannt|x"}) {
        Variablen v;
        const bool taken = c.cells.size() == 3;
        EXPECT_EQ(v.set(c[0], c[1]), taken) << c[0].toStdString();
        EXPECT_TRUE(!taken || v.read(c[0]) == c[2]) << c[0].toStdString();
    }
    EXPECT_EQ(Variablen().read(QStringLiteral("crlf")), QStringLiteral("\r\n"));
    EXPECT_EQ(Variablen().read(QStringLiteral("Hauptdatenbank")), std::nullopt);
}

}  // namespace
}  // namespace koben
