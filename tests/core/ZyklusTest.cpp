#include <gtest/gtest.h>

#include <random>

#include "core/Einstellungen.h"
#include "tests/core/Hof.h"
#include "tests/core/NaiverZyklus.h"

namespace koben {
namespace {

const QString abgeleitete = QStringLiteral(
    "ID, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, L_Belegung, L_Ferkelung, "
    "L_Trächtigkeit, L_Absetzung, N_Belegung, N_Ferkelung, Aenderung, Status");

Variablen einstellungen() {
    Variablen v;
    Einstellungen_vorgeben(v, 2026);
    return v;
}

/// One animal told by her bookings, one letter a booking and its date: B service, J and N checks, F farrowing of 12
/// with 10 alive, A weaning.
class ZyklusTest : public ::testing::Test {
protected:
    ZyklusTest() { farm.sql("insert into Sauen(Art, Nummer, Aenderung) values ('Sau', '1', '')"); }

    void buche(const QString& bookings) {
        for (const QString& booking : bookings.split(u' ', Qt::SkipEmptyParts)) {
            const QStringList parts = booking.mid(1).split(u'.');
            const QString date = QStringLiteral("#%1/%2/20%3#").arg(parts[1], parts[0], parts[2]);
            const QHash<QChar, QString> statements{
                {u'B', QStringLiteral("insert into Belegung(Datum, Ebernr, Kennung) values (%1, 'E1', 1)")},
                {u'J', QStringLiteral("insert into Trächtigkeit(Datum, Trächtig, Kennung) values (%1, 'J', 1)")},
                {u'N', QStringLiteral("insert into Trächtigkeit(Datum, Trächtig, Kennung) values (%1, 'N', 1)")},
                {u'F', QStringLiteral("insert into Ferkelung(Datum, Ferkel_Gesamt, Ferkel_Lebendig, Kennung) "
                                      "values (%1, 12, 10, 1)")},
                {u'A', QStringLiteral("insert into Absetzung(Datum, Kennung) values (%1, 1)")}};
            farm.sql(statements[booking[0]].arg(date));
        }
    }
    void rechne() {
        Werte_berechnen(farm.db, v);
        statussetzen(farm.db);
    }
    QString zaehler() const {
        return farm.zeige(
            "select Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend from Sauen where ID = 1");
    }
    QString naechste() const { return farm.zeige("select N_Belegung, N_Ferkelung from Sauen where ID = 1"); }
    QString status() const { return farm.zeige("select Status from Sauen where ID = 1"); }
    QString aenderung() const { return farm.zeige("select Aenderung from Sauen where ID = 1"); }

    Hof farm;
    Variablen v = einstellungen();
};

TEST_F(ZyklusTest, StatusAndNextDates) {
    struct {
        const char* buchungen;
        const char* status;
        const char* naechste;
        const char* zaehler;
    } const cases[] = {
        {"", "", "- -", "0 0 - -"},
        {"B01.01.26", "B", "- 27.04.2026", "1 0 - -"},
        {"B01.01.26 N03.01.26", "B_NTG", "- 27.04.2026", "1 0 - -"},
        {"B01.01.26 J03.01.26", "B_T", "- 27.04.2026", "1 0 - -"},
        {"B01.01.26 J01.01.26", "B", "- 27.04.2026", "1 0 - -"},  // a check on the day of the service is none
        {"B01.01.26 J10.01.26 N11.01.26", "B_NTG", "- 27.04.2026", "1 0 - -"},
        {"N20.02.26 J10.02.26 B01.02.26", "B_NTG", "- 28.05.2026", "1 0 - -"},
        {"B01.01.26 B01.01.26", "B", "- 27.04.2026", "2 0 - -"},
        {"B01.01.26 F27.04.26", "S", "02.06.2026 -", "0 1 12 10"},
        {"B27.04.26 F27.04.26", "", "02.06.2026 -", "1 1 12 10"},  // same day: no service newer, none older
        {"F27.04.26", "S", "02.06.2026 -", "0 1 12 10"},
        {"F27.04.26 A27.04.26", "", "02.06.2026 -", "0 1 12 10"},
        {"F27.04.26 A20.05.26", "", "02.06.2026 -", "0 1 12 10"},  // weaned without any service
        {"B01.01.26 F27.04.26 A27.04.26", "G", "02.06.2026 -", "0 1 12 10"},
        {"B01.01.26 F27.04.26 A20.05.26", "G", "02.06.2026 -", "0 1 12 10"},
        {"B01.01.26 A01.02.26", "G", "- 27.04.2026", "1 0 - -"},  // takes the place of "B"
        {"B01.01.26 A01.01.26", "B", "- 27.04.2026", "1 0 - -"},
        {"B01.01.26 F27.04.26 A20.05.26 B25.05.26", "B", "- 18.09.2026", "1 1 12 10"},
        {"B01.01.26 J01.02.26 F27.04.26 A20.05.26 B25.05.26", "B", "- 18.09.2026", "1 1 12 10"},
        {"F01.06.25 B01.01.26 F27.04.26", "S", "02.06.2026 -", "0 2 24 20"},
    };
    for (const auto& c : cases) {
        Buchungen_loeschen(farm.db, 1);
        buche(QString::fromUtf8(c.buchungen));
        rechne();
        EXPECT_EQ(status(), QString::fromUtf8(c.status)) << c.buchungen;
        EXPECT_EQ(naechste(), QString::fromUtf8(c.naechste)) << c.buchungen;
        EXPECT_EQ(zaehler(), QString::fromUtf8(c.zaehler)) << c.buchungen;
    }
}

TEST_F(ZyklusTest, OnlyAChangeOfADateMarksTheCard) {
    buche(QStringLiteral("B01.01.26 F27.04.26"));
    rechne();
    EXPECT_EQ(aenderung(), QStringLiteral(""));  // dates came where there were none
    buche(QStringLiteral("J01.02.26 J01.03.26 A20.05.26"));
    rechne();
    EXPECT_EQ(aenderung(), QStringLiteral(""));
    farm.sql("delete from Ferkelung");
    rechne();
    EXPECT_EQ(aenderung(), QStringLiteral(""));  // one went
    EXPECT_EQ(zaehler(), QStringLiteral("1 0 - -"));
    buche(QStringLiteral("A21.05.26"));
    rechne();
    EXPECT_EQ(aenderung(), QStringLiteral("X"));
    farm.sql("delete from Absetzung");
    rechne();
    EXPECT_EQ(aenderung(), QStringLiteral("X"));  // never cleared here
}

TEST_F(ZyklusTest, WhoHasNoStatus) {
    buche(QStringLiteral("B01.01.26"));
    for (const char* change : {"Statusabfrage = 'N'", "Abgangsdatum = #1/2/2026#", "Art = 'Mast'"}) {
        farm.sql("update Sauen set Art = 'Sau', Statusabfrage = '', Abgangsdatum = Null");
        rechne();
        EXPECT_EQ(status(), QStringLiteral("B"));
        farm.sql(QStringLiteral("update Sauen set ") + QString::fromUtf8(change));
        rechne();
        EXPECT_EQ(status(), QStringLiteral("")) << change;
        EXPECT_EQ(zaehler(), QStringLiteral("1 0 - -")) << change;
    }
}

TEST_F(ZyklusTest, ABoarCountsByHisPresentNumber) {
    farm.sql("insert into Sauen(Art, Nummer) values ('Eber', 'e1')");
    buche(QStringLiteral("B01.01.24 F27.04.24 B01.01.26"));
    const char* count = "select Anz_Belegungen, L_Belegung from Sauen where ID = 2";
    rechne();
    EXPECT_EQ(farm.zeige(count), QStringLiteral("2 -"));
    farm.sql("update Sauen set Nummer = 'E2' where ID = 2");
    rechne();
    EXPECT_EQ(farm.zeige(count), QStringLiteral("0 -"));
}

/// A herd where everything happens within few days, with holes and stray rows.
class Zufallsherde {
public:
    Zufallsherde(Hof& farm, unsigned seed) : m_farm(farm), m_random(seed) {}

    void tiere(int count) {
        for (int i = 0; i < count; ++i) {
            tue(QStringLiteral(
                    "insert into Sauen(Art, Nummer, Statusabfrage, Abgangsdatum, Anz_Belegungen, Anz_Ferkelungen, "
                    "Anz_Ferkel_Gesamt, L_Belegung, N_Ferkelung, Status, Aenderung) values (%1, %2, %3, %4, %5, %6, "
                    "%7, %8, %9, %10, %11)")
                    .arg(aus({"'Sau'", "'Sau'", "'Sau'", "'Eber'", "'Mast'", "'Ferkel'", "Null"}), nummer(),
                         aus({"Null", "''", "''", "'N'", "'J'"}), aus({"Null", "Null", "Null", "#2/1/2026#"}),
                         aus({"0", "Null", "3"}), aus({"0", "0", "Null"}), aus({"0", "Null"}), aus({"Null", tag()}))
                    .arg(aus({"Null", tag()}), aus({"Null", "''", "'B'", "'B_T'", "'x'"}), aus({"Null", "''"})));
        }
        m_count += count;
    }
    void buchungen(int count) {
        for (int i = 0; i < count; ++i) {
            tue(QStringLiteral("insert into Belegung(Datum, Ebernr, Kennung) values (%1, %2, %3)")
                    .arg(tag(), nummer(), tier()));
            tue(QStringLiteral("insert into Trächtigkeit(Datum, Trächtig, Kennung) values (%1, %2, %3)")
                    .arg(tag(), aus({"'J'", "'N'", "''", "Null"}), tier()));
            if (i % 2 == 0) continue;
            tue(QStringLiteral(
                    "insert into Ferkelung(Datum, Ferkel_Gesamt, Ferkel_Lebendig, Kennung) values (%1, %2, %3, %4)")
                    .arg(tag(), aus({"12", "0", "Null"}), aus({"7", "Null"}), tier()));
            tue(QStringLiteral("insert into Absetzung(Datum, Kennung) values (%1, %2)").arg(tag(), tier()));
        }
    }
    /// What happens on a farm between two computations.
    void aendere() {
        for (const char* table : {"Belegung", "Ferkelung", "Absetzung", "Trächtigkeit"}) {
            for (int i = 0; i < 15; ++i)
                tue(QStringLiteral("delete from %1 where Kennung = %2").arg(QString::fromUtf8(table), tier()));
        }
        for (int i = 0; i < 10; ++i) {
            tue(QStringLiteral("update Sauen set Nummer = %1 where ID = %2").arg(nummer(), tier()));
            tue(QStringLiteral("update Sauen set Art = %1 where ID = %2").arg(aus({"'Sau'", "'Eber'"}), tier()));
            tue(QStringLiteral("update Sauen set Abgangsdatum = %1 where ID = %2").arg(aus({"Null", tag()}), tier()));
        }
        buchungen(30);
        tiere(5);
    }

private:
    QString aus(std::initializer_list<QString> values) { return values.begin()[m_random() % values.size()]; }
    QString aus(std::initializer_list<const char*> values) {
        return QString::fromUtf8(values.begin()[m_random() % values.size()]);
    }
    QString tag() {
        return m_random() % 20 == 0 ? QStringLiteral("Null") : QStringLiteral("#1/%1/2026#").arg(1 + m_random() % 28);
    }
    QString nummer() { return aus({"'E1'", "'e1'", "'E1 '", "'E2'", "'Ä'", "'A'", "''", "Null"}); }
    QString tier() {
        return m_random() % 30 == 0 ? aus({"Null", "0", "99999"}) : QString::number(1 + m_random() % m_count);
    }
    void tue(const QString& sql) { m_farm.sql(sql); }

    Hof& m_farm;
    std::mt19937 m_random;
    unsigned m_count = 0;
};

TEST(ZyklusVergleich, RandomHerdsComeOutAsByTheNaiveEngine) {
    const Variablen v = einstellungen();
    for (const unsigned seed : {1U, 2U, 3U}) {
        Hof fast, naive;
        Zufallsherde herds[] = {Zufallsherde(fast, seed), Zufallsherde(naive, seed)};
        for (int round = 0; round < 3; ++round) {
            for (int i = 0; i < 2; ++i) {
                Transaction filling((i == 0 ? fast : naive).db);
                if (round == 0) {
                    herds[i].tiere(150);
                    herds[i].buchungen(250);
                } else {
                    herds[i].aendere();
                }
                filling.commit();
            }
            Werte_berechnen(fast.db, v);
            statussetzen(fast.db);
            naivWerteBerechnen(naive.db, v);
            naivStatussetzen(naive.db);
            const QString select = QStringLiteral("select %1 from Sauen order by ID").arg(abgeleitete);
            const QStringList is = fast.zeige(select).split(u'|'), should = naive.zeige(select).split(u'|');
            ASSERT_EQ(is.size(), should.size());
            for (int i = 0; i < is.size(); ++i) EXPECT_EQ(is[i], should[i]) << "seed " << seed << " round " << round;
        }
    }
}

TEST(ZyklusVergleich, ASecondRunWritesNothing) {
    Hof farm;
    Zufallsherde herd(farm, 4);
    herd.tiere(60);
    herd.buchungen(80);
    for (const char* table : {"Belegung", "Ferkelung", "Absetzung", "Trächtigkeit"})
        farm.sql(QStringLiteral("delete from %1 where Kennung = 99999 or Kennung = 0").arg(QString::fromUtf8(table)));
    const Variablen v = einstellungen();
    Werte_berechnen(farm.db, v);
    statussetzen(farm.db);
    const KeinSchreiben guard;
    Werte_berechnen(farm.db, v);
    statussetzen(farm.db);
}

TEST(ZyklusVergleich, AFailureLeavesAllAsItWas) {
    Hof farm;
    Zufallsherde herd(farm, 5);
    herd.tiere(40);
    herd.buchungen(60);
    const QString select = QStringLiteral("select %1 from Sauen order by ID").arg(abgeleitete);
    const QString before = farm.zeige(select);
    const Fehlschlag fault(20);
    EXPECT_THROW(Werte_berechnen(farm.db, einstellungen()), DatabaseError);
    EXPECT_EQ(farm.zeige(select), before);
}

}  // namespace
}  // namespace koben
