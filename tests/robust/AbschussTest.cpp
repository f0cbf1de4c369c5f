// The process is killed in the middle of each writing action; the next start finds all of it or nothing.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <random>

#include "tests/robust/Aktionen.h"

namespace koben::robust {
namespace {

constexpr unsigned Geduld = 120;  // seconds

/// When the process dies.
struct Schuss {
    int anweisung = 0;      ///< before its n-th writing statement; 0 for a moment in time
    bool abCommit = false;  ///< the time counts from the commit on, otherwise from the beginning of the action
    int mikrosekunden = 0;
    bool bisHauptform = false;  ///< it may also die when the action is done and its frame closes
};

/// What the child said before it ended.
struct Ende {
    bool erschossen = false;
    bool bestaetigt = false;  ///< the user had seen or heard that the action is done
};

void sage(int pipe, char what) { EXPECT_EQ(write(pipe, &what, 1), 1); }

/// Plays the action in this process, which is one of its own, and tells the test how far it is:
/// a(ction begins), c(ommit), b(estätigt), f(ertig).
void spieleUndMelde(const Aktion& aktion, const Ordner& folder, const Schuss& shot, int pipe) {
    Sitzung run(folder);
    run.bisHauptform = shot.bisHauptform;
    run.screens.onLine = [&](const QString& line) {
        if (*aktion.bestaetigt && line.startsWith(QString::fromUtf8(aktion.bestaetigt))) sage(pipe, 'b');
    };
    run.beginnt = [&] {
        Workspace::setFaultHook([&, count = 0](const QString& text) mutable {
            if (++count == shot.anweisung) raise(SIGKILL);
            if (text == u"commit") sage(pipe, 'c');
        });
        sage(pipe, 'a');
    };
    run.fertig = [&] {
        Workspace::setFaultHook({});
        sage(pipe, 'f');
    };
    spielen(aktion, run);
}

Ende schiesse(const Aktion& aktion, const Ordner& folder, const Schuss& shot) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        alarm(Geduld);
        spieleUndMelde(aktion, folder, shot, ends[1]);
        fflush(stdout);
        _exit(testing::Test::HasFailure() ? 3 : 0);
    }
    close(ends[1]);
    Ende end;
    QByteArray said;
    bool fired = shot.anweisung > 0;
    for (char c = 0; read(ends[0], &c, 1) == 1;) {
        said.append(c);
        if (fired || c != (shot.abCommit ? 'c' : 'a')) continue;
        fired = true;
        usleep(static_cast<useconds_t>(shot.mikrosekunden));
        kill(child, SIGKILL);
    }
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    end.erschossen = WIFSIGNALED(status);
    if (end.erschossen)
        EXPECT_EQ(WTERMSIG(status), SIGKILL) << aktion.name;
    else
        EXPECT_EQ(WEXITSTATUS(status), 0) << aktion.name;
    end.bestaetigt = said.contains('b') || said.contains('f');
    return end;
}

void pruefe(const Ordner& folder, const Vergleich& whole, const Ende& end) {
    pruefeRest(stand(folder), whole, !end.erschossen || end.bestaetigt);
    if (QFile::exists(folder.database())) {
        EXPECT_EQ(integrity(folder.database()), QStringLiteral("ok"));
    }
    naechsterStart(folder);
    EXPECT_EQ(integrity(folder.database()), QStringLiteral("ok"));
}

/// Moments of death: a third each at a statement, around the commit, and at any moment.
class Schuetze {
public:
    Schuss schuss(int number, const Vergleich& whole) {
        if (whole.anweisungen > 0 && number % 3 == 0) return {.anweisung = 1 + wert(whole.anweisungen)};
        if (whole.anweisungen > 0 && number % 3 == 1) return {.abCommit = true, .mikrosekunden = wert(3000)};
        return {.mikrosekunden = wert(2 * whole.mikrosekunden)};
    }

private:
    std::mt19937 m_zufall{20260715};
    int wert(int below) { return static_cast<int>(m_zufall() % static_cast<unsigned>(std::max(below, 1))); }
};

std::string beschreibung(int number, const Schuss& shot, const Vergleich& whole) {
    return "shot " + std::to_string(number) + ": statement " + std::to_string(shot.anweisung) + " of " +
           std::to_string(whole.anweisungen) + ", " + std::to_string(shot.mikrosekunden) + " us of " +
           std::to_string(whole.mikrosekunden) + (shot.abCommit ? " from the commit on" : "");
}

class AbschussTest : public testing::TestWithParam<Aktion> {};

TEST_P(AbschussTest, allesOderNichts) {
    const Aktion& aktion = GetParam();
    const Vergleich whole = ungestoert(aktion);
    ASSERT_EQ(whole.vorher != whole.nachher, aktion.aendert);
    Schuetze schuetze;
    int killed = 0, confirmed = 0;
    const int first = static_cast<int>(strlen(aktion.name));  // a short run has all kinds of shots, over all actions
    for (int number = first; number < first + runs(2) && !HasFailure(); ++number) {
        const Schuss shot = schuetze.schuss(number, whole);
        SCOPED_TRACE(beschreibung(number, shot, whole));
        const auto folder = angerichtet(aktion);
        const Ende end = schiesse(aktion, *folder, shot);
        pruefe(*folder, whole, end);
        killed += end.erschossen;
        confirmed += end.bestaetigt;
    }
    if (longRun()) {
        EXPECT_GT(killed, 0);
    }
    RecordProperty("abgeschossen", killed);
    RecordProperty("bestaetigt", confirmed);
    if (longRun()) printf("%s: %d killed, %d of them or of the rest confirmed\n", aktion.name, killed, confirmed);
}

INSTANTIATE_TEST_SUITE_P(Aktionen, AbschussTest, testing::ValuesIn(aktionen()), nameOf);

std::vector<Aktion> zyklusbuchungen() {
    std::vector<Aktion> chosen;
    std::copy_if(aktionen().begin(), aktionen().end(), std::back_inserter(chosen),
                 [](const Aktion& aktion) { return aktion.leitetAb; });
    return chosen;
}

class AbleitungTest : public testing::TestWithParam<Aktion> {};

/// A booking is saved and the process dies before its frame has closed: the next start, itself killed now and then,
/// leaves the derived values that closing the frame would have left.
TEST_P(AbleitungTest, naechsterStartHoltNach) {
    const Aktion& aktion = GetParam();
    const Vergleich whole = ungestoert(aktion, true);
    ASSERT_NE(whole.vorher.daten, whole.nachher.daten);
    Schuetze schuetze;
    int between = 0;
    for (int number = 0; number < runs(3) && !HasFailure(); ++number) {
        Schuss shot = schuetze.schuss(number, whole);
        shot.bisHauptform = true;
        SCOPED_TRACE(beschreibung(number, shot, whole));
        const auto folder = angerichtet(aktion);
        const Ende end = schiesse(aktion, *folder, shot);
        const QString found = stand(*folder).daten;
        between += found != whole.vorher.daten && found != whole.nachher.daten;
        if (number % 2 == 1) schiesse(finde("ersterStart"), *folder, {.anweisung = 1 + number / 2});
        naechsterStart(*folder);
        const QString left = stand(*folder).daten;
        EXPECT_TRUE(left == whole.nachher.daten || (left == whole.vorher.daten && !end.bestaetigt))
            << "before the start:\n"
            << found.toStdString() << "after it:\n"
            << left.toStdString();
    }
    RecordProperty("dazwischen", between);
    if (longRun()) printf("%s: %d killed between save and derivation\n", aktion.name, between);
}

INSTANTIATE_TEST_SUITE_P(Aktionen, AbleitungTest, testing::ValuesIn(zyklusbuchungen()), nameOf);

}  // namespace
}  // namespace koben::robust
