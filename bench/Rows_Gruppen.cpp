// The farm's figures: contribution margin by year and by animal, the groupings, the logic test.
#include "analytics/Deckungsbeitrag.h"
#include "bench/Floor.h"
#include "bench/Program.h"

namespace koben {
namespace {

constexpr int Years = 10;

/// Sums of every kind by year or by animal, and the animals that feed is reckoned for, which the floor does not reckon.
Row Deckungsbeitraege(const Sample& sample, bool animals) {
    const int last = sample.today.year(), first = last - Years + 1;
    return {QStringLiteral("margin of %1 years by %2").arg(Years).arg(animals ? "animal" : "year"), seldom,
            [=](Program& p, Stopwatch& watch) {
                return runReport(p, watch, "PB_Deckungsbeitrag", -1,
                                 [&](Form& form) {
                                     for (int i : {0, 1})
                                         control<TextBox>(form, "t", i).setText(QString::number(i == 0 ? first : last));
                                     for (int i : {0, 1, 2})
                                         control<TextBox>(form, "tzahl", i).setText(QStringLiteral("350"));
                                     control<Button>(form, "alletier", 0).click();
                                     control<CheckBox>(form, "kontier", 1).setChecked(true);
                                     control<Option>(form, "optitieraus", 0).click();
                                     control<Option>(form, "optiauswertung", animals ? 1 : 0).click();
                                 }) -
                       1;  // the sum below
            },
            [=](SqliteFile& file, Stopwatch& watch) {
                qint64 rows = 0;
                const std::string from = sqlfloor::iso(QDate(first, 1, 1)), to = sqlfloor::iso(QDate(last, 12, 31));
                watch.measure([&] {
                    for (const Posten& kind : Postenliste) {
                        const std::string table = kind.table, day = kind.day, amount = kind.amount;
                        if (table.empty()) continue;
                        const bool own = table == "Sauen";
                        const std::string by = !animals ? "substr(" + day + ", 1, 4)" : own ? "ID" : "Kennung";
                        file.read("SELECT " + by + ", sum(" + amount + ") FROM " + table + " WHERE " + amount +
                                  " <> 0 AND " + day + " BETWEEN " + from + " AND " + to +
                                  (animals ? ""
                                   : own   ? " AND Nummer NOT NULL"
                                           : " AND Kennung IN (SELECT ID FROM Sauen WHERE Nummer NOT NULL)") +
                                  " GROUP BY 1");
                    }
                    rows = file.read(
                        "SELECT Nummer, Art, Geburtsdatum, Zugangsdatum, Abgangsdatum, ID FROM Sauen ORDER BY ID");
                });
                return animals ? rows : Years;
            }};
}

struct Gruppe {
    const char* button;
    int index;
    std::string key, sums, from, pivot;
};

/// A button of the panel, its list painted; the floor reads the totals of the rows, and the cells where there are any.
Row grouping(const Gruppe& group) {
    return {QStringLiteral("grouping %1(%2)").arg(QLatin1String(group.button)).arg(group.index), seldom,
            [group](Program& p, Stopwatch& watch) {
                qint64 rows = 0;
                p.open("PB_Gruppierungen", [&](Form& form) {
                    const Grid& grid = control<Grid>(form, "datali");
                    watch.measure([&] {
                        control<Button>(form, group.button, group.index).click();
                        look(grid);
                    });
                    rows = grid.rowCount();
                });
                return rows;
            },
            [group](SqliteFile& file, Stopwatch& watch) {
                qint64 rows = 0;
                const std::string from = " FROM " + group.from + " GROUP BY 1";
                watch.measure([&] {
                    rows = file.read("SELECT " + group.key + group.sums + from);
                    if (!group.pivot.empty())
                        file.read("SELECT " + group.key + ", " + group.pivot + ", count(*)" + from + ", 2");
                });
                return rows;
            }};
}

std::vector<Row> Gruppierungen() {
    const std::string counted = ", count(*)";
    std::vector<Row> rows;
    const auto bookings = [](const char* table) {
        return std::string("Sauen JOIN ") + table + " b ON b.Kennung = Sauen.ID";
    };
    const std::array crosstabs{std::pair{"Belegung", "Ebernr"},
                               std::pair{"Belegung", "Belegungart"},
                               std::pair{"Belegung", "Belegungsstation"},
                               std::pair{"Ferkelung", "Ferkel_Gesamt"},
                               std::pair{"Ferkelung", "Ferkel_Lebendig"},
                               std::pair{"Ferkelung", "Ferkel_Tot"},
                               std::pair{"Absetzung", "Anzahl_Ferkel"},
                               std::pair{"Trächtigkeit", "Trächtig"},
                               std::pair{"Verschiebung", "Anzahl_Ferkel"},
                               std::pair{"Verluste", "Anzahl_Ferkel"},
                               std::pair{"Verluste", "Grund"},
                               std::pair{"Behandlung", "Behandlungsart"},
                               std::pair{"Behandlung", "Medikament"},
                               std::pair{"Behandlung", "Tierarzt"},
                               std::pair{"Ferkelverkauf", "Anzahl_Verkauf"},
                               std::pair{"Ferkelverkauf", "Kunde"},
                               std::pair{"Ferkelung", "substr(Datum, 1, 4)"},
                               std::pair{"Ferkelung", "substr(Datum, 1, 4)"},
                               std::pair{"Ferkelung", "LNr"},
                               std::pair{"Ferkelung", "LNrJahr"},
                               std::pair{"", "substr(Abgangsdatum, 1, 4)"}};
    for (size_t i = 0; i < crosstabs.size(); ++i) {
        const auto& [table, pivot] = crosstabs[i];
        rows.push_back(grouping(
            {"auswertungok", static_cast<int>(i), "Nummer", counted, *table ? bookings(table) : "Sauen", pivot}));
    }
    const std::string here = "Sauen WHERE Abgangsdatum IS NULL";
    rows.push_back(grouping({"sonstigeok", 0, "substr(Geburtsdatum, 1, 4)", counted, here, "Art"}));
    rows.push_back(grouping({"sonstigeok", 1, "substr(Geburtsdatum, 1, 7)", counted, here, "Art"}));
    const char* const kinds[] = {"Belegung", "Ferkelung", "Trächtigkeit", "Verluste", "Behandlung", "Ferkelverkauf"};
    for (int i = 0; i < 6; ++i) {
        rows.push_back(grouping({"gruppekostenjetier", i, "Nummer",
                                 i < 5 ? ", count(*), sum(b.Kosten), avg(b.Kosten)"
                                       : ", count(*), sum(Anzahl_Verkauf), sum(Einnahmen), avg(Einnahmen)",
                                 bookings(kinds[i]) + " WHERE Abgangsdatum IS NULL", ""}));
    }
    const char* const fields[] = {"Art",   "Gruppe",       "Stallnr",   "Anz_Belegungen", "Anz_Ferkelungen",
                                  "Rasse", "Zugangsgrund", "Lieferant", "Abgangsgrund",   "Abnehmer"};
    for (int i = 0; i < 10; ++i) rows.push_back(grouping({"gruppeok", i, fields[i], counted, here, ""}));
    return rows;
}

/// The floor reads what is tested; the list has a row for each litter with a finding.
Row Logiktest() {
    return {
        QStringLiteral("logic test of the herd"), seldom,
        [](Program& p, Stopwatch& watch) { return runReport(p, watch, "PB_Logiktest", -1, [](Form&) {}) > 0 ? 1 : 0; },
        [](SqliteFile& file, Stopwatch& watch) {
            watch.measure([&] {
                const std::string sows =
                    " JOIN Sauen s ON s.ID = b.Kennung WHERE s.Art = 'Sau' AND s.Abgangsdatum IS NULL AND "
                    "s.Anz_Ferkelungen > 0 ORDER BY b.Kennung, b.Datum";
                file.read(
                    "SELECT ID, Nummer, Stallnr, Gruppe FROM Sauen WHERE Art = 'Sau' AND Abgangsdatum IS NULL AND "
                    "Anz_Ferkelungen > 0 ORDER BY Nummer");
                for (const char* book : {"Ferkel_Lebendig FROM Ferkelung b", "b.ID FROM Belegung b",
                                         "Trächtig FROM Trächtigkeit b", "b.ID FROM Absetzung b"})
                    file.read("SELECT b.Kennung, b.Datum, " + (book + sows));
            });
            return 1;
        }};
}

}  // namespace

std::vector<Row> Rows_Gruppen(const Sample& sample) {
    std::vector<Row> rows{Deckungsbeitraege(sample, false), Deckungsbeitraege(sample, true), Logiktest()};
    for (const Row& row : Gruppierungen()) rows.push_back(row);
    return rows;
}

}  // namespace koben
