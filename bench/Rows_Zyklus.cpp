// Start, status, and what the booking frame leaves to do when it closes.
#include "bench/Floor.h"
#include "bench/Program.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs_Datenbank.h"

namespace koben {
namespace {

Row startProgram() {
    return {QStringLiteral("start to shown list"), seldom,
            [](Program& p, Stopwatch& watch) {
                look(p.list());
                watch.add(p.sinceStart());
                return p.list().rowCount();
            },
            [](SqliteFile& file, Stopwatch& watch) {  // its opening costs the floor nothing to speak of
                qint64 rows = 0;
                watch.measure([&] { rows = file.read(sqlfloor::stockList()); });
                return rows;
            },
            Start::EachTime};
}

/// The status of as many animals as `where` names is wiped out and set again.
Row setStatus(const char* name, double limit, const QString& where) {
    const QString wipe = QStringLiteral("update Sauen set Status = '' where ") + where;
    return {QString::fromUtf8(name), limit,
            [wipe](Program& p, Stopwatch& watch) {
                Database(p.koben().Hauptdatenbank).execute(wipe);
                watch.measure([&] { statussetzen(p.koben().Hauptdatenbank); });
                return 1;
            },
            [wipe, where](SqliteFile& file, Stopwatch& watch) {
                file.execute(wipe.toStdString());
                watch.measure([&] { file.execute(sqlfloor::status(where.toStdString())); });
                return 1;
            }};
}

/// Shuts the frame that was opened for the sow, after so many services, until the main list stands anew.
Row closeFrame(const char* name, const Sample& sample, int services) {
    return {QString::fromUtf8(name), daily,
            [sow = sample.sau, services](Program& p, Stopwatch& watch) {
                p.choose(sow);
                p.koben().Buchungsart_Nr = 0;
                p.when("PE_Bewegungsdaten_Belegung", [&](Form& entry) { control<Button>(entry, "ok", 0).click(); });
                p.open("PE_Bewegungsdaten", [&](Form& frame) {
                    for (int i = 0; i < services; ++i) control<Button>(frame, "neu").click();
                    watch.start();
                    control<Button>(frame, "cmdschließen").click();
                });
                look(p.list());
                watch.stop();
                return p.list().rowCount();
            },
            [sample, services](SqliteFile& file, Stopwatch& watch) {
                const std::string sow = std::to_string(sample.sau);
                for (int i = 0; i < services; ++i)
                    file.execute("INSERT INTO Belegung (Datum, Ebernr, Deckanzahl, Kennung) VALUES (" +
                                 sqlfloor::iso(sample.today) + ", '', 1, " + sow + ")");
                qint64 rows = 0;
                watch.measure([&] {
                    if (services > 0) file.commit({sqlfloor::derive(sample.sau), sqlfloor::status("ID = " + sow)});
                    rows = file.read(sqlfloor::stockList());
                });
                return rows;
            }};
}

/// Shuts the frame after the days of the cycle were set anew, so that every sow gets other next days.
Row deriveAnew(const Sample& sample) {
    return {QStringLiteral("closing the frame, new settings"), seldom,
            [sow = sample.sau](Program& p, Stopwatch& watch) {
                p.choose(sow);
                p.koben().Buchungsart_Nr = 0;
                qint16& days = p.koben().Konfig_Zahl[Zahl::TageFerkelungBelegung];
                days = days == 36 ? 37 : 36;
                p.open("PE_Bewegungsdaten", [&](Form& frame) {
                    watch.start();
                    control<Button>(frame, "cmdschließen").click();
                });
                look(p.list());
                watch.stop();
                return p.list().rowCount();
            },
            [days = 36](SqliteFile& file, Stopwatch& watch) mutable {
                days = days == 36 ? 37 : 36;
                qint64 rows = 0;
                watch.measure([&] {
                    file.commit({sqlfloor::deriveAll(days)});
                    rows = file.read(sqlfloor::stockList());
                });
                return rows;
            }};
}

}  // namespace

std::vector<Row> Rows_Zyklus(const Sample& sample) {
    return {startProgram(),
            setStatus("status pass, nothing to do", daily, QStringLiteral("ID = 0")),
            setStatus("status pass, one sow", daily, QStringLiteral("ID = %1").arg(sample.sau)),
            setStatus("status pass, all sows", seldom, QStringLiteral("Art = 'Sau' and Abgangsdatum IS NULL")),
            closeFrame("closing the frame, nothing booked", sample, 0),
            closeFrame("closing the frame, one service", sample, 1),
            deriveAnew(sample)};
}

}  // namespace koben
