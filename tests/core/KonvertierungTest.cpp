#include <gtest/gtest.h>

#include <limits>

#include "core/PZ_Koben_Subs.h"
#include "tests/core/Texte.h"

namespace koben {
namespace {

TEST(Konvertierung, NumbersReadAsFarAsTheyGo) {
    // TEXT|NUMBER; the caller's variable then holds the text with a point for the first comma
    for (const Row c : {"|0", "0,5|0.5", "12,5 kg|12.5", "1.234,56|1.234", "1,2,3|1.2", "abc|0", "-3,25|-3.25", "  7|7",
                        ",5|0.5", "5,|5", "-|0", "--1|0", "+4|4", "0,1|0.1", "16777217|16777216", "1 2|1"}) {
        QString text = c[0], after = c[0];
        EXPECT_EQ(Zahl_aus_Text(text), c[1].toFloat()) << c[0].toStdString();
        if (const auto comma = after.indexOf(u','); comma >= 0) after[comma] = u'.';
        EXPECT_EQ(text, after);
    }
    EXPECT_EQ(Zahl_aus_Text(QString(60, u'9')), std::numeric_limits<float>::max());
    EXPECT_EQ(Wert(QStringLiteral("12.75x")), 12.75);
    EXPECT_EQ(Wert(QStringLiteral("12,75")), 12);  // the comma ends a plain value
    EXPECT_FALSE(std::signbit(Wert(QStringLiteral("-0"))));
}

TEST(Konvertierung, AmountsReadExactly) {
    for (const Row c : {"12345678,91|123456789100", "0,1|1000", "-0,07|-700", "12,5 Euro|125000", "|0", "0,00005|0",
                        "0,00015|2", "0,000051|1", "-0,00015|-2", "9,99995|100000", "1.234,56|12340"})
        EXPECT_EQ(Betrag_aus_Text(c[0]), amount(c[1].toLongLong())) << c[0].toStdString();
    EXPECT_EQ(Betrag_aus_Text(QString(40, u'9')), amount(std::numeric_limits<qint64>::max()));
    EXPECT_EQ(Betrag_lesen(QStringLiteral(" 12.50 ")), amount(125000));
    EXPECT_EQ(Betrag_lesen(QStringLiteral("-12,5")), amount(-125000));
    for (const char* text : {"", "x", "12.50x", "1.2.3", "-", "."})
        EXPECT_FALSE(Betrag_lesen(QString::fromUtf8(text))) << text;
}

/// TEXT|AMOUNT|WEIGHT: whether it fits (f), is too large (l) or cannot be read (u).
TEST(Konvertierung, AnEntryAsksWhetherANumberFits) {
    for (const Row c : {"12,5|f|f", "|f|f", "12,5 kg|f|f", "1.234,56|u|u", "1.234.567|u|u", "12,,5|u|u", "1.234|f|f",
                        "922337203685477,5807|f|f", "922337203685477,58074|f|f", "922337203685477,5808|l|f",
                        "-922337203685477,5808|l|f", "99999999999999999|l|f",
                        "340282350000000000000000000000000000000|l|l", "-4e38|f|f", ".|f|f"}) {
        const auto sign = [](Reading reading) { return QString(u"flu"[static_cast<int>(reading)]); };
        EXPECT_EQ(sign(readAmount(c[0])) + u'|' + sign(readWeight(c[0])), c[1] + u'|' + c[2]) << c[0].toStdString();
    }
    EXPECT_FALSE(Betrag_lesen(QStringLiteral("99999999999999999")));
}

/// DECIMALS|TEXT|SHOWN; the caller's variable then holds a comma for the first point, "0" for nothing.
TEST(Konvertierung, NumbersForTextBoxes) {
    const char* const plain =
        "2||0,00 0||0 2|12.5|12,50 2|12,5|12,50 2|2,345|2,35 2|-2,345|-2,35 0|0,5|1 0|1,5|2 0|2,5|3 0|0,49|0 "
        "2|1,005|1,01 2|9,995|10,00 0|999,5|1000 2|-0,004|0,00 2|-0|0,00 1|007|7,0 1|,5|0,5 2|1.234.5|0,00 "
        "2|1.234,5|0,00 1|abc|0,0 1|1e3|1000,0 2|5E-2|0,05 1|12345678901234567890|12345678901234567890,0";
    for (const QString& row : QString(plain).split(u' ') + QStringList{"0| 3 |3", "0|3 kg|0"}) {
        const Row c(row.toUtf8().constData());
        QString value = c[1], after = c[1].isEmpty() ? QStringLiteral("0") : c[1];
        EXPECT_EQ(Zahl_formatieren(value, c[0].toInt()), c[2]) << c[1].toStdString();
        if (const auto point = after.indexOf(u'.'); point >= 0) after[point] = u',';
        EXPECT_EQ(value, after);
    }
}

/// AMOUNT|WIDTH|TEXT OF THAT WIDTH|TEXT WITH A POINT
TEST(Konvertierung, AmountsAsTextWithAPoint) {
    for (const Row c :
         {"12345000|4|1234|1234.50", "125000|8|12.50   |12.50", "0|4|0.00|0.00", "-49|5|0.00 |0.00",
          "-50|5|-0.01|-0.01", "1234550|6|123.46|123.46", "700|6|0.07  |0.07", "99950000|10|9995.00   |9995.00",
          "125000|0||12.50", "-9223372036854775808|30|-922337203685477.58           |-922337203685477.58"}) {
        const Money money = amount(c[0].toLongLong());
        EXPECT_EQ(Betrag_formatieren(c[1].toInt(), money), c[2]) << c[0].toStdString();
        EXPECT_EQ(Betrag_als_Punkttext(money), c[3]) << c[0].toStdString();
    }
}

TEST(Konvertierung, AnyValueBecomesASafeText) {
    EXPECT_EQ(Hochkomma_ersetzen(Value::null()), QString());
    EXPECT_EQ(Hochkomma_ersetzen(Value(QStringLiteral("  O'Brien's "))), "O`Brien`s");
    EXPECT_EQ(Hochkomma_ersetzen(Value(QDate(2025, 12, 24))), "24.12.2025");
    EXPECT_EQ(Hochkomma_ersetzen(Value(amount(125000))), "12,5");
    EXPECT_EQ(Hochkomma_ersetzen(QStringLiteral("\tä \n")), "\tä \n");  // only blanks are trimmed
}

TEST(Konvertierung, ReportColumnsHaveExactlyTheirWidth) {
    EXPECT_EQ(Text_links(QStringLiteral("  Sau "), 5), "Sau  ");
    EXPECT_EQ(Text_links(QStringLiteral("Zuchtsau"), 5), "Zucht");
    EXPECT_EQ(Text_rechts(QStringLiteral(" 12 "), 5), "   12");
    EXPECT_EQ(Text_rechts(QStringLiteral("123456"), 5), "12345");
    EXPECT_EQ(Text_rechts(QString(), 2), "  ");
    EXPECT_EQ(Text_links(QStringLiteral("x"), -1), QString());
}

TEST(Konvertierung, KeyFilters) {
    QString digits, numberSigns;
    for (int key = 1; key < 256; ++key) {
        if (Nur_Ziffern(key) == key) digits += QChar(key);
        if (Nur_Zahlzeichen(key) == key) numberSigns += QChar(key);
    }
    EXPECT_EQ(digits, "\b\t\n\r*0123456789");
    EXPECT_EQ(numberSigns, "\b\t\n\r*,-.0123456789");
}

}  // namespace
}  // namespace koben
