// A data folder that cannot be written to any more, moves or goes away: the user reads why, in German; nothing falls
// over; what was confirmed is whole where it still is.
#include <sys/stat.h>
#include <unistd.h>

#include <QDirIterator>

#include "tests/robust/Aktionen.h"

namespace koben::robust {
namespace {

constexpr unsigned Nobody = 65534;

/// Rights bind nobody but an ordinary user: gives the folder to one and becomes him. For a process of its own.
void becomeUser(const DataFolder& folder) {
    if (geteuid() != 0) return;
    const auto give = [](const QString& path) { return lchown(QFile::encodeName(path), Nobody, Nobody); };
    EXPECT_EQ(give(folder.root()), 0);
    QDirIterator all(folder.root(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot | QDir::System,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) EXPECT_EQ(give(all.next()), 0);
    ASSERT_EQ(setresgid(Nobody, Nobody, Nobody), 0);
    ASSERT_EQ(setresuid(Nobody, Nobody, Nobody), 0);
}

/// Takes the right to write from the data folder and its files, or gives it back.
void writable(const DataFolder& folder, bool on) {
    for (const QFileInfo& file : QDir(folder.data()).entryInfoList(QDir::Files))
        chmod(QFile::encodeName(file.filePath()), on ? 0644 : 0444);
    EXPECT_EQ(chmod(QFile::encodeName(folder.data()), on ? 0755 : 0555), 0);
}

struct Disturbance {
    const char* name;
    std::function<void(const DataFolder&)> on;
    std::function<void(const DataFolder&)> off;  ///< null where the data are gone
};

QString movedTo(const DataFolder& folder) { return folder.root() + QStringLiteral("/Daten/weg"); }

std::vector<Disturbance> disturbances() {
    const auto moveTo = [](const QString& from, const QString& to) {
        EXPECT_TRUE(QDir().rename(QDir::cleanPath(from), QDir::cleanPath(to))) << from.toStdString();
    };
    return {{"schreibgeschuetzt", [](const DataFolder& f) { writable(f, false); },
             [](const DataFolder& f) { writable(f, true); }},
            {"umbenannt", [=](const DataFolder& f) { moveTo(f.data(), movedTo(f)); },
             [=](const DataFolder& f) { moveTo(movedTo(f), f.data()); }},
            {"datenbankGeloescht", [](const DataFolder& f) { EXPECT_TRUE(QFile::remove(f.database())); }, {}}};
}

TEST(OrdnerTest, waehrendDerArbeit) {
    for (const char* name : {"belegungVonVierzig", "rahmenSchliessen", "ferkeleinkauf", "tierNeu", "stallnummern",
                             "komprimieren", "einstellungen", "einstellungenAmEnde", "arbeitsplan", "standardwerte"}) {
        const Task& task = taskNamed(name);
        const Comparison whole = undisturbed(task);
        for (const Disturbance& disturbance : disturbances()) {
            const std::string what = std::string(disturbance.name) + ", " + name;
            SCOPED_TRACE(what);
            const auto folder = prepared(task);
            const bool complained = !disturbed(what, task, *folder, [&](Session&) {
                                         becomeUser(*folder);
                                         disturbance.on(*folder);
                                     }).isEmpty();
            if (disturbance.off) {
                disturbance.off(*folder);
                expectRest(stateOf(*folder), whole, !complained);
                EXPECT_EQ(integrity(folder->database()), "ok");
            } else {
                EXPECT_TRUE(complained || !task.writesDatabase) << "a booking without its database";
            }
            nextStart(*folder);
        }
    }
}

/// A folder in a state in which no start can work on it.
struct Condition {
    const char* name;
    std::function<void(const DataFolder&)> on;
    const char* said;
};

std::vector<Condition> conditions() {
    const auto ohne = [](const DataFolder& f) { EXPECT_TRUE(QDir(f.data()).removeRecursively()); };
    const auto data = [](const DataFolder& f) { return QDir::cleanPath(f.data()); };
    const char* const keinOrdner = "kann nicht angelegt werden";
    return {
        {"schreibgeschuetzt", [](const DataFolder& f) { writable(f, false); }, "geschrieben"},
        {"Datenbank nicht lesbar", [](const DataFolder& f) { EXPECT_EQ(chmod(QFile::encodeName(f.database()), 0), 0); },
         "kann nicht gelesen"},
        {"Datenbank ist ein Ordner",
         [](const DataFolder& f) { EXPECT_TRUE(QFile::remove(f.database()) && QDir().mkdir(f.database())); },
         "kann nicht gelesen"},
        {"fort, darüber kein Schreibrecht",
         [=](const DataFolder& f) {
             ohne(f);
             EXPECT_EQ(chmod(QFile::encodeName(f.root() + QStringLiteral("/Daten")), 0555), 0);
         },
         "kann nicht geschrieben"},
        {"eine Datei",
         [=](const DataFolder& f) {
             ohne(f);
             setBytes(data(f), "kein Ordner");
         },
         keinOrdner},
        {"ein Verweis auf einen Datenträger, der fort ist",
         [=](const DataFolder& f) {
             ohne(f);
             EXPECT_TRUE(QFile::link(QStringLiteral("/media/fort/Sauenplaner"), data(f)));
         },
         keinOrdner}};
}

TEST(OrdnerTest, beimStart) {
    for (const Condition& condition : conditions()) {
        const DataFolder folder;
        folder.copyFrom(sampleFarm());
        shielded(condition.name, [&] {
            becomeUser(folder);
            condition.on(folder);
            Session run(folder);
            QString said;
            try {
                run.start([&](PA_Koben&) { ADD_FAILURE() << "it came up"; });
            } catch (const DatabaseError& error) {
                said = error.message();
            }
            said += run.screens.log.filter("! ").join(u'\n');
            expectMessage(said);
            EXPECT_TRUE(said.contains(QString::fromUtf8(condition.said))) << said.toStdString();
        });
        if (QFileInfo(folder.data()).isDir()) {
            EXPECT_EQ(bytesOf(folder.settings()), bytesOf(sampleFarm().settings())) << condition.name;
            if (geteuid() != 0) writable(folder, true);  // so that it can go
        }
        chmod(QFile::encodeName(folder.root() + QStringLiteral("/Daten")), 0755);
    }
}

}  // namespace
}  // namespace koben::robust
