#include <gtest/gtest.h>

#include <limits>

#include "core/PZ_Koben_Subs.h"
#include "tests/core/Texte.h"

namespace koben {
namespace {

TEST(Konvertierung, NumbersReadAsFarAsTheyGo) {
    struct {
        const char* text;
        float soll;
        const char* danach;
    } const cases[] = {{"", 0, ""},
                       {"0,5", 0.5F, "0.5"},
                       {"12,5 kg", 12.5F, "12.5 kg"},
                       {"1.234,56", 1.234F, "1.234.56"},
                       {"1,2,3", 1.2F, "1.2,3"},
                       {"abc", 0, "abc"},
                       {"-3,25", -3.25F, "-3.25"},
                       {"  7", 7, "  7"},
                       {",5", 0.5F, ".5"},
                       {"5,", 5, "5."},
                       {"-", 0, "-"},
                       {"--1", 0, "--1"},
                       {"+4", 4, "+4"},
                       {"0,1", 0.1F, "0.1"},
                       {"16777217", 16777216.0F, "16777217"},
                       {"1 2", 1, "1 2"}};
    for (const auto& c : cases) {
        QString text = QString::fromUtf8(c.text);
        EXPECT_EQ(Zahl_aus_Text(text), c.soll) << c.text;
        EXPECT_EQ(text, QString::fromUtf8(c.danach)) << c.text;
    }
    EXPECT_EQ(Zahl_aus_Text(QString(60, u'9')), std::numeric_limits<float>::max());
    EXPECT_EQ(Wert(QStringLiteral("12.75x")), 12.75);
    EXPECT_EQ(Wert(QStringLiteral("12,75")), 12);  // the comma ends a plain value
    EXPECT_FALSE(std::signbit(Wert(QStringLiteral("-0"))));
}

TEST(Konvertierung, AmountsReadExactly) {
    struct {
        const char* text;
        qint64 soll;
    } const cases[] = {{"12345678,91", 123456789100},
                       {"0,1", 1000},
                       {"-0,07", -700},
                       {"12,5 Euro", 125000},
                       {"", 0},
                       {"0,00005", 0},
                       {"0,00015", 2},
                       {"0,000051", 1},
                       {"-0,00015", -2},
                       {"9,99995", 100000},
                       {"1.234,56", 12340}};
    for (const auto& c : cases) EXPECT_EQ(Betrag_aus_Text(QString::fromUtf8(c.text)), betrag(c.soll)) << c.text;
    EXPECT_EQ(Betrag_aus_Text(QString(40, u'9')), betrag(std::numeric_limits<qint64>::max()));
    EXPECT_EQ(Betrag_lesen(QStringLiteral(" 12.50 ")), betrag(125000));
    EXPECT_EQ(Betrag_lesen(QStringLiteral("-12,5")), betrag(-125000));
    for (const char* text : {"", "x", "12.50x", "1.2.3", "-", "."})
        EXPECT_FALSE(Betrag_lesen(QString::fromUtf8(text))) << text;
}

TEST(Konvertierung, NumbersForTextBoxes) {
    struct {
        const char* wert;
        int decimals;
        const char* soll;
        const char* danach;
    } const cases[] = {
        {"", 2, "0,00", "0"},
        {"", 0, "0", "0"},
        {"12.5", 2, "12,50", "12,5"},
        {"12,5", 2, "12,50", "12,5"},
        {"2,345", 2, "2,35", "2,345"},
        {"-2,345", 2, "-2,35", "-2,345"},
        {"0,5", 0, "1", "0,5"},
        {"1,5", 0, "2", "1,5"},
        {"2,5", 0, "3", "2,5"},
        {"0,49", 0, "0", "0,49"},
        {"1,005", 2, "1,01", "1,005"},
        {"9,995", 2, "10,00", "9,995"},
        {"999,5", 0, "1000", "999,5"},
        {"-0,004", 2, "0,00", "-0,004"},
        {"-0", 2, "0,00", "-0"},
        {"007", 1, "7,0", "007"},
        {",5", 1, "0,5", ",5"},
        {"1.234.5", 2, "0,00", "1,234.5"},
        {"1.234,5", 2, "0,00", "1,234,5"},
        {"abc", 1, "0,0", "abc"},
        {" 3 ", 0, "3", " 3 "},
        {"1e3", 1, "1000,0", "1e3"},
        {"5E-2", 2, "0,05", "5E-2"},
        {"3 kg", 0, "0", "3 kg"},
        {"12345678901234567890", 1, "12345678901234567890,0", "12345678901234567890"},
    };
    for (const auto& c : cases) {
        QString wert = QString::fromUtf8(c.wert);
        EXPECT_EQ(Zahl_formatieren(wert, c.decimals), QString::fromUtf8(c.soll)) << c.wert;
        EXPECT_EQ(wert, QString::fromUtf8(c.danach)) << c.wert;
    }
}

TEST(Konvertierung, AmountsAsTextWithAPoint) {
    struct {
        qint64 amount;
        int width;
        const char* soll;
        const char* punkt;
    } const cases[] = {
        {12345000, 4, "1234", "1234.50"},
        {125000, 8, "12.50   ", "12.50"},
        {0, 4, "0.00", "0.00"},
        {-49, 5, "0.00 ", "0.00"},
        {-50, 5, "-0.01", "-0.01"},
        {1234550, 6, "123.46", "123.46"},
        {700, 6, "0.07  ", "0.07"},
        {99950000, 10, "9995.00   ", "9995.00"},
        {125000, 0, "", "12.50"},
        {std::numeric_limits<qint64>::min(), 30, "-922337203685477.58           ", "-922337203685477.58"}};
    for (const auto& c : cases) {
        EXPECT_EQ(Betrag_formatieren(c.width, betrag(c.amount)), QString::fromUtf8(c.soll)) << c.amount;
        EXPECT_EQ(Betrag_als_Punkttext(betrag(c.amount)), QString::fromUtf8(c.punkt)) << c.amount;
    }
}

TEST(Konvertierung, AnyValueBecomesASafeText) {
    EXPECT_EQ(Hochkomma_ersetzen(Value::null()), QString());
    EXPECT_EQ(Hochkomma_ersetzen(Value(QStringLiteral("  O'Brien's "))), QStringLiteral("O`Brien`s"));
    EXPECT_EQ(Hochkomma_ersetzen(Value(QDate(2025, 12, 24))), QStringLiteral("24.12.2025"));
    EXPECT_EQ(Hochkomma_ersetzen(Value(betrag(125000))), QStringLiteral("12,5"));
    EXPECT_EQ(Hochkomma_ersetzen(QStringLiteral("\tä \n")), QStringLiteral("\tä \n"));  // only blanks are trimmed
}

TEST(Konvertierung, ReportColumnsHaveExactlyTheirWidth) {
    EXPECT_EQ(Text_links(QStringLiteral("  Sau "), 5), QStringLiteral("Sau  "));
    EXPECT_EQ(Text_links(QStringLiteral("Zuchtsau"), 5), QStringLiteral("Zucht"));
    EXPECT_EQ(Text_rechts(QStringLiteral(" 12 "), 5), QStringLiteral("   12"));
    EXPECT_EQ(Text_rechts(QStringLiteral("123456"), 5), QStringLiteral("12345"));
    EXPECT_EQ(Text_rechts(QString(), 2), QStringLiteral("  "));
    EXPECT_EQ(Text_links(QStringLiteral("x"), -1), QString());
}

TEST(Konvertierung, KeyFilters) {
    QString ziffern, zahlzeichen;
    for (int key = 1; key < 256; ++key) {
        if (Nur_Ziffern(key) == key) ziffern += QChar(key);
        if (Nur_Zahlzeichen(key) == key) zahlzeichen += QChar(key);
    }
    EXPECT_EQ(ziffern, QStringLiteral("\b\t\n\r*0123456789"));
    EXPECT_EQ(zahlzeichen, QStringLiteral("\b\t\n\r*,-.0123456789"));
}

}  // namespace
}  // namespace koben
