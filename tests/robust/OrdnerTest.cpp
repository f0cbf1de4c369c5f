// A data folder that cannot be written to any more, moves or goes away: the user reads why, in German; nothing falls
// over; what was confirmed is whole where it still is.
#include <sys/stat.h>
#include <unistd.h>

#include <QDirIterator>

#include "tests/robust/Aktionen.h"

namespace koben::robust {
namespace {

constexpr unsigned Niemand = 65534;

/// Rights bind nobody but an ordinary user: gives the folder to one and becomes him. For a process of its own.
void werdeBenutzer(const Ordner& folder) {
    if (geteuid() != 0) return;
    const auto give = [](const QString& path) { return lchown(QFile::encodeName(path), Niemand, Niemand); };
    EXPECT_EQ(give(folder.root()), 0);
    QDirIterator all(folder.root(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot | QDir::System,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) EXPECT_EQ(give(all.next()), 0);
    ASSERT_EQ(setresgid(Niemand, Niemand, Niemand), 0);
    ASSERT_EQ(setresuid(Niemand, Niemand, Niemand), 0);
}

/// Takes the right to write from the data folder and its files, or gives it back.
void schreibrecht(const Ordner& folder, bool on) {
    for (const QFileInfo& file : QDir(folder.data()).entryInfoList(QDir::Files))
        chmod(QFile::encodeName(file.filePath()), on ? 0644 : 0444);
    EXPECT_EQ(chmod(QFile::encodeName(folder.data()), on ? 0755 : 0555), 0);
}

struct Stoerung {
    const char* name;
    std::function<void(const Ordner&)> an;
    std::function<void(const Ordner&)> aus;  ///< null where the data are gone
};

QString weggelegt(const Ordner& folder) { return folder.root() + QStringLiteral("/Daten/weg"); }

std::vector<Stoerung> stoerungen() {
    const auto umbenennen = [](const QString& from, const QString& to) {
        EXPECT_TRUE(QDir().rename(QDir::cleanPath(from), QDir::cleanPath(to))) << from.toStdString();
    };
    return {{"schreibgeschuetzt", [](const Ordner& f) { schreibrecht(f, false); },
             [](const Ordner& f) { schreibrecht(f, true); }},
            {"umbenannt", [=](const Ordner& f) { umbenennen(f.data(), weggelegt(f)); },
             [=](const Ordner& f) { umbenennen(weggelegt(f), f.data()); }},
            {"datenbankGeloescht", [](const Ordner& f) { EXPECT_TRUE(QFile::remove(f.database())); }, {}}};
}

TEST(OrdnerTest, waehrendDerArbeit) {
    for (const char* name : {"belegungVonVierzig", "rahmenSchliessen", "ferkeleinkauf", "tierNeu", "stallnummern",
                             "komprimieren", "einstellungen", "einstellungenAmEnde", "arbeitsplan", "standardwerte"}) {
        const Aktion& aktion = finde(name);
        const Vergleich whole = ungestoert(aktion);
        for (const Stoerung& stoerung : stoerungen()) {
            const std::string what = std::string(stoerung.name) + ", " + name;
            SCOPED_TRACE(what);
            const auto folder = angerichtet(aktion);
            const bool complained = !gestoert(what, aktion, *folder, [&](Sitzung&) {
                                         werdeBenutzer(*folder);
                                         stoerung.an(*folder);
                                     }).isEmpty();
            if (stoerung.aus) {
                stoerung.aus(*folder);
                pruefeRest(stand(*folder), whole, !complained);
                EXPECT_EQ(integrity(folder->database()), QStringLiteral("ok"));
            } else {
                EXPECT_TRUE(complained || !aktion.schreibtDatenbank) << "a booking without its database";
            }
            naechsterStart(*folder);
        }
    }
}

/// A folder in a state in which no start can work on it.
struct Zustand {
    const char* name;
    std::function<void(const Ordner&)> an;
    const char* meldung;
};

std::vector<Zustand> zustaende() {
    const auto ohne = [](const Ordner& f) { EXPECT_TRUE(QDir(f.data()).removeRecursively()); };
    const auto daten = [](const Ordner& f) { return QDir::cleanPath(f.data()); };
    const char* const keinOrdner = "kann nicht angelegt werden";
    return {{"schreibgeschuetzt", [](const Ordner& f) { schreibrecht(f, false); }, "geschrieben"},
            {"Datenbank nicht lesbar", [](const Ordner& f) { EXPECT_EQ(chmod(QFile::encodeName(f.database()), 0), 0); },
             "kann nicht gelesen"},
            {"Datenbank ist ein Ordner",
             [](const Ordner& f) { EXPECT_TRUE(QFile::remove(f.database()) && QDir().mkdir(f.database())); },
             "kann nicht gelesen"},
            {"fort, darüber kein Schreibrecht",
             [=](const Ordner& f) {
                 ohne(f);
                 EXPECT_EQ(chmod(QFile::encodeName(f.root() + QStringLiteral("/Daten")), 0555), 0);
             },
             "kann nicht geschrieben"},
            {"eine Datei",
             [=](const Ordner& f) {
                 ohne(f);
                 setBytes(daten(f), "kein Ordner");
             },
             keinOrdner},
            {"ein Verweis auf einen Datenträger, der fort ist",
             [=](const Ordner& f) {
                 ohne(f);
                 EXPECT_TRUE(QFile::link(QStringLiteral("/media/fort/Sauenplaner"), daten(f)));
             },
             keinOrdner}};
}

TEST(OrdnerTest, beimStart) {
    for (const Zustand& zustand : zustaende()) {
        const Ordner folder;
        folder.copyFrom(vorlage());
        abgeschirmt(zustand.name, [&] {
            werdeBenutzer(folder);
            zustand.an(folder);
            Sitzung run(folder);
            QString said;
            try {
                run.start([&](PA_Koben&) { ADD_FAILURE() << "it came up"; });
            } catch (const DatabaseError& error) {
                said = error.message();
            }
            said += run.screens.log.filter(QStringLiteral("! ")).join(u'\n');
            pruefeMeldung(said);
            EXPECT_TRUE(said.contains(QString::fromUtf8(zustand.meldung))) << said.toStdString();
        });
        if (QFileInfo(folder.data()).isDir()) {
            EXPECT_EQ(bytesOf(folder.settings()), bytesOf(vorlage().settings())) << zustand.name;
            if (geteuid() != 0) schreibrecht(folder, true);  // so that it can go
        }
        chmod(QFile::encodeName(folder.root() + QStringLiteral("/Daten")), 0755);
    }
}

}  // namespace
}  // namespace koben::robust
