// A disk that is full, becomes read-only or goes away at work: what was there stays, and the user reads what is wrong,
// why, and what to do. A process of its own plays it.
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "tests/robust/Aktionen.h"

namespace koben::robust {
namespace {

/// While it lives no file of this process grows beyond `bytes`.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
};

/// Actions on the database and its files, on a disk that takes only so much more.
TEST(VollTest, tasks) {
    const std::pair<const char*, std::vector<rlim_t>> table[] = {{"ersterStart", {0, 3000, 30000, 90000}},
                                                                 {"import", {40, 30000}},
                                                                 {"geraetImport", {5000}},
                                                                 {"geraetExport", {0, 1000}},
                                                                 {"absetzungMitEinbuchen", {5000}},
                                                                 {"komprimieren", {0, 5000, 60000}},
                                                                 {"datensicherungUeberschreiben", {0, 4000, 60000}},
                                                                 {"rueckholung", {0, 5000, 60000}},
                                                                 {"einstellungenAmEnde", {0, 1, 100, 500}},
                                                                 {"standardwerte", {0, 20}},
                                                                 {"arbeitsplan", {0, 500}},
                                                                 {"arbeitsplanAlsText", {0, 2000}},
                                                                 {"arbeitsplanAlsTabelle", {0, 3000}},
                                                                 {"arbeitsplanAlsBericht", {0, 2000}}};
    for (const auto& [name, limits] : table) {
        const Task& task = taskNamed(name);
        const Comparison whole = undisturbed(task);
        for (const rlim_t limit : limits) {
            const std::string what = std::string(name) + " within " + std::to_string(limit) + " bytes";
            const auto folder = prepared(task);
            std::unique_ptr<FullDisk> full;
            const QString said = disturbed(
                what, task, *folder, [&](Session&) { full = std::make_unique<FullDisk>(limit); },
                [&](Session* run) {
                    if (run == nullptr) full.reset();
                });
            EXPECT_TRUE(said.contains("Platz") || said.contains("voll") || said.contains("schreib"))
                << what << ": " << said.toStdString();
            const State left = stateOf(*folder);
            EXPECT_EQ(left.data, whole.before.data) << what;
            EXPECT_TRUE(left.files == whole.before.files || !task.farm) << what << ": a file more, less or other";
            EXPECT_TRUE(QDir(folder->data()).entryList({"*.neu*", "*$$$*"}, QDir::Files).isEmpty()) << what;
            Session again(*folder);
            perform(task, again);
            for (const char* shipped : {"Hilfe.txt", "beispiel.csv"})
                EXPECT_EQ(bytesOf(folder->data() + QString::fromUtf8(shipped)).size(), 20000) << what;
        }
    }
}

/// How the machine answers what the program wants of its disk; 0 is yes.
struct Disk {
    const char* name;
    int writing, flushing, opening;  ///< to write, to flush, to open; EROFS concerns files opened for writing
    const char* said;
};
Disk theDisk{};
int working = 0;  ///< so many of the calls that are to fail still succeed

/// Whether a call fails, whose answer that is.
bool fails(int answer) {
    if (answer == 0 || --working >= 0) return false;
    errno = answer;
    return true;
}

ssize_t writeAt(int file, const void* bytes, size_t size, off64_t at) {
    return fails(theDisk.writing) ? -1 : pwrite64(file, bytes, size, at);
}

int openAt(const char* path, int flags, int mode) {
    const bool concerned = theDisk.opening != EROFS || (flags & O_ACCMODE) != O_RDONLY;
    return concerned && fails(theDisk.opening) ? -1 : open(path, flags, mode);
}

}  // namespace
}  // namespace koben::robust

// In the place of the machine's own, for SQLite and the program.
extern "C" int fsync(int file) {
    return koben::robust::fails(koben::robust::theDisk.flushing) ? -1 : static_cast<int>(syscall(SYS_fsync, file));
}
extern "C" int fdatasync(int file) {
    return koben::robust::fails(koben::robust::theDisk.flushing) ? -1 : static_cast<int>(syscall(SYS_fdatasync, file));
}

namespace koben::robust {
namespace {

/// From now on the disk answers so. For a process of its own: stays so.
void disturb(const Disk& disk, int still) {
    theDisk = disk;
    working = still;
    sqlite3_vfs* const files = sqlite3_vfs_find(nullptr);
    const auto replace = [&](const char* name, auto* call) {
        return files->xSetSystemCall(files, name, reinterpret_cast<sqlite3_syscall_ptr>(call)) == SQLITE_OK;
    };
    EXPECT_TRUE((replace("pwrite", &writeAt) + replace("pwrite64", &writeAt) > 0) && replace("open", &openAt));
}

/// Writes, flushes and openings fail. What was confirmed is there; with a complaint all of the action is, or nothing. A
/// disk that comes back takes more at once, another one fails until the process has ended.
TEST(VollTest, datenbank) {
    const char* const confirmed = "insert into Stammdaten_Kunde values ('bestätigt')";
    const Disk table[] = {{"full", ENOSPC, 0, 0, "Platz schaffen"},
                          {"read-only", EROFS, EROFS, EROFS, "schreibgeschützt"},
                          {"gone", EIO, EIO, EIO, "Datenträger"},
                          {"not flushed", 0, EIO, 0, "Datenträger"}};
    for (const char* name : {"import", "belegungVonVierzig", "komprimieren"}) {
        const Task& task = taskNamed(name);
        const Comparison whole = undisturbed(task);
        for (const Disk& disk : table) {
            for (const int still : {0, 1, 3}) {
                const std::string what = std::string(name) + ", " + disk.name + " after " + std::to_string(still);
                SCOPED_TRACE(what);
                const auto folder = prepared(task);
                const bool comesBack = still == 1;
                const QString said = disturbed(
                    what, task, *folder,
                    [&](Session& run) {
                        run.koben.connect().execute(confirmed);
                        disturb(disk, still);
                    },
                    [&](Session* run) {
                        if (run != nullptr && !comesBack) return;
                        theDisk = {};
                        if (run != nullptr) run->koben.connect().execute(confirmed);
                    });
                const bool complained = !said.isEmpty();
                EXPECT_TRUE(complained ? said.contains(disk.said) : disk.writing == 0) << said.toStdString();
                EXPECT_TRUE(!complained || task.writesDatabase || said.contains("Ihre Daten sind unverändert."));
                folder->edit([&](Database& db) {
                    EXPECT_EQ(db.execute("delete from Stammdaten_Kunde where Inhalt = 'bestätigt'"), 1 + comesBack);
                });
                const State left = stateOf(*folder);
                expectRest(left, whole, !complained);
                EXPECT_EQ(integrity(folder->database()), "ok");
                EXPECT_TRUE(QDir(folder->data()).entryList({"*.neu*", "*$$$*"}, QDir::Files).isEmpty());
                if (left != whole.before) continue;
                {
                    Session again(*folder);
                    perform(task, again);
                }
                expectRest(stateOf(*folder), whole, true);
            }
        }
    }
}

}  // namespace
}  // namespace koben::robust
