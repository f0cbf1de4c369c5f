// Today's page: work, states, withdrawal periods, six figures over thirteen rolling years.
#include "bench/Floor.h"
#include "bench/Program.h"
#include "forms/DrawingBox.h"

namespace koben {
namespace {

constexpr double morning = 150;  // ms

/// Due and overdue for each of the four tasks of a new database.
std::string work(QDate today) {
    const auto arm = [&](const char* name, const char* reference, int from, int to, const char* done) {
        const std::string b = reference, lastDue = sqlfloor::iso(today.addDays(-to));
        return std::string("SELECT '") + name + "', sum(" + b + " >= " + lastDue + "), sum(" + b + " < " + lastDue +
               ") FROM Sauen WHERE Abgangsdatum IS NULL AND " + b + " <= " + sqlfloor::iso(today.addDays(-from)) +
               " AND NOT ifnull(" + done + ", '') > " + b;
    };
    return arm("Belegung", "L_Absetzung", 4, 8, "L_Belegung") + " UNION ALL " +
           arm("Ferkelung", "L_Belegung", 113, 119, "L_Ferkelung") + " UNION ALL " +
           arm("Absetzung", "L_Ferkelung", 28, 32, "L_Absetzung") + " UNION ALL " +
           arm("Trächtigkeitskontr.", "L_Belegung", 20, 24, "L_Trächtigkeit");
}

/// The sums of which the thirteen rolling years are made, by month; the spans of pregnancy and suckling as they are.
std::vector<std::string> figures(QDate first) {
    const std::string since = sqlfloor::iso(first);
    const std::string litters =
        "(SELECT Kennung k, Datum f, sum(Ferkel_Gesamt) g, sum(Ferkel_Lebendig) l, lead(Datum) OVER (PARTITION BY "
        "Kennung "
        "ORDER BY Datum) n FROM Ferkelung WHERE Datum >= date(" +
        since + ", '-90 days') GROUP BY Kennung, Datum)";
    const std::string weaned =
        "(SELECT k, f, l, (SELECT max(Datum) FROM Absetzung a WHERE a.Kennung = k AND a.Datum > f "
        "AND a.Datum <= ifnull(n, '9999')) w, (SELECT sum(Anzahl_Ferkel) FROM Absetzung a WHERE "
        "a.Kennung = k AND a.Datum > f AND a.Datum <= ifnull(n, '9999')) z FROM " +
        litters + ")";
    const std::string groups =
        "(SELECT Kennung k, Datum d FROM (SELECT Kennung, Datum, lag(Datum) OVER (PARTITION BY Kennung ORDER BY Datum) "
        "v "
        "FROM Belegung WHERE Datum >= date(" +
        since + ", '-125 days')) WHERE v IS NULL OR julianday(Datum) - julianday(v) > 3)";
    return {
        "SELECT substr(f, 1, 7), count(*), sum(l) FROM " + litters + " WHERE f >= " + since + " GROUP BY 1",
        "SELECT substr(Datum, 1, 7), sum(Anzahl_Ferkel) FROM Absetzung WHERE Datum >= " + since + " GROUP BY 1",
        "SELECT substr(w, 1, 7), sum(l), sum(z) FROM " + weaned + " WHERE w >= " + since + " GROUP BY 1",
        "SELECT substr(d, 1, 7), count(*), count((SELECT 1 FROM Ferkelung f WHERE f.Kennung = k AND f.Datum BETWEEN "
        "date(d, '+105 days') AND date(d, '+125 days'))) FROM " +
            groups + " WHERE d >= " + since + " GROUP BY 1",
        "SELECT k, b, Abgangsdatum FROM (SELECT Kennung k, min(Datum) b FROM Belegung GROUP BY 1) JOIN Sauen ON ID = "
        "k WHERE Art = 'Sau' AND (Abgangsdatum IS NULL OR Abgangsdatum >= " +
            since + ")",
        "SELECT k, f, w, (SELECT max(Datum) FROM Belegung b WHERE b.Kennung = k AND b.Datum BETWEEN date(f, '-125 "
        "days') AND date(f, '-105 days')) FROM " +
            weaned};
}

/// Opened from the menu until lists and tiles can be painted. `fresh`: a booking has changed since it was read last.
Row page(const Sample& sample, bool fresh) {
    return {
        QStringLiteral("today's page, %1").arg(fresh ? "after a booking" : "again"), morning,
        [fresh](Program& p, Stopwatch& watch) {
            if (fresh)
                Database(p.koben().Hauptdatenbank)
                    .execute("update Belegung set Deckanzahl = Deckanzahl where ID = (select max(ID) from Belegung)");
            qint64 rows = 0;
            watch.start();
            p.open("PA_Tagesblick", [&](Form& form) {
                for (const char* list : {"liarbeit", "listatus", "lisperren", "likacheln"}) {
                    look(control<Grid>(form, list));
                    rows += control<Grid>(form, list).rowCount();
                }
                control<DrawingBox>(form, "kacheln").fitted({200, 70});
                watch.stop();
            });
            return rows;
        },
        [today = sample.today](SqliteFile& file, Stopwatch& watch) {
            qint64 rows = 0;
            watch.measure([&] {
                rows =
                    file.read(work(today)) +
                    file.read(
                        "SELECT Status, count(*) FROM Sauen INDEXED BY boden_gruppe WHERE Abgangsdatum IS "
                        "NULL AND Art = 'Sau' GROUP BY 1") +
                    file.read(
                        "SELECT Nummer, d FROM (SELECT Kennung k, max(Wartezeit_Datum) d FROM Behandlung "
                        "INDEXED BY boden_sperre WHERE Wartezeit_Datum >= " +
                        sqlfloor::iso(today) + " GROUP BY 1) JOIN Sauen ON ID = k WHERE d <= " +
                        sqlfloor::iso(today.addDays(7 - today.dayOfWeek())) + " AND Abgangsdatum IS NULL ORDER BY d");
                for (const std::string& sql : figures(today.addYears(-2).addMonths(-1))) file.read(sql);
            });
            return rows;
        }};
}

}  // namespace

std::vector<Row> Rows_Tagesblick(const Sample& sample) { return {page(sample, true), page(sample, false)}; }

}  // namespace koben
