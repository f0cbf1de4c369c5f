// The first start on a machine, and later ones.
#include "tests/herd/Herdenhof.h"

namespace koben {
namespace {

struct Start : testing::Test, TestRun {
    Start() {
        catalogue.add<PA_Koben>("PA_Koben");
        QDir().mkpath(path("Programm"));
        platform.program = path("Programm");  // without a separator at the end
        platform.data = path("Daten/Sauenplaner");
    }
    void start(std::function<void(PA_Koben&)> script) {
        screens.workIn<PA_Koben>(std::move(script));
        koben.open("PA_Koben");
        koben.ended = false;
    }
    QStringList texts() {
        QStringList texts;
        for (const QString& line : screens.takeLog())
            if (line.startsWith("!")) texts += line.left(12);
        return texts;
    }
};

TEST_F(Start, derErsteLegtOrdnerDatenbankUndEinstellungenAn) {
    for (const char* file : {"Hilfe.txt", "KOBEN2.exe", "koben2.EXE", "beispiel.csv"})
        write("Programm/" + QString(file), file);
    start([&](PA_Koben& main) {
        EXPECT_EQ(main.caption(), "KOBEN 2.0.59 - Der Sauenplaner");
        EXPECT_EQ(koben.Programmordner, path("Programm/"));
        EXPECT_EQ(koben.Datenbankpfad, path("Daten/Sauenplaner/koben2.mdb"));
        EXPECT_EQ(koben.Heute, "15.07.2026");
    });
    const QDir folder(platform.data);
    EXPECT_EQ(folder.entryList({"*.txt", "*.csv", "*.exe"}, QDir::Files), (QStringList{"beispiel.csv", "Hilfe.txt"}));
    EXPECT_EQ(lines("Daten/Sauenplaner/Einstellungen.ko2").value(0), " 116 ");
    EXPECT_EQ(texts(), QStringList("! HINWEIS!!!"));

    EXPECT_TRUE(QFile::remove(folder.filePath("Hilfe.txt")));
    write("Daten/Sauenplaner/Einstellungen.ko2", "120\r\n");
    start([&](PA_Koben&) { EXPECT_EQ(koben.Konfig_Zahl[0], 120); });
    EXPECT_FALSE(folder.exists("Hilfe.txt"));  // copied once alone
}

/// A settings file that cannot be written is said at once, and the program works.
TEST_F(Start, ohneDruckerUndOhneSchreibbareEinstellungen) {
    platform.printerNames.clear();
    QDir().mkpath(path("Daten/Sauenplaner/Einstellungen.ko2/voll"));  // a folder in its place
    start([&](PA_Koben& main) {
        EXPECT_TRUE(main.find(u"XB_beenden")->enabled());
        main.closeBox();
        EXPECT_TRUE(main.closed());
    });
    const QStringList said = texts();
    EXPECT_EQ(said.value(0), "! Es ist kei");
    EXPECT_EQ(said.last(), "! Die Einste");
}

}  // namespace
}  // namespace koben
