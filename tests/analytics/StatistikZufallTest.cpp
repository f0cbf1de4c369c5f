// The statistics over random herds against a second computation: a query an animal and measure, with texts.
#include <random>

#include "analytics/PB_Statistiken.h"
#include "tests/support/Hof.h"

namespace koben {
namespace {

QString one(double number) { return Zahl_formatieren(QString::number(number, 'f', 9), 1); }
QString whole(double number) { return QString::number(std::llround(number)); }

struct Naive {
    Database db;
    int zyklus, gewicht;
    QString from;    // what stands between "from" and the conditions on the bookings, with %1 the table
    QString clause;  // the period or the year
    Recordset* sow = nullptr;

    Table rows(const QString& fields, const QString& table, const QString& more = {}) const {
        return db.table("select " + fields + " from " + from.arg(table) + clause + more);
    }
    double count(const QString& table, const QString& more = {}) const { return rows("Datum", table, more).rowCount(); }
    double sum(const QString& expression, const QString& table) const {
        return rows("sum(" + expression + ") as s", table).value(0, 0).toDouble();
    }
    double latest(const QString& table, const QString& id, QDate day) const {
        const Table found = db.table("select top 1 Datum from " + table + " where Kennung = " + id + " and Datum < " +
                                     Sql_Datum(Datum_als_Anzeige(day)) + " order by Datum DESC");
        return found.rowCount() == 0 ? -1 : static_cast<double>(found.value(0, 0).toDate().daysTo(day));
    }
    struct Gap {
        double days = 0, found = 0, all = 0;
    };
    Gap gap(const QString& outer, const QString& inner) const {
        const Table found = rows("Kennung, Datum", outer);
        Gap gap{.all = double(found.rowCount())};
        for (int row = 0; row < found.rowCount(); ++row)
            if (const QDate day = found.value(row, 1).toDate(); day.isValid())
                if (const double days = latest(inner, found.text(row, 0), day); days >= 0)
                    gap.days += days, ++gap.found;
        return gap;
    }
    QString mean(const QString& outer, const QString& inner) const {
        const Gap g = gap(outer, inner);
        return g.found > 0 ? one(g.days / g.found) : g.all > 0 || !sow ? "0,0" : "";
    }
    QString share(double a, double b, double factor = 1) const { return b == 0 ? "" : one(a * factor / b); }
    QString perYear(const char* field) const {
        if (!sow) return "-";
        const double stored = sow->value(QString(field)).toDouble();
        const Table first = rows("top 1 Datum", "Belegung", " order by Datum");
        const Table last = rows("top 1 Datum", "Ferkelung", " order by Datum DESC");
        if (stored == 0 || first.rowCount() == 0 || last.rowCount() == 0) return {};
        const QDate a = first.value(0, 0).toDate(), b = last.value(0, 0).toDate();
        if (!a.isValid() || !b.isValid() || a.daysTo(b) <= 0) return {};
        return one(stored * 365 / double(a.daysTo(b) + zyklus));
    }
    QString gain() const {
        if (!sow) return "-";
        const double n = sum("Anzahl_Ferkel", "Absetzung"), g = weight(), days = gap("Absetzung", "Ferkelung").days;
        return g == 0 || n == 0 || days == 0
                   ? ""
                   : Zahl_formatieren(QString::number((g * 1000 - gewicht * n) / n / days, 'f', 9), 0);
    }
    double weight() const { return sum("Stück_Gewicht_kg * Anzahl_Ferkel", "Absetzung"); }
    QString orEmpty(double n) const { return n == 0 && sow ? "" : whole(n); }

    /// The cells of one sow or year; none for what a year does not have.
    QStringList cells() const {
        const double litters = count("Ferkelung"), born = sum("Ferkel_Gesamt", "Ferkelung"),
                     alive = sum("Ferkel_Lebendig", "Ferkelung"), dead = sum("Ferkel_Tot", "Ferkelung"),
                     lost = sum("Anzahl_Ferkel", "Verluste"), weaned = sum("Anzahl_Ferkel", "Absetzung"),
                     yes = count("Trächtigkeit", " and Trächtig = 'J'"),
                     no = count("Trächtigkeit", " and Trächtig = 'N'");
        QStringList all{mean("Ferkelung", "Belegung"),
                        mean("Absetzung", "Ferkelung"),
                        mean("Belegung", "Absetzung"),
                        mean("Absetzung", "Belegung"),
                        orEmpty(count("Belegung")),
                        sow ? sow->value(u"Anz_Belegungen").toText() : "-",
                        orEmpty(litters),
                        perYear("Anz_Ferkelungen")};
        if (sow) all += perYear("Anz_Ferkel_Gesamt");
        double to = 0, of = 0;
        const Table moves = rows("Anzahl_Ferkel", "Verschiebung");
        for (int row = 0; row < moves.rowCount(); ++row)
            (moves.integer(row, 0) > 0 ? to : of) += std::abs(double(moves.integer(row, 0)));
        return all + QStringList{whole(born),
                                 share(born, litters),
                                 whole(alive),
                                 share(alive, litters),
                                 share(alive, born, 100),
                                 whole(dead),
                                 share(dead, litters),
                                 share(dead, born, 100),
                                 whole(lost),
                                 share(lost, litters),
                                 share(lost, alive, 100),
                                 whole(weaned),
                                 share(weaned, sow ? count("Absetzung") : litters),
                                 share(weight(), weaned),
                                 gain(),
                                 whole(yes),
                                 whole(no),
                                 share(yes, yes + no, 100),
                                 whole(to),
                                 whole(of)};
    }
    /// The cells of one boar, or of a year where he is none.
    QStringList boar(const QString& condition, bool year) const {
        const Table s = db.table("select Datum, Kennung from Belegung where " + condition);
        double yes = 0, no = 0;
        QDate a, b;
        for (int row = 0; row < s.rowCount(); ++row) {
            const QDate day = s.value(row, 0).toDate();
            if (!day.isValid()) continue;
            a = a.isValid() ? std::min(a, day) : day, b = b.isValid() ? std::max(b, day) : day;
            if (s.isNull(row, 1)) continue;
            const Table check =
                db.table("select top 1 Trächtig from Trächtigkeit where Datum >= " + Sql_Datum(Datum_als_Anzeige(day)) +
                         " and Kennung = " + s.text(row, 1));
            if (check.rowCount() > 0) ++(check.text(0, 0) == u"J" ? yes : no);
        }
        const int months = (b.year() - a.year()) * 12 + b.month() - a.month();
        QStringList all{whole(s.rowCount())};
        if (year)
            all += s.rowCount() == 0 ? "" : one(s.rowCount() / 12.0);
        else
            all += {a.isValid() && months != 0 ? one(double(s.rowCount()) / months) : "", Datum_als_Anzeige(a),
                    Datum_als_Anzeige(b)};
        return all + QStringList{whole(yes), whole(no), share(no, yes + no, 100)};
    }
    /// Litters by their place among those of the sow.
    QStringList litters(int first, int last) const {
        std::map<int, std::array<double, 3>> sums;
        const Table sows = db.table("select ID from Sauen where Art = 'Sau'");
        for (int s = 0; s < sows.rowCount(); ++s) {
            const Table all = db.table(
                "select Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot from Ferkelung where Kennung = " + sows.text(s, 0) +
                " order by Datum");
            for (int row = 0; row < all.rowCount(); ++row)
                for (int c = 0; c < 3 && row + 1 >= first && row + 1 <= last; ++c)
                    for (const int key : {0, row + 1}) sums[key][size_t(c)] += double(all.integer(row, c));
        }
        QStringList lines;
        for (int i = first; i <= last + 1; ++i) {
            const auto [all, alive, dead] = sums[i > last ? 0 : i];
            lines +=
                QStringList{
                    i > last ? "GESAMT" : QString::number(i),  whole(all),  whole(alive),
                    all == 0 ? "0,0" : share(alive, all, 100), whole(dead), all == 0 ? "0,0" : share(dead, all, 100)}
                    .join(u'|');
        }
        return lines;
    }
    QStringList overview(int first, int last) const {
        QStringList lines;
        const Table sows = db.table(
            "select ID, Nummer, Stallnr, Gruppe from Sauen where Art = 'Sau' and Selektiert = 'X' order by Nummer");
        for (int s = 0; s < sows.rowCount(); ++s) {
            const QString mine = " and Kennung = " + sows.text(s, 0);
            QList<QDate> li;
            const Table days = db.table(
                QStringLiteral("select Datum from Ferkelung where LNr >= %1 and LNr <= %2").arg(first).arg(last) +
                mine + " order by Datum");
            for (int row = 0; row < days.rowCount(); ++row) li += days.value(row, 0).toDate();
            li += QDate(2099, 12, 31);
            std::array<qint64, 6> sums{};
            QStringList head{Hochkomma_ersetzen(sows.text(s, 1)), sows.text(s, 2), sows.text(s, 3)};
            for (int i = 0; i + 1 < li.size(); ++i) {
                if (!li[i].isValid()) continue;
                const QString day = Sql_Datum(Datum_als_Anzeige(li[i]));
                const QString until =
                    " Datum >= " + day + " and Datum < " + Sql_Datum(Datum_als_Anzeige(li[i + 1])) + mine;
                const Table f = db.table(
                    "select LNr, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot from Ferkelung where Datum = " + day +
                    mine);
                const std::array<qint64, 6> n{
                    f.integer(0, 1),
                    f.integer(0, 2),
                    f.integer(0, 3),
                    db.table("select sum(Anzahl_Ferkel) as n from Verluste where" + until).integer(0, 0),
                    -db.table("select sum(Anzahl_Ferkel) as n from Verschiebung where Anzahl_Ferkel < 0 and" + until)
                         .integer(0, 0),
                    db.table("select sum(Anzahl_Ferkel) as n from Verschiebung where Anzahl_Ferkel > 0 and" + until)
                        .integer(0, 0)};
                QStringList line =
                    std::exchange(head, {"", "", ""}) + QStringList{f.text(0, 0), Datum_als_Anzeige(li[i])};
                for (size_t c = 0; c < 6; ++c) sums[c] += n[c], line += QString::number(n[c]);
                lines += line.join(u'|');
            }
            if (li.size() >= 3) {
                QStringList line{"Summe", "", "", QString::number(li.size() - 1), ""};
                for (const qint64 n : sums) line += QString::number(n);
                lines += line.join(u'|');
            }
            if (li.size() > 1) lines += "." + QString(10, u'|');
        }
        return lines;
    }
};

struct Herde : Hof {
    std::mt19937 engine;
    int upTo(int n) { return static_cast<int>(engine() % static_cast<unsigned>(n + 1)); }
    QString day() {
        if (upTo(30) == 0) return "Null";
        return Sql_Datum(Datum_als_Anzeige(QDate(2023, 1, 1).addDays(upTo(1200))));
    }
    QString of(const QStringList& texts) { return texts[upTo(int(texts.size()) - 1)]; }
    explicit Herde(unsigned seed) : engine(seed) { catalogue.add<PB_Statistiken>("PB_Statistiken"); }
    void fill() {
        for (const char* table :
             {"Sauen", "Belegung", "Trächtigkeit", "Ferkelung", "Absetzung", "Verluste", "Verschiebung"})
            sql("delete from %1", QString::fromUtf8(table));
        const auto add = [&](const QString& table, const QString& fields, const QString& values) {
            sql("insert into " + table + " (" + fields + ") values (" + values + ")");
        };
        const QStringList counts{"0", "1", "8", "12", "13", "Null"};
        for (int i = 0; i < 9; ++i)
            add("Sauen", "Art, Nummer, Stallnr, Selektiert, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt",
                of({"'Sau'", "'Sau'", "'Sau'", "'Eber'", "'Mast'"}) + ", '" +
                    of({"E1", "e1 ", "7", "a'b", ""}).remove(u'\'') + "', 'S1', " + of({"'X'", "''", "Null"}) + ", " +
                    of(counts) + ", " + of(counts) + ", " + of(counts));
        const Table ids = db.table("select ID from Sauen");
        for (int i = 0; i < 9 * 9; ++i) {
            const QString key = ", " + (upTo(20) == 0 ? of({"99999", "Null"}) : ids.text(upTo(ids.rowCount() - 1), 0)),
                          d = day();
            add("Belegung", "Datum, Ebernr, Kennung", d + ", " + of({"'E1'", "'7'", "'x'", "''", "Null"}) + key);
            add("Trächtigkeit", "Datum, Trächtig, Kennung", day() + ", " + of({"'J'", "'N'", "'?'", "Null"}) + key);
            add("Ferkelung", "Datum, LNr, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot, Kennung",
                day() + ", " + of({"1", "2", "3", "Null"}) + ", " + of(counts) + ", " + of(counts) + ", " + of(counts) +
                    key);
            add("Absetzung", "Datum, Anzahl_Ferkel, Stück_Gewicht_kg, Kennung",
                (upTo(5) == 0 ? d : day()) + ", " + of(counts) + ", " + of({"7.25", "6.5", "0", "Null"}) + key);
            add("Verluste", "Datum, Anzahl_Ferkel, Kennung", day() + ", " + of(counts) + key);
            add("Verschiebung", "Datum, Anzahl_Ferkel, Kennung", day() + ", " + of({"-3", "0", "4", "Null"}) + key);
        }
    }
    QStringList expected(int run, bool period) {
        Naive naive{db, koben.Konfig_Zahl[1], koben.Konfig_Zahl[52], {}, {}};
        QStringList lines;
        if (run == 2) return naive.litters(2, 4);
        if (run == 6) return naive.overview(1, 2);
        Recordset animal = db.open(
            QStringLiteral("select * from Sauen where Art = '%1' order by Nummer").arg(run == 0 ? "Sau" : "Eber"));
        for (; run % 3 == 0 && !animal.eof(); animal.moveNext()) {
            const QString head = Hochkomma_ersetzen(animal.value(u"Nummer")) + "|S1||";
            naive.from = "%1 where Kennung = " + animal.value(u"ID").toText();
            if (period) naive.clause = " and Datum >= #03/01/2024# and Datum <= #02/28/2025#";
            naive.sow = &animal;
            lines += head + (run == 0 ? naive.cells()
                                      : naive.boar("Ebernr = '" + animal.value(u"Nummer").toText() + "'", false))
                                .join(u'|');
        }
        naive.sow = nullptr;
        for (int y = 22; run % 3 == 1 && y <= 26; ++y) {
            const QString dates = QStringLiteral(" and Datum >= #01/01/%1# and Datum <= #12/31/%1#").arg(y);
            naive.from = "Sauen, %1 where %1.Kennung = Sauen.ID and Art = 'Sau'";
            naive.clause = dates;
            lines += QString::number(y) + "|" +
                     (run == 1 ? naive.cells() + QStringList{""} : naive.boar("Ebernr <> ''" + dates, true)).join(u'|');
        }
        return lines;
    }
};

/// What explains a cell says the same value, and its rows add up to its figures.
void expectsToAddUp(const Grid& grid, int row, int column) {
    const auto told = grid.explanation(row, column);
    if (!told) return;
    const auto title = [&](int c) { return told->columns[size_t(c)].title; };
    EXPECT_EQ(told->value.value_or(""), grid.cell(row, column));
    std::map<QString, double> sums;
    for (const auto& line : told->lines)
        for (int c = 0; c < line.cells.size(); ++c)
            sums[title(c)] += line.cells[c].isText() ? 0 : line.cells[c].toDouble();
    for (const auto& [name, figure] : told->figures())
        if (sums.contains(name) && !figure.contains(u'.')) {
            EXPECT_NEAR(sums[name], Zahl_aus_Text(QString(figure)), 0.06 + std::abs(sums[name]) * 1e-5)
                << told->sentence.toStdString() << " " << name.toStdString();
        }
}

TEST(Statistik, EveryRunIsThatOfAQueryAnAnimalAndMeasure) {
    Herde farm(20260715);
    for (int round = 0; round < 120 && !testing::Test::HasFailure(); ++round) {
        farm.fill();
        const bool period = round % 2 == 1;
        farm.in<PB_Statistiken>("PB_Statistiken", [&](PB_Statistiken& form) {
            play(form, "tdat(0)=01.03.2024; tdat(1)=28.02.2025; t(0)=22; t(1)=26; t(3)=4");
            form.kon[0].setChecked(period);
            for (const int run : {0, 1, 2, 3, 4, 6}) {
                form.sstab.setFront(run == 3 || run == 4 ? 1 : 0);
                play(form, run == 6 ? "t(2)=1; t(3)=2" : "t(2)=2; t(3)=4");
                for (ListBox* list : {&form.li1, &form.li2})
                    for (int i = 0; i < list->items().size(); ++i) list->setMarked(i, true);
                form.gridli.clear();
                form.ok[run].click();
                const QStringList expected = farm.expected(run, period);
                EXPECT_EQ(gridText(form.gridli).mid(1, expected.size()), expected)
                    << "round " << round << " run " << run;
                for (int cell = 0; cell < 12 && form.gridli.rowCount() > 0; ++cell)
                    expectsToAddUp(form.gridli, 1 + farm.upTo(form.gridli.rowCount() - 1),
                                   1 + farm.upTo(form.gridli.columnCount() - 1));
            }
            form.beenden.click();
        });
        farm.screens.takeLog();
    }
}

}  // namespace
}  // namespace koben
