#include "store/IsoDate.h"
#include "store/Numbers.h"
#include "tests/store/StoreTest.h"

namespace koben {
namespace {

TEST(ValueText, AsTheProgramShowsIt) {
    const struct {
        Value value;
        const char* text;
    } cases[] = {{Value(), ""},
                 {Value(5), "5"},
                 {Value(qint64{-5000000000}), "-5000000000"},
                 {Value(0.1F), "0,1"},
                 {Value(105.25), "105,25"},
                 {Value(1.0 / 3), "0,333333333333333"},
                 {Value(-0.0), "0"},
                 {Value(Money{12500}), "1,25"},
                 {Value(Money{-1}), "-0,0001"},
                 {Value(Money{std::numeric_limits<qint64>::min()}), "-922337203685477,5808"},
                 {Value(QDate(2024, 2, 9)), "09.02.2024"},
                 {Value(DateTime{2460350, 3661}), "09.02.2024 01:01:01"},
                 {Value(QString("x")), "x"}};
    for (const auto& c : cases) EXPECT_EQ(c.value.toText(), QString(c.text));
}

TEST(ValueNumbers, LeadingNumberAndRounding) {
    EXPECT_EQ(Value(QString("12abc")).toDouble(), 12);
    EXPECT_EQ(Value(QString(" -1,5kg")).toDouble(), -1.5);
    EXPECT_EQ(Value(QString("x")).toInt(), 0);
    EXPECT_EQ(Value(2.5).toInt(), 2);
    EXPECT_EQ(Value(-3.5).toInt(), -4);
    EXPECT_FALSE(Value(QString("01.02.2024")).toDate().isValid());
    for (const auto& [number, money] :
         std::initializer_list<std::pair<double, qint64>>{{1.00005, 10000},
                                                          {1.00015, 10002},
                                                          {0.00005, 0},
                                                          {-0.00015, -2},
                                                          {2.675, 26750},
                                                          {0.1, 1000},
                                                          {123456789.12345, 1234567891234}})
        EXPECT_EQ(Value(number).toMoney().tenThousandths, money) << number;
    EXPECT_EQ(moneyOfDigits("922337203685477.5807")->tenThousandths, std::numeric_limits<qint64>::max());
    EXPECT_FALSE(moneyOfDigits("922337203685478").has_value());
    EXPECT_EQ(moneyOfDigits("0.000050001")->tenThousandths, 1);
    EXPECT_EQ(divideHalfEven(-5, 2), -2);
    EXPECT_EQ(divideHalfEven(7, 2), 4);
}

TEST(ValueDates, DaysAgreeWithQt) {
    for (qint32 julian = julianDay(100, 1, 1); julian < julianDay(9999, 12, 31); julian += 997) {
        const QDate date = QDate::fromJulianDay(julian);
        int y = 0, m = 0, d = 0;
        splitDay(julian, y, m, d);
        ASSERT_EQ(QDate(y, m, d), date);
        ASSERT_EQ(julianDay(date.year(), date.month(), date.day()), julian);
        char iso[32];
        ASSERT_EQ(parseIso(iso, formatIso({julian, 0}, iso)), (DateTime{julian, 0}));
    }
    for (const char* wrong :
         {"2024-02-30", "2023-02-29", "24-02-03", "2024-13-01", "", "2024-02-03 25:00:00", "abcd-ef-gh"})
        EXPECT_FALSE(parseIso(wrong, static_cast<int>(strlen(wrong)))) << wrong;
    for (const char* wrong : {"", "32.1.2024", "1.2", "29.2.2023", "1/2/2024", "heute", "1.2.24.5"})
        EXPECT_FALSE(parseDateText(QString(wrong))) << wrong;
    EXPECT_EQ(parseDateText(u"1.2.29")->date(), QDate(2029, 2, 1));
    EXPECT_EQ(parseDateText(u"1.2.30 12:30")->date(), QDate(1930, 2, 1));
    EXPECT_EQ(dateOfSerial(serialOf({2460350, 3661})), (DateTime{2460350, 3661}));
}

}  // namespace
}  // namespace koben
