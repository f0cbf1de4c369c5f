#include <gtest/gtest.h>

#include "core/PZ_Koben_Subs.h"
#include "tests/core/Texte.h"

namespace koben {
namespace {

const QString today = "15.07.2026";

/// TEXT|COMPLETED|TODAY where it is another day.
TEST(Datum, HalfTypedDatesAreCompleted) {
    const auto check = [](const Row& c) {
        EXPECT_EQ(Datum_ergaenzen(c[0], c[2].isEmpty() ? today : c[2]), c[1]) << c[0].toStdString();
    };
    for (const char* row : {"", "   ", " 01.02.2024 |01.02.2024"}) check(row);
    const char* const rows =
        "3|03.07.2026 0 a 31|31.07.2026 32|03.02.2026 45|04.05.2026 99|09.09.2026 123 0302|03.02.2026 3102 "
        "2902|29.02.2028|01.01.2028 01022 03022026|03.02.2026 0302202 3.2|03.02.2026 3.2.|03.02.2026 "
        "13.12|13.12.2026 3.|03.07.2026 .3 123.2 29.02. 29.02.|29.02.2028|01.01.2028 1.2.30|01.02.1930 "
        "1.2.29|01.02.2029 11.2.26.|11.02.2026 1.12.26.|01.12.2026 1.2.2024|01.02.2024 1.2.2024.|01.02.2024 "
        "01.02.2024.|01.02.2024 31.02.2024 3.2.. 1.2.3 1.2.345 ... abc abcdefghij -5";
    for (const QString& row : QString(rows).split(u' ')) check(row.toUtf8().constData());
    check("31||15.06.2026");                // June has no 31st
    check("40");                            // month 0
    check("010299|01.02.2099");             // the century of today
    check("010226|01.02.1926|31.12.1999");  // of that day
    check("3.123|03.12.2026");              // two characters of the month count
    check("1.2.99|01.02.1999");             // a date already: the window of two-digit years
    check("1.2.99.|01.02.2099");            // no date before the dot is dropped: the century of today
}

TEST(Datum, TheDateTestTakesDottedDatesWithAYear) {
    for (const char* text : {"01.01.1999", "1.1.2001", "1.12.01", "29.2.2024", " 01.02.2024 ", "31.12.9999", "1.1.0100",
                             "01.02.2024 7:05", "01.02.2024 23:59:59"})
        EXPECT_TRUE(Ist_Datum(QString::fromUtf8(text))) << text;
    for (const char* text :
         {"", "3.2", "3.2.", "31.02.2024", "29.2.2023", "0.1.2024", "1.13.2024", "1.1.0099", "1.1.124", "1.1.20245",
          "1.1.2024x", "1.1.2024 24:00", "1.1.2024 7", "01 02 2024", "001.1.2024", "20240101"})
        EXPECT_FALSE(Ist_Datum(QString::fromUtf8(text))) << text;
    EXPECT_EQ(Datum_aus_Text(QStringLiteral("5.6.29")), QDate(2029, 6, 5));
    EXPECT_EQ(Datum_aus_Text(QStringLiteral("5.6.30")), QDate(1930, 6, 5));
    EXPECT_FALSE(Datum_aus_Text(QStringLiteral("5.6")).isValid());
}

TEST(Datum, YearsAreCompleted) {
    for (const Row c : {"|2026", "7|2007", " 7 |2007", "49|2049", "50|1950", "99|1999", "5a|195a", "4z|204z", "123|",
                        "2024|2024", "20245|20245"})
        EXPECT_EQ(Jahr_ergaenzen(c[0], today), c[1]) << c[0].toStdString();
}

/// TEXT|RESULT|what the caller's variable holds afterwards.
TEST(Datum, SortKeysAndLiteralsCompleteTheCallersVariable) {
    for (const Row c :
         {"24.12.2025|20251224|24.12.2025", "24.12.25|20251224|24.12.2025", "1.2.2024|20240201|01.02.2024", "||",
          "01.02.2024 10:30:00|20240201|01.02.2024 10:30:00", "abc|ab|abc", "unbekann|nnekun|unbekann"}) {
        QString text = c[0];
        EXPECT_EQ(Datum_als_Text(text), c[1]) << c[0].toStdString();
        EXPECT_EQ(text, c[2]) << c[0].toStdString();
    }
    for (const Row c : {"24.12.2025|#12/24/2025#|24.12.2025", "1.2.99|#02/01/1999#|01.02.1999",
                        "01.02.2024 10:30:00|#02/01/2024#|01.02.2024", "|#//#|"}) {
        QString text = c[0];
        EXPECT_EQ(Sql_Datum(text), c[1]) << c[0].toStdString();
        EXPECT_EQ(text, c[2]) << c[0].toStdString();
    }
    EXPECT_LT(Datum_als_Text(QString()), Datum_als_Text(QStringLiteral("01.01.0100")));
}

TEST(Datum, ShortAndLongDisplay) {
    EXPECT_EQ(Datum_kurz(QStringLiteral("4.5.2026")), "04.05.26");
    EXPECT_EQ(Datum_kurz(QString()), "        ");
    EXPECT_EQ(Datum_kurz(QStringLiteral("31.6.2026")), "        ");
    EXPECT_EQ(Datum_als_Anzeige(QDate(2026, 5, 4)), "04.05.2026");
    EXPECT_EQ(Datum_als_Anzeige(QDate()), QString());
}

}  // namespace
}  // namespace koben
