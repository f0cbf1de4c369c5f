// The work plan over random herds against a second computation that walks animal by animal with texts and queries.
#include <random>

#include "tests/plans/Planhof.h"

namespace koben {
namespace {

/// Chooses at random; the same seed gives the same farm.
struct Zufall {
    std::mt19937 engine;
    int upTo(int n) { return static_cast<int>(engine() % static_cast<unsigned>(n + 1)); }
    bool oneIn(int n) { return upTo(n - 1) == 0; }
    QString date(int around) {
        return oneIn(4) ? QString() : Datum_als_Anzeige(QDate(2026, 7, 15).addDays(upTo(2 * around) - around));
    }
    QString of(const QStringList& texts) { return texts[upTo(static_cast<int>(texts.size()) - 1)]; }
};

QString plus(const QString& date, int days) { return Datum_als_Anzeige(Datum_aus_Text(date).addDays(days)); }
QString schluessel(const QString& date) { return Datum_als_Text(QString(date)); }

/// The literal walk over one farm with the choices of one form.
struct Rundgang {
    Planhof& farm;
    PB_Arbeitsplan& form;
    bool chart;
    QString start, end;
    QStringList lines;  // rows as tab-separated texts
    std::map<QString, QString> fields{{"Geburtsdatum", "Geburtsdatum"},    {"Zugangsdatum", "Zugangsdatum"},
                                      {"Letzte Belegung", "L_Belegung"},   {"Letzte Trächtigkeit", "L_Trächtigkeit"},
                                      {"Letzte Ferkelung", "L_Ferkelung"}, {"Letzte Absetzung", "L_Absetzung"}};

    QString read(const Recordset& rows, const QString& field) { return Hochkomma_ersetzen(rows.value(field)); }
    QString fieldOf(const Recordset& option, const char* name) { return fields[read(option, name)]; }

    void row(const Recordset& animal, const QString& from, const QString& to, const QString& work) {
        QString ticked, days;
        for (int i = 0; i < 4; ++i)
            if (form.kon[i].checked()) ticked += read(animal, form.kon[i].caption()) + "\t";
        for (QString d = start; schluessel(d) <= schluessel(end); d = plus(d, 1))
            days += form.t[schluessel(from) <= schluessel(d) && schluessel(d) <= schluessel(to) ? 0 : 1].text() + "\t";
        lines += chart ? ticked + days + work + "\t" + from + "\t" + to + "\t"
                       : from + "\t" + to + "\t" + work + "\t" + ticked;
    }

    void work(const Recordset& animal, Recordset& options, const QString& name) {
        options.findFirst("Arbeitsart = '" + name + "'");
        if (options.noMatch()) return;
        const auto later = [&](const QString& a, const QString& b) {
            return !a.isEmpty() && !b.isEmpty() && schluessel(read(animal, a)) > schluessel(read(animal, b));
        };
        if (later(fieldOf(options, "Aktiv_klein"), fieldOf(options, "Aktiv_gross"))) return;
        if (later(fieldOf(options, "Erledigt_gross"), fieldOf(options, "Erledigt_klein"))) return;
        const QString field = fieldOf(options, "Bezugstermin");
        const QString reference = field.isEmpty() ? QString() : read(animal, field);
        if (!Ist_Datum(reference)) return;
        const QString from = plus(reference, static_cast<int>(options.value(u"Tage_von").toInt()));
        const QString to = plus(reference, static_cast<int>(options.value(u"Tage_bis").toInt()));
        const QString X = schluessel(from), Y = schluessel(to), A = schluessel(start), E = schluessel(end);
        const bool outside = (X < A || X > E) && (Y < A || Y > E);
        if (!(outside && (X >= A || Y <= E))) row(animal, from, to, name);
    }

    void block(const Recordset& animal) {
        const Recordset found = farm.db.open("select max(Wartezeit_Datum) as xdatum from Behandlung where Kennung = " +
                                             animal.value(u"ID").toText());
        const QString last = read(found, "xdatum");
        if (Ist_Datum(last) && schluessel(last) >= schluessel(start)) row(animal, start, last, "Fleischverkaufssperre");
    }

    QStringList run() {
        QString select = "select * from Sauen where Abgangsdatum IS NULL";
        if (form.konnurweiblich.checked()) select += " and Art = 'Sau'";
        Recordset animal = farm.db.open(select), options = farm.db.open("select * from Arbeitsplanoptionen");
        for (; !animal.eof(); animal.moveNext()) {
            for (int i = 0; i < form.liarplan.items().size(); ++i)
                if (form.liarplan.marked(i)) work(animal, options, form.liarplan.items()[i]);
            if (form.wartezeit.checked()) block(animal);
        }
        return sorted();
    }

    /// By the grid itself, over the columns that the sort keys name.
    QStringList sorted() {
        Grid grid(form, "grid");
        QStringList ticked, days;
        for (int i = 0; i < 4; ++i)
            if (form.kon[i].checked()) ticked += form.kon[i].caption();
        for (QString d = start; chart && schluessel(d) <= schluessel(end); d = plus(d, 1)) days += "WT";
        const QStringList keys =
            chart ? ticked + days + QStringList{"Termin", "Vom", "Bis"} : QStringList{"Vom", "Bis", "Termin"} + ticked;
        for (const QString& key : keys)
            grid.addColumn({.key = key, .title = key, .sort = key == "Vom" || key == "Bis" ? Sort::Date : Sort::Text});
        for (const QString& line : lines) grid.addRow(line.split(u'\t'));
        const QStringList orders{"nummer", "art,nummer", "stallnr,nummer", "gruppe,nummer"};
        const QStringList order = (chart ? orders[form.optisort.selected()] : QString("vom,bis,nummer")).split(u',');
        for (auto key = order.crbegin(); key != order.crend(); ++key) grid.sort(grid.columnOf(*key), 1);
        return gridText(grid).mid(1);
    }
};

void makeOptions(Planhof& farm, Zufall& z) {
    const QStringList dates = Terminnamen() + QStringList{"", "", "Letzter Besuch"};
    farm.db.execute("delete from Arbeitsplanoptionen");
    Recordset rows = farm.db.open("select * from Arbeitsplanoptionen where ID = 0");
    for (const QString name : {"Impfung", "Kontrolle", "Umstallung", "impfung", "Zukauf"}) {
        rows.addNew();
        rows.set(u"Arbeitsart", name);
        const int from = z.upTo(60);
        rows.set(u"Tage_von", from);
        rows.set(u"Tage_bis", from + z.upTo(40) - 2);
        for (const QString field : {"Bezugstermin", "Aktiv_gross", "Aktiv_klein", "Erledigt_gross", "Erledigt_klein"})
            rows.set(field, z.of(dates));
        rows.update();
    }
}

void makeHerd(Planhof& farm, Zufall& z) {
    for (int i = 0; i < 60; ++i) {
        std::map<QString, QString> animal{{"Nummer", z.of({"A", "a ", "Ä", "B-", "ß", "'"}) + QString::number(i % 23)},
                                          {"Art", z.of({"Sau", "Eber", "sau", "Mast"})},
                                          {"Stallnr", z.of({"", "1", "10", "2"})},
                                          {"Gruppe", z.of({"Läufer", "lAUFER", "Zuchtsau "})},
                                          {"Abgangsdatum", z.oneIn(5) ? "01.07.2026" : ""}};
        for (const char* name :
             {"Geburtsdatum", "Zugangsdatum", "L_Belegung", "L_Trächtigkeit", "L_Ferkelung", "L_Absetzung"})
            animal[name] = z.date(60);
        farm.add("Sauen", animal);
    }
    for (int i = 0; i < 50; ++i)
        farm.add("Behandlung", {{"Kennung", QString::number(1 + z.upTo(70))}, {"Wartezeit_Datum", z.date(30)}});
}

void choose(PB_Arbeitsplan& form, Zufall& z) {
    form.woche[z.upTo(3)].click();
    form.tdat.type(z.of({"15072026", "1.8.2026", "30.06.2026"}));
    form.tdat.leave();
    for (int i = 0; i < 4; ++i)
        if (z.oneIn(2)) form.kon[i].click();
    if (z.oneIn(2)) form.konnurweiblich.click();
    if (z.oneIn(2)) form.wartezeit.click();
    form.optisort[z.upTo(3)].click();
    form.t[1].type(".");
    for (int i = 0; i < form.liarplan.items().size(); ++i) form.liarplan.setMarked(i, z.oneIn(2));
}

TEST(ArbeitsplanZufall, ListsAndChartsEqualTheLiteralWalk) {
    int compared = 0;
    for (unsigned seed = 1; seed <= 4; ++seed) {
        Zufall z{std::mt19937(seed)};
        Planhof farm;
        makeOptions(farm, z);
        makeHerd(farm, z);
        for (int run = 0; run < 5; ++run)
            farm.in<PB_Arbeitsplan>("PB_Arbeitsplan", [&](PB_Arbeitsplan& form) {
                choose(form, z);
                const bool chart = z.oneIn(2);
                QFile::remove(farm.path("gridli.txt"));
                form.ok[chart ? 1 : 0].click();
                Rundgang walk{farm, form, chart, form.tdat.text(), form.Bezeichnung1.text().mid(4), {}};
                const QStringList expected = walk.run();
                const QStringList got =
                    farm.exists("gridli.txt") ? farm.handedOver().mid(chart ? 6 : 1) : QStringList();
                EXPECT_EQ(got, expected) << "seed " << seed << ", run " << run;
                compared += static_cast<int>(expected.size());
            });
    }
    EXPECT_GT(compared, 150) << "the herds are too dull to try anything";
}

/// What is open on a day, against the plans of that day and of all days before it.
TEST(ArbeitsplanZufall, ADaysWorkIsThePlans) {
    const auto day = static_cast<qint32>(QDate(2026, 7, 15).toJulianDay());
    size_t compared = 0;
    for (unsigned seed = 1; seed <= 6; ++seed) {
        Zufall z{std::mt19937(seed)};
        Planhof farm;
        makeOptions(farm, z);
        makeHerd(farm, z);
        const auto works = Arbeiten_lesen(farm.db.table("select * from Arbeitsplanoptionen"),
                                          {"Impfung", "Kontrolle", "Umstallung", "Zukauf", "fehlt"});
        const auto lines = [](const Table& animals, const std::vector<Faelligkeit>& plan, const auto& counts) {
            QStringList all;
            for (const Faelligkeit& due : plan)
                if (counts(due))
                    all += QStringLiteral("%1 %2 %3 %4")
                               .arg(animals.integer(due.animal, 0))
                               .arg(due.work)
                               .arg(due.from)
                               .arg(due.to);
            return all;
        };
        const auto planned = [&](Planzeitraum period, const auto& counts) {
            const Table animals = Tiere_lesen(farm.db, works, period, {});
            return lines(animals, Arbeitsplan_berechnen(animals, works, period, {}, [](int) { return true; }), counts);
        };
        const auto all = [](const Faelligkeit&) { return true; };
        const Tagesarbeit open = computeTagesarbeit(farm.db, works, day);
        EXPECT_EQ(lines(open.animals, open.due, all), planned({day, day}, all)) << seed;
        EXPECT_EQ(lines(open.animals, open.overdue, all),
                  planned({day - 10000, day - 1},
                          [&](const Faelligkeit& due) {
                              return due.to < day && due.from < day && works[static_cast<size_t>(due.work)].ends();
                          }))
            << seed;
        compared += open.due.size() + open.overdue.size();
    }
    EXPECT_GT(compared, 30) << "the herds are too dull to try anything";
}

}  // namespace
}  // namespace koben
