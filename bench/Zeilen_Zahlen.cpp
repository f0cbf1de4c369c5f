// Statistics: all measures a sow, a year, a litter, a boar, the page of the farm, the overview of farrowings.
#include "bench/Boden.h"
#include "bench/Programm.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

/// All measures of one run of the screen, over all animals ever, until the list screen or the viewer shows them.
qint64 rechnen(Programm& p, Uhr& uhr, int run) {
    qint64 rows = 0;
    p.oeffnen("PB_Statistiken", [&](Form& form) {
        if (run == 3 || run == 4) steuer<Tabs>(form, "sstab").choose(1);
        const int year = Datum_aus_Text(p.koben().Heute).year();
        steuer<TextBox>(form, "t", 0).setText(QString::number(year - 19));
        steuer<TextBox>(form, "t", 1).setText(QString::number(year));
        steuer<TextBox>(form, "t", 2).setText("1");
        steuer<TextBox>(form, "t", 3).setText("20");
        steuer<TextBox>(form, "tdat", 0).setText("01.01.2000");
        steuer<TextBox>(form, "tdat", 1).setText(p.koben().Heute);
        for (const char* list : {"li1", "li2"})
            for (int i = 0; i < steuer<ListBox>(form, list).items().size(); ++i)
                steuer<ListBox>(form, list).setMarked(i, true);
        uhr.messen([&] { steuer<Button>(form, "ok", run).click(); });
        rows = steuer<Grid>(form, "gridli").rowCount();
    });
    return rows;
}

/// Days back to the animal's latest earlier booking of another table, in an index that covers both.
std::string abstand(const char* outer, const char* inner, const std::string& key) {
    const std::string o = outer, i = inner;
    return "SELECT " + key +
           ", count(*), sum(julianday(d) - julianday(v)), count(v) FROM (SELECT Kennung k, Datum d, "
           "(SELECT max(Datum) FROM " +
           i + " i WHERE i.Kennung = o.Kennung AND i.Datum < o.Datum) v FROM " + o +
           " o WHERE Kennung IN (SELECT ID FROM Sauen WHERE Art = 'Sau')) GROUP BY 1";
}

/// Every quantity grouped by `key` of k (the animal) and d (the day).
void summen(Datei& datei, const std::string& key) {
    const auto lesen = [&](const char* table, const char* sums) {
        datei.lesen("SELECT " + key + ", count(*), min(d), max(d), " + sums +
                    " FROM (SELECT Kennung k, Datum d, * FROM " + table +
                    " WHERE Kennung IN (SELECT ID FROM Sauen WHERE Art = 'Sau')) GROUP BY 1");
    };
    lesen("Belegung", "0");
    lesen("Ferkelung", "sum(Ferkel_Gesamt), sum(Ferkel_Lebendig), sum(Ferkel_Tot)");
    lesen("Absetzung", "sum(Anzahl_Ferkel), sum(Anzahl_Ferkel * Stück_Gewicht_kg)");
    lesen("Verluste", "sum(Anzahl_Ferkel)");
    lesen("Trächtigkeit", "sum(Trächtig = 'J'), sum(Trächtig = 'N')");
    lesen("Verschiebung", "sum(max(Anzahl_Ferkel, 0)), sum(max(-Anzahl_Ferkel, 0))");
    datei.lesen(abstand("Ferkelung", "Belegung", key));
    datei.lesen(abstand("Absetzung", "Ferkelung", key));
    datei.lesen(abstand("Belegung", "Absetzung", key));
    datei.lesen(abstand("Absetzung", "Belegung", key));
}

qint64 sauen(Datei& datei, const char* condition) {
    return datei.lesen(
        std::string("SELECT ID, Nummer, Stallnr, Gruppe, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt "
                    "FROM Sauen WHERE ") +
        condition + " ORDER BY Nummer");
}

const char* const jeJahr = "substr(d, 1, 4)";
const char* const erfolg =
    "(SELECT Trächtig FROM Trächtigkeit t WHERE t.Kennung = b.Kennung AND t.Datum >= b.Datum ORDER BY t.ID LIMIT 1)";

}  // namespace

std::vector<Zeile> Zeilen_Zahlen(const Probe&) {
    std::vector<Zeile> rows;
    const auto add = [&](const char* name, double limit, int run, const std::function<qint64(Datei&)>& floor) {
        rows.push_back({QString::fromUtf8(name), limit, [run](Programm& p, Uhr& uhr) { return rechnen(p, uhr, run); },
                        [floor](Datei& datei, Uhr& uhr) {
                            qint64 found = 0;
                            uhr.messen([&] { found = floor(datei); });
                            return found;
                        }});
    };
    add("statistics by sow, all measures", 2 * selten, 0, [](Datei& datei) {
        summen(datei, "k");
        return sauen(datei, "Art = 'Sau'") + 2;
    });
    add("statistics by year, 20 years", 2 * selten, 1, [](Datei& datei) {
        summen(datei, jeJahr);
        return 22;
    });
    add("statistics by litter", selten, 2, [](Datei& datei) {
        datei.lesen(
            "SELECT n, sum(g), sum(l), sum(t) FROM (SELECT Ferkel_Gesamt g, Ferkel_Lebendig l, Ferkel_Tot t, "
            "row_number() OVER (PARTITION BY Kennung ORDER BY Datum, ID) n FROM Ferkelung WHERE Kennung IN (SELECT "
            "ID FROM Sauen WHERE Art = 'Sau')) WHERE n <= 20 GROUP BY n");
        return 21;
    });
    add("statistics by boar", selten, 3, [](Datei& datei) {
        datei.lesen(
            std::string("SELECT Ebernr, count(*), min(Datum), max(Datum), sum(e = 'J'), sum(e <> 'J') FROM (SELECT "
                        "Ebernr, Datum, ") +
            erfolg + " e FROM Belegung b) GROUP BY Ebernr");
        return sauen(datei, "Art = 'Eber'") + 2;
    });
    add("statistics of boars by year, 20 years", selten, 4, [](Datei& datei) {
        datei.lesen(
            std::string("SELECT substr(Datum, 1, 4), count(*), sum(e = 'J'), sum(e <> 'J') FROM (SELECT Datum, ") +
            erfolg + " e FROM Belegung b WHERE Ebernr <> '') GROUP BY 1");
        return 22;
    });
    add("page of the farm, marked sows", selten, 5, [](Datei& datei) {
        summen(datei, "k");
        return sauen(datei, "Art = 'Sau' AND Selektiert = 'X'");
    });
    add("overview of farrowings, marked sows", selten, 6, [](Datei& datei) {
        return datei.lesen(
            "SELECT Nummer, LNr, Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot FROM Sauen s JOIN "
            "Ferkelung f ON Kennung = s.ID WHERE Art = 'Sau' AND Selektiert = 'X' ORDER BY Nummer, Datum");
    });
    return rows;
}

}  // namespace koben
