// The first start on a machine, and later ones.
#include "store/OldFile.h"
#include "tests/herd/Herdenhof.h"
#include "tools/altdatei/OldFileWriter.h"

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

/// A genuine database of the old engine under the data file's name: all of it comes over, and it stays beside.
TEST_F(Start, eineDatenbankImAltenFormatWirdUebernommen) {
    const QString file = platform.data + "/koben2.mdb", kept = platform.data + "/koben2_original_2026_07_15.mdb";
    QDir().mkpath(platform.data);
    OldFileWriter old(3);
    for (const QString& statement : schemaStatements())
        if (const QString name = statement.section(' ', 2).section('(', 0, 0); statement.startsWith("create table ")) {
            QString fields = statement.section('(', 1).chopped(1).replace("Infos TEXT (100)", "Infos MEMO");
            for (const char* later : {", Status TEXT (5)", ", Statusabfrage TEXT (1)", ", Aenderung TEXT (1)"})
                fields.remove(later);
            old.table(name, fields + (name == "Termine" ? ", Wer TEXT (30)" : ""));
        }
    old.table("Notizen", "Zeile TEXT (50), Nr COUNTER");
    const QString info = QString("lang ").repeated(1000) + "!";
    old.row("Sauen", {{"Nummer", "5"}, {"Art", "Sau"}, {"Infos", info}, {"ID", 8}});
    old.row("Sauen", {{"ID", 12}}, OldFileWriter::Fate::Deleted);
    old.row("Termine", {{"Terminart", "Impfen"}, {"Wer", "Anna"}});
    old.row("Notizen", {{"Zeile", "Märzkäufe"}});
    const QByteArray bytes = old.bytes();
    const auto put = [&](const QString& path, const QByteArray& content) {
        QFile target(path);
        EXPECT_TRUE(target.open(QIODevice::WriteOnly) && target.write(content) == content.size());
    };
    const auto content = [](const QString& path) {
        QFile source(path);
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    };
    put(file, bytes.first(bytes.size() / 2));  // torn: refused, and left as it is
    EXPECT_THROW(start([](PA_Koben&) {}), DatabaseError);
    EXPECT_EQ(content(file), bytes.first(bytes.size() / 2));
    put(file, bytes);
    put(file + "-wal", "eines anderen");
    put(kept, "schon da");
    start([&](PA_Koben& main) {
        EXPECT_EQ(main.datali.rowCount(), 1);
        EXPECT_TRUE(main.hinweis.visible() && main.hinweis.text().contains("koben2_original_2026_07_15_2.mdb"));
        EXPECT_EQ(main.hinweis.text().section("übernommen: ", 1).section('.', 0, 0), "1 Tier und 0 Buchungen");
        Database db = koben.connect();
        const Table animal = db.table("select ID, Infos, Status, Statusabfrage, Aenderung from Sauen");
        EXPECT_EQ(animal.text(0, 0) + animal.text(0, 1), "8" + info);
        EXPECT_FALSE(animal.isNull(0, 2) || animal.isNull(0, 3) || animal.isNull(0, 4)) << "added as to any older file";
        EXPECT_EQ(db.table("select Wer from Termine").text(0, 0), "Anna");
        EXPECT_EQ(db.table("select Zeile from Notizen").text(0, 0), "Märzkäufe");
        EXPECT_EQ(db.table("select * from Bestandsoptionen").rowCount(), 0) << "no first rows";
        db.execute("insert into Sauen (Nummer) values ('6')");
        EXPECT_EQ(db.table("select max(ID) as h from Sauen").integer(0, 0), 13) << "a number that was given comes back";
    });
    EXPECT_EQ(content(kept), "schon da");
    EXPECT_EQ(content(platform.data + "/koben2_original_2026_07_15_2.mdb"), bytes);
    EXPECT_FALSE(OldFile::isOld(file));
    EXPECT_EQ(QDir(platform.data).entryList({"koben2_2026-07-15-wal", "*.neu*"}, QDir::Files),
              QStringList("koben2_2026-07-15-wal"));
}

}  // namespace
}  // namespace koben
