// Plans and selection: the work plan in both forms, the waiting times, the selection by rule.
#include "bench/Boden.h"
#include "bench/Programm.h"
#include "core/Konfig.h"

namespace koben {
namespace {

/// One arm for each of the four tasks of a new database: the window of a task touches the period where its reference
/// date lies between two days that are known beforehand.
std::string Arbeitsplan(QDate heute, int tage, const char* order) {
    const auto arm = [&](const char* name, const char* bezug, int von, int bis, const char* erledigt) {
        const std::string b = bezug;
        return "SELECT date(" + b + ", '+" + std::to_string(von) + " days') vom, date(" + b + ", '+" +
               std::to_string(bis) + " days') bis, '" + name +
               "', Nummer, Art, Stallnr, Gruppe FROM Sauen WHERE Abgangsdatum IS NULL AND " + b + " BETWEEN " +
               boden::iso(heute.addDays(-bis)) + " AND " + boden::iso(heute.addDays(tage - 1 - von)) +
               " AND NOT ifnull(" + erledigt + ", '') > " + b;
    };
    return arm("Belegung", "L_Absetzung", 4, 8, "L_Belegung") + " UNION ALL " +
           arm("Ferkelung", "L_Belegung", 113, 119, "L_Ferkelung") + " UNION ALL " +
           arm("Absetzung", "L_Ferkelung", 28, 32, "L_Absetzung") + " UNION ALL " +
           arm("Trächtigkeitskontr.", "L_Belegung", 20, 24, "L_Trächtigkeit") + " ORDER BY " + order;
}

/// Until the list screen shows it; the program also writes the list's file and the one of the pocket device.
Zeile planen(const Probe& probe, bool chart, int tage) {
    return {
        QStringLiteral("work plan, %1, %2").arg(chart ? "chart" : "list", tage == 1 ? "one day" : "four weeks"),
        taeglich,
        [chart, tage](Programm& p, Uhr& uhr) {
            constexpr int kopfzeilen = 5;  // of the chart
            p.koben().Konfig_Zahl[Zahl::PlanTage] = static_cast<qint16>(tage - 1);
            qint64 rows = 0;
            p.oeffnen("PB_Arbeitsplan", [&](Form& plan) {
                uhr.messen([&] { steuer<Button>(plan, "ok", chart ? 1 : 0).click(); });
                rows = std::max(0, steuer<Grid>(plan, "gridli").rowCount() - (chart ? kopfzeilen : 0));
            });
            return rows;
        },
        [heute = probe.heute, chart, tage](Datei& datei, Uhr& uhr) {
            qint64 rows = 0;
            uhr.messen([&] { rows = datei.lesen(Arbeitsplan(heute, tage, chart ? "Nummer" : "vom, bis, Nummer")); });
            return rows;
        }};
}

Zeile Wartezeiten(const Probe& probe) {
    return {QStringLiteral("waiting times"), taeglich,
            [](Programm& p, Uhr& uhr) {
                qint64 rows = 0;
                uhr.los();
                p.oeffnen("PB_Wartezeiten", [&](Form& form) {
                    const Grid& grid = steuer<Grid>(form, "gridli");
                    anschauen(grid);
                    uhr.halt();
                    rows = grid.rowCount();
                });
                return rows;
            },
            [heute = probe.heute](Datei& datei, Uhr& uhr) {
                qint64 rows = 0;
                uhr.messen([&] {
                    rows = datei.lesen(
                        "SELECT Nummer, Art, Gruppe, Stallnr, d FROM (SELECT Kennung k, max(Wartezeit_Datum) d FROM "
                        "Behandlung INDEXED BY boden_sperre WHERE Wartezeit_Datum >= " +
                        boden::iso(heute) + " GROUP BY 1) JOIN Sauen ON ID = k ORDER BY Nummer");
                });
                return rows;
            }};
}

/// "Schweine selektieren der Art Mast" with none selected before, until the main list stands anew.
Zeile selektieren(bool alteLoeschen) {
    const auto vorher = QStringLiteral("update Sauen set Selektiert = '' where Selektiert = 'X'");
    return {QStringLiteral("selection by rule%1").arg(alteLoeschen ? ", old one cleared" : ""), selten,
            [=](Programm& p, Uhr& uhr) {
                Database(p.koben().Hauptdatenbank).execute(vorher);
                p.oeffnen("PB_Selektieren", [&](Form& form) {
                    steuer<CheckBox>(form, "kon").setChecked(alteLoeschen);
                    steuer<ComboBox>(form, "kom", 0).setText(QStringLiteral("Mast"));
                    uhr.messen([&] {
                        steuer<Button>(form, "entselekt", 2).click();
                        anschauen(p.liste());
                    });
                });
                return p.koben()
                    .Hauptdatenbank.table(QStringLiteral("select count(*) as n from Sauen where Selektiert = 'X'"))
                    .integer(0, 0);
            },
            [=](Datei& datei, Uhr& uhr) {
                datei.ausfuehren(vorher.toStdString());
                uhr.messen([&] {
                    datei.ausfuehren("BEGIN IMMEDIATE");
                    if (alteLoeschen) datei.ausfuehren(vorher.toStdString());
                    datei.ausfuehren("UPDATE Sauen SET Selektiert = 'X' WHERE Abgangsdatum IS NULL AND Art = 'Mast'");
                    datei.ausfuehren("COMMIT");
                    datei.lesen(boden::Bestandsliste());
                });
                return datei.zahlen("SELECT count(*) FROM Sauen WHERE Selektiert = 'X'").front();
            }};
}

/// The screen with its lists of all groups, breeds and boxes.
Zeile Selektion_oeffnen() {
    return {QStringLiteral("selection screen opens"), taeglich,
            [](Programm& p, Uhr& uhr) {
                uhr.los();
                p.oeffnen("PB_Selektieren", [&](Form&) { uhr.halt(); });
                return 1;
            },
            [](Datei& datei, Uhr& uhr) {
                uhr.messen([&] {
                    for (const char* field : {"Gruppe", "Rasse", "Stallnr"})
                        datei.lesen(boden::verschiedene("Sauen", field));
                });
                return 1;
            }};
}

}  // namespace

std::vector<Zeile> Zeilen_Plan(const Probe& probe) {
    std::vector<Zeile> rows;
    for (const bool chart : {false, true})
        for (const int tage : {1, 28}) rows.push_back(planen(probe, chart, tage));
    rows.push_back(Wartezeiten(probe));
    rows.push_back(Selektion_oeffnen());
    rows.push_back(selektieren(false));
    rows.push_back(selektieren(true));
    return rows;
}

}  // namespace koben
