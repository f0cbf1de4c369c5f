// Statistics: all measures a sow, a year, a litter, a boar, the page of the farm, the overview of farrowings.
#include "bench/Floor.h"
#include "bench/Program.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

/// All sows of the herd are selected, for the runs over the selected ones.
const char* const selectSows = "update Sauen set Selektiert = 'X' where Art = 'Sau' and Abgangsdatum is null";

/// All measures of one run of the screen, over all animals ever, until the list screen or the viewer shows them.
qint64 compute(Program& p, Stopwatch& watch, int run) {
    qint64 rows = 0;
    if (run >= 5) p.koben().connect().execute(QString::fromUtf8(selectSows));
    p.open("PB_Statistiken", [&](Form& form) {
        if (run == 3 || run == 4) control<Tabs>(form, "sstab").choose(1);
        const int year = Datum_aus_Text(p.koben().Heute).year();
        control<TextBox>(form, "t", 0).setText(QString::number(year - 19));
        control<TextBox>(form, "t", 1).setText(QString::number(year));
        control<TextBox>(form, "t", 2).setText("1");
        control<TextBox>(form, "t", 3).setText("20");
        control<TextBox>(form, "tdat", 0).setText("01.01.2000");
        control<TextBox>(form, "tdat", 1).setText(p.koben().Heute);
        for (const char* list : {"li1", "li2"})
            for (int i = 0; i < control<ListBox>(form, list).items().size(); ++i)
                control<ListBox>(form, list).setMarked(i, true);
        watch.measure([&] { control<Button>(form, "ok", run).click(); });
        rows = control<Grid>(form, "gridli").rowCount();
    });
    return rows;
}

/// Days back to the animal's latest earlier booking of another table, in an index that covers both.
std::string daysBack(const char* outer, const char* inner, const std::string& key) {
    const std::string o = outer, i = inner;
    return "SELECT " + key +
           ", count(*), sum(julianday(d) - julianday(v)), count(v) FROM (SELECT Kennung k, Datum d, "
           "(SELECT max(Datum) FROM " +
           i + " i WHERE i.Kennung = o.Kennung AND i.Datum < o.Datum) v FROM " + o +
           " o WHERE Kennung IN (SELECT ID FROM Sauen WHERE Art = 'Sau')) GROUP BY 1";
}

/// Every quantity grouped by `key` of k (the animal) and d (the day).
void sums(SqliteFile& file, const std::string& key) {
    const auto read = [&](const char* table, const char* quantities) {
        file.read("SELECT " + key + ", count(*), min(d), max(d), " + quantities +
                  " FROM (SELECT Kennung k, Datum d, * FROM " + table +
                  " WHERE Kennung IN (SELECT ID FROM Sauen WHERE Art = 'Sau')) GROUP BY 1");
    };
    read("Belegung", "0");
    read("Ferkelung", "sum(Ferkel_Gesamt), sum(Ferkel_Lebendig), sum(Ferkel_Tot)");
    read("Absetzung", "sum(Anzahl_Ferkel), sum(Anzahl_Ferkel * Stück_Gewicht_kg)");
    read("Verluste", "sum(Anzahl_Ferkel)");
    read("Trächtigkeit", "sum(Trächtig = 'J'), sum(Trächtig = 'N')");
    read("Verschiebung", "sum(max(Anzahl_Ferkel, 0)), sum(max(-Anzahl_Ferkel, 0))");
    file.read(daysBack("Ferkelung", "Belegung", key));
    file.read(daysBack("Absetzung", "Ferkelung", key));
    file.read(daysBack("Belegung", "Absetzung", key));
    file.read(daysBack("Absetzung", "Belegung", key));
}

qint64 animals(SqliteFile& file, const char* condition) {
    return file.read(
        std::string("SELECT ID, Nummer, Stallnr, Gruppe, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt "
                    "FROM Sauen WHERE ") +
        condition + " ORDER BY Nummer");
}

const char* const byYear = "substr(d, 1, 4)";
const char* const success =
    "(SELECT Trächtig FROM Trächtigkeit t WHERE t.Kennung = b.Kennung AND t.Datum >= b.Datum ORDER BY t.ID LIMIT 1)";

}  // namespace

std::vector<Row> Rows_Zahlen(const Sample&) {
    std::vector<Row> rows;
    const auto add = [&](const char* name, double limit, int run, const std::function<qint64(SqliteFile&)>& floor) {
        rows.push_back({QString::fromUtf8(name), limit,
                        [run](Program& p, Stopwatch& watch) { return compute(p, watch, run); },
                        [floor, run](SqliteFile& file, Stopwatch& watch) {
                            qint64 found = 0;
                            if (run >= 5) file.execute(selectSows);
                            watch.measure([&] { found = floor(file); });
                            return found;
                        }});
    };
    add("statistics by sow, all measures", 2 * seldom, 0, [](SqliteFile& file) {
        sums(file, "k");
        return animals(file, "Art = 'Sau'") + 2;
    });
    add("statistics by year, 20 years", 2 * seldom, 1, [](SqliteFile& file) {
        sums(file, byYear);
        return 22;
    });
    add("statistics by litter", seldom, 2, [](SqliteFile& file) {
        file.read(
            "SELECT n, sum(g), sum(l), sum(t) FROM (SELECT Ferkel_Gesamt g, Ferkel_Lebendig l, Ferkel_Tot t, "
            "row_number() OVER (PARTITION BY Kennung ORDER BY Datum, ID) n FROM Ferkelung WHERE Kennung IN (SELECT "
            "ID FROM Sauen WHERE Art = 'Sau')) WHERE n <= 20 GROUP BY n");
        return 21;
    });
    add("statistics by boar", seldom, 3, [](SqliteFile& file) {
        file.read(
            std::string("SELECT Ebernr, count(*), min(Datum), max(Datum), sum(e = 'J'), sum(e <> 'J') FROM (SELECT "
                        "Ebernr, Datum, ") +
            success + " e FROM Belegung b) GROUP BY Ebernr");
        return animals(file, "Art = 'Eber'") + 2;
    });
    add("statistics of boars by year, 20 years", seldom, 4, [](SqliteFile& file) {
        file.read(
            std::string("SELECT substr(Datum, 1, 4), count(*), sum(e = 'J'), sum(e <> 'J') FROM (SELECT Datum, ") +
            success + " e FROM Belegung b WHERE Ebernr <> '') GROUP BY 1");
        return 22;
    });
    add("page of the farm, marked sows", seldom, 5, [](SqliteFile& file) {
        sums(file, "k");
        return animals(file, "Art = 'Sau' AND Selektiert = 'X'") + 2;
    });
    add("overview of farrowings, marked sows", seldom, 6, [](SqliteFile& file) {
        const std::string sows = " JOIN Sauen s ON s.ID = Kennung WHERE Art = 'Sau' AND Selektiert = 'X'";
        file.read("SELECT Kennung, Datum, Anzahl_Ferkel FROM Verluste" + sows);
        file.read("SELECT Kennung, Datum, Anzahl_Ferkel FROM Verschiebung" + sows);
        file.read("SELECT Nummer, LNr, Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot FROM Ferkelung" + sows +
                  " ORDER BY Nummer, Datum");
        // A row a litter, a sum and a line under the litters of a sow, means and sums of all.
        return file
            .numbers("SELECT sum(n) + sum(n > 1) + count(*) + 2 FROM (SELECT count(*) n FROM Ferkelung" + sows +
                     " AND LNr BETWEEN 1 AND 20 GROUP BY Kennung)")
            .front();
    });
    return rows;
}

}  // namespace koben
