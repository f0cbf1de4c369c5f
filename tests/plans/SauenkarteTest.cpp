// Sow cards of random herds against a second computation that asks for every cell on its own, and what a failing
// printer leaves behind.
#include "plans/PB_Sauenkarte.h"

#include <random>

#include "tests/plans/Planhof.h"

namespace koben {
namespace {

class Sauenkarte : public testing::Test {
protected:
    Sauenkarte() { hof.catalogue.add<PB_Sauenkarte>("PB_Sauenkarte"); }

    /// Marks all sows and prints, the question answered with yes. The lines without the fonts.
    QStringList print() {
        hof.screens.answers.push_back(true);
        hof.in<PB_Sauenkarte>("PB_Sauenkarte", [](PB_Sauenkarte& form) { play(form, "alletier(0); ok"); });
        if (hof.platform.jobs.empty() || !hof.platform.jobs.back()->ended) return {};
        QStringList lines = hof.platform.jobs.back()->lines;
        for (QString& line : lines)
            if (line != u"{Seite}") line.remove(QRegularExpression("\\{[^}]*\\}"));
        return lines;
    }

    Planhof hof;
};

class Herde {
public:
    explicit Herde(unsigned seed) : m_random(seed) {}
    int number(int most) { return static_cast<int>(m_random() % static_cast<unsigned>(most + 1)); }
    QString day() { return number(30) == 0 ? "" : Datum_als_Anzeige(QDate(2024, 1, 1).addDays(number(250))); }
    void fill(Planhof& hof, int sows) {
        const QStringList reasons{"Verhungert", "totgelegen ", "Grätscher", "Durchfall", ""};
        for (int id = 1; id <= sows; ++id) {
            hof.tier("S" + QString::number(id), "Sau", "L_Belegung = #03/01/2024#");
            const QString sow = QString::number(id);
            for (int n = number(6); n > 0; --n)
                hof.add("Belegung", {{"Kennung", sow}, {"Datum", day()}, {"Ebernr", "E"}});
            for (int n = number(5); n > 0; --n)
                hof.add("Ferkelung", {{"Kennung", sow},
                                      {"Datum", day()},
                                      {"LNr", QString::number(n)},
                                      {"Ferkel_Lebendig", QString::number(number(14))},
                                      {"Ferkel_Tot", QString::number(number(2))}});
            for (int n = number(8); n > 0; --n)
                hof.add("Verluste", {{"Kennung", sow},
                                     {"Datum", day()},
                                     {"Grund", reasons[number(4)]},
                                     {"Anzahl_Ferkel", QString::number(number(4))}});
            for (int n = number(5); n > 0; --n)
                hof.add("Absetzung",
                        {{"Kennung", sow}, {"Datum", day()}, {"Anzahl_Ferkel", QString::number(number(14))}});
        }
    }

private:
    std::mt19937 m_random;
};

/// The table of one card, asked for cell by cell.
class Second {
public:
    Second(Planhof& hof, int sow) : m_hof(hof), m_sow(sow) {}

    QStringList lines() {
        QStringList lines;
        const QStringList days =
            column("select Datum from Belegung where Kennung = %1 and Datum IS NOT NULL order by Datum");
        for (const QString& day : days) lines += line(day, static_cast<int>(lines.size()) + 1);
        const auto sum = [&](int i, int width) { return QString::number(m_sums[i]).rightJustified(width); };
        lines += QString(93, u'-');
        lines += QString(23, u' ') + "|" + QString(12, u' ') + sum(0, 3) + sum(1, 3) + " |" + sum(2, 3) + " " +
                 sum(3, 2) + sum(4, 2) + sum(5, 2) + sum(6, 2) + " |" + QString(9, u' ') + sum(7, 3) + sum(8, 3) +
                 sum(9, 3) + " |";
        return lines;
    }

private:
    QStringList column(const QString& select) const {
        const Table table = m_hof.db.table(select.arg(m_sow));
        QStringList cells;
        for (int row = 0; row < table.rowCount(); ++row) cells += table.text(row, 0);
        return cells;
    }
    QString first(const QString& field, const QString& table, const QString& span) const {
        return column("select " + field + " from " + table + " where Kennung = %1" + span + " order by Datum").value(0);
    }
    int lost(const QString& span) const {
        return column("select sum(Anzahl_Ferkel) as xsumme from Verluste where Kennung = %1" + span).value(0).toInt();
    }
    static QString span(const QString& after, const QString& upTo) {
        return " and Datum > " + Sql_Datum(QString(after)) +
               (upTo.isEmpty() ? "" : " and Datum <= " + Sql_Datum(QString(upTo)));
    }
    static QString days(const QString& from, const QString& to, int width) {
        const QDate a = Datum_aus_Text(from), b = Datum_aus_Text(to);
        return (a.isValid() && b.isValid() ? QString::number(a.daysTo(b)) : QString()).rightJustified(width);
    }
    static QString two(int number) { return number == 0 ? "  " : QString::number(number).rightJustified(2); }

    QString line(const QString& day, int number) {
        const QString next = first("Datum", "Belegung", span(day, {})), cycle = span(day, next);
        QString text = QString::number(number).rightJustified(2) + " " + Datum_kurz(day) + " E          | ";
        const QString farrowed = first("Datum", "Ferkelung", cycle);
        const int live = first("Ferkel_Lebendig", "Ferkelung", cycle).toInt();
        const int dead = first("Ferkel_Tot", "Ferkelung", cycle).toInt();
        text += farrowed.isEmpty() ? QString(17, u' ')
                                   : first("LNr", "Ferkelung", cycle).rightJustified(2) + " " + Datum_kurz(farrowed) +
                                         " " + QString::number(live).rightJustified(2) + " " + two(dead);
        const QString other = " and Grund <> 'Verhungert' and Grund <> 'Totgelegen' and Grund <> 'Grätscher'";
        const int losses[] = {lost(cycle), lost(cycle + " and Grund = 'Verhungert'"),
                              lost(cycle + " and Grund = 'Totgelegen'"), lost(cycle + " and Grund = 'Grätscher'"),
                              lost(cycle + other)};
        text += " | " + QString::number(losses[0]).rightJustified(2) + " ";
        for (int i = 1; i < 5; ++i) text += two(losses[i]);
        text += " | ";
        QString weanedOn;
        int weaned = 0, fewer = 0, more = 0;
        if (!farrowed.isEmpty()) weanedOn = first("Datum", "Absetzung", span(farrowed, next));
        if (weanedOn.isEmpty()) {
            text += QString(17, u' ');
        } else {
            weaned = first("Anzahl_Ferkel", "Absetzung", span(farrowed, next)).toInt();
            fewer = weaned < live ? live - weaned : 0, more = weaned > live ? weaned - live : 0;
            text += Datum_kurz(weanedOn) + " " + QString::number(weaned).rightJustified(2) + " " + two(fewer) + " " +
                    two(more);
        }
        text += " | " + days(day, farrowed, 3) + days(farrowed, weanedOn, 3) + days(weanedOn, next, 4) +
                days(farrowed.isEmpty() ? day : "", next, 4);
        const int add[] = {live, dead, losses[0], losses[1], losses[2], losses[3], losses[4], weaned, fewer, more};
        for (int i = 0; i < 10; ++i) m_sums[i] += add[i];
        return text;
    }

    Planhof& m_hof;
    const int m_sow;
    int m_sums[10] = {};
};

TEST_F(Sauenkarte, ofRandomHerds) {
    constexpr int sows = 40;
    Herde(7).fill(hof, sows);
    const QStringList cards = print().join("\n").split("\n{Seite}\n");
    ASSERT_EQ(cards.size(), sows);
    QStringList numbers;
    for (int id = 1; id <= sows; ++id) numbers += "S" + QString::number(id);
    std::sort(numbers.begin(), numbers.end());
    for (int i = 0; i < sows; ++i) {
        const QStringList lines = cards[i].split(u'\n');
        const int from = static_cast<int>(lines.indexOf(QString(93, u'-'))) + 1;
        const QStringList expected = Second(hof, numbers[i].mid(1).toInt()).lines();
        EXPECT_EQ(lines.mid(from, expected.size()), expected) << numbers[i].toStdString();
    }
}

TEST_F(Sauenkarte, isNotedAsPrintedOnlyWhereItWas) {
    hof.tier("1", "Sau", "Aenderung = 'X'");
    hof.platform.printerReady = false;
    print();
    EXPECT_EQ(hof.show("select Aenderung from Sauen"), "X");
    hof.platform.printerReady = true;
    hof.platform.failAtLine = 10;
    hof.screens.takeLog();
    print();
    EXPECT_EQ(hof.screens.log.filter("! ").size(), 1) << "the failure is told";
    EXPECT_EQ(hof.show("select Aenderung from Sauen"), "X");
    EXPECT_FALSE(hof.platform.jobs.back()->ended);
    hof.platform.failAtLine = 0;
    hof.screens.takeLog();
    for (const int until : {1, 50}) {  // given up while it is drawn, and while it is painted
        hof.screens.onProgress = [until](const QString&, int percent) { return percent < until; };
        EXPECT_EQ(print(), QStringList());
        EXPECT_EQ(hof.show("select Aenderung from Sauen"), "X");
    }
    EXPECT_EQ(hof.screens.log.filter("! "), QStringList()) << "a cancel needs no word";
    hof.screens.onProgress = {};
    EXPECT_FALSE(print().isEmpty());
    EXPECT_EQ(hof.show("select Aenderung from Sauen"), "");
    EXPECT_EQ(hof.actions, QStringList("1 Sauenkarte gedruckt"));
}

}  // namespace
}  // namespace koben
