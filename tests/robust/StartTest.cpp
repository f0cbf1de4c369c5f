// Two starts at once on one data folder: one works, the other says so and ends, and the data are whole.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <random>

#include "tests/robust/Betrieb.h"

namespace koben::robust {
namespace {

constexpr unsigned Geduld = 120;  // seconds

/// A pipe that closes with the object, whose ends are told apart.
class Rohr {
public:
    Rohr() { EXPECT_EQ(pipe(ends), 0); }
    ~Rohr() {
        schliesse(0);
        schliesse(1);
    }
    Rohr(const Rohr&) = delete;
    Rohr& operator=(const Rohr&) = delete;
    void schliesse(int end) {
        if (ends[end] >= 0) close(ends[end]);
        ends[end] = -1;
    }
    int ends[2]{-1, -1};
};

/// One start, in its own process. Reports w(orks), z(weiter start, refused) or f(ailure), and works on until the
/// other end of `weiter` closes.
void starte(const Ordner& folder, int melden, int weiter) {
    char said = 'f';
    const auto sage = [&] { EXPECT_EQ(write(melden, &said, 1), 1); };
    Sitzung run(folder);
    try {
        run.start([&](PA_Koben& main) {
            said = main.find(u"XB_beenden")->enabled() ? 'w' : 'f';
            sage();
            char none = 0;
            EXPECT_EQ(read(weiter, &none, 1), 0);
            main.closeBox();
        });
    } catch (const std::exception& error) {
        run.screens.log += QString::fromUtf8(error.what());
    }
    if (said == 'w') return;
    const QStringList messages = run.screens.log.filter(QStringLiteral("! "));
    said = run.koben.ended && messages.size() == 1 &&
                   messages.first().startsWith(QStringLiteral("! Die Anwendung wurde bereits gestartet!"))
               ? 'z'
               : 'f';
    if (said == 'f') fprintf(stderr, "%s\n", run.screens.log.join(u'\n').toUtf8().constData());
    sage();
}

/// Both starts, the second so many microseconds behind the first. Ends those that work: orderly, or by a kill.
std::string rennen(const Ordner& folder, int mikrosekunden, bool abschuss) {
    Rohr los, melden, weiter;
    pid_t children[2];
    fflush(stdout);
    for (int i = 0; i < 2; ++i) {
        children[i] = fork();
        if (children[i] != 0) continue;
        alarm(Geduld);
        for (int end : {0, 1}) (end == 0 ? melden : weiter).schliesse(end);
        los.schliesse(1);
        char none = 0;
        EXPECT_EQ(read(los.ends[0], &none, 1), 0);
        if (i == 1) usleep(static_cast<useconds_t>(mikrosekunden));
        starte(folder, melden.ends[1], weiter.ends[0]);
        _exit(testing::Test::HasFailure() ? 3 : 0);
    }
    los.schliesse(1);
    melden.schliesse(1);
    std::string said;
    for (char c = 0; said.size() < 2 && read(melden.ends[0], &c, 1) == 1;) said += c;
    if (abschuss)
        for (const pid_t child : children) kill(child, SIGKILL);
    weiter.schliesse(1);
    for (const pid_t child : children) waitpid(child, nullptr, 0);
    std::sort(said.begin(), said.end());
    return said;
}

/// First starts; starts on a folder; starts on one whose last user died and left her lock behind.
TEST(StartTest, zweiZugleich) {
    std::mt19937 random(20260715);
    const int count = longRun() ? 5 * runs(0) : 4;
    for (const bool first : {true, false}) {
        for (int number = 0; number < count && !HasFailure(); ++number) {
            SCOPED_TRACE(testing::Message() << (first ? "first start " : "start ") << number);
            const Ordner folder;
            if (!first) folder.copyFrom(vorlage());
            const QString before = first ? QString() : stand(folder).daten;
            const int behind = number % 3 == 0 ? 0 : static_cast<int>(random() % (first ? 60000 : 8000));
            EXPECT_EQ(rennen(folder, behind, number % 2 == 1), "wz");
            if (number % 2 == 1) {
                EXPECT_EQ(rennen(folder, behind / 4, false), "wz") << "behind a lock that was left";
            }
            EXPECT_EQ(integrity(folder.database()), QStringLiteral("ok"));
            if (!first) {
                EXPECT_EQ(stand(folder).daten, before);
            }
            naechsterStart(folder);
            for (const QString& path : {folder.root() + QStringLiteral("/Daten"), folder.data()})
                EXPECT_TRUE(
                    QDir(path).entryList({"*.neu*", "*.lock"}, QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty())
                    << path.toStdString() << QDir(path).entryList().join(u' ').toStdString();
        }
    }
}

}  // namespace
}  // namespace koben::robust
