// The backup: what it proves before it counts, what is not read back, and whose stick's turn it is.
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "core/Tageskopien.h"
#include "exchange/S_Datensicherung_neu.h"
#include "tests/exchange/Rohzip.h"
#include "tests/support/Fakes.h"

namespace koben {
namespace {

/// A run with three sows and a booking.
class SicherungTest : public testing::Test, protected TestRun {
protected:
    SicherungTest() {
        Datenbank_anlegen(koben.workspace, koben.Datenbankpfad);
        db = koben.connect();
        for (const char* number : {"1", "2", "3"})
            db.execute(QStringLiteral("insert into Sauen (Art, Nummer) values ('Sau', '%1')").arg(number));
        db.execute("insert into Belegung (Datum, Kennung) values (#07/01/2026#, 1)");
        write("Einstellungen.ko2", "gesichert\r\n");
    }
    qint64 sows() { return koben.connect().table("select count(*) as n from Sauen").integer(0, 0); }
    /// Names and bytes of all that lies in the data folder, but the database and the user's own.
    QByteArray rest() const {
        QByteArray all;
        for (const QString& name :
             QDir(koben.Datenordner).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name))
            all += name.toUtf8() + '\n' + (name.startsWith("koben2.mdb") || name == ".benutzer" ? "" : bytes(name));
        return all;
    }
    QByteArray goodDatabase() {
        koben.workspace.copy(koben.Datenbankpfad, path("gut"));
        const QByteArray found = bytes("gut");
        QFile::remove(path("gut"));
        return found;
    }
    void put(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    /// Other bytes at this share of a file, at the head of a page.
    void tear(const QString& name, double share) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite)) << name.toStdString();
        const qint64 at = static_cast<qint64>(static_cast<double>(file.size()) * share) / 4096 * 4096;
        file.seek(at);
        file.write(QByteArray(64, 'X'));
    }

    Database db;
};

/// While the backup is made something goes wrong with a file of it: it is found, told, and the day's file stays.
TEST_F(SicherungTest, wasSichNichtBeweisenLaesstZaehltNicht) {
    put("zufall.ko1", [] {
        QByteArray noise;
        for (quint32 i = 0, x = 1; i < 300'000; ++i) noise += static_cast<char>((x = x * 1664525 + 1013904223) >> 24);
        return noise;
    }());
    const struct {
        const char* name;
        double from;  // share of the work
        std::function<void()> harm;
        const char* said;
    } table[] = {{"a page", 0.1, [&] { tear("koben-arbeit/koben2.mdb", 0.5); }, "die Datenbank darin ist beschädigt"},
                 {"rows", 0.1,
                  [&] {
                      Workspace other;
                      Database copy = other.open(path("koben-arbeit/koben2.mdb"));
                      copy.execute("delete from Sauen where ID = 2");
                      copy.close();
                      other.closeAll();
                  },
                  "fehlen Daten"},
                 {"a byte of the archive", 0.6, [&] { tear("koben-arbeit/sicherung.zip", 0.8); }, "zufall.ko1"}};
    const QString target = koben.Datenordner + "koben20_backup_2026_07_15.zip";
    put("koben20_backup_2026_07_15.zip", "die alte");
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        bool harmed = false;
        const QByteArray before = rest();
        QString said;
        try {
            Sicherung_erstellen(koben, target, Proof::Database, [&](double share) {
                if (share >= row.from && !std::exchange(harmed, harmed || share >= row.from)) row.harm();
                return true;
            });
        } catch (const DatabaseError& error) {
            said = error.message();
        }
        EXPECT_TRUE(harmed);
        EXPECT_TRUE(said.contains(row.said) && said.contains("Bitte")) << said.toStdString();
        EXPECT_EQ(rest(), before);
    }
    EXPECT_TRUE(Sicherung_erstellen(koben, target, Proof::Database, {}));
    QStringList packed;
    const ZipReader written(target);
    for (const ZipEntry& entry : written.entries()) packed += entry.name;
    EXPECT_EQ(packed, QStringList({"Einstellungen.ko2", "koben2.mdb", "zufall.ko1"})) << "no log, no older backup";
}

/// Archives that must not be read back: the reason is told, and nothing is touched in or around the data folder.
TEST_F(SicherungTest, wasNichtEingelesenWird) {
    const QByteArray database = goodDatabase();
    const RawEntry good{"koben2.mdb", database};
    QByteArray newer = database, foreign = database, torn = database;
    newer[63] = 99;
    foreign[68] = 0;
    torn.replace(4096, 4096, QByteArray(4096, 'x'));
    const QByteArray whole = rawZip({good, {"Einstellungen.ko2", "fremd"}, {"Fotos/"}, {"Fotos/alt/eber.jpg", "oink"}});
    std::vector<RawEntry> bomb{good};
    for (int i = 0; i < 900; ++i) bomb.push_back({"b" + QByteArray::number(i), "x", 0x800, 0100000, 0xFFFFFFF0});
    const std::pair<QByteArray, const char*> table[] = {
        {rawZip({good, {"../boese.txt"}}), "läge nicht im Datenordner"},
        {rawZip({good, {"/tmp/boese.txt"}}), "läge nicht im Datenordner"},
        {rawZip({good, {"C:boese.txt"}}), "läge nicht im Datenordner"},
        {rawZip({good, {"..\\boese.txt"}}), "läge nicht im Datenordner"},
        {rawZip({good, {"unter/../../boese.txt"}}), "läge nicht im Datenordner"},
        {rawZip({good, {"unter//boese.txt"}}), "läge nicht im Datenordner"},
        {rawZip({good, {".benutzer/boese.txt"}}), "läge nicht im Datenordner"},
        {rawZip({good, {"Koben-Tausch/boese.txt"}}), "gehört in keine"},
        {rawZip({good, {"Einstellungen.ko2/boese.txt"}}), "liegt eine Datei"},
        {rawZip({good, {"neu"}, {"neu/boese.txt"}}), "liegt eine Datei"},
        {rawZip({good, {".."}}), "läge nicht im Datenordner"},
        {rawZip({good, {"link", "/etc/passwd", 0x800, 0120000}}), "Verweis"},
        {rawZip({{"koben2.mdb", database, 0x801}}), "verschlüsselt"},
        {rawZip({good, {"koben2.mdb-wal"}}), "gehört in keine"},
        {rawZip({good, {"Koben.Lock"}}), "gehört in keine"},
        {rawZip({good, {"KOBEN2.MDB"}}), "mehrmals"},
        {rawZip({{"Einstellungen.ko2"}}), "keine Datenbank"},
        {rawZip(bomb), "freie Platz"},
        {rawZip({good, {"f.ko1", QByteArray(2'000'000, 0), 0x800, 0100000, 10, deflated(QByteArray(2'000'000, 0))}}),
         "f.ko1"},
        {rawZip({{"koben2.mdb", database, 0x800, 0100000, -1, {}, true}}), "koben2.mdb darin ist beschädigt"},
        {rawZip({{"koben2.mdb", newer}}), "neueren Version"},
        {rawZip({{"koben2.mdb", foreign}}), "keine von KOBEN"},
        {rawZip({{"koben2.mdb", "leer"}}), "keine von KOBEN"},
        {rawZip({{"koben2.mdb", torn}}), "beschädigt"},
        {whole.chopped(whole.size() / 2), "beschädigt"},
        {"kein Archiv", "beschädigt"}};
    for (const auto& [archive, said] : table) {
        SCOPED_TRACE(said);
        put("fremd.zip", archive);
        const QByteArray before = rest();
        QString left, message;
        try {
            Sicherung_zurueckholen(koben, path("fremd.zip"), {}, left);
        } catch (const DatabaseError& error) {
            message = error.message();
        }
        EXPECT_TRUE(message.startsWith("Die Datensicherung fremd.zip kann nicht eingelesen werden: ") &&
                    message.contains(said))
            << message.toStdString();
        EXPECT_EQ(rest(), before);
        EXPECT_EQ(sows(), 3);
        EXPECT_FALSE(QFile::exists(path("../boese.txt")) || QFile::exists("/tmp/boese.txt"));
    }
    put("fremd.zip", whole);
    QString left;
    EXPECT_TRUE(Sicherung_zurueckholen(koben, path("fremd.zip"), {}, left));
    EXPECT_EQ(bytes("Einstellungen.ko2"), "fremd");
    EXPECT_EQ(bytes("Fotos/alt/eber.jpg"), "oink");
}

/// The copy of a day is read back as a backup is: only where each of its pages is whole.
TEST_F(SicherungTest, einBeschaedigterTagesstandWirdNichtEingelesen) {
    const QString name = "../" + QDir(Tageskopienordner(koben.Datenordner)).dirName() + "/koben2_2026-07-14.mdb";
    ASSERT_EQ(Tageskopie_machen(koben.Datenbankpfad, Tageskopienordner(koben.Datenordner), QDate(2026, 7, 14)), "");
    db.execute("delete from Sauen where ID = 1");
    tear(name, 0.5);
    QString left, message;
    try {
        Sicherung_zurueckholen(koben, path(name), {}, left);
    } catch (const DatabaseError& error) {
        message = error.message();
    }
    EXPECT_TRUE(message.contains("koben2_2026-07-14.mdb") && message.contains("beschädigt")) << message.toStdString();
    EXPECT_EQ(sows(), 2);
}

/// The present state is kept each time, the newest five of these stay; the log of the database that goes does not.
TEST_F(SicherungTest, derJetzigeStandWirdAufgehoben) {
    put("fremd.zip", rawZip({{"koben2.mdb", goodDatabase()}}));
    for (int i = 0; i < 7; ++i) {
        koben.connect().execute("delete from Sauen where ID = 1");
        QString left;
        ASSERT_TRUE(Sicherung_zurueckholen(koben, path("fremd.zip"), {}, left));
        EXPECT_EQ(left, "");
        EXPECT_EQ(QDir(koben.Datenordner).entryList({"koben2.mdb?*", "koben-*"}, QDir::AllEntries), QStringList());
        EXPECT_EQ(sows(), 3);
        platform.clock = platform.clock.addSecs(60);
    }
    const QStringList kept = QDir(platform.user).entryList({"*.zip"}, QDir::Files, QDir::Name);
    ASSERT_EQ(kept.size(), 5);
    EXPECT_EQ(kept.last(), "Vor_Rueckholung_2026-07-15_080600.zip");
    const auto held = Sicherung_ansehen(platform.user + kept.last(), koben.Datenordner, {});
    EXPECT_EQ(Unterschied(*held, Bestand_jetzt(koben), QDate(2026, 7, 18)), "3 Tage älter, 1 Tier weniger als jetzt");
}

/// A stick that is no longer there, or holds what the user keeps, does not stop the wizard; the cloud folder gets its
/// copy.
TEST_F(SicherungTest, aufDenStickUndInDieCloud) {
    const auto wizard = [&](const QString& stick, std::deque<bool> answers) {
        platform.sticks = {{path(stick) + "/", "STICK", 0, 0}};
        S_Datensicherung_neu form(koben);
        screens.workIn<S_Datensicherung_neu>([&](S_Datensicherung_neu& shown) {
            shown.drive1.choose(1);
            shown.start_sicherung.click();
            shown.drive1.choose(1);
            shown.weiter_laufwerkwahl.click();
            shown.weiter_backuperstellen.click();
            shown.sev_cloud.setText(path("wolke"));
            shown.weiter_cloud.click();
            shown.weiter_endebackup.click();
        });
        screens.answers = std::move(answers);
        koben.run(form);
        EXPECT_TRUE(screens.answers.empty());
        return form.binfos.text().split(Crlf).mid(2).join("; ");
    };
    for (const char* folder : {"wolke", "stick"}) QDir(koben.Datenordner).mkdir(folder);
    const QString name = "koben20_backup_2026_07_15.zip";
    put("stick/koben20_backup_2026_01_01.zip.neu", "of a run that was killed");
    EXPECT_EQ(wizard("weg", {true}), "Das Backup " + name +
                                         " wurde erstellt.; Die Backupdatei wurde NICHT auf einen externen Datenträger "
                                         "kopiert wegen einer Fehlermeldung.; Die Backupdatei wurde in den Cloudordner "
                                         "übertragen.");
    EXPECT_EQ(lines("S_Datensicherung.ol8"),
              QStringList({"", "", "", "15.07.2026", "0", path("wolke") + QDir::separator()}));
    EXPECT_EQ(bytes("wolke/" + name), bytes(name));
    put("stick/" + name, "behalten");
    const QString kept = wizard("stick", {true, false, false});
    EXPECT_TRUE(kept.contains("NICHT erstellt") && kept.contains("NICHT auf einen externen Datenträger kopiert.;"));
    EXPECT_EQ(bytes("stick/" + name), "behalten");
    wizard("stick", {true, true, true});
    EXPECT_EQ(bytes("stick/" + name), bytes(name));
    EXPECT_EQ(lines("S_Datensicherung.ol8")[2], "15.07.2026");
    EXPECT_EQ(QDir(path("stick")).entryList(QDir::Files), QStringList(name));
}

TEST(SicherungsstandTest, welcherStickAnDerReiheIst) {
    const QDate today(2026, 7, 15);
    const auto day = [&](int before) { return today.addDays(-before).toString("dd.MM.yyyy"); };
    const struct {
        QString month, year;
        const char* colour;
    } table[] = {{"", "", "rot"},           {"", day(1), "blau"},       {day(60), day(180), "grün"},
                 {day(61), day(1), "blau"}, {day(61), day(181), "rot"}, {"irgendwann", "neulich", "grün"}};
    for (const auto& row : table) {
        Sicherungsstand stand;
        stand.letztmonatsbackup = row.month;
        stand.letztjahresbackup = row.year;
        EXPECT_EQ(stand.faelligerStick(today).colour, QString::fromUtf8(row.colour)) << row.month.toStdString();
    }
}

TEST(SicherungsstandTest, unterschiedInWorten) {
    const QDate day(2026, 7, 15);
    const auto told = [&](qint64 animals, qint64 bookings, int age) {
        return Unterschied({day.addDays(-age), animals, bookings}, {day, 10, 100}, day);
    };
    EXPECT_EQ(told(8, 59, 3), "3 Tage älter, 41 Buchungen und 2 Tiere weniger als jetzt");
    EXPECT_EQ(told(11, 99, 1), "1 Tag älter, 1 Buchung weniger, 1 Tier mehr als jetzt");
    EXPECT_EQ(told(10, 100, 0), "von heute, so viele Buchungen und Tiere wie jetzt");
}

}  // namespace
}  // namespace koben
