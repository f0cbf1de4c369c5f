#include "store/Collation.h"

#include "tests/store/StoreTest.h"

namespace koben {
namespace {

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
    for (const char* row : {"abc|ABC   ", "Äpfel|äPFEL", "Straße|STRASSE", "Æ|ae", "œ|OE", "„a“|\"A\"", "‚|'",
                            "a–b|a-b", "m²|M2", "ÿ|Ÿ"}) {
        const QStringList texts = QString::fromUtf8(row).split(u'|');
        EXPECT_TRUE(equalTexts(texts[0], texts[1])) << row;
        EXPECT_EQ(sortKey(texts[0]), sortKey(texts[1])) << row;
    }
    EXPECT_FALSE(equalTexts(u"ä", u"a"));
    EXPECT_FALSE(equalTexts(u"ae", u"ä"));
    EXPECT_TRUE(equalTexts(QString(QString(255, u'a') + u'b'), QString(QString(255, u'a') + u'c')));
    EXPECT_FALSE(equalTexts(QString(QString(254, u'a') + u'b'), QString(QString(254, u'a') + u'c')));
}

TEST(Collation, Like) {
    for (const char* row :
         {"B_NTG|b_nt*", "|*", "abc|a?c", "a1|a#", "b|[a-c]", "d|[!a-c]", "Ä|ä", "100%|100%", "a*c|a[*]c", "a]c|a]c",
          "abcabd|*abd", "abcabd|a*b*d", "a-b|a[-x]b", "|", "ab|a[]b", "ä|[a-b]", "5|[0-9]"})
        EXPECT_TRUE(likeText(QString(row).section(u'|', 0, 0), QString(row).section(u'|', 1))) << row;
    for (const char* row : {"BXNTG|B_NT*", "ac|a?c", "ab|a#", "d|[a-c]", "1000|100%", "abc|a[*]c", "a|[a", "abc|",
                            "ss|ß", "abc |abc", "x!|x[!!]", "aaaaaaaaaaaaaaaaaaaaab|*a*a*a*a*a*c"})
        EXPECT_FALSE(likeText(QString(row).section(u'|', 0, 0), QString(row).section(u'|', 1))) << row;
}

}  // namespace
}  // namespace koben
