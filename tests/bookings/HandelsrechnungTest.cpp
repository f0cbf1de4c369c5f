// Counts, prices, money and weights of the trade, kept in step as the fields are left.
#include <random>

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
void pruefe(E& form, const Steps& c) {
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
        neu<Sauverkauf>(Ferkelverkauf, {1}, [&](Sauverkauf& form) { pruefe(form, c); });
    for (const Steps& c : {Steps{"0=5 2=30 1=3", "0 3 30,00 90,00 0,00 0,00 0,00"},  // a sale ends the purchase
                           {"1=10 3=290 4=50", "0 10 29,00 290,00 50,00 0,00 0,00"},
                           {"0=10 3=100", "10 0 0,00 100,00 0,00 0,00 0,00"},  // no price from the other side's money
                           {"5=7 6=50", "0 0 0,00 0,00 0,00 7,00 50,00"},      // without a count nothing is divided
                           {"1=5 2=3 1=", "0  3,00 0,00 0,00 0,00 0,00"}})
        hof<Hofhandel>([&](Hofhandel& form) { pruefe(form, c); });
}

/// The arithmetic of the trade once more, in cents, without regard to speed or size.
using Cents = std::vector<qint64>;  // counts stand there as they are
qint64 geteilt(qint64 cents, qint64 count) { return (cents * 2 + count) / (count * 2); }

void naivVerkauf(Cents& tz, int i) {
    const qint64 count = tz[0];
    if (i == 4) tz[3] = geteilt(tz[4], count);
    if (i == 3) tz[4] = tz[3] * count;
    if (i == 2 && tz[2] != 0) tz[1] = geteilt(tz[2], count);
    if (i < 2) tz[2] = tz[1] * tz[0], tz[4] = tz[3] * count;
    if (i == 0 && tz[0] < 1) tz[0] = 1;
}

void naivHandel(Cents& tz, int i) {
    if (i == 0 && tz[0] != 0) tz[1] = 0;
    if (i == 1 && tz[1] != 0) tz[0] = 0;
    const qint64 count = tz[0] != 0 ? tz[0] : tz[1];
    if (i == 6 && count != 0) tz[5] = geteilt(tz[6], count);
    if (i == 5) tz[6] = tz[5] * count;
    if (i == 4 && tz[4] != 0 && tz[0] != 0) tz[2] = geteilt(tz[4], tz[0]);
    if (i == 3 && tz[3] != 0 && tz[1] != 0) tz[2] = geteilt(tz[3], tz[1]);
    if (i < 3) tz[3] = tz[2] * tz[1], tz[4] = tz[2] * tz[0], tz[6] = tz[5] * count;
}

template <class E>
void zufall(E& form, int counts, void (*naive)(Cents&, int), unsigned seed) {
    std::mt19937 random(seed);
    const auto to = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const auto text = [&](int field, qint64 v) {
        if (field < counts) return QString::number(v);
        return QStringLiteral("%1,%2").arg(v / 100).arg(v % 100, 2, 10, QChar(u'0'));
    };
    Cents expected(static_cast<size_t>(form.tz.count()), 0);
    if (counts == 1) expected[0] = 1;
    for (int step = 0; step < 400; ++step) {
        const int i = to(form.tz.count());
        const qint64 value = to(4) == 0 ? 0 : to(i < counts ? 60 : 100000);
        expected[static_cast<size_t>(i)] = value;
        typeInto(form.tz[i], text(i, value));
        naive(expected, i);
        QStringList texts;
        for (int k = 0; k < form.tz.count(); ++k) texts += text(k, expected[static_cast<size_t>(k)]);
        ASSERT_EQ(figures(form), texts.join(u' ')) << seed << " step " << step << " field " << i;
    }
}

TEST_F(HandelsrechnungTest, zufallsfolgenGegenDasNaiveModell) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        neu<Sauverkauf>(Ferkelverkauf, {1}, [&](Sauverkauf& form) { zufall(form, 1, naivVerkauf, seed); });
        hof<Hofhandel>([&](Hofhandel& form) { zufall(form, 2, naivHandel, seed); });
    }
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
