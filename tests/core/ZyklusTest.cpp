#include <gtest/gtest.h>

#include "core/Einstellungen.h"
#include "tests/core/Hof.h"

namespace koben {
namespace {

/// One animal told by her bookings, one letter a booking and its date: B service, J and N checks, F farrowing of 12
/// with 10 alive, A weaning.
class ZyklusTest : public ::testing::Test {
protected:
    ZyklusTest() {
        Einstellungen_vorgeben(v, 2026);
        farm.sql("insert into Sauen(Art, Nummer, Aenderung) values ('Sau', '1', '')");
    }

    void book(const QString& bookings) {
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
    void derive() {
        Werte_berechnen(farm.db, v);
        statussetzen(farm.db);
    }
    QString counters() const {
        return farm.show(
            "select Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend from Sauen where ID = 1");
    }
    QString nextDates() const { return farm.show("select N_Belegung, N_Ferkelung from Sauen where ID = 1"); }
    QString status() const { return farm.show("select Status from Sauen where ID = 1"); }

    Hof farm;
    Variablen v;
};

TEST_F(ZyklusTest, StatusAndNextDates) {
    const struct {
        const char *bookings, *status, *nextDates, *counters;
    } cases[] = {
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
        book(QString::fromUtf8(c.bookings));
        derive();
        EXPECT_EQ(status(), QString::fromUtf8(c.status)) << c.bookings;
        EXPECT_EQ(nextDates(), QString::fromUtf8(c.nextDates)) << c.bookings;
        EXPECT_EQ(counters(), QString::fromUtf8(c.counters)) << c.bookings;
    }
}

}  // namespace
}  // namespace koben
