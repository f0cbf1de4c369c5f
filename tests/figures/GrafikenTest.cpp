// The plots over random herds against a second computation, and what stands behind each cell.
#include "figures/PA_Grafiken.h"

#include <cmath>

#include "figures/Bestandsgang.h"
#include "output/PA_Erklaerung.h"
#include "tests/figures/Zufallsherde.h"
#include "tests/support/Hof.h"

namespace koben {
namespace {

/// By class and column: the parts, and how many there are.
using Naiv = std::map<std::pair<QString, int>, std::pair<double, double>>;

struct Zweite {
    const Hof& hof;
    const std::vector<naiv::Tier>& herd;
    Zeitraum period;
    int tragezeit;

    bool in(int d) const { return period.contains(d); }
    QDate date(int d) const { return QDate::fromJulianDay(d); }
    template <class Use>
    void each(const Use& use) const {
        for (size_t i = 0; i < herd.size(); ++i)
            if (herd[i].sau) use(naiv::Sau(herd[i], Today), static_cast<int>(i) + 1);
    }

    Naiv belegungen() const {
        Naiv all;
        const int end = um(Takt::Woche, period.bis).bis + 17 * 7;
        const auto add = [&](int d, int column) { ++all[{Taktname(Takt::Woche, d), column}].first; };
        each([&](const naiv::Sau& s, int) {
            for (const int g : s.gruppen) {
                if (in(g)) add(g, 2);
                const int due = g + tragezeit;
                bool lost = s.abgang != 0 && s.abgang < due;
                for (int d = g + 1; d < due; ++d) lost = lost || s.gruppen.contains(d) || s.nein.contains(d);
                if (!lost && period.von <= due && due <= end) add(due, 4);
            }
            for (const auto& [f, w] : s.wuerfe)
                if (period.von <= f && f <= end) add(f, 5);
        });
        return all;
    }
    Naiv wuerfe(const QString& plot) const {
        Naiv all;
        const auto add = [&](const QString& name, int column, double part) {
            auto& [sum, count] = all[{name, column}];
            sum += part, ++count;
        };
        each([&](const naiv::Sau& s, int) {
            int number = 0;
            for (const auto& [f, w] : s.wuerfe) {
                const QString nth = ++number < 10 ? QString::number(number) : "10+";
                if (plot == "ferkel_wurfnummer") {
                    if (in(f)) add(nth, 2, w.lebend), add(nth, 4, 1);
                    if (w.abgesetzt != 0 && in(w.abgesetzt)) add(nth, 3, w.w), add(nth, 5, 1);
                } else if (in(f) && plot == "wurfgroessen") {
                    add(QString::number(w.gesamt), 2, 1), add(QString::number(w.lebend), 3, 1);
                } else if (in(f)) {
                    add(QLocale("de").dayName(date(f).dayOfWeek()), 3, 1);
                }
            }
            for (const int g : s.gruppen)
                if (in(g) && plot == "wochentage") add(QLocale("de").dayName(date(g).dayOfWeek()), 2, 1);
        });
        return all;
    }
    Naiv umrauschen() const {
        Naiv all;
        each([&](const naiv::Sau& s, int) {
            for (const int g : s.gruppen)
                if (const int days = s.returnAfter(g, 46); in(g) && days > 0 && Today - g > 46)
                    ++all[{QString::number(days), 2}].first;
        });
        return all;
    }
    Naiv verluste() const {
        Naiv all;
        const Table rows = hof.db.table("select Kennung, Datum, Anzahl_Ferkel, Grund from Verluste");
        each([&](const naiv::Sau& s, int id) {
            for (int row = 0; row < rows.rowCount(); ++row) {
                const int d = rows.value(row, 1).isNull() ? 0 : int(rows.value(row, 1).toDate().toJulianDay());
                if (rows.integer(row, 0) != id || !in(d)) continue;
                const auto after = s.wuerfe.upper_bound(d);
                const int age = after == s.wuerfe.begin() ? -1 : d - std::prev(after)->first;
                const QString cause = rows.text(row, 3);
                for (const QString& name :
                     {cause.isEmpty() ? QString("ohne Grund") : cause, age < 0    ? QString("?")
                                                                       : age < 8  ? QString::number(age)
                                                                       : age < 15 ? QString("W2")
                                                                       : age < 22 ? QString("W3")
                                                                       : age < 29 ? QString("W4")
                                                                                  : QString("W5+")})
                    all[{name, 3}].first += static_cast<double>(rows.integer(row, 2));
            }
        });
        return all;
    }
    Naiv bestand() const {
        Naiv all;
        for (int d = period.von; d <= period.bis; ++d) {
            if (d != period.bis && date(d).month() == date(d + 1).month()) continue;
            for (int kind = 0; kind < 4; ++kind)
                for (size_t i = 0; i < herd.size(); ++i)
                    if ((herd[i].sau ? 0 : 1) == kind && herd[i].zugang <= d &&
                        (herd[i].abgang == 0 || herd[i].abgang > d))
                        ++all[{Taktname(Takt::Monat, d), kind + 2}].first;
        }
        return all;
    }
    Naiv eber() const {
        std::map<QString, std::vector<std::pair<bool, int>>> boars;  // whether farrowed, live born
        each([&](const naiv::Sau& s, int id) {
            for (const int g : s.gruppen) {
                const Table first =
                    hof.db.table(QString("select Ebernr from Belegung where Kennung = %1 and Datum = %2 "
                                         "and Ebernr <> '' order by ID")
                                     .arg(id)
                                     .arg(Sql_Datum(Tag_als_Text(g))));
                if (!in(g) || Today - g <= 125 || first.rowCount() == 0) continue;
                auto& served = boars[first.text(0, 0)];
                served.emplace_back(false, 0);
                for (const auto& [f, w] : s.wuerfe)
                    if (w.beleg == g) served.back() = {true, w.lebend};
            }
        });
        Naiv all;
        QMap<QString, int> n;
        for (const auto& [boar, served] : boars) n[served.size() < 5 ? "übrige" : boar] += int(served.size());
        for (const auto& [boar, served] : boars)
            for (const auto& [farrowed, alive] : served) {
                const QString key = served.size() < 5 ? "übrige" : boar;
                const QString name = QString("%1 (n=%2)").arg(key).arg(n[key]);
                all[{name, 2}].first += farrowed ? 100 : 0, ++all[{name, 2}].second;
                ++all[{name, 5}].first;
                if (farrowed) all[{name, 6}].first += alive, ++all[{name, 6}].second, ++all[{name, 9}].first;
            }
        return all;
    }
};

void expectSame(const QString& id, const Grafikinhalt& plot, const Naiv& naive, const std::set<int>& means) {
    std::set<std::pair<QString, int>> seen;
    for (int row = 1; row <= std::ssize(plot.table.rows); ++row)
        for (int column = 2; column <= std::ssize(plot.table.columns); ++column) {
            const auto at = naive.find({plot.table.cell(row, 1).toText(), column});
            const Value& cell = plot.table.cell(row, column);
            if (at == naive.end()) continue;
            seen.insert(at->first);
            const auto& [sum, count] = at->second;
            const double wanted = means.contains(column) ? std::round(sum / count * 10) / 10 : sum;
            EXPECT_NEAR(cell.toDouble(), wanted, 1e-9)
                << id.toStdString() << " " << at->first.first.toStdString() << " " << column;
        }
    EXPECT_EQ(seen.size(), naive.size()) << id.toStdString();
    // What the second computation has nothing of is empty or 0.
    std::set<int> columns;
    for (const auto& [key, value] : naive) columns.insert(key.second);
    for (int row = 1; row <= std::ssize(plot.table.rows); ++row)
        for (const int column : columns)
            if (!naive.contains({plot.table.cell(row, 1).toText(), column})) {
                EXPECT_EQ(plot.table.cell(row, column).toDouble(), 0) << id.toStdString() << row << " " << column;
            }
}

/// The bookings and animals behind each cell add up to it; every bar and point has some.
void expectExplained(const QString& id, const Grafikinhalt& plot) {
    const auto added = [](const Explanation& told, const char16_t* title) {
        double sum = 0;
        for (size_t c = 0; c < told.columns.size(); ++c)
            for (const auto& line : told.lines)
                if (told.columns[c].title == title) sum += line.cells.value(static_cast<qsizetype>(c)).toDouble();
        return sum;
    };
    const auto number = [](QString text) { return text.remove(u'.').replace(u',', u'.').toDouble(); };
    for (int row = 1; row <= std::ssize(plot.table.rows); ++row)
        for (int column = 1; column <= std::ssize(plot.table.columns); ++column) {
            const auto told = plot.behind(row, column);
            const std::string where = id.toStdString() + " " + std::to_string(row) + "." + std::to_string(column);
            if (!told) continue;
            EXPECT_EQ(told->value.value_or(""), plot.table.text(row, column)) << where;
            if (told->numerator) {
                EXPECT_EQ(added(*told, u"Zähler"), number(*told->numerator)) << where;
            }
            if (told->denominator) {
                EXPECT_EQ(added(*told, u"Nenner"), number(*told->denominator)) << where;
            }
            if (!told->numerator) {
                EXPECT_EQ(added(*told, u"Wert"), number(told->value.value_or(""))) << where;
            }
        }
    for (const ChartPanel& panel : plot.chart.panels)
        for (const Series& series : panel.series)
            for (int row = panel.firstRow; row <= (panel.lastRow ? panel.lastRow : std::ssize(plot.table.rows)); ++row)
                if (series.look != Look::Target && plot.table.cell(row, series.column).toDouble() != 0) {
                    const auto told = plot.behind(row, series.column);
                    ASSERT_TRUE(told) << id.toStdString();
                    EXPECT_FALSE(told->lines.empty()) << id.toStdString() << row << " " << series.column;
                }
}

TEST(Grafiken, WieEineZweiteRechnung) {
    for (unsigned seed = 1; seed <= 15; ++seed) {
        Hof hof;
        Zufallsherde random(seed);
        random.write(hof.db);
        for (const char* statement :
             {"update Verluste set Grund = 'erdrückt' where ID < 4",
              "update Verluste set Grund = 'Durchfall' where ID > 9", "update Belegung set Ebernr = 'E1' where ID < 30",
              "update Belegung set Ebernr = 'E2' where ID > 40"})
            hof.sql(QString::fromUtf8(statement));
        Grafikauftrag order{.db = hof.db, .heute = Today, .tragezeit = 115, .ziel = 12};
        order.period.von = random.between(day(2018, 6, 1), Today - 30);
        order.period.bis = std::min(order.period.von + random.between(0, 700), Today);
        const Zweite naive{hof, random.herd(), order.period, order.tragezeit};
        const std::pair<const char*, Naiv> wanted[] = {{"belegungen_woche", naive.belegungen()},
                                                       {"ferkel_wurfnummer", naive.wuerfe("ferkel_wurfnummer")},
                                                       {"wurfgroessen", naive.wuerfe("wurfgroessen")},
                                                       {"wochentage", naive.wuerfe("wochentage")},
                                                       {"umrauschen_tage", naive.umrauschen()},
                                                       {"verluste", naive.verluste()},
                                                       {"bestand_art", naive.bestand()},
                                                       {"eber_vergleich", naive.eber()}};
        for (const auto& [id, cells] : wanted) {
            const QString name(id);
            const std::set<int> means = name == "ferkel_wurfnummer" ? std::set{2, 3}
                                        : name == "eber_vergleich"  ? std::set{2, 6}
                                                                    : std::set<int>{};
            expectSame(name, Grafik_berechnen(*grafik(name), order), cells, means);
        }
        for (const Grafik& plot : Grafiken()) expectExplained(QString(plot.id), Grafik_berechnen(plot, order));
        if (HasFailure())
            return void(ADD_FAILURE() << "seed " << seed << ", " << Zeitraumtext(order.period).toStdString());
    }
}

/// Weeks to come have no services yet, and no litters; an empty herd has nothing, and says so.
TEST(Grafiken, VoraussichtUndLeere) {
    Hof hof;
    hof.koben.Heute = "20.01.2021";
    Grafikauftrag order{.db = hof.db, .heute = Today, .period = {day(2020, 11, 30), Today}, .tragezeit = 115};
    for (const Grafik& plot : Grafiken()) {
        const Grafikinhalt content = Grafik_berechnen(plot, order);
        EXPECT_TRUE(QString::fromUtf8(plot.satz).endsWith(u'.'));
        for (int row = 1; row <= std::ssize(content.table.rows); ++row)
            for (int column = 2; column <= std::ssize(content.table.columns); ++column)
                if (!content.table.cell(row, column).isText()) {
                    EXPECT_EQ(content.table.cell(row, column).toDouble(), 0) << plot.id;
                }
    }
    hof.tier("1");
    hof.sql("insert into Belegung (Datum, Kennung) values (#01/11/2021#, 1)");
    order.ziel = 20;
    const ChartTable weeks = Grafik_berechnen(*grafik(u"belegungen_woche"), order).table;
    QStringList lines;
    for (int row = 1; row <= std::ssize(weeks.rows); ++row) {
        QStringList cells;
        for (int column = 1; column <= 5; ++column) cells += weeks.text(row, column);
        lines += cells.join(u'|');
    }
    EXPECT_EQ(lines.size(), 8 + 17);
    EXPECT_EQ(lines[4], "2020-W53|0|20|0|0");
    EXPECT_EQ(lines[6], "2021-W02|1|20|0|0");
    EXPECT_EQ(lines[8], "2021-W04|||0|");
    EXPECT_EQ(lines[22], "2021-W18|||1|");  // 6 May
}

/// What has changed is read again, and gives what all anew would.
TEST(Bestandsgang, FolgtDenAenderungen) {
    Hof hof;
    const auto stock = [&](qint32 from) {
        return Bestandsgang_holen(hof.db, from)->on({day(2020, 6, 1), day(2020, 11, 1)});
    };
    EXPECT_EQ(stock(day(2020, 6, 1))[1], Bestand());
    std::mt19937 bits(5);
    for (int step = 0; step < 60; ++step) {
        const int id = static_cast<int>(bits() % 12) + 1;
        const QString day = QString("#%1/15/2020#").arg(bits() % 12 + 1);
        switch (bits() % 4) {
            case 0:
                hof.tier(QString::number(step), bits() % 2 ? "Sau" : "Mast");
                break;
            case 1:
                hof.sql("update Sauen set Zugangsdatum = %1 where ID = %2", day, id);
                break;
            case 2:
                hof.sql("update Sauen set Abgangsdatum = %1 where ID = %2", day, id);
                break;
            default:
                if (step % 20 == 0)
                    hof.sql("delete from Sauen");
                else
                    hof.sql("delete from Sauen where ID = %1", id);
        }
        EXPECT_EQ(stock(koben::day(2020, 6, 1)), stock(koben::day(2020, 1, 1))) << step;
        EXPECT_EQ(stock(koben::day(2020, 6, 1)),
                  Bestandsgang(hof.db, 0).on({koben::day(2020, 6, 1), koben::day(2020, 11, 1)}))
            << step;
    }
}

/// The window's form: choices, the way from a bar to its bookings, files, what is refused.
TEST(PA_Grafiken, BedienungUndAusgabe) {
    Hof hof;
    hof.koben.Heute = "20.01.2021";
    hof.catalogue.add<PA_Grafiken>("PA_Grafiken");
    hof.catalogue.add<PA_Erklärung>("PA_Erklärung");
    hof.tier("1");
    for (const char* day : {"10/05/2020", "10/26/2020", "11/09/2020"})
        hof.sql("insert into Belegung (Datum, Kennung) values (#%1#, 1)", day);
    const QString file = hof.path("bild");
    hof.screens.workIn<PA_Grafiken>([&](PA_Grafiken& form) {
        EXPECT_EQ(form.tdat[0].text() + " " + form.tdat[1].text(), "20.01.2020 20.01.2021");
        EXPECT_EQ(form.li.items().size(), 12);
        form.ziel.type("25"), form.ziel.leave();
        EXPECT_EQ(form.gridli.cell(1, 3), "25");
        form.li.choose(5);
        EXPECT_EQ(form.caption(), "Grafiken: Tage von der Belegung bis zum Umrauschen");
        ASSERT_EQ(form.bild.sketch().areas.size(), 2u);
        form.gridli.sortByUser(2, 2);  // the two of 14 and 21 days come to the top
        form.bild.choose("18.2");
        EXPECT_EQ(form.gridli.cell(form.gridli.row(), 1), "21");
        EXPECT_EQ(form.bild.beside(-1, 0), "11.2");
        form.gridli.choose(form.gridli.findText(u"tage", "14"));
        EXPECT_EQ(form.bild.currentText(), "14: Belegungen 1");
        QString told;
        hof.screens.workIn<PA_Erklärung>([&](PA_Erklärung& why) {
            told = why.satz.text() + why.gridli.cell(1, 1) + " " + why.gridli.cell(1, 2) + " " + why.wert[0].text();
        });
        form.bild.key(Key::Enter);
        EXPECT_TRUE(told.endsWith("1 26.10.2020 1")) << told.toStdString();
        hof.screens.inputs = {file, "", file + ".png"};
        for (const int kind : {1, 2, 0}) form.datei[kind].click();
        form.drucken.click();
        form.tdat[1].type("01.01.2020"), form.tdat[1].leave();
        EXPECT_EQ(form.gridli.rowCount(), 0);
        EXPECT_TRUE(form.bild.sketch().areas.empty());
        form.ok.click();
    });
    hof.koben.open("PA_Grafiken");
    QFile svg(file + ".svg");
    ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
    EXPECT_TRUE(svg.readAll().contains("Umrauschen"));
    const QStringList messages = hof.screens.log.filter(QRegularExpression("^!"));
    ASSERT_EQ(messages.size(), 2);  // no picture without a window, and no list of nothing
    EXPECT_TRUE(messages[0].contains("konnte nicht geschrieben werden"));
    EXPECT_TRUE(messages[1].endsWith("...das Datum von kleiner sein muß als das Datum bis."));
    hof.screens.workIn<PA_Grafiken>([&](PA_Grafiken& form) { EXPECT_EQ(form.ziel.text(), "25"); });
    hof.koben.open("PA_Grafiken");
}

}  // namespace
}  // namespace koben
