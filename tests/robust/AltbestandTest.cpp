// Databases of the old engine: a start that takes one over is cut off, fails or meets a damaged file; the takeover
// screen meets damaged files.
#include <sys/wait.h>
#include <unistd.h>

#include <QRegularExpression>
#include <csignal>
#include <random>

#include "exchange/PO_Update.h"
#include "store/OldFile.h"
#include "tests/robust/Betrieb.h"
#include "tests/robust/Mutation.h"
#include "tools/altdatei/OldFileWriter.h"

namespace koben::robust {
namespace {

const QByteArray& oldHerd() {
    static const QByteArray bytes = [] {
        OldFileWriter old(3);
        old.program();
        for (int i = 1; i <= 60; ++i) {
            const auto fate = static_cast<OldFileWriter::Fate>(i % 3);
            old.row("Sauen", {{"Art", "Sau"}, {"Nummer", QString::number(i)}, {"Infos", QString("i").repeated(i)}},
                    fate);
            old.row("Belegung", {{"Kennung", i}, {"Datum", QDate(2026, 5, 1)}, {"Kosten", Money{i}}});
        }
        return old.bytes();
    }();
    return bytes;
}

/// A data folder in which the old herd lies under the database's name, or beside it as the predecessor's.
void lay(const DataFolder& folder, const QByteArray& bytes, bool predecessor) {
    QDir(folder.data()).removeRecursively();
    folder.copyFrom(emptyFarm());
    setBytes(predecessor ? folder.data() + "koben.mdb" : folder.database(), bytes);
    if (predecessor) setBytes(folder.data() + "koben.exe", "x");
}

QStringList originals(const DataFolder& folder) {
    return QDir(folder.data()).entryList({"koben2_original*"}, QDir::Files);
}

/// All of the herd is there and the original kept once, or nothing was done to the file.
void checkLeft(const DataFolder& folder) {
    if (OldFile::isOld(folder.database())) {
        EXPECT_EQ(bytesOf(folder.database()), oldHerd());
        EXPECT_LE(originals(folder).size(), 1);
    }
    nextStart(folder);
    EXPECT_EQ(originals(folder), QStringList("koben2_original_2026_07_15.mdb"));
    EXPECT_EQ(bytesOf(folder.data() + originals(folder).value(0)), oldHerd());
    folder.edit([](Database& db) {
        EXPECT_EQ(db.table("select count(*) as n from Sauen").integer(0, 0), 40);
        EXPECT_EQ(db.table("select sum(Kosten) as n from Belegung").text(0, 0), "0,183");
    });
    EXPECT_EQ(integrity(folder.database()), "ok");
}

TEST(AltbestandTest, startWirdAbgeschossen) {
    std::mt19937 random(7);
    const DataFolder folder;
    int killed = 0;
    for (int shot = 0; shot < runs(6) && !HasFailure(); ++shot) {
        SCOPED_TRACE(shot);
        lay(folder, oldHerd(), false);
        fflush(stdout);
        const pid_t child = fork();
        if (child == 0) {
            Session run(folder);
            run.start();
            _exit(0);
        }
        usleep(static_cast<useconds_t>(random() % 120'000));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        killed += WIFSIGNALED(status);
        checkLeft(folder);
    }
    EXPECT_GT(killed, 0);
}

TEST(AltbestandTest, startMitVersagenderAnweisung) {
    const DataFolder folder;
    int failed = 0;
    for (int nth = 1; !HasFailure(); nth = longRun() ? nth + 1 : nth * 3) {
        SCOPED_TRACE(nth);
        lay(folder, oldHerd(), false);
        bool thrown = false;
        {
            Session run(folder);
            Workspace::setFaultHook([&, count = 0](const QString&) mutable {
                if (++count == nth) throw DatabaseError(DatabaseError::Kind::Io, "Die Platte ist weg.");
            });
            try {
                run.start();
            } catch (const DatabaseError& error) {
                EXPECT_EQ(error.message(), "Die Platte ist weg.");
                thrown = true;
            }
        }
        if (!thrown) break;
        ++failed;
        checkLeft(folder);
    }
    EXPECT_GT(failed, 3);
}

/// Whatever is wrong with the file, the program works or says so, and keeps what it had.
TEST(AltbestandTest, beschaedigteDateien) {
    const DataFolder folder;
    const int count = longRun() ? runs(0) : 12;
    for (int number = 0; number < 2 * count && !HasFailure(); ++number)
        shielded("damaged old file " + std::to_string(number), [&] {
            Mutation mutation(static_cast<unsigned>(number) + 1);
            QByteArray bytes = mutation.of(oldHerd());
            for (qsizetype page = mutation.below(4) * 2048; number % 3 == 0 && page < bytes.size(); page += 8192)
                bytes.replace(page, 50, QByteArray(50, static_cast<char>(mutation.below(256))));
            const bool predecessor = number % 2 == 0;
            lay(folder, bytes, predecessor);
            const State before = predecessor ? stateOf(folder) : State();
            Session run(folder);
            if (predecessor) {
                run.start([&](PA_Koben& main) {
                    run.screens.workIn<PO_Update>([&](PO_Update& form) {
                        run.screens.answers = {true};
                        form.start.click();
                    });
                    Session::menu(main, "O_Datenauskoben1");
                    const Table here = run.koben.connect().table("select ID from Sauen where Abgangsdatum is null");
                    EXPECT_EQ(main.datali.rowCount(), here.rowCount()) << "the list shows animals that are gone";
                });
                const QStringList said = run.screens.log.filter(QRegularExpression("^! Die (Daten|Aktion)"));
                EXPECT_EQ(said.size(), 1);
                EXPECT_TRUE(said.value(0).startsWith("! Die Daten wurden") || stateOf(folder) == before);
                return;
            }
            try {
                run.start();
                EXPECT_EQ(bytesOf(folder.data() + originals(folder).value(0)), bytes);
            } catch (const DatabaseError& error) {
                EXPECT_TRUE(isMessage(error.message())) << error.what();
                EXPECT_EQ(bytesOf(folder.database()), bytes);
            }
        });
}

}  // namespace
}  // namespace koben::robust
