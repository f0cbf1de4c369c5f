// The paper of barn and office: status plan, sow cards, reports over animals and bookings, stock, herd register.
#include <QFile>

#include "bench/Floor.h"
#include "bench/Program.h"

namespace koben {
namespace {

constexpr int Cards = 500;

std::string inHerdOn(QDate day) {
    const std::string d = sqlfloor::iso(day);
    return "(Zugangsdatum IS NULL OR Zugangsdatum <= " + d + ") AND (Abgangsdatum IS NULL OR Abgangsdatum > " + d + ")";
}

Row Statusplan() {
    return {QStringLiteral("status plan opens"), daily,
            [](Program& p, Stopwatch& watch) {
                qint64 rows = 0;
                watch.start();
                p.open("PB_Statusplan", [&](Form& plan) {
                    look(control<Grid>(plan, "libelegt"));
                    watch.stop();
                    for (const char* list : {"libelegt", "lisäugend", "ligüst"})
                        rows += control<Grid>(plan, list).rowCount();
                    rows -= control<Grid>(plan, "linichttragend").rowCount();  // they stand among the open ones too
                });
                return rows;
            },
            [](SqliteFile& file, Stopwatch& watch) {
                qint64 rows = 0;
                watch.measure([&] {
                    rows = file.read(
                        "SELECT Status, Nummer, Gruppe, Stallnr, Anz_Ferkelungen, Anz_Belegungen, L_Trächtigkeit, "
                        "L_Belegung, L_Ferkelung, L_Absetzung, CASE WHEN Status LIKE 'B%' THEN (SELECT Ebernr FROM "
                        "Belegung WHERE Kennung = Sauen.ID ORDER BY Datum DESC LIMIT 1) END FROM Sauen WHERE Art = "
                        "'Sau' AND Abgangsdatum IS NULL AND Status <> '' ORDER BY Nummer");
                });
                return rows;
            }};
}

/// The floor reads the bookings of the cards and prints nothing.
Row Sauenkarten() {
    return {QStringLiteral("%1 sow cards to PDF").arg(Cards), seldom,
            [](Program& p, Stopwatch& watch) {
                p.open("PB_Sauenkarte", [&](Form& form) {
                    Grid& list = control<Grid>(form, "datali");
                    std::vector<int> rows(Cards);
                    for (int i = 0; i < Cards; ++i) rows[static_cast<size_t>(i)] = i + 1;
                    list.mark(rows);
                    watch.measure([&] { control<Button>(form, "ok").click(); });
                });
                return Cards;
            },
            [](SqliteFile& file, Stopwatch& watch) {
                watch.measure([&] {
                    const std::string sows =
                        " WHERE Kennung IN (SELECT ID FROM Sauen WHERE Art = 'Sau' AND Abgangsdatum IS NULL ORDER BY "
                        "Nummer LIMIT " +
                        std::to_string(Cards) + ") ORDER BY Datum";
                    file.read("SELECT Kennung, Datum, Ebernr FROM Belegung" + sows);
                    file.read("SELECT Kennung, Datum, LNr, Ferkel_Lebendig, Ferkel_Tot FROM Ferkelung" + sows);
                    file.read("SELECT Kennung, Datum, Anzahl_Ferkel, Grund FROM Verluste" + sows);
                    file.read("SELECT Kennung, Datum, Anzahl_Ferkel FROM Absetzung" + sows);
                });
                return Cards;
            }};
}

Row Tierbericht(const Sample& sample) {
    return {QStringLiteral("animal report of all living"), seldom,
            [](Program& p, Stopwatch& watch) {
                return runReport(p, watch, "PB_Tierinformation_Schweine", -1, [](Form&) {}) - 1;  // the sum below
            },
            [today = sample.today](SqliteFile& file, Stopwatch& watch) {
                qint64 rows = 0;
                watch.measure([&] { rows = file.read(sqlfloor::list(inHerdOn(today)) + " ORDER BY Art"); });
                return rows;
            }};
}

/// The list of all living, handed on by a button of the list screen. The floor reads the same rows and writes them as
/// lines of text, no table aligned and no spreadsheet.
Row handOver(const Sample& sample, const char* what, const char* button) {
    return {QStringLiteral("list of all living to %1").arg(QString::fromUtf8(what)), seldom,
            [button](Program& p, Stopwatch& watch) {
                qint64 rows = 0;
                p.open("PB_Tierinformation_Schweine", [&](Form& report) {
                    p.when("PA_Zwischenliste", [&](Form& list) {
                        watch.measure([&] { control<Button>(list, button).click(); });
                        rows = control<Grid>(list, "gridli").rowCount() - 1;  // the sum below
                    });
                    control<Button>(report, "ok").click();
                });
                return rows;
            },
            [today = sample.today](SqliteFile& file, Stopwatch& watch) {
                const QString path = QStringLiteral(KOBEN_BENCH_CACHE "/liste.txt");
                qint64 rows = 0;
                watch.measure([&] { rows = file.write(sqlfloor::list(inHerdOn(today)) + " ORDER BY Art", path); });
                QFile::remove(path);
                return rows;
            }};
}

/// The table list of all fields; with it come heads and empty rows, which the floor has not.
Row Buchungsbericht(const Sample& sample, bool year) {
    static const char* const tables[] = {"Belegung",     "Ferkelung", "Absetzung",  "Trächtigkeit",
                                         "Verschiebung", "Verluste",  "Behandlung", "Ferkelverkauf"};
    return {QStringLiteral("booking report of %1").arg(year ? "a year" : "everything"), seldom,
            [year, today = sample.today](Program& p, Stopwatch& watch) {
                constexpr int beside = 4;  // rows of a table that are no booking
                return runReport(p, watch, "PB_Tierinformation_Buchungen", -1,
                                 [&](Form& form) {
                                     control<Button>(form, "alletier", 0).click();
                                     control<Option>(form, "optitieraus", 5).click();
                                     control<Option>(form, "optibuch", year ? 1 : 0).click();
                                     for (int i : {0, 1})
                                         control<TextBox>(form, "tdat", i)
                                             .setText(today.addYears(i - 1).toString(QStringLiteral("dd.MM.yyyy")));
                                 }) -
                       beside * static_cast<qint64>(std::size(tables));
            },
            [year, today = sample.today](SqliteFile& file, Stopwatch& watch) {
                qint64 rows = 0;
                watch.measure([&] {
                    for (const std::string table : tables)
                        rows += file.read("SELECT Art, Nummer, Gruppe, Stallnr, b.* FROM " + table +
                                          " b JOIN Sauen s ON s.ID = b.Kennung WHERE s.Abgangsdatum IS NULL" +
                                          (year ? " AND b.Datum BETWEEN " + sqlfloor::iso(today.addYears(-1)) +
                                                      " AND " + sqlfloor::iso(today)
                                                : "") +
                                          " ORDER BY Nummer, b.Datum");
                });
                return rows;
            }};
}

/// All groups of a new database on a day half a year ago. The floor knows them: all, sows, boars, served sows.
Row stockList(const Sample& sample) {
    const QDate day = sample.today.addDays(-180);
    return {QStringLiteral("stock report of all groups"), seldom,
            [day](Program& p, Stopwatch& watch) {
                constexpr int beside = 4 * 4;  // name, ages, count, value of each group
                return runReport(p, watch, "PB_Bestand", 0,
                                 [&](Form& form) {
                                     auto& groups = control<ListBox>(form, "libestand");
                                     for (int i = 0; i < groups.items().size(); ++i) groups.setMarked(i, true);
                                     control<CheckBox>(form, "konbestand").setChecked(true);
                                     control<TextBox>(form, "tdat").setText(day.toString(QStringLiteral("dd.MM.yyyy")));
                                 }) -
                       beside;
            },
            [day](SqliteFile& file, Stopwatch& watch) {
                qint64 rows = 0;
                const std::string there = "Geburtsdatum BETWEEN " + sqlfloor::iso(day.addYears(-99)) + " AND " +
                                          sqlfloor::iso(day) +
                                          " AND (Zugangsdatum IS NULL OR Zugangsdatum <= " + sqlfloor::iso(day) +
                                          ") AND (Abgangsdatum IS NULL OR Abgangsdatum >= " + sqlfloor::iso(day) + ")";
                watch.measure([&] {
                    for (const char* which :
                         {"", " AND Art = 'Eber'", " AND Art = 'Sau'", " AND Art = 'Sau' AND L_Belegung IS NOT NULL"})
                        rows += file.read(sqlfloor::list(there + which) + " ORDER BY Nummer");
                });
                return rows;
            }};
}

Row Uebersicht() {
    return {QStringLiteral("overview of fifteen"), seldom,
            [](Program& p, Stopwatch& watch) { return runReport(p, watch, "PB_Bestand", 3, [](Form&) {}); },
            [](SqliteFile& file, Stopwatch& watch) {
                watch.measure([&] {
                    const auto later = [](const std::string& a, const std::string& b) {
                        return "sum((" + a + " NOT NULL AND " + b + " IS NULL) OR " + a + " > " + b + ")";
                    };
                    file.read(
                        "SELECT count(*), sum(Art = 'Sau'), sum(Art = 'Eber'), sum(Art = 'Mast'), "
                        "sum(Mechanische_Amme = 'J'), sum(L_Ferkelung NOT NULL), " +
                        later("L_Belegung", "L_Ferkelung") + "," + later("L_Trächtigkeit", "L_Ferkelung") + "," +
                        later("L_Ferkelung", "L_Absetzung") + "," + later("L_Belegung", "L_Trächtigkeit") + "," +
                        later("L_Absetzung", "L_Belegung") + "," + later("L_Ferkelung", "L_Belegung") + " FROM Sauen");
                });
                return 15;
            }};
}

Row Register(const Sample& sample, bool added) {
    const QDate from = sample.today.addYears(-1);
    return {QStringLiteral("herd register of a year%1").arg(added ? ", daily sums" : ""), seldom,
            [from, added](Program& p, Stopwatch& watch) {
                qint64 rows = 0;
                p.open("PB_Bestandsregister", [&](Form& form) {
                    control<TextBox>(form, "tdat", 0).setText(from.toString(QStringLiteral("dd.MM.yyyy")));
                    control<CheckBox>(form, "kon").setChecked(true);
                    control<CheckBox>(form, "konadd").setChecked(added);
                    watch.measure([&] { control<Button>(form, "ok").click(); });
                    rows = control<Grid>(form, "gridli").rowCount();
                });
                return rows;
            },
            [from, added, today = sample.today](SqliteFile& file, Stopwatch& watch) {
                qint64 rows = 0;
                const auto within = [&](const std::string& day) {
                    return " WHERE " + day + " BETWEEN " + sqlfloor::iso(from) + " AND " + sqlfloor::iso(today);
                };
                const auto animals = [&](const std::string& day, const std::string& partner) {
                    return added ? "SELECT " + day + ", count(*), Art, " + partner + " FROM Sauen" + within(day) +
                                       " AND Art <> 'Ferkel' GROUP BY 1, 3, 4"
                                 : "SELECT " + day + ", Art, Nummer, Ohrmarke, " + partner + " FROM Sauen" +
                                       within(day) + " AND Art <> 'Ferkel' ORDER BY 1";
                };
                watch.measure([&] {
                    for (const QDate day : {from, today})
                        file.read("SELECT Art, count(*) FROM Sauen WHERE " + inHerdOn(day) + " GROUP BY 1");
                    rows += file.read(animals("Zugangsdatum", "Lieferant"));
                    rows += file.read(animals("Abgangsdatum", "Abnehmer"));
                    rows += file.read("SELECT Datum, Ferkel_Gesamt, Ferkel_Tot FROM Ferkelung" + within("Datum"));
                    rows += file.read("SELECT Datum, Anzahl_Ferkel FROM Verluste" + within("Datum"));
                    rows += file.read("SELECT Datum, Anzahl_Einkauf, Anzahl_Verkauf, Kunde FROM Ferkelverkauf" +
                                      within("Datum"));
                });
                return rows;
            }};
}

}  // namespace

std::vector<Row> Rows_Papier(const Sample& sample) {
    return {Statusplan(),
            Sauenkarten(),
            Tierbericht(sample),
            handOver(sample, "text", "comtext"),
            handOver(sample, "spreadsheet", "comexcel"),
            Buchungsbericht(sample, true),
            Buchungsbericht(sample, false),
            stockList(sample),
            Uebersicht(),
            Register(sample, false),
            Register(sample, true)};
}

}  // namespace koben
