// The contribution margin against its statements run one by one for each animal and year, over random herds.
#include <random>

#include "analytics/PB_Deckungsbeitrag.h"
#include "core/PZ_Koben_Subs.h"
#include "tests/analytics/Auswertungshof.h"

namespace koben {
namespace {

struct Deckungsbeitragstest : testing::Test, Auswertungshof {
    void SetUp() override { catalogue.add<PB_Deckungsbeitrag>("PB_Deckungsbeitrag"); }

    std::mt19937 random{7};
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random); }
    /// A day from 2021 to 2026, or none; sometimes the last day of a year, once with an hour.
    QString day() {
        const int year = 2021 + upTo(5);
        if (upTo(9) == 0) return "null";
        if (upTo(9) == 0) return QString("#%1-12-31%2#").arg(year).arg(upTo(1) ? " 10:00:00" : "");
        return Sql_Datum(Datum_als_Anzeige(QDate(year, 1, 1).addDays(upTo(364))));
    }
    QString money() {
        return upTo(5) == 0 ? "null" : QString("%1.%2").arg(upTo(900)).arg(upTo(9999), 4, 10, QChar(u'0'));
    }

    void herd(int animals) {
        static const char* const kinds[] = {"Sau", "Sau", "Eber", "Mast", "Ferkel"};
        for (int i = 1; i <= animals; ++i) {
            sql("insert into Sauen (Art, Nummer, Gruppe, Selektiert, Geburtsdatum, Zugangsdatum, Abgangsdatum, "
                "Einkaufspreis, Verkaufspreis) values ('" +
                QString(kinds[upTo(4)]) + "', " + (upTo(7) ? "'" + QString::number(i) + "'" : "null") + ", 'G', '" +
                (upTo(1) ? "X" : "") + "', " + day() + ", " + day() + ", " + day() + ", " + money() + ", " + money() +
                ")");
            for (const char* table : {"Belegung", "Ferkelung", "Trächtigkeit", "Verluste", "Behandlung"})
                for (int n = upTo(4); n > 0; --n)
                    sql("insert into " + QString(table) + " (Kennung, Datum, Kosten) values (" + QString::number(i) +
                        ", " + day() + ", " + money() + ")");
            for (int n = upTo(3); n > 0; --n)
                sql("insert into Ferkelverkauf (Kennung, Datum, Einnahmen, Ausgaben) values (" +
                    QString::number(upTo(3) ? i : upTo(1) * 999) + ", " + day() + ", " + money() + ", " + money() +
                    ")");
        }
    }

    float sum(const QString& select) const {
        const Table found = db.table(select);
        return found.rowCount() ? static_cast<float>(found.value(0, 0).toDouble()) : 0;
    }
    float feed(const QString& where, const QString& first, const QString& last) const {
        float item = 0;
        const Table animals = db.table("select Art, Geburtsdatum, Zugangsdatum, Abgangsdatum from Sauen" + where);
        for (int row = 0; row < animals.rowCount(); ++row) {
            const QString kind = animals.text(row, 0);
            if (kind == "Ferkel") continue;
            QString s = animals.text(row, animals.isNull(row, 2) ? 1 : 2).left(10), e = animals.text(row, 3).left(10);
            s = s.isEmpty() || s.mid(6) < first ? "01.01." + first : s.mid(6) > last ? "" : s;
            e = e.isEmpty() || e.mid(6) > last ? "31.12." + last : e.mid(6) < first ? "" : e;
            if (s.isEmpty() || e.isEmpty()) continue;
            const auto share = static_cast<float>(double(Datum_aus_Text(s).daysTo(Datum_aus_Text(e))) / 365);
            item += (kind == "Sau" ? 100.5f : kind == "Eber" ? 50 : 33) * share;
        }
        return item;
    }
    static QString line(const QString& name, std::array<float, 11> items, Betraege& totals) {
        items[10] = items[0] + items[1];
        for (size_t i = 2; i < 10; ++i) items[10] -= items[i];
        QStringList cells{name};
        for (size_t i = 0; i < 11; ++i) totals[i] += items[i], cells += Betrag_mit_Waehrung(items[i]);
        return cells.join('|');
    }
    QString year(int y, const QString& w, const QString& w0, bool strays, Betraege& totals) const {
        const QString Y = QString::number(y), in = " >= #01/01/" + Y + "# and %1 <= #12/31/" + Y + "#";
        const auto between = [&](const QString& field) { return " and " + field + in.arg(field); };
        const QString d = between("Datum") + " and Kennung = Sauen.ID";
        std::array<float, 11> items{};
        items[0] = sum("select sum(Verkaufspreis) from Sauen" + w + between("Abgangsdatum"));
        items[1] = sum("select sum(Einnahmen) from Ferkelverkauf, Sauen" + w + d);
        if (strays) items[1] += sum("select sum(Einnahmen) from Ferkelverkauf where Kennung = 0" + between("Datum"));
        items[2] = sum("select sum(Einkaufspreis) from Sauen" + w + " and ((Zugangsdatum IS NULL" +
                       between("Geburtsdatum") + ") or (" + between("Zugangsdatum").mid(5) + "))");
        const char* const tables[] = {"Belegung", "Ferkelung", "Trächtigkeit", "Verluste", "Behandlung"};
        for (size_t i = 0; i < 5; ++i)
            items[i + 3] = sum("select sum(Kosten) from " + QString(tables[i]) + ", Sauen" + w + d);
        items[8] = sum("select sum(Ausgaben) from Ferkelverkauf, Sauen" + w + between("Datum") +
                       " and (Kennung = Sauen.ID or Kennung = 0)");
        items[9] = feed(w0, Y, Y);
        return line(Y, items, totals);
    }
    QString animal(const Table& animals, int row, Betraege& totals) const {
        const QString p =
            " where Kennung = " + animals.text(row, 0) + " and Datum >= #01/01/2022# and Datum <= #12/31/2024#";
        const auto within = [&](int column) {
            const QString y = animals.text(row, column).mid(6, 4);
            return y >= "2022" && y <= "2024";
        };
        std::array<float, 11> items{};
        if (within(2)) items[0] = static_cast<float>(animals.value(row, 3).toDouble());
        items[1] = sum("select sum(Einnahmen) from Ferkelverkauf" + p);
        if (within(animals.isNull(row, 4) ? 5 : 4)) items[2] = static_cast<float>(animals.value(row, 6).toDouble());
        const char* const tables[] = {"Belegung", "Ferkelung", "Trächtigkeit", "Verluste", "Behandlung"};
        for (size_t i = 0; i < 5; ++i) items[i + 3] = sum("select sum(Kosten) from " + QString(tables[i]) + p);
        items[8] = sum("select sum(Ausgaben) from Ferkelverkauf" + p);
        items[9] = feed(" where ID = " + animals.text(row, 0), "2022", "2024");
        return line(animals.text(row, 1), items, totals);
    }
};

TEST_F(Deckungsbeitragstest, JedeZelleWieIhreAnweisungenUndIhreHerleitung) {
    herd(40);
    const char* const filters[] = {"", "Selektiert = 'X'", "Art = 'Sau'", "Art = 'Eber'", "Art = 'Mast'"};
    for (int option = 0; option < 5; ++option) {
        in<PB_Deckungsbeitrag>("PB_Deckungsbeitrag", [&](PB_Deckungsbeitrag& form) {
            play(form,
                 "t(0)=2022; t(1)=2024; tzahl(0)=100,5; tzahl(1)=50; tzahl(2)=33; alletier(0); optiauswertung(0)");
            form.optitieraus[option].click();
            form.ok.click();
            const QString filter = filters[option], where = filter.isEmpty() ? "" : " where " + filter;
            Betraege totals{};
            QStringList expected;
            for (int y = 2022; y <= 2024; ++y)
                expected += year(y, filter.isEmpty() ? " where Nummer IS NOT NULL" : where, where,
                                 option == 0 || option == 2, totals);
            Betraege none{};
            const auto closing = [&] {
                QStringList cells{"SUMME"};
                for (const float total : totals) cells += Betrag_mit_Waehrung(total);
                if (totals[10] != none[10]) expected += cells.join('|');
            };
            closing();
            EXPECT_EQ(gridText(form.gridli).mid(1), expected) << option;
            expectExplained(form.gridli, 2);
            play(form, "optiauswertung(1)");
            for (int i : {0, 2, 3}) form.kontier[i].setChecked(false);
            form.kontier[1].setChecked(true);
            form.ok.click();
            const Table animals = db.table(
                "select ID, Nummer, Abgangsdatum, Verkaufspreis, Zugangsdatum, Geburtsdatum, "
                "Einkaufspreis from Sauen" +
                where);
            totals = {};
            expected.clear();
            for (int row = 0; row < animals.rowCount(); ++row) expected += animal(animals, row, totals);
            closing();
            EXPECT_EQ(gridText(form.gridli).mid(1), expected) << option;
            expectExplained(form.gridli, 2);
        });
    }
}

TEST_F(Deckungsbeitragstest, JahreAnIhrenGrenzen) {
    tier("1", "Sau", "Geburtsdatum = #07/01/2001#");
    const QString head = "! Die Daten können nicht gelistet werden, weil...\r\n\r\n",
                  wrong = head + "...das 'Wirtschaftsjahr von' *", nothing = "",
                  far = head + "...die Auswertung max. über 30 Jahre erlaubt ist.", four = "*4-stellig*";
    const std::tuple<const char*, const char*, QString> cases[] = {
        {"2000", "2030", nothing},
        {"2000", "2031", far},
        {"2006", "2005", wrong + "bis'."},
        {"98", "2005", wrong},
        {"98", "99", head + four},
        {"99", "1", wrong + "\r\n" + four},
        {"2005", "98", "! Keine zu listenden Daten gefunden"},
        {"", "", nothing},
    };
    in<PB_Deckungsbeitrag>("PB_Deckungsbeitrag", [&](PB_Deckungsbeitrag& form) {
        for (const auto& [from, to, said] : cases) {
            texts();
            play(form, "t(0)=%1; t(1)=%2; ok", from, to);
            EXPECT_TRUE(says(said.isEmpty() ? QStringList() : QStringList{said})) << from << " " << to;
        }
        EXPECT_EQ(textsOf(form, "t(0) t(1)"), "2026|2026");
        play(form, "t(0)=2001; t(1)=2002; tzahl(0)=365; konkost(9); ok");
        EXPECT_EQ(gridText(form.gridli), QStringList({"Jahr|A_Futterkosten|Summe", "2001|183,00 €|-183,00 €",
                                                      "2002|364,00 €|-364,00 €", "SUMME|547,00 €|-547,00 €"}));
        play(form, "optiauswertung(1); ok");
        EXPECT_EQ(gridText(form.gridli).last(), "SUMME548,00 €|-548,00 €");
    });
}

}  // namespace
}  // namespace koben
