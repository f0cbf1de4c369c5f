// Counts, prices, money and weights of the trade, kept in step as the fields are left.
#include "tests/bookings/Ferkelhof.h"

namespace koben {
namespace {

using HandelsrechnungTest = Ferkelhof;

template <class E>
QString figures(E& form) {
    QStringList texts;
    for (auto& field : form.tz) texts += field->text();
    return texts.join(u' ');
}

using Steps = std::pair<const char*, const char*>;  ///< "1=30 2=290", typed into fields in this order; the figures

template <class E>
void check(E& form, const Steps& c) {
    for (const QString& step : QString(c.first).split(u' '))
        typeInto(form.tz[step.section(u'=', 0, 0).toInt()], step.section(u'=', 1));
    EXPECT_EQ(figures(form), c.second) << c.first;
}

TEST_F(HandelsrechnungTest, ränderDerEingabe) {
    for (const Steps& c : {Steps{"0=10 1=30 2=290", "10 29,00 290,00 0,00 0,00"},
                           {"0=3 2=10 0=3", "3 3,33 9,99 0,00 0,00"},  // the price rules once the count is left again
                           {"0=10 1=30 2=0", "10 30,00 0,00 0,00 0,00"},  // no money gives no price
                           {"1=30 3=8 0=0", "1 30,00 0,00 8,00 0,00"},    // an emptied count is 1 too late
                           {"1=30 0=", "1 30,00 0,00 0,00 0,00"},
                           {"0=2 2=0,45", "2 0,23 0,45 0,00 0,00"},     // a half goes up, exactly
                           {"0=2 2=-0,45", "2 -0,23 -0,45 0,00 0,00"},  // away from zero
                           {"0=3 1=1234567,89", "3 1234567,89 3703703,67 0,00 0,00"},
                           {"0=4 4=abc1.5", "4 0,00 0,00 0,38 1,50"},
                           {"1=1,2,3", "1 1,2,3 0,00 0,00 0,00"}})
        neu<Sauverkauf>(Ferkelverkauf, {1}, [&](Sauverkauf& form) { check(form, c); });
    for (const Steps& c : {Steps{"0=5 2=30 1=3", "0 3 30,00 90,00 0,00 0,00 0,00"},  // a sale ends the purchase
                           {"1=10 3=290 4=50", "0 10 29,00 290,00 50,00 0,00 0,00"},
                           {"0=10 3=100", "10 0 0,00 100,00 0,00 0,00 0,00"},  // no price from the other side's money
                           {"5=7 6=50", "0 0 0,00 0,00 0,00 7,00 50,00"},      // without a count nothing is divided
                           {"1=4 6=50", "0 4 0,00 0,00 0,00 12,50 50,00"},
                           {"0=4 5=2,5 4=90", "4 0 22,50 0,00 90,00 2,50 10,00"},
                           {"1=5 2=3 1=", "0  3,00 0,00 0,00 0,00 0,00"}})
        hof<Hofhandel>([&](Hofhandel& form) { check(form, c); });
}

TEST_F(HandelsrechnungTest, pfeileRechnenMit) {
    neu<Sauverkauf>(Ferkelverkauf, {1}, [&](Sauverkauf& form) {
        typeInto(form.tz[1], "2");
        form.UpDown.up();
        EXPECT_EQ(figures(form), "2 2,00 4,00 0,00 0,00");
        EXPECT_EQ(form.gridli.markedRows(), std::vector<int>({1, 2}));
        for (int i = 0; i < 3; ++i) form.UpDown.down();
        EXPECT_EQ(figures(form), "1 2,00 2,00 0,00 0,00");
        typeInto(form.tz[0], "999");
        form.UpDown.up();
        EXPECT_EQ(form.tz[0].text(), "999");
    });
    hof<Hofhandel>([&](Hofhandel& form) {
        typeInto(form.tz[2], "2");
        form.UpDown[0].up();
        form.UpDown[1].up();
        form.UpDown[1].up();
        EXPECT_EQ(figures(form), "0 2 2,00 4,00 0,00 0,00 0,00");
        EXPECT_EQ(form.gridli.markedCount(), 2);
        form.UpDown[0].up();
        EXPECT_EQ(figures(form), "1 0 2,00 0,00 2,00 0,00 0,00");
        EXPECT_EQ(form.gridli.markedCount(), 0);  // a purchase takes none
    });
}

}  // namespace
}  // namespace koben
