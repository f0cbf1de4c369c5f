// The paper of barn and office: status plan, sow cards, reports over animals and bookings, stock, herd register.
#include "bench/Boden.h"
#include "bench/Programm.h"

namespace koben {
namespace {

constexpr int Karten = 500;

std::string bestandAm(QDate tag) {
    const std::string d = boden::iso(tag);
    return "(Zugangsdatum IS NULL OR Zugangsdatum <= " + d + ") AND (Abgangsdatum IS NULL OR Abgangsdatum > " + d + ")";
}

/// The rows that a report hands over, with what it takes until the list screen shows them.
qint64 berichten(Programm& p, Uhr& uhr, const char* form, int button, const std::function<void(Form&)>& choose) {
    qint64 rows = 0;
    p.oeffnen(form, [&](Form& report) {
        choose(report);
        p.wenn("PA_Zwischenliste", [&](Form& list) {
            const Grid& grid = steuer<Grid>(list, "gridli");
            anschauen(grid);
            rows = grid.rowCount();
        });
        uhr.messen([&] { steuer<Button>(report, "ok", button).click(); });
    });
    return rows;
}

Zeile Statusplan() {
    return {QStringLiteral("status plan opens"), taeglich,
            [](Programm& p, Uhr& uhr) {
                qint64 rows = 0;
                uhr.los();
                p.oeffnen("PB_Statusplan", [&](Form& plan) {
                    anschauen(steuer<Grid>(plan, "libelegt"));
                    uhr.halt();
                    for (const char* list : {"libelegt", "lisäugend", "ligüst"})
                        rows += steuer<Grid>(plan, list).rowCount();
                    rows -= steuer<Grid>(plan, "linichttragend").rowCount();  // they stand among the open ones too
                });
                return rows;
            },
            [](Datei& datei, Uhr& uhr) {
                qint64 rows = 0;
                uhr.messen([&] {
                    rows = datei.lesen(
                        "SELECT Status, Nummer, Gruppe, Stallnr, Anz_Ferkelungen, Anz_Belegungen, L_Trächtigkeit, "
                        "L_Belegung, L_Ferkelung, L_Absetzung, CASE WHEN Status LIKE 'B%' THEN (SELECT Ebernr FROM "
                        "Belegung WHERE Kennung = Sauen.ID ORDER BY Datum DESC LIMIT 1) END FROM Sauen WHERE Art = "
                        "'Sau' AND Abgangsdatum IS NULL AND Status <> '' ORDER BY Nummer");
                });
                return rows;
            }};
}

/// The floor reads the bookings of the cards and prints nothing.
Zeile Sauenkarten() {
    return {QStringLiteral("%1 sow cards to PDF").arg(Karten), selten,
            [](Programm& p, Uhr& uhr) {
                p.oeffnen("PB_Sauenkarte", [&](Form& form) {
                    Grid& list = steuer<Grid>(form, "datali");
                    std::vector<int> rows(Karten);
                    for (int i = 0; i < Karten; ++i) rows[static_cast<size_t>(i)] = i + 1;
                    list.mark(rows);
                    uhr.messen([&] { steuer<Button>(form, "ok").click(); });
                });
                return Karten;
            },
            [](Datei& datei, Uhr& uhr) {
                uhr.messen([&] {
                    const std::string sows =
                        " WHERE Kennung IN (SELECT ID FROM Sauen WHERE Art = 'Sau' AND Abgangsdatum IS NULL ORDER BY "
                        "Nummer LIMIT " +
                        std::to_string(Karten) + ") ORDER BY Datum";
                    datei.lesen("SELECT Kennung, Datum, Ebernr FROM Belegung" + sows);
                    datei.lesen("SELECT Kennung, Datum, LNr, Ferkel_Lebendig, Ferkel_Tot FROM Ferkelung" + sows);
                    datei.lesen("SELECT Kennung, Datum, Anzahl_Ferkel, Grund FROM Verluste" + sows);
                    datei.lesen("SELECT Kennung, Datum, Anzahl_Ferkel FROM Absetzung" + sows);
                });
                return Karten;
            }};
}

Zeile Tierbericht(const Probe& probe) {
    return {QStringLiteral("animal report of all living"), selten,
            [](Programm& p, Uhr& uhr) {
                return berichten(p, uhr, "PB_Tierinformation_Schweine", -1, [](Form&) {}) - 1;  // the sum below
            },
            [heute = probe.heute](Datei& datei, Uhr& uhr) {
                qint64 rows = 0;
                uhr.messen([&] { rows = datei.lesen(boden::liste(bestandAm(heute)) + " ORDER BY Art"); });
                return rows;
            }};
}

/// The table list of all fields; with it come heads and empty rows, which the floor has not.
Zeile Buchungsbericht(const Probe& probe, bool year) {
    static const char* const tables[] = {"Belegung",     "Ferkelung", "Absetzung",  "Trächtigkeit",
                                         "Verschiebung", "Verluste",  "Behandlung", "Ferkelverkauf"};
    return {QStringLiteral("booking report of %1").arg(year ? "a year" : "everything"), selten,
            [year, heute = probe.heute](Programm& p, Uhr& uhr) {
                constexpr int beside = 4;  // rows of a table that are no booking
                return berichten(p, uhr, "PB_Tierinformation_Buchungen", -1,
                                 [&](Form& form) {
                                     steuer<Button>(form, "alletier", 0).click();
                                     steuer<Option>(form, "optitieraus", 5).click();
                                     steuer<Option>(form, "optibuch", year ? 1 : 0).click();
                                     for (int i : {0, 1})
                                         steuer<TextBox>(form, "tdat", i)
                                             .setText(heute.addYears(i - 1).toString(QStringLiteral("dd.MM.yyyy")));
                                 }) -
                       beside * static_cast<qint64>(std::size(tables));
            },
            [year, heute = probe.heute](Datei& datei, Uhr& uhr) {
                qint64 rows = 0;
                uhr.messen([&] {
                    for (const std::string table : tables)
                        rows += datei.lesen("SELECT Art, Nummer, Gruppe, Stallnr, b.* FROM " + table +
                                            " b JOIN Sauen s ON s.ID = b.Kennung WHERE s.Abgangsdatum IS NULL" +
                                            (year ? " AND b.Datum BETWEEN " + boden::iso(heute.addYears(-1)) + " AND " +
                                                        boden::iso(heute)
                                                  : "") +
                                            " ORDER BY Nummer, b.Datum");
                });
                return rows;
            }};
}

/// All groups of a new database on a day half a year ago. The floor knows them: all, sows, boars, served sows.
Zeile Bestandsliste(const Probe& probe) {
    const QDate tag = probe.heute.addDays(-180);
    return {QStringLiteral("stock report of all groups"), selten,
            [tag](Programm& p, Uhr& uhr) {
                constexpr int beside = 4 * 4;  // name, ages, count, value of each group
                return berichten(p, uhr, "PB_Bestand", 0,
                                 [&](Form& form) {
                                     auto& groups = steuer<ListBox>(form, "libestand");
                                     for (int i = 0; i < groups.items().size(); ++i) groups.setMarked(i, true);
                                     steuer<CheckBox>(form, "konbestand").setChecked(true);
                                     steuer<TextBox>(form, "tdat").setText(tag.toString(QStringLiteral("dd.MM.yyyy")));
                                 }) -
                       beside;
            },
            [tag](Datei& datei, Uhr& uhr) {
                qint64 rows = 0;
                const std::string there = "Geburtsdatum BETWEEN " + boden::iso(tag.addYears(-99)) + " AND " +
                                          boden::iso(tag) +
                                          " AND (Zugangsdatum IS NULL OR Zugangsdatum <= " + boden::iso(tag) +
                                          ") AND (Abgangsdatum IS NULL OR Abgangsdatum >= " + boden::iso(tag) + ")";
                uhr.messen([&] {
                    for (const char* which :
                         {"", " AND Art = 'Eber'", " AND Art = 'Sau'", " AND Art = 'Sau' AND L_Belegung IS NOT NULL"})
                        rows += datei.lesen(boden::liste(there + which) + " ORDER BY Nummer");
                });
                return rows;
            }};
}

Zeile Uebersicht() {
    return {QStringLiteral("overview of fifteen"), selten,
            [](Programm& p, Uhr& uhr) { return berichten(p, uhr, "PB_Bestand", 3, [](Form&) {}); },
            [](Datei& datei, Uhr& uhr) {
                uhr.messen([&] {
                    const auto later = [](const std::string& a, const std::string& b) {
                        return "sum((" + a + " NOT NULL AND " + b + " IS NULL) OR " + a + " > " + b + ")";
                    };
                    datei.lesen(
                        "SELECT count(*), sum(Art = 'Sau'), sum(Art = 'Eber'), sum(Art = 'Mast'), "
                        "sum(Mechanische_Amme = 'J'), sum(L_Ferkelung NOT NULL), " +
                        later("L_Belegung", "L_Ferkelung") + "," + later("L_Trächtigkeit", "L_Ferkelung") + "," +
                        later("L_Ferkelung", "L_Absetzung") + "," + later("L_Belegung", "L_Trächtigkeit") + "," +
                        later("L_Absetzung", "L_Belegung") + "," + later("L_Ferkelung", "L_Belegung") + " FROM Sauen");
                });
                return 15;
            }};
}

Zeile Register(const Probe& probe, bool added) {
    const QDate von = probe.heute.addYears(-1);
    return {QStringLiteral("herd register of a year%1").arg(added ? ", daily sums" : ""), selten,
            [von, added](Programm& p, Uhr& uhr) {
                qint64 rows = 0;
                p.oeffnen("PB_Bestandsregister", [&](Form& form) {
                    steuer<TextBox>(form, "tdat", 0).setText(von.toString(QStringLiteral("dd.MM.yyyy")));
                    steuer<CheckBox>(form, "kon").setChecked(true);
                    steuer<CheckBox>(form, "konadd").setChecked(added);
                    uhr.messen([&] { steuer<Button>(form, "ok").click(); });
                    rows = steuer<Grid>(form, "gridli").rowCount();
                });
                return rows;
            },
            [von, added, heute = probe.heute](Datei& datei, Uhr& uhr) {
                qint64 rows = 0;
                const auto within = [&](const std::string& day) {
                    return " WHERE " + day + " BETWEEN " + boden::iso(von) + " AND " + boden::iso(heute);
                };
                const auto animals = [&](const std::string& day, const std::string& partner) {
                    return added ? "SELECT " + day + ", count(*), Art, " + partner + " FROM Sauen" + within(day) +
                                       " AND Art <> 'Ferkel' GROUP BY 1, 3, 4"
                                 : "SELECT " + day + ", Art, Nummer, Ohrmarke, " + partner + " FROM Sauen" +
                                       within(day) + " AND Art <> 'Ferkel' ORDER BY 1";
                };
                uhr.messen([&] {
                    for (const QDate day : {von, heute})
                        datei.lesen("SELECT Art, count(*) FROM Sauen WHERE " + bestandAm(day) + " GROUP BY 1");
                    rows += datei.lesen(animals("Zugangsdatum", "Lieferant"));
                    rows += datei.lesen(animals("Abgangsdatum", "Abnehmer"));
                    rows += datei.lesen("SELECT Datum, Ferkel_Gesamt, Ferkel_Tot FROM Ferkelung" + within("Datum"));
                    rows += datei.lesen("SELECT Datum, Anzahl_Ferkel FROM Verluste" + within("Datum"));
                    rows += datei.lesen("SELECT Datum, Anzahl_Einkauf, Anzahl_Verkauf, Kunde FROM Ferkelverkauf" +
                                        within("Datum"));
                });
                return rows;
            }};
}

}  // namespace

std::vector<Zeile> Zeilen_Papier(const Probe& probe) {
    return {Statusplan(),
            Sauenkarten(),
            Tierbericht(probe),
            Buchungsbericht(probe, true),
            Buchungsbericht(probe, false),
            Bestandsliste(probe),
            Uebersicht(),
            Register(probe, false),
            Register(probe, true)};
}

}  // namespace koben
