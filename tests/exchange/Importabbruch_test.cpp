// The program is killed at random moments of an import; afterwards either no animal is there or all are.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>

#include "tests/exchange/Importlauf.h"

namespace koben {
namespace {

constexpr int tiere = 4000;

/// Imports in a process of its own, which ends by itself with 0 or is killed after `microseconds`.
/// True where it was killed.
bool importierenUndToeten(const Importlauf& run, const QString& csv, int microseconds) {
    const pid_t child = fork();
    if (child == 0) {
        FakeScreens screens;
        FakePlatform platform;
        const Catalogue catalogue;
        Koben koben(screens, platform, catalogue);
        koben.Datenbankpfad = run.koben.Datenbankpfad;
        screens.inputs = {csv};
        screens.answers = {true};
        S_Importtabelle form(koben);
        screens.work([&](Form&) {
            form.comöffnen.click();
            form.ok.click();
        });
        koben.run(form);
        _exit(0);
    }
    usleep(static_cast<useconds_t>(microseconds));
    kill(child, SIGKILL);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFSIGNALED(status);
}

TEST(Importabbruch, allesOderNichts) {
    std::mt19937 zufall(20260715);
    int getoetet = 0, ganz = 0;
    int spanne = 400000;  // microseconds; narrowed to what an import takes here
    for (int runde = 0; runde < 14; ++runde) {
        Importlauf run;
        QByteArray bytes = "Saunummer;Ohrmarke\n";
        for (int i = 0; i < tiere; ++i) bytes += QByteArray::number(i) + ";DE" + QByteArray::number(i) + '\n';
        const QString csv = run.datei(bytes);
        run.db.close();
        run.koben.workspace.closeAll();

        const int nach = static_cast<int>(zufall() % static_cast<unsigned>(spanne));
        const bool killed = importierenUndToeten(run, csv, nach);
        run.db = run.koben.connect();
        const qint64 da = run.anzahl();
        EXPECT_TRUE(da == 0 || da == tiere) << da << " animals after " << nach << " us";
        if (!killed) {
            EXPECT_EQ(da, tiere);
            spanne = std::max(nach, 2000);
        }
        getoetet += killed;
        ganz += da == tiere;
    }
    EXPECT_GT(getoetet, 0);
}

}  // namespace
}  // namespace koben
