// The plots over ten years: each chosen in its window until table and drawing stand.
#include "bench/Floor.h"
#include "bench/Program.h"
#include "core/PZ_Koben_Subs.h"
#include "figures/PA_Grafiken.h"

namespace koben {
namespace {

constexpr double plotLimit = 300;

/// Table and drawing of a plot whose data may have been kept from the one before, as in the window.
qint64 choose(Program& p, Stopwatch& watch, int plot) {
    qint64 rows = 0;
    p.open("PA_Grafiken", [&](Form& form) {
        auto& from = control<TextBox>(form, "tdat", 0);
        from.enter();
        from.type(Datum_als_Anzeige(Datum_aus_Text(p.koben().Heute).addYears(-10)));
        from.leave();
        watch.measure([&] {
            control<ListBox>(form, "li").choose(plot);
            look(control<Grid>(form, "gridli"));
        });
        rows = control<DrawingBox>(form, "bild").sketch().items.empty() ? 0 : 1;
    });
    return rows;
}

const char* const week = "CAST(julianday(Datum) / 7 AS INTEGER)";
const char* const farrowed =
    "EXISTS (SELECT 1 FROM Ferkelung f WHERE f.Kennung = b.Kennung AND f.Datum BETWEEN date(b.Datum, '+105 days') AND "
    "date(b.Datum, '+125 days'))";

/// The best statements for the same cells, in the order of the plots.
std::vector<std::vector<std::string>> statements(const std::string& from) {
    const std::string since = " WHERE Datum >= " + from, w = week, led = farrowed;
    const auto byWeek = [&](const char* table) {
        return "SELECT " + w + ", count(*) FROM " + std::string(table) + since + " GROUP BY 1";
    };
    const auto byDay = [&](const char* table) {
        return "SELECT strftime('%w', Datum), count(*) FROM " + std::string(table) + since + " GROUP BY 1";
    };
    return {
        {byWeek("Belegung"), byWeek("Ferkelung")},
        {"SELECT n, count(*) FROM (SELECT Kennung, count(*) n FROM Ferkelung WHERE Kennung IN (SELECT ID FROM Sauen "
         "WHERE Art = 'Sau' AND Abgangsdatum IS NULL) GROUP BY 1) GROUP BY 1"},
        {"SELECT n, avg(l) FROM (SELECT row_number() OVER (PARTITION BY Kennung ORDER BY Datum) n, Ferkel_Lebendig l "
         "FROM Ferkelung) GROUP BY 1",
         "SELECT n, avg(l) FROM (SELECT row_number() OVER (PARTITION BY Kennung ORDER BY Datum) n, Anzahl_Ferkel l "
         "FROM Absetzung) GROUP BY 1"},
        {"SELECT substr(Datum, 1, 7), sum(Anzahl_Ferkel) FROM Absetzung" + since + " GROUP BY 1",
         "SELECT Kennung, min(Datum) FROM Belegung GROUP BY 1"},
        {"SELECT " + w + ", count(*), sum(" + led + ") FROM Belegung b" + since + " GROUP BY 1"},
        {"SELECT d, count(*) FROM (SELECT julianday(Datum) - julianday(lag(Datum) OVER (PARTITION BY Kennung ORDER BY "
         "Datum)) d FROM Belegung) WHERE d BETWEEN 4 AND 46 GROUP BY 1"},
        {"SELECT sum(julianday(Datum) - julianday((SELECT max(Datum) FROM Absetzung a WHERE a.Kennung = b.Kennung AND "
         "a.Datum < b.Datum))) FROM Belegung b" +
             since,
         "SELECT sum(julianday(Datum) - julianday((SELECT max(Datum) FROM Belegung b WHERE b.Kennung = f.Kennung AND "
         "b.Datum < f.Datum))) FROM Ferkelung f" +
             since},
        {"SELECT Grund, sum(Anzahl_Ferkel) FROM Verluste" + since + " GROUP BY 1",
         "SELECT julianday(Datum) - julianday((SELECT max(Datum) FROM Ferkelung f WHERE f.Kennung = v.Kennung AND "
         "f.Datum <= v.Datum)), sum(Anzahl_Ferkel) FROM Verluste v" +
             since + " GROUP BY 1"},
        {"SELECT Art, substr(Zugangsdatum, 1, 7), count(*) FROM Sauen GROUP BY 1, 2",
         "SELECT Art, substr(Abgangsdatum, 1, 7), count(*) FROM Sauen GROUP BY 1, 2"},
        {"SELECT Ebernr, count(*), sum(" + led + ") FROM Belegung b" + since + " AND Ebernr <> '' GROUP BY 1"},
        {"SELECT Ferkel_Gesamt, count(*) FROM Ferkelung" + since + " GROUP BY 1",
         "SELECT Ferkel_Lebendig, count(*) FROM Ferkelung" + since + " GROUP BY 1"},
        {byDay("Belegung"), byDay("Ferkelung")}};
}

}  // namespace

std::vector<Row> Rows_Grafiken(const Sample& sample) {
    std::vector<Row> rows;
    const auto floors = statements(sqlfloor::iso(sample.today.addYears(-10)));
    const auto plots = Grafiken();
    for (size_t i = 0; i < plots.size(); ++i)
        rows.push_back({QStringLiteral("plot: ") + QString::fromLatin1(plots[i].id), plotLimit,
                        [i](Program& p, Stopwatch& watch) { return choose(p, watch, static_cast<int>(i)); },
                        [sql = floors[i]](SqliteFile& file, Stopwatch& watch) {
                            watch.measure([&] {
                                for (const std::string& statement : sql) file.read(statement);
                            });
                            return qint64{1};
                        }});
    return rows;
}

}  // namespace koben
