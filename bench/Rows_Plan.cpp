// Plans and selection: the work plan in both forms, the waiting times, the selection by rule.
#include "bench/Floor.h"
#include "bench/Program.h"
#include "core/Konfig.h"

namespace koben {
namespace {

/// One arm for each of the four tasks of a new database: the window of a task touches the period where its reference
/// date lies between two days that are known beforehand.
std::string Arbeitsplan(QDate today, int days, const char* order) {
    const auto arm = [&](const char* name, const char* reference, int from, int to, const char* done) {
        const std::string b = reference;
        return "SELECT date(" + b + ", '+" + std::to_string(from) + " days') vom, date(" + b + ", '+" +
               std::to_string(to) + " days') bis, '" + name +
               "', Nummer, Art, Stallnr, Gruppe FROM Sauen WHERE Abgangsdatum IS NULL AND " + b + " BETWEEN " +
               sqlfloor::iso(today.addDays(-to)) + " AND " + sqlfloor::iso(today.addDays(days - 1 - from)) +
               " AND NOT ifnull(" + done + ", '') > " + b;
    };
    return arm("Belegung", "L_Absetzung", 4, 8, "L_Belegung") + " UNION ALL " +
           arm("Ferkelung", "L_Belegung", 113, 119, "L_Ferkelung") + " UNION ALL " +
           arm("Absetzung", "L_Ferkelung", 28, 32, "L_Absetzung") + " UNION ALL " +
           arm("Trächtigkeitskontr.", "L_Belegung", 20, 24, "L_Trächtigkeit") + " ORDER BY " + order;
}

/// Until the list screen shows it; the program also writes the list's file and the one of the pocket device.
Row plan(const Sample& sample, bool chart, int days) {
    return {
        QStringLiteral("work plan, %1, %2").arg(chart ? "chart" : "list", days == 1 ? "one day" : "four weeks"), daily,
        [chart, days](Program& p, Stopwatch& watch) {
            constexpr int headRows = 5;  // of the chart
            p.koben().Konfig_Zahl[Zahl::PlanTage] = static_cast<qint16>(days - 1);
            qint64 rows = 0;
            p.open("PB_Arbeitsplan", [&](Form& plan) {
                watch.measure([&] { control<Button>(plan, "ok", chart ? 1 : 0).click(); });
                rows = std::max(0, control<Grid>(plan, "gridli").rowCount() - (chart ? headRows : 0));
            });
            return rows;
        },
        [today = sample.today, chart, days](SqliteFile& file, Stopwatch& watch) {
            qint64 rows = 0;
            watch.measure([&] { rows = file.read(Arbeitsplan(today, days, chart ? "Nummer" : "vom, bis, Nummer")); });
            return rows;
        }};
}

Row Wartezeiten(const Sample& sample) {
    return {QStringLiteral("waiting times"), daily,
            [](Program& p, Stopwatch& watch) {
                qint64 rows = 0;
                watch.start();
                p.open("PB_Wartezeiten", [&](Form& form) {
                    const Grid& grid = control<Grid>(form, "gridli");
                    look(grid);
                    watch.stop();
                    rows = grid.rowCount();
                });
                return rows;
            },
            [today = sample.today](SqliteFile& file, Stopwatch& watch) {
                qint64 rows = 0;
                watch.measure([&] {
                    rows = file.read(
                        "SELECT Nummer, Art, Gruppe, Stallnr, d FROM (SELECT Kennung k, max(Wartezeit_Datum) d FROM "
                        "Behandlung INDEXED BY boden_sperre WHERE Wartezeit_Datum >= " +
                        sqlfloor::iso(today) + " GROUP BY 1) JOIN Sauen ON ID = k ORDER BY Nummer");
                });
                return rows;
            }};
}

/// "Schweine selektieren der Art Mast" with none selected before, until the main list stands anew.
Row select(bool clearOld) {
    const auto before = QStringLiteral("update Sauen set Selektiert = '' where Selektiert = 'X'");
    return {QStringLiteral("selection by rule%1").arg(clearOld ? ", old one cleared" : ""), seldom,
            [=](Program& p, Stopwatch& watch) {
                Database(p.koben().Hauptdatenbank).execute(before);
                p.open("PB_Selektieren", [&](Form& form) {
                    control<CheckBox>(form, "kon").setChecked(clearOld);
                    control<ComboBox>(form, "kom", 0).setText(QStringLiteral("Mast"));
                    watch.measure([&] {
                        control<Button>(form, "entselekt", 2).click();
                        look(p.list());
                    });
                });
                return p.koben()
                    .Hauptdatenbank.table(QStringLiteral("select count(*) as n from Sauen where Selektiert = 'X'"))
                    .integer(0, 0);
            },
            [=](SqliteFile& file, Stopwatch& watch) {
                file.execute(before.toStdString());
                watch.measure([&] {
                    file.execute("BEGIN IMMEDIATE");
                    if (clearOld) file.execute(before.toStdString());
                    file.execute("UPDATE Sauen SET Selektiert = 'X' WHERE Abgangsdatum IS NULL AND Art = 'Mast'");
                    file.execute("COMMIT");
                    file.read(sqlfloor::stockList());
                });
                return file.numbers("SELECT count(*) FROM Sauen WHERE Selektiert = 'X'").front();
            }};
}

/// The screen with its lists of all groups, breeds and boxes.
Row openSelection() {
    return {QStringLiteral("selection screen opens"), daily,
            [](Program& p, Stopwatch& watch) {
                watch.start();
                p.open("PB_Selektieren", [&](Form&) { watch.stop(); });
                return 1;
            },
            [](SqliteFile& file, Stopwatch& watch) {
                watch.measure([&] {
                    for (const char* field : {"Gruppe", "Rasse", "Stallnr"})
                        file.read(sqlfloor::distinctValues("Sauen", field));
                });
                return 1;
            }};
}

}  // namespace

std::vector<Row> Rows_Plan(const Sample& sample) {
    std::vector<Row> rows;
    for (const bool chart : {false, true})
        for (const int days : {1, 28}) rows.push_back(plan(sample, chart, days));
    rows.push_back(Wartezeiten(sample));
    rows.push_back(openSelection());
    rows.push_back(select(false));
    rows.push_back(select(true));
    return rows;
}

}  // namespace koben
