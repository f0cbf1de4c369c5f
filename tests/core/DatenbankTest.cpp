#include <gtest/gtest.h>

#include <QDir>

#include "core/Umfang.h"
#include "store/Connection.h"
#include "tests/core/Hof.h"

namespace koben {
namespace {

TEST(Datenbank, AFailingStatementLeavesNoFile) {
    Hof farm(false);
    for (const int nth : {1, 7, 40}) {
        const FailingStatement fault(nth);
        EXPECT_THROW(Datenbank_anlegen(farm.workspace, farm.path()), DatabaseError) << nth;
        EXPECT_EQ(QDir(farm.folder()).entryList(QDir::Files), QStringList()) << nth;
    }
    Datenbank_anlegen(farm.workspace, farm.path());
    EXPECT_EQ(QDir(farm.folder()).entryList(QDir::Files), QStringList{QStringLiteral("koben2.mdb")});
    farm.db = farm.workspace.open(farm.path());
    EXPECT_EQ(farm.db.tables().size(), 20);
    EXPECT_EQ(farm.show("select count(*) from Arbeitsplanoptionen"), "4");
}

/// An older file: animals without the columns added later.
class AelterTest : public ::testing::Test {
protected:
    AelterTest() : farm(false) { farm.db = farm.workspace.create(farm.path()); }
    QString fieldNames() const {
        QStringList names;
        for (const Field& field : farm.db.fields(QStringLiteral("Sauen"))) names += field.name;
        return names.join(u' ');
    }
    Hof farm;
};

TEST_F(AelterTest, MissingColumnsAreAddedWithEmptyTexts) {
    farm.sql("create table Sauen(Nummer TEXT (15), ID COUNTER)");
    farm.sql("insert into Sauen(Nummer) values ('17')");
    {
        const FailingStatement fault(4);
        EXPECT_THROW(Spalten_nachruesten(farm.db), DatabaseError);
        EXPECT_EQ(fieldNames(), "Nummer ID");
    }
    for (int start = 0; start < 2; ++start) {
        Spalten_nachruesten(farm.db);
        EXPECT_EQ(fieldNames(), "Nummer ID Aenderung Status Statusabfrage");
        farm.sql("insert into Sauen(Nummer) values ('18')");
    }
    EXPECT_EQ(farm.show("select * from Sauen order by ID"), "17 1    | 18 2 - - - | 18 3 - - -");
}

TEST(Datenbank, KeywordsAreEnteredOnce) {
    Hof farm;
    const QString table = "Stammdaten_Kunde";
    for (const auto& [value, added] : std::initializer_list<std::pair<const char*, bool>>{{"Müller", true},
                                                                                          {"müller", false},
                                                                                          {"Muller", true},
                                                                                          {"", false},
                                                                                          {"  ", false},
                                                                                          {"O'Brien", true},
                                                                                          {"O`Brien ", false}})
        EXPECT_EQ(Stichwort_eintragen(farm.db, QString::fromUtf8(value), table), added) << value;
    EXPECT_EQ(farm.show("select Inhalt from Stammdaten_Kunde order by Inhalt"),
              QStringLiteral("Muller | Müller | O`Brien"));
}

TEST(Datenbank, LittersAreNumberedByDate) {
    // the days of one sow in the order of entry, "-" for none, and LNr and LNrJahr in that order
    const std::pair<const char*, const char*> cases[] = {
        {"01.03.2025 01.08.2025 01.01.2026", "1 1 | 2 2 | 3 1"},
        {"01.06.2016 01.06.2026", "1 1 | 2 2"},  // ten years apart: one year, as only its last digit counts
        {"31.12.2025 01.01.2026", "1 1 | 2 1"},
        {"01.08.2025 01.03.2025", "2 2 | 1 1"},
        {"01.08.2025 01.08.2025", "1 1 | 2 2"},
        {"01.08.2025 - 02.08.2025", "2 1 | 1 1 | 3 2"}};
    Hof farm;
    farm.sql("insert into Ferkelung(Datum, Kennung) values (#1/1/2020#, 8)");
    for (const auto& [dates, expected] : cases) {
        farm.sql("delete from Ferkelung where Kennung = 7");
        for (const QString& date : QString::fromUtf8(dates).split(u' ')) {
            const QDate day = QDate::fromString(date, "dd.MM.yyyy");
            const QString literal =
                day.isValid() ? day.toString(QStringLiteral("'#'MM/dd/yyyy'#'")) : QStringLiteral("Null");
            farm.sql(QStringLiteral("insert into Ferkelung(Datum, Kennung) values (%1, 7)").arg(literal));
        }
        Wurfnummern_berechnen(farm.db, 7);
        EXPECT_EQ(farm.show("select LNr, LNrJahr from Ferkelung where Kennung = 7 order by ID"),
                  QString::fromUtf8(expected))
            << dates;
        EXPECT_EQ(farm.show("select LNr from Ferkelung where Kennung = 8"), "-");
        const NoWrites guard;
        Wurfnummern_berechnen(farm.db, 7);
    }
}

TEST(Datenbank, DeletingBookingsTakesOneAnimalsAndAllOrNone) {
    Hof farm;
    QStringList tables;
    for (const Artangaben& kind : Buchungsarten) tables += QString::fromUtf8(kind.table);
    for (const QString& table : tables)
        for (const int animal : {17, 17, 170})
            farm.sql(QStringLiteral("insert into %1(Kennung) values (%2)").arg(table).arg(animal));
    const auto left = [&] {
        QStringList counts;
        for (const QString& table : tables) counts += farm.show(QStringLiteral("select count(*) as n from ") + table);
        return counts.join(u' ');
    };
    {
        const FailingStatement fault(8);
        EXPECT_THROW(Buchungen_loeschen(farm.db, 17), DatabaseError);
    }
    EXPECT_EQ(left(), "3 3 3 3 3 3 3 3");
    EXPECT_EQ(Buchungen_zaehlen(farm.db, 17), 16);
    Action action(farm.db, {});
    EXPECT_EQ(Buchungen_loeschen(action, 17), 16);
    action.commit();
    EXPECT_EQ(left(), "1 1 1 1 1 1 1 1");
}

/// A partial index serves only a condition that is worded as its own.
TEST(Datenbank, ConditionsOnPartOfTheHerdAreServedByTheirIndex) {
    Hof farm;
    Connection file(farm.path(), {});
    const std::pair<const char*, QString> cases[] = {
        {"koben_zyklus", QStringLiteral("select ID, Status from Sauen where ") + derivedRows},
        {"koben_status", QStringLiteral("select ID from Sauen where Status IS NULL or Status <> ''")},
        {"koben_selektiert",
         QStringLiteral("UPDATE Sauen SET Selektiert = '' where Selektiert IS NULL or Selektiert <> ''")},
        {"koben_bestand", QStringLiteral("select ID from Sauen where Abgangsdatum IS NULL")}};
    for (const auto& [index, statement] : cases) {
        const Command command = file.command(statement);
        const StatementHandle plan = prepare(file.file(), "EXPLAIN QUERY PLAN " + command.plan->sql);
        file.bind(plan.get(), command, {});
        std::string steps;
        while (sqlite3_step(plan.get()) == SQLITE_ROW)
            steps += reinterpret_cast<const char*>(sqlite3_column_text(plan.get(), 3)) + std::string("\n");
        EXPECT_NE(steps.find(std::string("INDEX ") + index), std::string::npos) << index << " in " << steps;
    }
}

}  // namespace
}  // namespace koben
