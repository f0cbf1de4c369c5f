// Piglets of the whole farm: the two lists, and a sale by which piglets leave the herd.
#include "bench/Floor.h"
#include "bench/Program.h"

namespace koben {
namespace {

Row openList(const char* what, const char* form, const char* table) {
    return {QStringLiteral("all %1, list opens").arg(QString::fromUtf8(what)), seldom,
            [form](Program& p, Stopwatch& watch) {
                qint64 rows = 0;
                watch.start();
                p.open(form, [&](Form& list) {
                    const Grid& grid = control<Grid>(list, "li");
                    look(grid);
                    watch.stop();
                    rows = grid.rowCount();
                });
                return rows;
            },
            [table](SqliteFile& file, Stopwatch& watch) {
                qint64 rows = 0;
                watch.measure([&] { rows = file.read(std::string("SELECT * FROM ") + table + " ORDER BY Datum"); });
                return rows;
            }};
}

const char* const Ferkelwahl =
    "SELECT Nummer, Stallnr, Tätowierung, Geburtsdatum, ID FROM Sauen WHERE Abgangsdatum IS NULL AND Art = 'Ferkel' "
    "ORDER BY Geburtsdatum, Stallnr, Nummer";

/// The entry screen in front of the list of sales: how it opens, or how it sells.
Row sell(const char* name, const Sample& sample, bool sale) {
    return {QString::fromUtf8(name), daily,
            [sale](Program& p, Stopwatch& watch) {
                p.when("PB_Verkauf_Ferkel_Eingabe", [&](Form& entry) {
                    if (!sale) return watch.stop();
                    control<TextBox>(entry, "tz", 1).edited(QString::number(Sold));
                    control<Option>(entry, "optiverkauf", 2).click();
                    control<TextBox>(entry, "tz", 2).setText(QStringLiteral("55,00"));
                    watch.start();
                    control<Button>(entry, "ok", 0).click();
                });
                qint64 rows = 0;
                p.open("PB_Verkauf_Ferkel", [&](Form& list) {
                    if (!sale) watch.start();
                    control<Button>(list, "neu").click();
                    const Grid& grid = control<Grid>(list, "li");
                    look(grid);
                    if (sale) watch.stop();
                    rows = grid.rowCount();
                });
                return rows;
            },
            [today = sample.today, sale](SqliteFile& file, Stopwatch& watch) {
                const std::string sales = "SELECT * FROM Ferkelverkauf ORDER BY Datum", day = sqlfloor::iso(today);
                if (!sale) {
                    watch.measure([&] {
                        file.read(Ferkelwahl);
                        file.read(sqlfloor::distinctValues("Ferkelverkauf", "Kommentar"));
                        file.read("SELECT * FROM Stammdaten_Kunde");
                        file.read("SELECT * FROM Stammdaten_Stallnummer ORDER BY Inhalt");
                        file.read("SELECT Nummer FROM Sauen INDEXED BY boden_art WHERE Art = 'Sau' ORDER BY Nummer");
                    });
                    return file.read(sales);
                }
                const auto piglets = file.numbers(
                    "SELECT ID FROM Sauen WHERE Abgangsdatum IS NULL AND Art = 'Ferkel' ORDER BY Geburtsdatum, "
                    "Stallnr, Nummer LIMIT " +
                    std::to_string(Sold));
                qint64 rows = 0;
                watch.measure([&] {
                    file.execute("BEGIN IMMEDIATE");
                    file.execute(
                        "INSERT INTO Ferkelverkauf (Datum, Anzahl_Einkauf, Anzahl_Verkauf, Preis_je_Stück, Kennung) "
                        "VALUES (" +
                        day + ", 0, " + std::to_string(Sold) + ", 550000, 0)");
                    file.each("UPDATE Sauen SET Abgangsdatum = " + day +
                                  ", Abgangsgewicht_kg = 0, Verkaufspreis = 550000, Abnehmer = '' WHERE ID = ?1",
                              piglets);
                    file.execute("COMMIT");
                    rows = file.read(sales);
                });
                return rows;
            }};
}

}  // namespace

std::vector<Row> Rows_Ferkel(const Sample& sample) {
    return {openList("losses", "PB_Verluste_Ferkel", "Verluste"),
            openList("sales", "PB_Verkauf_Ferkel", "Ferkelverkauf"),
            sell("sale of the farm, screen opens", sample, false),
            sell("sale of 240 piglets out of the herd", sample, true),
            withoutJournal(sell("sale of 240 piglets out of the herd", sample, true))};
}

}  // namespace koben
