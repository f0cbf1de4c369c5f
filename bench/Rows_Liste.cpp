// The herd list: filters, sorting, counters, the animal's panel, the search.
#include "bench/Floor.h"
#include "bench/Program.h"

namespace koben {
namespace {

/// A choice of the main form's three groups, and the same as a condition.
struct Filter {
    const char* name;
    double limit;
    int stock, kind, sauen;
    const char* where;
};
const Filter filter[] = {
    {"list: stock", daily, 0, 0, 0, "Abgangsdatum IS NULL"},
    {"list: stock, sows", daily, 0, 1, 0, "Abgangsdatum IS NULL AND Art = 'Sau'"},
    {"list: stock, sows served", daily, 0, 1, 1, "Abgangsdatum IS NULL AND Art = 'Sau' AND Status GLOB 'B*'"},
    {"list: stock, sows pregnant", daily, 0, 1, 2, "Abgangsdatum IS NULL AND Art = 'Sau' AND Status = 'B_T'"},
    {"list: stock, sows suckling", daily, 0, 1, 3, "Abgangsdatum IS NULL AND Art = 'Sau' AND Status = 'S'"},
    {"list: stock, sows barren", daily, 0, 1, 4, "Abgangsdatum IS NULL AND Art = 'Sau' AND Status GLOB '*G'"},
    {"list: stock, sows not pregnant", daily, 0, 1, 5, "Abgangsdatum IS NULL AND Art = 'Sau' AND Status GLOB 'B_NT*'"},
    {"list: stock, boars", daily, 0, 2, 0, "Abgangsdatum IS NULL AND Art = 'Eber'"},
    {"list: stock, fattening pigs", daily, 0, 3, 0, "Abgangsdatum IS NULL AND Art = 'Mast'"},
    {"list: stock, piglets", daily, 0, 4, 0, "Abgangsdatum IS NULL AND Art = 'Ferkel'"},
    {"list: gone", seldom, 1, 0, 0, "Abgangsdatum IS NOT NULL"},
    {"list: gone, sows", seldom, 1, 1, 0, "Abgangsdatum IS NOT NULL AND Art = 'Sau'"},
    {"list: everything, sows", seldom, 2, 1, 0, "Art = 'Sau'"},
    {"list: everything", seldom, 2, 0, 0, ""}};

Option& option(Program& p, const char* group, int index) { return control<Option>(p.mainForm(), group, index); }

/// From another kind of animals on to those of the filter, so that the list is read whole.
Row loadList(const Filter& f) {
    return {QString::fromUtf8(f.name), f.limit,
            [f](Program& p, Stopwatch& watch) {
                constexpr int sauen = 1, eber = 2;
                option(p, "optianzeige", f.kind == eber ? sauen : eber).click();
                option(p, "optiverkauft", f.stock).click();
                option(p, "optisauen", f.sauen).click();
                watch.measure([&] {
                    option(p, "optianzeige", f.kind).click();
                    look(p.list());
                });
                return p.list().rowCount();
            },
            [f](SqliteFile& file, Stopwatch& watch) {
                const std::string where = f.where;
                qint64 rows = 0;
                watch.measure([&] {
                    rows = file.read(where == sqlfloor::inStock ? sqlfloor::stockList() : sqlfloor::list(where));
                });
                return rows;
            }};
}

/// A click on a head of the list, which stood in no order. The floor reads the order alone, without an index for it.
Row sortList(const char* what, const char* field, bool everything) {
    return {QStringLiteral("sort %1: %2")
                .arg(QString::fromUtf8(everything ? "everything" : "stock"), QString::fromUtf8(what)),
            everything ? seldom : daily,
            [=](Program& p, Stopwatch& watch) {
                p.show(everything ? 2 : 0);
                p.showList();
                Grid& list = p.list();
                const int column = list.columnOf(QString::fromUtf8(field));
                watch.measure([&] {
                    list.sortByUser(column, 1);
                    look(list);
                });
                return list.rowCount();
            },
            [=](SqliteFile& file, Stopwatch& watch) {
                const std::string source =
                    everything ? "Sauen" : "Sauen INDEXED BY boden_bestand WHERE " + sqlfloor::inStock;
                qint64 rows = 0;
                watch.measure([&] {
                    rows = static_cast<qint64>(file.numbers("SELECT ID FROM " + source + " ORDER BY " + field).size());
                });
                return rows;
            }};
}

/// Times the counters within a reload: from the last event of the list to the new text of the line.
qint64 measureCounters(Program& p, Stopwatch& watch) {
    struct ListFollower : Control::View {
        ListFollower(Control& list, Stopwatch& u) : View(list), clock(u) {}
        void changed(Aspect) override { clock.start(); }
        Stopwatch& clock;
    };
    struct LineFollower : Control::View {
        LineFollower(Label& label, Stopwatch& u) : View(label), clock(u), line(label) {}
        void changed(Aspect) override {
            if (!line.text().isEmpty()) clock.stop();
        }
        Stopwatch& clock;
        Label& line;
    };
    Label& line = control<Label>(p.mainForm(), "bezstati");
    line.setText({});
    const ListFollower begin(p.list(), watch);
    const LineFollower end(line, watch);
    p.showList();
    return p.list().rowCount();
}

qint64 countersFloor(SqliteFile& file, Stopwatch& watch) {
    std::vector<qint64> rows;
    watch.measure([&] {
        rows = file.numbers(
            "SELECT count(*), sum(Art = 'Sau'), sum(Art = 'Eber'), sum(Art = 'Mast'), sum(Anz_Belegungen), "
            "sum(Anz_Ferkelungen), sum(Anz_Ferkel_Gesamt), sum(Anz_Ferkel_Lebend), sum(Selektiert = 'X') FROM Sauen "
            "INDEXED BY boden_zaehlung WHERE Abgangsdatum IS NULL");
    });
    return rows.front();
}

/// One animal on to the trial sow, whose bookings of ten years are shown as text.
Row Tierdaten(qint64 sow) {
    return {QStringLiteral("animal panel, next animal"), daily,
            [sow](Program& p, Stopwatch& watch) {
                p.choose(sow);
                p.list().choose(p.list().row() - 1);
                watch.measure([&] { control<Button>(p.mainForm(), "abwaerts", 0).click(); });
                return qint64{p.list().value(p.list().row(), u"ID").toInt() == sow};
            },
            [sow](SqliteFile& file, Stopwatch& watch) {
                watch.measure([&] {
                    for (const char* table : {"Belegung", "Trächtigkeit", "Ferkelung", "Verluste", "Verschiebung",
                                              "Absetzung", "Behandlung"})
                        file.read(std::string("SELECT * FROM ") + table + " WHERE Kennung = " + std::to_string(sow) +
                                  " ORDER BY Datum DESC");
                });
                return 1;
            }};
}

/// The last character of a number far down the list.
Row search(const QString& number) {
    return {
        QStringLiteral("search keystroke"), daily,
        [number](Program& p, Stopwatch& watch) {
            TextBox& field = control<TextBox>(p.mainForm(), "t");
            field.edited(number.chopped(1));
            watch.measure([&] { field.edited(number); });
            return qint64{p.list().row() > 0};
        },
        [number](SqliteFile& file, Stopwatch& watch) {
            qint64 rows = 0;
            watch.measure([&] {
                rows = file.read(
                    "SELECT min(ID) FROM Sauen INDEXED BY boden_nummer WHERE Abgangsdatum IS NULL AND Nummer GLOB '" +
                    number.toStdString() + "*'");
            });
            return rows;
        }};
}

}  // namespace

std::vector<Row> Rows_Liste(const Sample& sample) {
    std::vector<Row> rows;
    for (const Filter& f : filter) rows.push_back(loadList(f));
    for (const bool everything : {false, true})
        for (const auto& [what, field] : {std::pair{"text", "Tätowierung"}, std::pair{"number", "Zugangsgewicht_kg"},
                                          std::pair{"date", "Geburtsdatum"}})
            rows.push_back(sortList(what, field, everything));
    rows.push_back({QStringLiteral("counters line"), daily, measureCounters, countersFloor});
    rows.push_back(Tierdaten(sample.sau));
    rows.push_back(search(sample.number));
    return rows;
}

}  // namespace koben
