// Piglets of the whole farm: the two lists, and a sale by which piglets leave the herd.
#include "bench/Boden.h"
#include "bench/Programm.h"

namespace koben {
namespace {

Zeile Ferkelliste_oeffnen(const char* what, const char* form, const char* table) {
    return {QStringLiteral("all %1, list opens").arg(QString::fromUtf8(what)), selten,
            [form](Programm& p, Uhr& uhr) {
                qint64 rows = 0;
                uhr.los();
                p.oeffnen(form, [&](Form& list) {
                    const Grid& grid = steuer<Grid>(list, "li");
                    anschauen(grid);
                    uhr.halt();
                    rows = grid.rowCount();
                });
                return rows;
            },
            [table](Datei& datei, Uhr& uhr) {
                qint64 rows = 0;
                uhr.messen([&] { rows = datei.lesen(std::string("SELECT * FROM ") + table + " ORDER BY Datum"); });
                return rows;
            }};
}

const char* const Ferkelwahl =
    "SELECT Nummer, Stallnr, Tätowierung, Geburtsdatum, ID FROM Sauen WHERE Abgangsdatum IS NULL AND Art = 'Ferkel' "
    "ORDER BY Geburtsdatum, Stallnr, Nummer";

/// The entry screen in front of the list of sales: how it opens, or how it sells.
Zeile verkaufen(const char* name, const Probe& probe, bool sale) {
    return {QString::fromUtf8(name), taeglich,
            [sale](Programm& p, Uhr& uhr) {
                p.wenn("PB_Verkauf_Ferkel_Eingabe", [&](Form& entry) {
                    if (!sale) return uhr.halt();
                    steuer<TextBox>(entry, "tz", 1).edited(QString::number(Verkaufszahl));
                    steuer<Option>(entry, "optiverkauf", 2).click();
                    steuer<TextBox>(entry, "tz", 2).setText(QStringLiteral("55,00"));
                    uhr.los();
                    steuer<Button>(entry, "ok", 0).click();
                });
                qint64 rows = 0;
                p.oeffnen("PB_Verkauf_Ferkel", [&](Form& list) {
                    if (!sale) uhr.los();
                    steuer<Button>(list, "neu").click();
                    const Grid& grid = steuer<Grid>(list, "li");
                    anschauen(grid);
                    if (sale) uhr.halt();
                    rows = grid.rowCount();
                });
                return rows;
            },
            [heute = probe.heute, sale](Datei& datei, Uhr& uhr) {
                const std::string sales = "SELECT * FROM Ferkelverkauf ORDER BY Datum", day = boden::iso(heute);
                if (!sale) {
                    uhr.messen([&] {
                        datei.lesen(Ferkelwahl);
                        datei.lesen(boden::verschiedene("Ferkelverkauf", "Kommentar"));
                        datei.lesen("SELECT * FROM Stammdaten_Kunde");
                        datei.lesen("SELECT * FROM Stammdaten_Stallnummer ORDER BY Inhalt");
                        datei.lesen("SELECT Nummer FROM Sauen INDEXED BY boden_art WHERE Art = 'Sau' ORDER BY Nummer");
                    });
                    return datei.lesen(sales);
                }
                const auto piglets = datei.zahlen(
                    "SELECT ID FROM Sauen WHERE Abgangsdatum IS NULL AND Art = 'Ferkel' ORDER BY Geburtsdatum, "
                    "Stallnr, Nummer LIMIT " +
                    std::to_string(Verkaufszahl));
                qint64 rows = 0;
                uhr.messen([&] {
                    datei.ausfuehren("BEGIN IMMEDIATE");
                    datei.ausfuehren(
                        "INSERT INTO Ferkelverkauf (Datum, Anzahl_Einkauf, Anzahl_Verkauf, Preis_je_Stück, Kennung) "
                        "VALUES (" +
                        day + ", 0, " + std::to_string(Verkaufszahl) + ", 550000, 0)");
                    datei.jede("UPDATE Sauen SET Abgangsdatum = " + day +
                                   ", Abgangsgewicht_kg = 0, Verkaufspreis = 550000, Abnehmer = '' WHERE ID = ?1",
                               piglets);
                    datei.ausfuehren("COMMIT");
                    rows = datei.lesen(sales);
                });
                return rows;
            }};
}

}  // namespace

std::vector<Zeile> Zeilen_Ferkel(const Probe& probe) {
    return {Ferkelliste_oeffnen("losses", "PB_Verluste_Ferkel", "Verluste"),
            Ferkelliste_oeffnen("sales", "PB_Verkauf_Ferkel", "Ferkelverkauf"),
            verkaufen("sale of the farm, screen opens", probe, false),
            verkaufen("sale of 240 piglets out of the herd", probe, true)};
}

}  // namespace koben
