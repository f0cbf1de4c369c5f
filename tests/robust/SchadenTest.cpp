// Damaged files of the data folder, and files of others on their whole way through the program: it works or says in
// German what is wrong, and never falls over. Their readers alone, and scripts, are tried in tests/fuzz.
#include <algorithm>

#include "core/PZ_Koben_Subs_Datenbank.h"
#include "exchange/S_Importtabelle.h"
#include "tests/robust/Betrieb.h"
#include "tests/robust/Mutation.h"

namespace koben::robust {
namespace {

constexpr qsizetype PageSize = 4096;  // of the database file

/// A kind of damage that databases meet: bytes overwritten, pages lost or swapped, the end cut off.
QByteArray damaged(QByteArray bytes, Mutation& mutation) {
    const qsizetype pages = bytes.size() / PageSize;
    const qsizetype page = mutation.below(pages) * PageSize, other = mutation.below(pages) * PageSize;
    switch (mutation.below(6)) {
        case 0:
            bytes.truncate(mutation.below(bytes.size()));
            break;
        case 1:
            bytes.replace(page, PageSize, QByteArray(PageSize, '\0'));
            break;
        case 2: {
            const QByteArray kept = bytes.mid(page, PageSize);
            bytes.replace(page, PageSize, bytes.mid(other, PageSize)).replace(other, PageSize, kept);
            break;
        }
        case 3:  // the heads of file and pages, where a flip does most
            for (int i = 0; i < 4; ++i) bytes[page + mutation.below(100)] = char(mutation.below(256));
            break;
        default:
            for (qsizetype hits = 1 + mutation.below(40); hits > 0; --hits)
                bytes[mutation.below(bytes.size())] = char(mutation.below(256));
    }
    return bytes;
}

/// Plays so many variants, or ten times the wanted runs, in processes of their own.
void playVariants(const char* what, int usual, unsigned first, const std::function<void(Mutation&)>& variant) {
    constexpr int Bunch = 50;
    const int count = longRun() ? 10 * runs(0) : usual;
    for (int from = 0; from < count; from += Bunch)
        shielded(what + (" from " + std::to_string(from)), [&] {
            for (int number = from; number < std::min(from + Bunch, count); ++number) {
                SCOPED_TRACE(testing::Message() << "variant " << number);
                alive();
                Mutation mutation(static_cast<unsigned>(number) + first);
                variant(mutation);
            }
        });
}

/// What the program does with its database from start to end, and more: reads all, derives, writes, copies.
void workOn(Database& db, const Koben& koben) {
    for (const QString& name : db.tables()) {
        const Table table = db.table(QStringLiteral("select * from ") + name);
        for (int row = 0; row < table.rowCount(); ++row)
            for (int c = 0; c < table.columnCount(); ++c) table.text(row, c);
    }
    Spalten_nachruesten(db);
    Werte_berechnen(db, koben);
    statussetzen(db);
    db.execute("insert into Sauen (Art, Nummer) values ('Sau', 'neu')");
    Action action(db, {});
    Buchungen_loeschen(action, 1);
    action.commit();
}

/// Puts a damaged database in the place of the folder's.
QByteArray damage(const DataFolder& folder, const QByteArray& whole, Mutation& mutation) {
    const QByteArray bytes = damaged(whole, mutation);
    for (const char* log : {"-wal", "-shm"}) QFile::remove(folder.database() + QString::fromUtf8(log));
    setBytes(folder.database(), bytes);
    return bytes;
}

/// One variant: refused at the door and left alone, an error at work, or worked.
void tryOut(const QByteArray& whole, const DataFolder& folder, Mutation& mutation) {
    const QByteArray bytes = damage(folder, whole, mutation);
    FakeScreens screens;
    FakePlatform platform;
    Koben koben(screens, platform, katalog());
    Einstellungen_vorgeben(koben, 2026);
    bool refused = true;
    try {
        Database db = koben.workspace.open(folder.database());
        refused = false;
        workOn(db, koben);
    } catch (const DatabaseError& error) {
        EXPECT_TRUE(isMessage(error.message())) << error.what();
    }
    koben.workspace.closeAll();
    EXPECT_TRUE(!refused || bytesOf(folder.database()) == bytes) << "a file that was refused was written to";
}

TEST(SchadenTest, datenbank) {
    const DataFolder small;
    {
        Session first(small);
        first.start();
        Database db = first.koben.connect();
        for (int i = 1; i <= 20; ++i) {
            db.execute(QStringLiteral("insert into Sauen (Art, Nummer) values ('Sau', '%1')").arg(i));
            db.execute(QStringLiteral("insert into Belegung (Kennung, Datum) values (%1, #05/01/2026#)").arg(i));
        }
    }
    const QByteArray whole = bytesOf(small.database());
    ASSERT_GT(whole.size(), 10 * PageSize);
    const DataFolder folder;
    folder.copyFrom(small);
    playVariants("database variants", 300, 0, [&](Mutation& mutation) { tryOut(whole, folder, mutation); });
}

/// The main form on a damaged database: refuses with a message for the user, or comes up.
TEST(SchadenTest, startAufBeschaedigterDatenbank) {
    const QByteArray whole = bytesOf(sampleFarm().database());
    const DataFolder folder;
    folder.copyFrom(sampleFarm());
    playVariants("starts on damaged databases", 30, 100000, [&](Mutation& mutation) {
        damage(folder, whole, mutation);
        Session run(folder);
        try {
            run.start([](PA_Koben& main) { EXPECT_TRUE(main.find(u"XB_beenden")->enabled()); });
        } catch (const DatabaseError& error) {
            EXPECT_TRUE(isMessage(error.message())) << error.what();
        }
    });
}

/// Starts the program on these settings, opens the settings and the work plan, and ends it.
void startWith(const DataFolder& folder, const QByteArray& settings) {
    setBytes(folder.settings(), settings);
    Session run(folder);
    run.screens.answers.assign(9, false);  // a reminder of the backup may come
    run.start([&](PA_Koben& main) {
        EXPECT_GT(main.datali.rowCount(), 0);  // a filter may be among the damage
        Session::menu(main, "O_Einstellungen");
        Session::menu(main, "A_awarbeitspläne");
        main.closeBox();
        EXPECT_TRUE(main.closed());
    });
    // what the program wrote at its end is whole again
    EXPECT_EQ(bytesOf(folder.settings()).count("\r\n"), 101 + 11 + 61);
}

/// Every byte changed in turn, and the file cut off behind it.
TEST(SchadenTest, einstellungenByteFuerByte) {
    const DataFolder folder;
    folder.copyFrom(sampleFarm());
    const QByteArray whole = bytesOf(folder.settings());
    ASSERT_GT(whole.size(), 400);
    const int step = longRun() ? 1 : 61;  // all are read; a start follows for every so many
    shielded("damaged settings", [&] {
        for (int at = 0; at < whole.size(); ++at) {
            Mutation mutation(static_cast<unsigned>(at));
            QByteArray flipped = whole;
            flipped[at] = char(mutation.below(256));
            for (const QByteArray& bytes :
                 {flipped, whole.left(at), mutation.of(whole, {"-32768", "32767", "\n", "9e9"})}) {
                SCOPED_TRACE(testing::Message() << "byte " << at);
                alive();
                setBytes(folder.settings(), bytes);
                Variablen variables;
                variables.Datenordner = folder.data();
                Einstellungen_vorgeben(variables, 2026);
                Einstellungen_laden(variables);
                EXPECT_FALSE(variables.Konfig_Text[Text::Trenner].isEmpty());
                if (at % step == 0) startWith(folder, bytes);
            }
        }
    });
}

/// The import takes a damaged table into the database, or leaves it as it was.
TEST(SchadenTest, import) {
    const QByteArray whole = bytesOf(QStringLiteral(KOBEN_SOURCE_DIR "/beispiel/herde.csv")).left(3000);
    const DataFolder& empty = emptyFarm();
    playVariants("imports", 25, 5000, [&](Mutation& mutation) {
        const DataFolder folder;
        folder.copyFrom(empty);
        const QString path = folder.root() + QStringLiteral("/herde.csv");
        setBytes(path, mutation.of(whole, {";", "\"", "\r", "31.02.2019", "'", "x';delete from Sauen;"}));
        bool done = false;
        {
            Session run(folder);
            run.form<S_Importtabelle>("O_ImportExcelCSV", [&](S_Importtabelle& form) {
                run.screens.inputs = {path};
                run.screens.answers = {true};
                form.comöffnen.click();
                form.ok.click();
            });
            done = run.koben.ended;
        }
        folder.edit([&](Database& db) {
            const qint64 animals = db.table("select count(*) from Sauen").integer(0, 0);
            EXPECT_TRUE(done || animals == 0) << animals;
        });
    });
}

}  // namespace
}  // namespace koben::robust
