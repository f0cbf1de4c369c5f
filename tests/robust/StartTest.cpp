// Two starts at once on one data folder: one works, the other says so and ends, and the data are whole.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <random>

#include "tests/robust/Betrieb.h"

namespace koben::robust {
namespace {

constexpr unsigned Patience = 120;  // seconds

/// A pipe that closes with the object, whose ends are told apart.
class Pipe {
public:
    Pipe() { EXPECT_EQ(pipe(ends), 0); }
    ~Pipe() {
        closeEnd(0);
        closeEnd(1);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void closeEnd(int end) {
        if (ends[end] >= 0) close(ends[end]);
        ends[end] = -1;
    }
    int ends[2]{-1, -1};
};

/// One start, in its own process. Reports w(orks), z(weiter start, refused) or f(ailure), and works on until the
/// other end of `goOn` closes.
void startIn(const DataFolder& folder, int report, int goOn) {
    char said = 'f';
    const auto say = [&] { EXPECT_EQ(write(report, &said, 1), 1); };
    Session run(folder);
    try {
        run.start([&](PA_Koben& main) {
            said = main.find(u"XB_beenden")->enabled() ? 'w' : 'f';
            say();
            char none = 0;
            EXPECT_EQ(read(goOn, &none, 1), 0);
            main.closeBox();
        });
    } catch (const std::exception& error) {
        run.screens.log += QString::fromUtf8(error.what());
    }
    if (said == 'w') return;
    const QStringList messages = run.screens.log.filter("! ");
    said = run.koben.ended && messages.size() == 1 &&
                   messages.first().startsWith("! Die Anwendung wurde bereits gestartet!")
               ? 'z'
               : 'f';
    if (said == 'f') fprintf(stderr, "%s\n", run.screens.log.join(u'\n').toUtf8().constData());
    say();
}

/// Both starts, the second so many microseconds behind the first. Ends those that work: orderly, or by a kill.
std::string race(const DataFolder& folder, int microseconds, bool killThem) {
    Pipe go, report, goOn;
    pid_t children[2];
    fflush(stdout);
    for (int i = 0; i < 2; ++i) {
        children[i] = fork();
        if (children[i] != 0) continue;
        alarm(Patience);
        for (int end : {0, 1}) (end == 0 ? report : goOn).closeEnd(end);
        go.closeEnd(1);
        char none = 0;
        EXPECT_EQ(read(go.ends[0], &none, 1), 0);
        if (i == 1) usleep(static_cast<useconds_t>(microseconds));
        startIn(folder, report.ends[1], goOn.ends[0]);
        _exit(testing::Test::HasFailure() ? 3 : 0);
    }
    go.closeEnd(1);
    report.closeEnd(1);
    std::string said;
    for (char c = 0; said.size() < 2 && read(report.ends[0], &c, 1) == 1;) said += c;
    if (killThem)
        for (const pid_t child : children) kill(child, SIGKILL);
    goOn.closeEnd(1);
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
            const DataFolder folder;
            if (!first) folder.copyFrom(sampleFarm());
            const QString before = first ? QString() : stateOf(folder).data;
            const int behind = number % 3 == 0 ? 0 : static_cast<int>(random() % (first ? 60000 : 8000));
            EXPECT_EQ(race(folder, behind, number % 2 == 1), "wz");
            if (number % 2 == 1) {
                EXPECT_EQ(race(folder, behind / 4, false), "wz") << "behind a lock that was left";
            }
            EXPECT_EQ(integrity(folder.database()), "ok");
            if (!first) {
                EXPECT_EQ(stateOf(folder).data, before);
            }
            nextStart(folder);
            for (const QString& path : {folder.root() + QStringLiteral("/Daten"), folder.data()})
                EXPECT_TRUE(
                    QDir(path).entryList({"*.neu*", "*.lock"}, QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty())
                    << path.toStdString() << QDir(path).entryList().join(u' ').toStdString();
        }
    }
}

}  // namespace
}  // namespace koben::robust
