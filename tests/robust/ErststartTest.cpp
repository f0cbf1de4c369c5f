// Files that are made by a draft, on a disk that has no room for them, and what cut-off drafts of this and earlier
// versions leave behind: the next start with room again works, and nothing is left over.
#include <sqlite3.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "store/Schema.h"
#include "tests/robust/Betrieb.h"

namespace koben::robust {
namespace {

qint64 room = 0;  ///< bytes that SQLite's files may still grow by

ssize_t writeAt(int file, const void* bytes, size_t size, off64_t at) {
    struct stat there {};
    const bool known = fstat(file, &there) == 0;
    const qint64 grows = known ? std::max<qint64>(at + static_cast<qint64>(size) - there.st_size, 0) : 0;
    if (grows > room) {
        errno = ENOSPC;
        return -1;
    }
    room -= grows;
    return pwrite64(file, bytes, size, at);
}

/// For a process of its own.
void allow(qint64 bytes) {
    room = bytes;
    sqlite3_vfs* const files = sqlite3_vfs_find(nullptr);
    for (const char* name : {"pwrite", "pwrite64"})
        files->xSetSystemCall(files, name, reinterpret_cast<sqlite3_syscall_ptr>(&writeAt));
}

/// What a first start says on a disk without room; "" where it comes up.
QString firstStart(const DataFolder& folder) {
    Session run(folder);
    try {
        run.start();
        return run.screens.log.filter("! Die ").join(u'\n');
    } catch (const DatabaseError& error) {
        return error.message();
    }
}

QStringList leftovers(const DataFolder& folder) {
    return QDir(folder.data()).entryList({"*.neu*", "*$$$*", "*-wal", "*-journal"}, QDir::Files);
}

TEST(ErststartTest, keinRaumFuerDieDatenbank) {
    const int step = longRun() ? 4096 : 36864;
    bool room = false;
    for (int bytes = 0; !room; bytes += step) {
        const DataFolder folder;
        QDir().mkpath(folder.data());
        for (const QString shipped : {"Hilfe.txt", "beispiel.csv"})
            QFile::copy(folder.program() + u'/' + shipped, folder.data() + shipped);
        const QString upright = folder.root() + QStringLiteral("/ging");
        shielded(std::to_string(bytes) + " bytes", [&] {
            allow(bytes);
            const QString said = firstStart(folder);
            if (said.isEmpty()) return setBytes(upright, "x");
            EXPECT_TRUE(said.contains("Platz")) << said.toStdString();
            EXPECT_FALSE(said.contains("SQL") || said.contains("Anweisung"));
        });
        room = QFile::exists(upright);
        ASSERT_LT(bytes, 4'000'000);
        if (QFile::exists(folder.database())) {
            EXPECT_EQ(integrity(folder.database()), "ok") << bytes;
        }
        nextStart(folder);
        EXPECT_EQ(leftovers(folder), QStringList()) << bytes;
        folder.edit([&](Database& db) { EXPECT_EQ(db.tables().size(), 20) << bytes; });
    }
}

/// The same on a disk that really is so small, where one may be mounted.
TEST(ErststartTest, kleinerDatentraeger) {
    for (int size = 320; size <= 548; size += longRun() ? 4 : 76) {
        const DataFolder folder;
        QDir().mkpath(folder.data());
        const QByteArray at = QFile::encodeName(folder.data());
        const auto mounted = [&](unsigned long flags, int kilobytes) {
            return mount("none", at, "tmpfs", flags, ("size=" + std::to_string(kilobytes) + "k").c_str()) == 0;
        };
        if (!mounted(0, size)) GTEST_SKIP() << "no disk can be mounted here";
        shielded(std::to_string(size) + "k", [&] {
            const QString said = firstStart(folder);
            EXPECT_TRUE(said.isEmpty() || said.contains("Platz") || said.contains("voll")) << said.toStdString();
        });
        EXPECT_TRUE(mounted(MS_REMOUNT, 8000));
        shielded("with room again", [&] {
            Session run(folder);
            run.start([](PA_Koben& main) { main.closeBox(); });
        });
        EXPECT_EQ(leftovers(folder), QStringList()) << size;
        EXPECT_EQ(integrity(folder.database()), "ok") << size;
        umount(at);
    }
}

/// The new database as the first version with drafts made it, up to a point: its content in the log, of which only
/// `pages` have reached the file, which then got its name.
void halfDraft(const DataFolder& folder, int pages) {
    QDir().mkpath(folder.data());
    const QString draft = folder.data() + QStringLiteral("entwurf");
    Workspace workspace;
    Database db = workspace.create(draft);
    {
        Transaction action(db);
        for (const QString& sql : schemaStatements()) db.execute(sql);
        action.commit();
    }
    const QByteArray log = bytesOf(draft + QStringLiteral("-wal"));
    ASSERT_GT(log.size(), 100'000);
    const QByteArray begun = bytesOf(draft);
    db.close();
    workspace.closeAll();
    setBytes(folder.database(), pages == 0 ? begun : bytesOf(draft).left(pages * 4096));
    setBytes(folder.database() + QStringLiteral(".neu-wal"), log);
    setBytes(folder.database() + QStringLiteral(".neu-shm"), QByteArray(32768, '\0'));
    QFile::remove(draft);
}

TEST(ErststartTest, halbeDateienFruehererStarts) {
    for (const int pages : {0, 1, 7, 40}) {
        SCOPED_TRACE(testing::Message() << pages << " pages");
        const DataFolder folder;
        halfDraft(folder, pages);
        EXPECT_EQ(firstStart(folder), QString());
        EXPECT_EQ(leftovers(folder), QStringList());
        EXPECT_EQ(integrity(folder.database()), "ok");
    }
    // a herd is no half file, whatever lies beside it, damaged or not
    for (const bool damaged : {false, true}) {
        const DataFolder folder;
        folder.copyFrom(sampleFarm());
        if (damaged) setBytes(folder.database(), bytesOf(folder.database()).left(200'000));
        const QByteArray before = bytesOf(folder.database());
        setBytes(folder.database() + QStringLiteral(".neu-wal"), QByteArray(20'000, 'x'));
        setBytes(folder.data() + QStringLiteral("koben2.$$$"), before);
        setBytes(folder.data() + QStringLiteral("koben2.$$$.neu"), "x");
        shielded("a herd", [&] { EXPECT_EQ(firstStart(folder).isEmpty(), !damaged); });
        EXPECT_EQ(QFile::exists(folder.data() + QStringLiteral("koben2.$$$")), damaged)
            << "the copy of a killed compaction";
        if (damaged) {
            EXPECT_EQ(bytesOf(folder.database()), before);
        }
        EXPECT_FALSE(QFile::exists(folder.database() + QStringLiteral(".unfertig")));
    }
}

}  // namespace
}  // namespace koben::robust
