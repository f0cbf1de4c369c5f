// The process is killed in the middle of each writing action; the next start finds all of it or nothing.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
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

/// The program starts on what is left, shows its list, and ends.
void naechsterStart(const Ordner& folder) {
    Sitzung run(folder);
    run.start([&](PA_Koben& main) {
        EXPECT_TRUE(main.find(u"XB_beenden")->enabled());
        EXPECT_TRUE(main.find(u"XB_neueschweine")->enabled());
        EXPECT_EQ(main.datali.rowCount() > 0, !run.screens.log.join(u'\n').contains(QStringLiteral("HINWEIS!!!")));
        main.closeBox();
        EXPECT_TRUE(main.closed());
    });
    for (const QString& line : run.screens.log.filter(QStringLiteral("! ")))
        EXPECT_TRUE(line.startsWith(QStringLiteral("! HINWEIS!!!"))) << line.toStdString();
    for (const char* shipped : {"Hilfe.txt", "beispiel.csv"})
        EXPECT_EQ(bytesOf(folder.data() + QString::fromUtf8(shipped)).size(), 20000) << shipped;
}

void pruefe(const Ordner& folder, const Vergleich& whole, const Ende& end) {
    const Stand left = stand(folder);
    const bool done = left.daten == whole.nachher.daten;
    EXPECT_TRUE(done || left.daten == whole.vorher.daten) << "half an action:\n" << left.daten.toStdString();
    const bool written = left.einstellungen == whole.nachher.einstellungen;
    EXPECT_TRUE(written || left.einstellungen == whole.vorher.einstellungen) << "half a settings file:\n"
                                                                             << left.einstellungen.toStdString();
    EXPECT_TRUE((done && written) || (end.erschossen && !end.bestaetigt)) << "a confirmed action is lost";
    if (QFile::exists(folder.database())) {
        EXPECT_EQ(integrity(folder.database()), QStringLiteral("ok"));
    }
    naechsterStart(folder);
    EXPECT_EQ(integrity(folder.database()), QStringLiteral("ok"));
}

class AbschussTest : public testing::TestWithParam<Aktion> {
protected:
    std::mt19937 zufall{20260715};
    int wert(int below) { return static_cast<int>(zufall() % static_cast<unsigned>(std::max(below, 1))); }

    /// A third each at a statement, around the commit, and at any moment.
    Schuss schuss(int number, const Vergleich& whole) {
        if (whole.anweisungen > 0 && number % 3 == 0) return {.anweisung = 1 + wert(whole.anweisungen)};
        if (whole.anweisungen > 0 && number % 3 == 1) return {.abCommit = true, .mikrosekunden = wert(3000)};
        return {.mikrosekunden = wert(2 * whole.mikrosekunden)};
    }
};

TEST_P(AbschussTest, allesOderNichts) {
    const Aktion& aktion = GetParam();
    const Vergleich whole = ungestoert(aktion);
    ASSERT_EQ(whole.vorher != whole.nachher, aktion.aendert);
    int killed = 0, confirmed = 0;
    for (int number = 0; number < runs(12) && !HasFailure(); ++number) {
        const Schuss shot = schuss(number, whole);
        SCOPED_TRACE(testing::Message() << "shot " << number << ": statement " << shot.anweisung << " of "
                                        << whole.anweisungen << ", " << shot.mikrosekunden << " us of "
                                        << whole.mikrosekunden << (shot.abCommit ? " from the commit on" : ""));
        const auto folder = angerichtet(aktion);
        const Ende end = schiesse(aktion, *folder, shot);
        pruefe(*folder, whole, end);
        killed += end.erschossen;
        confirmed += end.bestaetigt;
    }
    EXPECT_GT(killed, 0);
    RecordProperty("abgeschossen", killed);
    RecordProperty("bestaetigt", confirmed);
    if (longRun()) printf("%s: %d killed, %d of them or of the rest confirmed\n", aktion.name, killed, confirmed);
}

INSTANTIATE_TEST_SUITE_P(Aktionen, AbschussTest, testing::ValuesIn(aktionen()), nameOf);

}  // namespace
}  // namespace koben::robust
