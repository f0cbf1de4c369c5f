#include <gtest/gtest.h>

#include <QDir>

#include "tests/core/Hof.h"

namespace koben {
namespace {

TEST(Datenbank, ANewOneHasTablesAndSeedRows) {
    const Hof farm;
    const QStringList tables{QStringLiteral("Sauen"),
                             QStringLiteral("Belegung"),
                             QStringLiteral("Ferkelung"),
                             QStringLiteral("Absetzung"),
                             QStringLiteral("Trächtigkeit"),
                             QStringLiteral("Verluste"),
                             QStringLiteral("Verschiebung"),
                             QStringLiteral("Behandlung"),
                             QStringLiteral("Ferkelverkauf"),
                             QStringLiteral("Medikamente"),
                             QStringLiteral("Bestandsoptionen"),
                             QStringLiteral("Arbeitsplanoptionen"),
                             QStringLiteral("Termine"),
                             QStringLiteral("Stammdaten_Gruppe"),
                             QStringLiteral("Stammdaten_Stallnummer"),
                             QStringLiteral("Stammdaten_Rasse"),
                             QStringLiteral("Stammdaten_Zugangsgrund"),
                             QStringLiteral("Stammdaten_Abgangsgrund"),
                             QStringLiteral("Stammdaten_Kunde"),
                             QStringLiteral("Stammdaten_Bemerkung")};
    EXPECT_EQ(farm.db.tables(), tables);
    EXPECT_EQ(farm.zeige("select Tiergruppe, Tierart, Alter_bis, Zeit, Geschlecht, Wert, Belegt from Bestandsoptionen "
                         "order by ID"),
              QStringLiteral("Alle Schweine Alle 99 Jahre E 250 N | Alle Sauen Sau 99 Jahre W 250 N | "
                             "Alle Eber Eber 99 Jahre M 250 N | Belegte Sauen Sau 99 Jahre W 250 J"));
    EXPECT_EQ(
        farm.zeige("select Arbeitsart, Tage_von, Tage_bis, Bezugstermin, Aktiv_gross, Erledigt_gross, Erledigt_klein "
                   "from Arbeitsplanoptionen where Tage_von < 25 order by ID"),
        QStringLiteral("Belegung 4 8 Letzte Absetzung  Letzte Belegung Letzte Absetzung | "
                       "Trächtigkeitskontr. 20 24 Letzte Belegung  Letzte Trächtigkeit Letzte Belegung"));
    EXPECT_EQ(farm.zeige("select Inhalt from Stammdaten_Gruppe order by Inhalt"),
              QStringLiteral("Läufer | Mastschwein | Zuchteber | Zuchtsau"));
    EXPECT_EQ(farm.zeige("select Inhalt from Stammdaten_Rasse order by Inhalt"), QStringLiteral("DL | Pietrain"));
}

TEST(Datenbank, AFailingStatementLeavesNoFile) {
    Hof farm(false);
    for (const int nth : {1, 7, 40}) {
        const Fehlschlag fault(nth);
        EXPECT_THROW(Datenbank_anlegen(farm.workspace, farm.pfad()), DatabaseError) << nth;
        EXPECT_EQ(QDir(farm.ordner()).entryList(QDir::Files), QStringList()) << nth;
    }
    Datenbank_anlegen(farm.workspace, farm.pfad());
    EXPECT_EQ(QDir(farm.ordner()).entryList(QDir::Files), QStringList{QStringLiteral("koben2.mdb")});
}

/// An older file: animals without the columns added later.
class AelterTest : public ::testing::Test {
protected:
    AelterTest() : farm(false) { farm.db = farm.workspace.create(farm.pfad()); }
    QString felder() const {
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
        const Fehlschlag fault(4);
        EXPECT_THROW(Spalten_nachruesten(farm.db), DatabaseError);
        EXPECT_EQ(felder(), QStringLiteral("Nummer ID"));
    }
    for (int start = 0; start < 2; ++start) {
        Spalten_nachruesten(farm.db);
        EXPECT_EQ(felder(), QStringLiteral("Nummer ID Aenderung Status Statusabfrage"));
        farm.sql("insert into Sauen(Nummer) values ('18')");
    }
    EXPECT_EQ(farm.zeige("select * from Sauen order by ID"), QStringLiteral("17 1    | 18 2 - - - | 18 3 - - -"));
}

TEST_F(AelterTest, AnEmptyTableAndOneWithStatusAlone) {
    farm.sql("create table Sauen(status TEXT (5), ID COUNTER)");
    Spalten_nachruesten(farm.db);
    EXPECT_EQ(felder(), QStringLiteral("status ID Aenderung"));
}

TEST(Datenbank, KeywordsAreEnteredOnce) {
    Hof farm;
    const QString table = QStringLiteral("Stammdaten_Kunde");
    struct {
        const char* value;
        bool added;
    } const cases[] = {{"Müller", true}, {"müller", false}, {"Muller", true},   {"", false},
                       {"  ", false},    {"O'Brien", true}, {"O`Brien ", false}};
    for (const auto& c : cases)
        EXPECT_EQ(Stichwort_eintragen(farm.db, QString::fromUtf8(c.value), table), c.added) << c.value;
    EXPECT_EQ(farm.zeige("select Inhalt from Stammdaten_Kunde order by Inhalt"),
              QStringLiteral("Muller | Müller | O`Brien"));
}

TEST(Datenbank, LittersAreNumberedByDate) {
    struct {
        const char* dates;  // of one sow, in the order of entry; "-" has none
        const char* soll;   // LNr LNrJahr in that order
    } const cases[] = {
        {"01.03.2025 01.08.2025 01.01.2026", "1 1 | 2 2 | 3 1"},
        {"01.06.2016 01.06.2026", "1 1 | 2 2"},  // ten years apart: one year, as only its last digit counts
        {"31.12.2025 01.01.2026", "1 1 | 2 1"},
        {"01.08.2025 01.03.2025", "2 2 | 1 1"},
        {"01.08.2025 01.08.2025", "1 1 | 2 2"},
        {"01.08.2025 - 02.08.2025", "2 1 | 1 1 | 3 2"}};
    Hof farm;
    farm.sql("insert into Ferkelung(Datum, Kennung) values (#1/1/2020#, 8)");
    for (const auto& c : cases) {
        farm.sql("delete from Ferkelung where Kennung = 7");
        for (const QString& date : QString::fromUtf8(c.dates).split(u' ')) {
            const QDate day = QDate::fromString(date, QStringLiteral("dd.MM.yyyy"));
            const QString literal =
                day.isValid() ? day.toString(QStringLiteral("'#'MM/dd/yyyy'#'")) : QStringLiteral("Null");
            farm.sql(QStringLiteral("insert into Ferkelung(Datum, Kennung) values (%1, 7)").arg(literal));
        }
        Wurfnummern_berechnen(farm.db, 7);
        EXPECT_EQ(farm.zeige("select LNr, LNrJahr from Ferkelung where Kennung = 7 order by ID"),
                  QString::fromUtf8(c.soll))
            << c.dates;
        EXPECT_EQ(farm.zeige("select LNr from Ferkelung where Kennung = 8"), QStringLiteral("-"));
        const KeinSchreiben guard;
        Wurfnummern_berechnen(farm.db, 7);
    }
}

TEST(Datenbank, DeletingBookingsTakesOneAnimalsAndAllOrNone) {
    Hof farm;
    const QStringList tables{QStringLiteral("Belegung"),   QStringLiteral("Ferkelung"),
                             QStringLiteral("Absetzung"),  QStringLiteral("Trächtigkeit"),
                             QStringLiteral("Verluste"),   QStringLiteral("Verschiebung"),
                             QStringLiteral("Behandlung"), QStringLiteral("Ferkelverkauf")};
    for (const QString& table : tables)
        for (const int animal : {17, 17, 170})
            farm.sql(QStringLiteral("insert into %1(Kennung) values (%2)").arg(table).arg(animal));
    const auto left = [&] {
        QStringList counts;
        for (const QString& table : tables) counts += farm.zeige(QStringLiteral("select count(*) as n from ") + table);
        return counts.join(u' ');
    };
    {
        const Fehlschlag fault(8);
        EXPECT_THROW(Buchungen_loeschen(farm.db, 17), DatabaseError);
    }
    EXPECT_EQ(left(), QStringLiteral("3 3 3 3 3 3 3 3"));
    Buchungen_loeschen(farm.db, 17);
    EXPECT_EQ(left(), QStringLiteral("1 1 1 1 1 1 1 1"));
}

}  // namespace
}  // namespace koben
