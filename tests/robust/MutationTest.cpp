// What others may write: list files, tables to import, scripts. Damaged ones are read to their end or refused.
#include <QBuffer>

#include "exchange/Importdatei.h"
#include "exchange/S_Importtabelle.h"
#include "output/PA_Textausgabe.h"
#include "output/PA_Zwischenliste.h"
#include "output/Textliste.h"
#include "tests/robust/Betrieb.h"
#include "tests/robust/Mutation.h"
#include "tools/skript/Interpreter.h"
#include "tools/skript/Script.h"

namespace koben::robust {
namespace {

int variants(int usual) { return longRun() ? 10 * runs(0) : usual; }

class Listenform : public Form {
public:
    explicit Listenform(Koben& koben_) : Form(koben_, "Liste", "Liste") {}
    Grid li{*this, "li", true};
};

QByteArray listendatei(const TestRun& run) {
    const QString path = run.path("ganz.txt");
    Koben& koben = const_cast<TestRun&>(run).koben;
    Listenform form(koben);
    form.li.addColumn({.key = "Nummer", .title = "Nr", .align = Align::Right, .width = 40, .sort = Sort::Number});
    form.li.addColumn({.key = "Datum", .title = "Fällig\tam", .width = 90, .sort = Sort::Date});
    form.li.addColumn({.key = "Text", .title = "Was\\zu tun", .caption = "Arbeit"});
    for (int i = 0; i < 12; ++i) form.li.addRow(QStringLiteral("%1\t0%2.07.2026\tž „Umstallen“").arg(i).arg(i % 9 + 1));
    form.li.addRow(QStringLiteral(".\t\t"));
    EXPECT_TRUE(form.li.save(path));
    return run.bytes("ganz.txt");
}

/// Everything that a list is used for, on whatever was read.
void benutze(Grid& list) {
    for (int row = 0; row <= list.rowCount() + 1; ++row)
        for (int column = 0; column <= list.columnCount() + 1; ++column) list.cell(row, column);
    for (int column = 1; column <= list.columnCount(); ++column) list.sort(column, 1 + column % 2);
    if (list.rowCount() > 0) list.choose(list.rowCount());
    Textliste(list, {.trenner = " | ", .datum = "15.07.2026", .kopf = "Liste"});
    list.removeRow(1);
}

TEST(MutationTest, listendatei) {
    abgeschirmt("list files", [] {
        TestRun run;
        const QByteArray whole = listendatei(run);
        int read = 0;
        for (int number = 0; number < variants(600); ++number) {
            SCOPED_TRACE(testing::Message() << "variant " << number);
            lebt();
            Mutation mutation(static_cast<unsigned>(number));
            setBytes(run.path("gridli.txt"),
                     mutation.of(whole, {"\t", "\r\n", "\\", "\\u", "\\uD800", "-1", "2147483648", "4095", "\t.\t"}));
            Listenform form(run.koben);
            const bool loaded = form.li.load(run.path("gridli.txt"));
            EXPECT_TRUE(loaded || form.li.rowCount() == 0);
            benutze(form.li);
            read += loaded;
        }
        EXPECT_GT(read, 0);
    });
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

TEST(MutationTest, importdatei) {
    abgeschirmt("tables to import", [] {
        TestRun run;
        const QByteArray whole = bytesOf(QStringLiteral(KOBEN_SOURCE_DIR "/beispiel/herde.csv")).left(4000);
        const QString path = run.path("herde.csv");
        int read = 0;
        for (int number = 0; number < variants(600); ++number) {
            SCOPED_TRACE(testing::Message() << "variant " << number);
            lebt();
            Mutation mutation(static_cast<unsigned>(number));
            setBytes(path, mutation.of(whole, {";", "\"", "\r", "\n", "\"\"", "\xef\xbb\xbf", "\xc3", "\xff\xfe"}));
            Importdatei file = Importdatei::lesen(path);
            EXPECT_TRUE(file.fehler().isEmpty() || istMeldung(file.fehler())) << file.fehler().toStdString();
            EXPECT_EQ(file.kopf().size(), Importdatei::spalten);
            EXPECT_LE(file.vorschau(100).size(), 4100);
            QStringList fields;
            int lines = 0;
            while (file.naechste(fields)) {
                EXPECT_GE(fields.size(), Importdatei::spalten);
                ASSERT_LT(++lines, 10000);
            }
            read += lines > 0;
        }
        EXPECT_GT(read, 0);
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

/// A damaged script is carried out as far as it goes or refused; it never takes the runner down.
TEST(MutationTest, skript) {
    const QByteArray whole = bytesOf(QStringLiteral(KOBEN_SOURCE_DIR "/tests/skripte/herde-massen.skript"));
    abgeschirmt("scripts", [&] {
        for (int number = 0; number < variants(600); ++number) {
            SCOPED_TRACE(testing::Message() << "variant " << number);
            lebt();
            Mutation mutation(static_cast<unsigned>(number));
            const QByteArray bytes =
                mutation.of(whole, {" = ", "\n", "\\", "#", "(", ")", "(99)", "-1", "\xc3", "\xef\xbb\xbf"});
            skript::Script script(QString::fromUtf8(bytes));
            int commands = 0;
            while (const auto command = script.next()) {
                EXPECT_FALSE(command->word.isEmpty());
                EXPECT_GE(command->line, 1);
                for (int count = 0; count <= 3; ++count) {
                    try {
                        EXPECT_EQ(command->words(count, count - 1).size(), count);
                    } catch (const skript::Failure& failure) {
                        EXPECT_FALSE(failure.reason.isEmpty());
                    }
                }
                try {
                    skript::unescaped(command->assignment().value);
                } catch (const skript::Failure& failure) {
                    EXPECT_FALSE(failure.reason.isEmpty());
                }
                ASSERT_LT(++commands, 10000);
            }
        }
    });
}

/// The same as a run: what a damaged script does to the program is undone or said, but never takes the program down.
TEST(MutationTest, skriptlauf) {
    const QByteArray whole = bytesOf(QStringLiteral(KOBEN_SOURCE_DIR "/tests/skripte/herde-massen.skript"));
    abgeschirmt("script runs", [&] {
        int status[3] = {};
        for (int number = 0; number < variants(10); ++number) {
            SCOPED_TRACE(testing::Message() << "variant " << number);
            lebt();
            Mutation mutation(static_cast<unsigned>(number) + 5000);
            QBuffer out;
            out.open(QIODevice::WriteOnly);
            skript::Transcript transcript(out);
            const QByteArray bytes =
                mutation.of(whole, {"klick ", "text t = ", "(99)", "menue XB_beenden\n", "ende\n"});
            skript::Interpreter interpreter(katalog(), QString::fromUtf8(bytes), transcript);
            const skript::Result result = interpreter.run();
            EXPECT_TRUE(result.status == 0 || !result.reason.isEmpty());
            ASSERT_LT(static_cast<unsigned>(result.status), 3U);
            ++status[result.status];
        }
        EXPECT_GT(status[0], 0);
        EXPECT_GT(status[1], 0);
    });
}

}  // namespace
}  // namespace koben::robust
