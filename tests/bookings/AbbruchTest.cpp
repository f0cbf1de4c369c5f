// A save for several animals that does not come to its end: whole or not at all.
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

using Weaning = PE_Bewegungsdaten_Absetzung;

/// Two sows with three piglets each.
void anlegen(Buchungshof& farm) {
    farm.tier("12");
    farm.tier("40");
    farm.ferkelung(1, "06/10/2026", 3);
    farm.ferkelung(2, "06/10/2026", 3);
}

/// Weans two piglets at each, books the third as a loss, and takes the two into the stock, with new keywords.
void absetzen(Buchungshof& farm) {
    farm.neu<Weaning>(Absetzung, {1, 2}, [&](Weaning& form) {
        eingeben(form.tz[0], "2");
        eingeben(form.kom[1], "neu");
        eingeben(form.kom[2], "B1");
        farm.screens.answers = {true, true, true};
        form.ok[0].click();
    });
}

QString zahlen(const Buchungshof& farm) {
    QStringList counts;
    for (const char* table : {"Absetzung", "Verluste", "Sauen", "Stammdaten_Bemerkung", "Stammdaten_Stallnummer"})
        counts += farm.zeige("select count(*) from " + QString::fromUtf8(table));
    return counts.join(u' ');
}
const QString Nichts = "0 0 2 0 0", Alles = "2 2 6 1 1";
constexpr int Anweisungen = 10;  // that write: the rows of Alles

TEST(AbbruchTest, eineFehlschlagendeAnweisungLässtNichtsZurück) {
    Buchungshof farm;
    anlegen(farm);
    const QString before = farm.stand();
    int nth = 0;
    for (bool failed = true; failed && nth < 99;) {
        failed = false;
        ++nth;
        Workspace::setFaultHook([&, count = 0](const QString& text) mutable {
            if (++count != nth) return;
            failed = true;
            throw DatabaseError(DatabaseError::Kind::Io, text);
        });
        try {
            absetzen(farm);
        } catch (const DatabaseError&) {
            EXPECT_EQ(farm.stand(), before) << nth;
        }
    }
    EXPECT_GT(nth, Anweisungen);
    EXPECT_EQ(zahlen(farm), Alles);
}

/// What is left of the save when the process is killed at its n-th writing statement; nothing where it got to its end.
std::optional<QString> nachAbschuss(int nth, const QString& file) {
    const pid_t child = fork();
    if (child == 0) {
        Buchungshof farm(file);
        Workspace::setFaultHook([count = 0, nth](const QString&) mutable {
            if (++count == nth) raise(SIGKILL);
        });
        absetzen(farm);
        _exit(0);  // without closing anything
    }
    int status = 0;
    waitpid(child, &status, 0);
    const Buchungshof after(file);
    if (WIFEXITED(status)) {
        EXPECT_EQ(zahlen(after), Alles);
        return std::nullopt;
    }
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    return zahlen(after);
}

TEST(AbbruchTest, einAbschussLässtNichtsZurückUndWasBestätigtIstBleibt) {
    QTemporaryDir folder;
    const QString file = folder.filePath("koben2.mdb");
    {
        Buchungshof farm;
        anlegen(farm);
        farm.koben.workspace.closeAll();
        QFile::copy(farm.koben.Datenbankpfad, file);
    }
    int nth = 0;
    std::optional<QString> left;
    do {
        left = nachAbschuss(++nth, file);
        EXPECT_EQ(left.value_or(Nichts), Nichts) << nth;
    } while (left && nth < 99);
    EXPECT_GT(nth, Anweisungen);
}

}  // namespace
}  // namespace koben
