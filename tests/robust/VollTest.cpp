// A full disk: what was there stays, and the user reads what is wrong, why, and what to do. A process of its own plays
// it, in which no file may grow beyond a limit.
#include <sqlite3.h>
#include <sys/resource.h>

#include <cerrno>
#include <csignal>

#include "forms/Stammdaten.h"
#include "output/Uebergabe.h"
#include "tests/robust/Aktionen.h"

namespace koben::robust {
namespace {

/// While it lives no file of this process grows beyond `bytes`.
class Volltraeger {
public:
    explicit Volltraeger(rlim_t bytes) {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~Volltraeger() { setrlimit(RLIMIT_FSIZE, &m_before); }
    Volltraeger(const Volltraeger&) = delete;
    Volltraeger& operator=(const Volltraeger&) = delete;

private:
    rlimit m_before{};
};

/// Says that something could not be done, that the disk may be the cause, and what to do.
void pruefeMeldung(const QString& text) {
    EXPECT_TRUE(text.contains("nicht")) << text.toStdString();
    EXPECT_TRUE(text.contains("Platz") || text.contains("voll") || text.contains("schreib")) << text.toStdString();
    EXPECT_TRUE(text.contains("Bitte") || text.contains("bitte")) << text.toStdString();
}

struct Fall {
    const char* aktion;
    std::vector<rlim_t> grenzen;
};

/// Actions on the database and its files, on a disk that takes only so much more.
TEST(VollTest, aktionen) {
    const Fall table[] = {
        {"ersterStart", {0, 3000, 30000, 90000}},
        {"import", {40, 30000}},
        {"belegungVonVierzig", {40, 5000}},
        {"absetzungMitEinbuchen", {5000}},
        {"ferkeleinkauf", {40, 5000}},
        {"komprimieren", {0, 5000, 60000}},
        {"einstellungenAmEnde", {0, 1, 100, 500}},
        {"standardwerte", {0, 20}},
        {"arbeitsplan", {0, 500}},
        {"arbeitsplanAlsTabelle", {0, 3000}},
        {"arbeitsplanAlsBericht", {0, 2000}},
    };
    for (const Fall& fall : table) {
        const Aktion& aktion = finde(fall.aktion);
        const Vergleich whole = ungestoert(aktion);
        for (const rlim_t limit : fall.grenzen) {
            const std::string what = std::string(fall.aktion) + " within " + std::to_string(limit) + " bytes";
            const auto folder = angerichtet(aktion);
            abgeschirmt(what, [&] {
                std::unique_ptr<Volltraeger> full;
                QString said;
                {
                    Sitzung run(*folder);
                    run.beginnt = [&] {
                        run.screens.takeLog();
                        full = std::make_unique<Volltraeger>(limit);
                    };
                    try {
                        aktion.lauf(run);
                    } catch (const DatabaseError& error) {
                        said = error.message();
                    } catch (const HierHalt&) {
                    }
                    said += run.screens.log.filter("! ").join(u'\n');
                }
                pruefeMeldung(said);
                full.reset();
            });
            const Stand left = stand(*folder);
            EXPECT_EQ(left.daten, whole.vorher.daten) << what;
            EXPECT_TRUE(left.dateien == whole.vorher.dateien || !aktion.hof) << what << ": a file more, less or other";
            EXPECT_TRUE(QDir(folder->data()).entryList({"*.neu*", "*$$$*"}, QDir::Files).isEmpty()) << what;
            Sitzung again(*folder);
            spielen(aktion, again);
            for (const char* shipped : {"Hilfe.txt", "beispiel.csv"})
                EXPECT_EQ(bytesOf(folder->data() + QString::fromUtf8(shipped)).size(), 20000) << what;
        }
    }
}

/// The database's own writes answer as on a full disk, from a number of them on. For a process of its own: stays so.
int freieSchreibvorgaenge = 0;
void bisVoll(int writes) {
    freieSchreibvorgaenge = writes;
    const auto vollOderNicht = [](int file, const void* bytes, size_t size, off64_t at) -> ssize_t {
        if (--freieSchreibvorgaenge >= 0) return pwrite64(file, bytes, size, at);
        errno = ENOSPC;
        return -1;
    };
    ssize_t (*const replacement)(int, const void*, size_t, off64_t) = vollOderNicht;
    sqlite3_vfs* const files = sqlite3_vfs_find(nullptr);
    int replaced = 0;
    for (const char* name : {"pwrite", "pwrite64"})
        replaced += files->xSetSystemCall(files, name, reinterpret_cast<sqlite3_syscall_ptr>(replacement)) == SQLITE_OK;
    EXPECT_GT(replaced, 0);
}

TEST(VollTest, datenbank) {
    const QString full = "Auf dem Datenträger ist kein Platz mehr.";
    const std::pair<const char*, QString> table[] = {
        {"import", full},
        {"belegungVonVierzig", full},
        {"tierLoeschen", full},
        {"komprimieren", "Die Datenbasis konnte nicht komprimiert werden. Ihre Daten sind unverändert."}};
    for (const auto& [name, text] : table) {
        const Aktion& aktion = finde(name);
        const Vergleich whole = ungestoert(aktion);
        for (const int writes : {0, 1, 2, 3}) {
            const std::string what = std::string(name) + " with " + std::to_string(writes) + " writes left";
            const auto folder = angerichtet(aktion);
            abgeschirmt(what, [&, &text = text] {
                Sitzung run(*folder);
                run.beginnt = [&] { bisVoll(writes); };
                QString said;
                try {
                    aktion.lauf(run);
                } catch (const DatabaseError& error) {
                    said = error.message();
                } catch (const HierHalt&) {
                }
                said += run.screens.log.join(u'\n');
                EXPECT_TRUE(said.contains(text) && said.contains("Bitte Platz schaffen")) << said.toStdString();
            });
            EXPECT_EQ(stand(*folder).daten, whole.vorher.daten) << what;
            EXPECT_EQ(integrity(folder->database()), QStringLiteral("ok")) << what;
        }
    }
}

class Listenform : public Form {
public:
    explicit Listenform(Koben& koben_) : Form(koben_, "Liste", "Liste") {}
    Grid li{*this, "li"};
};

/// The files by which lists are handed on.
TEST(VollTest, listen) {
    for (const rlim_t limit : {rlim_t(0), rlim_t(200), rlim_t(17000), rlim_t(39000)}) {
        abgeschirmt("lists within " + std::to_string(limit) + " bytes", [&] {
            TestRun run;
            Listenform form(run.koben);
            form.li.addColumn({.key = "Text", .title = "Text"});
            form.li.addRow("alt");
            Liste_uebergeben(run.koben, form.li);
            Text_uebergeben(run.koben, "alt");
            const QByteArray grid = run.bytes("gridli.txt"), text = run.bytes("LISTE.TXT");
            EXPECT_EQ(text, "alt");
            for (int row = 0; row < 20; ++row) form.li.addRow(QString(2000, u'x'));
            EXPECT_EQ(run.screens.takeLog().filter("! "), QStringList());
            {
                const Volltraeger full(limit);
                Liste_uebergeben(run.koben, form.li);
                Text_uebergeben(run.koben, QString(40000, u'x'));
            }
            const QStringList said = run.screens.takeLog();
            EXPECT_EQ(said.size(), 2) << testing::PrintToString(said);  // and no screen opened
            for (const QString& line : said) pruefeMeldung(line);
            EXPECT_EQ(run.bytes("gridli.txt"), grid);
            EXPECT_EQ(run.bytes("LISTE.TXT"), text);
            EXPECT_EQ(QDir(run.koben.Datenordner).entryList(QDir::Files).size(), 2) << "a half file stays";
        });
    }
}

}  // namespace
}  // namespace koben::robust
