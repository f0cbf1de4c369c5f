// What others may write, on its whole way through the program: list files and tables to import. Their readers alone,
// and scripts, are tried in tests/fuzz.
#include "exchange/S_Importtabelle.h"
#include "output/PA_Zwischenliste.h"
#include "tests/robust/Betrieb.h"
#include "tests/robust/Mutation.h"

namespace koben::robust {
namespace {

int variants(int usual) { return longRun() ? 10 * runs(0) : usual; }

/// A list as a screen would hand it over.
QByteArray listendatei(const TestRun& run) {
    run.write("gridli.txt",
              "KOBEN-Liste 1\t3\t3\r\nNummer\tNr\t1\t40\t1\t\t0\r\nDatum\tFällig\\tam\t0\t90\t2\t\t0\r\n"
              "Text\tWas\\\\zu tun\t0\t0\t0\tArbeit\t0\r\n1\t02.07.2026\t\\u017e Umstallen\r\n.\t\t\r\n"
              "12\t01.07.2026\tx\r\n");
    return run.bytes("gridli.txt");
}

/// The list screen shows such a file or says that it cannot.
TEST(MutationTest, listenfenster) {
    abgeschirmt("list screen", [] {
        TestRun run;
        const QByteArray whole = listendatei(run);
        for (int number = 0; number < variants(100); ++number) {
            SCOPED_TRACE(testing::Message() << "variant " << number);
            lebt();
            Mutation mutation(static_cast<unsigned>(number) + 5000);
            setBytes(run.path("gridli.txt"), mutation.of(whole, {"\t", "\r\n", "-1", "31.02.2026"}));
            PA_Zwischenliste form(run.koben);
            run.screens.work([&](Form&) {
                form.comtext.click();
                form.roexplorer[0].click();
            });
            run.koben.run(form);
        }
    });
}

/// The import takes such a table into the database, or leaves it as it was.
TEST(MutationTest, import) {
    const QByteArray whole = bytesOf(QStringLiteral(KOBEN_SOURCE_DIR "/beispiel/herde.csv")).left(3000);
    const Ordner& empty = leereVorlage();
    abgeschirmt("imports", [&] {
        for (int number = 0; number < variants(25); ++number) {
            SCOPED_TRACE(testing::Message() << "variant " << number);
            lebt();
            Mutation mutation(static_cast<unsigned>(number) + 5000);
            const Ordner folder;
            folder.copyFrom(empty);
            const QString path = folder.root() + QStringLiteral("/herde.csv");
            setBytes(path, mutation.of(whole, {";", "\"", "\r", "31.02.2019", "'", "x';delete from Sauen;"}));
            bool done = false;
            {
                Sitzung run(folder);
                run.start([&](PA_Koben& main) {
                    run.screens.workIn<S_Importtabelle>([&](S_Importtabelle& form) {
                        run.screens.inputs = {path};
                        run.screens.answers = {true};
                        form.comöffnen.click();
                        form.ok.click();
                    });
                    Sitzung::menue(main, "O_ImportExcelCSV");
                });
                done = run.koben.ended;
            }
            folder.edit([&](Database& db) {
                const qint64 animals = db.table(QStringLiteral("select count(*) from Sauen")).integer(0, 0);
                EXPECT_TRUE(done || animals == 0) << animals;
            });
        }
    });
}

}  // namespace
}  // namespace koben::robust
