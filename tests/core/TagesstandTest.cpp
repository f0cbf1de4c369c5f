// The herd as of each past day against a herd in which nothing was booked beyond it, over random herds.
#include "core/Tagesstand.h"

#include <QDir>
#include <QFile>
#include <random>

#include "core/Konfig.h"
#include "core/Tageskopien.h"
#include "tests/core/Hof.h"

namespace koben {
namespace {

const QDate First(2025, 1, 1);
constexpr int Days = 500;

/// Statements with the day that each is of, in the order of time as a farm would enter them.
struct Betriebseintrag {
    int day;
    QString sql;
};

class Zufallsbetrieb {
public:
    explicit Zufallsbetrieb(unsigned seed) : m_bits(seed) {
        for (qint64 id = 1; id <= 12; ++id) animal(id);
        std::stable_sort(m_entries.begin(), m_entries.end(),
                         [](const Betriebseintrag& a, const Betriebseintrag& b) { return a.day < b.day; });
    }
    /// Enters what is of the day `last` or before, deriving the values after each entry as the booking frame does.
    void enter(const Hof& farm, int last) const {
        Database db = farm.db;
        const Variablen v = settings();
        for (const Betriebseintrag& entry : m_entries) {
            if (entry.day > last) break;
            db.execute(entry.sql);
            Werte_berechnen(db, v);
            statussetzen(db);
        }
    }
    static Variablen settings() {
        Variablen v;
        v.Konfig_Zahl[Zahl::TageBelegungFerkelung] = 116;
        v.Konfig_Zahl[Zahl::TageFerkelungBelegung] = 35;
        return v;
    }
    int between(int from, int to) { return from + static_cast<int>(m_bits() % static_cast<unsigned>(to - from + 1)); }

private:
    void add(int day, const QString& sql) { m_entries.push_back({day, sql}); }
    static QString date(int day) { return First.addDays(day).toString("#yyyy-MM-dd#"); }
    void book(const char* table, int day, qint64 id, const char* fields, const QString& values) {
        add(day, QString("insert into %1 (Datum, Kennung, %2) values (%3, %4, %5)")
                     .arg(QString::fromUtf8(table), QString::fromUtf8(fields), date(day))
                     .arg(id)
                     .arg(values));
    }
    void animal(qint64 id) {
        const int arrival = between(0, 200);
        const bool boar = id % 6 == 0;
        const QString row =
            "insert into Sauen (ID, Art, Nummer, Status, Zugangsdatum, Zugangsgewicht_kg, Einkaufspreis, Zugangsgrund, "
            "Lieferant, Abgangsgewicht_kg, Verkaufspreis, Abgangsgrund, Abnehmer) values "
            "(%1, '%2', '%3', '', %4, 0, 0, '', '', 0, 0, '', '')";
        if (id % 5 == 0)  // fattened: born here, without an arrival
            return add(arrival, QString("insert into Sauen (ID, Art, Nummer, Status, Geburtsdatum, Anz_Belegungen, "
                                        "Anz_Ferkelungen) values (%1, 'Mast', 'M%1', '', %2, 0, 0)")
                                    .arg(id)
                                    .arg(date(arrival)));
        const QString number = boar ? QString("E%1").arg(id) : QString::number(100 + id);
        add(arrival, row.arg(id).arg(boar ? "Eber" : "Sau", number, date(arrival)));
        int day = arrival + 1;
        while (!boar && day < Days) {
            book("Belegung", day, id, "Ebernr",
                 QString("'%1%2'").arg(between(0, 1) ? "E" : "e").arg(6 * between(1, 2)));
            if (between(0, 2) > 0)
                book("Trächtigkeit", day + between(0, 40), id, "Trächtig", between(0, 3) ? "'J'" : "'N'");
            day += between(0, 4) ? between(110, 118) : between(18, 25);
            if (between(0, 5) == 0) continue;
            book("Ferkelung", day, id, "Ferkel_Gesamt, Ferkel_Lebendig", QString("%1, %2").arg(14).arg(between(8, 14)));
            book("Verluste", day + between(0, 20), id, "Anzahl_Ferkel, Grund", "1, 'Erdrückt'");
            book("Verschiebung", day + between(1, 5), id, "Anzahl_Ferkel, Zu_Saunr", "1, '101'");
            book("Behandlung", day + between(0, 60), id, "Medikament, Wartezeit_Tage", "'Eisen', 20");
            book("Absetzung", day + between(20, 30), id, "Anzahl_Ferkel", "10");
            book("Ferkelverkauf", day + between(30, 60), between(0, 1) ? id : 0, "Anzahl_Verkauf, Einnahmen", "9, 450");
            day += between(31, 45);
        }
        if (between(0, 2) == 0) {
            const int gone = between(arrival + 30, Days);
            std::erase_if(m_entries, [&](const Betriebseintrag& e) {
                return e.day >= gone && e.sql.contains(QString(", %1, ").arg(id));
            });
            add(gone, QString("update Sauen set Abgangsdatum = %1, Verkaufspreis = 200, Abgangsgewicht_kg = 190, "
                              "Abgangsgrund = 'Alter', Abnehmer = 'Meier' where ID = %2")
                          .arg(date(gone))
                          .arg(id));
        }
    }

    std::mt19937 m_bits;
    std::vector<Betriebseintrag> m_entries;
};

/// All that is looked at, without the numbers of rows.
QString content(const Database& db) {
    QString all;
    for (const QString& table : db.tables()) {
        if (table.startsWith("Stammdaten") || table.endsWith("optionen")) continue;
        const Table rows = db.table("select * from " + table);
        QStringList lines;
        for (int row = 0; row < rows.rowCount(); ++row) {
            QString line;
            for (int c = 0; c < rows.columnCount(); ++c)
                if (table == "Sauen" || rows.field(c).name != "ID") line += rows.text(row, c) + '|';
            lines += line;
        }
        lines.sort();
        all += table + "\n" + lines.join("\n") + "\n";
    }
    return all;
}

/// What no day is told of: it is as it is now on every day.
void changeToday(Hof& farm) {
    farm.sql("update Sauen set Stallnr = 'neu', Nummer = Nummer + 'a', Infos = 'x' where ID in (1, 2, 6, 10)");
    Buchungen_loeschen(farm.db, 4);
    farm.sql("delete from Sauen where ID = 4");
    farm.sql("insert into Termine (Terminart) values ('Impfen')");
}

TEST(Tagesstand, EqualsAHerdBookedUpToThatDay) {
    for (unsigned seed = 1; seed <= 3; ++seed) {
        Zufallsbetrieb farm(seed);
        Hof now;
        farm.enter(now, 2 * Days);
        changeToday(now);
        Werte_berechnen(now.db, farm.settings());
        statussetzen(now.db);
        const QString before = content(now.db);
        for (int i = 0; i < 3; ++i) {
            const int day = i == 0 ? Days + 30 : farm.between(0, Days);  // one that is still to come
            Hof then;
            farm.enter(then, day);
            changeToday(then);
            Werte_berechnen(then.db, farm.settings());
            statussetzen(then.db);
            const QTemporaryDir folder;
            const auto view = now.workspace.view(
                now.path(), folder.filePath("v.mdb"), "nur ansehen", [&](Database& copy, const FileProgress&) {
                    return Tagesstand_bilden(copy, farm.settings(), First.addDays(day));
                });
            ASSERT_TRUE(view);
            EXPECT_EQ(content(*view), content(then.db)) << "seed " << seed << " day " << day;
            EXPECT_THROW(Database(*view).execute("delete from Sauen"), DatabaseError);
            EXPECT_THROW(Transaction another(*view), DatabaseError);
        }
        EXPECT_EQ(content(now.db), before);
    }
}

/// One for each of seven days of use, and of the four weeks before them the last one of each.
TEST(Tageskopien, KeepsSevenDaysAndFourWeeks) {
    Hof farm;
    const QString folder = Tageskopienordner(farm.folder() + "/daten/");
    const QDate today(2026, 7, 15);  // a Wednesday
    for (int back = 60; back >= 0; --back) {
        const QDate day = today.addDays(-back);
        if (day.dayOfWeek() == 7) continue;
        ASSERT_EQ(Tageskopie_machen(farm.path(), folder, day), QString());
    }
    QStringList days;
    for (const QString& name : Tageskopien(folder)) days += Tageskopietag(name).toString("dd.MM.");
    EXPECT_EQ(days.join(' '), "13.06. 20.06. 27.06. 04.07. 08.07. 09.07. 10.07. 11.07. 13.07. 14.07. 15.07.");
    EXPECT_EQ(Workspace::rowCounts(folder + Tageskopien(folder).last()), Workspace::rowCounts(farm.path()));
    // a copy that cannot be made leaves the earlier one
    const QString torn = farm.folder() + "/kaputt.mdb";
    ASSERT_TRUE(QFile::copy(folder + Tageskopien(folder).last(), torn));
    QFile file(torn);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(file.size() / 2) && file.write(QByteArray(8192, 'x')) > 0);
    file.close();
    for (const QString& source : {farm.folder() + "/fehlt.mdb", torn}) {
        const QString said = Tageskopie_machen(source, folder, today);
        EXPECT_TRUE(said.startsWith("Beim letzten Beenden wurde keine Kopie des Tages gemacht")) << said.toStdString();
        EXPECT_EQ(QDir(folder).entryList(QDir::Files).size(), 11);
        EXPECT_EQ(Workspace::rowCounts(folder + Tageskopien(folder).last()), Workspace::rowCounts(farm.path()));
    }
}

/// What a run that was cut off in it leaves, and what goes with the next copy.
TEST(Tageskopien, OneThatWasCutOffIsToldOnce) {
    Hof farm;
    const QString folder = Tageskopienordner(farm.folder() + "/daten/"), note = farm.folder() + "/notiz.txt";
    ASSERT_TRUE(QDir().mkpath(folder) && QFile::copy(farm.path(), folder + "koben2_77.neu"));
    const Tageskopieauftrag job{farm.path(), folder, QDate(2026, 7, 15), note};
    for (const bool works : {false, true}) {
        Tageskopieauftrag each = job;
        if (!works) each.database += "fehlt";
        Tageskopie_beginnen(each);
        Tageskopie_abwarten();
        EXPECT_EQ(Tageskopie_meldung(folder, note).isEmpty(), works);
        EXPECT_EQ(Tageskopie_meldung(folder, note), QString());
        EXPECT_EQ(QDir(folder).entryList(QDir::Files), works ? QStringList("koben2_2026-07-15.mdb") : QStringList());
    }
}

}  // namespace
}  // namespace koben
