#include <QDateTime>
#include <random>

#include "store/Schema.h"
#include "tests/store/StoreTest.h"

namespace koben {
namespace {

class SchemaTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        Transaction t(db);
        for (const QString& s : schemaStatements()) db.execute(s);
        addHelpers(db);
        t.commit();
    }
};

TEST_F(SchemaTest, TablesStandInOrder) {
    EXPECT_EQ(
        db.tables().join(u' '),
        QStringLiteral(
            "Sauen Belegung Ferkelung Absetzung Trächtigkeit Verluste Verschiebung Behandlung Ferkelverkauf "
            "Medikamente Bestandsoptionen Arbeitsplanoptionen Termine Stammdaten_Gruppe Stammdaten_Stallnummer "
            "Stammdaten_Rasse Stammdaten_Zugangsgrund Stammdaten_Abgangsgrund Stammdaten_Kunde Stammdaten_Bemerkung"));
    EXPECT_EQ(db.fields(QStringLiteral("sauen")).size(), 37U);
    EXPECT_EQ(db.fields(QStringLiteral("Trächtigkeit")).size(), 7U);
}

/// Lists of choices are found by leaps through an index; they must hold what the whole table holds, spelled as first
/// entered.
TEST_F(SchemaTest, DifferentValuesAreThoseOfTheWholeTable) {
    std::mt19937 random(20260715);
    const char* const values[] = {"NULL", "''",   "'a'",  "'A'", "'A '", "'ä'",
                                  "'ß'",  "'ss'", "'SS'", "' '", "'b'",  "'Z'"};
    const auto any = [&] { return QString::fromUtf8(values[random() % std::size(values)]); };
    for (int round = 0; round < 150; ++round) {
        const int id = static_cast<int>(random() % 30) + 1;
        db.execute(round % 3 == 0   ? QStringLiteral("delete from Verluste where ID = %1").arg(id)
                   : round % 3 == 1 ? QStringLiteral("update Verluste set Grund = %1 where ID = %2").arg(any()).arg(id)
                                    : QStringLiteral("insert into Verluste (Grund) values (%1)").arg(any()));
        for (const char* query :
             {"select distinct Grund from %1", "select distinct Grund from %1 where Grund <> 'a' and Grund <> 'ss'",
              "select distinct Grund from %1 where Grund like '[a-s]*' or Grund IS NULL order by Grund DESC",
              "select distinct Grund & '!' from %1", "select count(*) from (select distinct Grund from %1)",
              "select distinct Grund from %1 union select distinct Kommentar from Verluste"}) {
            const QString text = QString::fromUtf8(query);
            EXPECT_EQ(rendered(db.table(text.arg(QStringLiteral("Verluste")))),
                      rendered(db.table(text.arg(QStringLiteral("(select * from Verluste) as v")))))
                << query << " in round " << round;
        }
    }
}

}  // namespace
}  // namespace koben
