// The rules of selection against a plain model over random herds, and the way from selection to marking and back.
#include <random>

#include "tests/herd/Herdenhof.h"

namespace koben {
namespace {

/// An animal as the plain model sees it; "" and 0 days stand for Null.
struct Animal {
    QString art, gruppe, rasse, stall, amme;
    int belegungen = -1, ferkelungen = -1;  // -1 for Null
    int belegt = 0, geferkelt = 0;          // day of the month, 0 for Null
    bool gone = false, selected = false;
};

Animal random(std::mt19937& dice) {
    const auto one = [&](std::initializer_list<const char*> of) {
        return QString::fromUtf8(of.begin()[dice() % of.size()]);
    };
    const auto number = [&](int below) { return static_cast<int>(dice() % static_cast<unsigned>(below)); };
    Animal a{one({"Sau", "Sau", "Eber", "Mast", "Ferkel"}), one({"", "A", "B"}), one({"", "DL", "PI"}),
             one({"", "1", "2", "10"}), one({"", "J", "N"})};
    a.belegungen = number(5) - 1, a.ferkelungen = number(5) - 1;
    a.belegt = number(2) * (1 + number(4)), a.geferkelt = number(2) * (1 + number(4));
    a.gone = number(4) == 0, a.selected = number(3) == 0;
    return a;
}

QString literal(const QString& text) { return text.isEmpty() ? "NULL" : "'" + text + "'"; }
QString literal(int count) { return count < 0 ? "NULL" : QString::number(count); }
QString day(int number) { return number == 0 ? "NULL" : QStringLiteral("#05/%1/2026#").arg(number); }

void insert(Herdenhof& farm, const Animal& a, int number) {
    farm.sql(
        "insert into Sauen (Nummer, Art, Gruppe, Rasse, Stallnr, Mechanische_Amme, Selektiert, Anz_Belegungen, "
        "Anz_Ferkelungen, L_Belegung, L_Ferkelung, Abgangsdatum) values ('%1', %2, %3, %4, %5, %6, %7, %8, %9, "
        "%10, %11, %12)",
        number, literal(a.art), literal(a.gruppe), literal(a.rasse), literal(a.stall), literal(a.amme),
        a.selected ? "'X'" : "''", literal(a.belegungen), literal(a.ferkelungen), day(a.belegt), day(a.geferkelt),
        day(a.gone ? 20 : 0));
}

using Inputs = QString[6];  ///< of the screen

bool meets(int rule, const Animal& a, const Inputs& in) {
    const bool met[] = {false,
                        true,
                        a.art == in[0],
                        a.gruppe == in[1],
                        a.rasse == in[2],
                        std::max(a.belegungen, 0) >= in[3].toInt(),
                        std::max(a.ferkelungen, 0) >= in[4].toInt(),
                        a.amme == "J",
                        a.belegt != 0 && a.geferkelt < a.belegt,
                        a.geferkelt != 0 && a.geferkelt > a.belegt,
                        a.stall == in[5]};
    return met[rule];
}

void apply(int rule, bool clear, std::vector<Animal>& herd, const Inputs& in) {
    for (Animal& a : herd) {
        if (rule == 0 || clear) a.selected = false;
        if (!a.gone && meets(rule, a, in)) a.selected = true;
    }
}

class Regeln : public testing::TestWithParam<unsigned> {};

TEST_P(Regeln, wieDasEinfacheModell) {
    std::mt19937 dice(GetParam());
    Herdenhof farm;
    std::vector<Animal> herd;
    for (int i = 0; i < 60; ++i) insert(farm, herd.emplace_back(random(dice)), i);
    const QStringList values[6] = {{"Sau", "Eber", "Mast", "Ferkel", ""},
                                   {"A", "B", ""},
                                   {"DL", "PI", ""},
                                   {"", "0", "1", "3", "99"},
                                   {"", "0", "1", "3", "99"},
                                   {"1", "10", ""}};
    farm.start([&](PA_Koben& main) {
        farm.screens.answers = {false};
        farm.menue<PB_Selektieren>(main, "XB_schweineselektieren", [&](PB_Selektieren& form) {
            for (int round = 0; round < 44; ++round) {
                const int rule = round % 11;
                Inputs in;
                for (int i = 0; i < 6; ++i) {
                    in[i] = values[i][static_cast<int>(dice() % static_cast<unsigned>(values[i].size()))];
                    typeInto(form.kom[i], in[i]);
                }
                if (dice() % 2) form.kon.click();
                form.entselekt[rule].click();
                apply(rule, form.kon.checked(), herd, in);
                QStringList expected;
                for (const Animal& a : herd) expected += a.selected ? "X" : "";
                ASSERT_EQ(farm.show("select Selektiert from Sauen").split(" | "), expected)
                    << "rule " << rule << " kon " << form.kon.checked() << " " << in[0].toStdString();
            }
            form.entselekt[1].click();
            ASSERT_EQ(main.datali.cell(1, u"Selektiert"), "X");  // the list behind is already up to date
            form.abbv.click();
        });
    });
}
INSTANTIATE_TEST_SUITE_P(Zufall, Regeln, testing::Values(1u, 2u, 3u));

TEST(SelektierenTest, vonDerSelektionZurMarkierungUndZurück) {
    Herdenhof farm;
    for (const char* number : {"1", "2", "3", "4"}) farm.tier(number);
    farm.tier("5", "Sau", "Abgangsdatum = #01/01/2026#, Selektiert = 'X'");
    const QString hint = "! Sie können die Schweine auch mit gedrückter STRG-Taste und der Maus markieren.";
    farm.start([&](PA_Koben& main) {
        const auto marked = [&] { return nummern(main.datali, main.datali.markedRows()); };
        main.datali.mark({2, 4});
        farm.menue(main, "XB_markierteschweineselektieren");
        EXPECT_EQ(farm.show("select Nummer from Sauen where Selektiert = 'X'"), "2 | 4");
        EXPECT_EQ(marked(), "1");  // as the list is new
        farm.texts();
        farm.screens.answers = {true};
        farm.menue<PB_Selektieren>(main, "XB_schweineselektieren", [](PB_Selektieren& form) { form.abbv.click(); });
        EXPECT_TRUE(farm.says({"? Es sind 2 Schweine selektiert.*ja", hint}));
        EXPECT_EQ(marked(), "2 4");
        EXPECT_EQ(main.datali.row(), 2);
        farm.menue<PB_Selektieren>(main, "XB_schweineselektieren", [](auto& form) { form.entselekt[0].click(); });
        EXPECT_TRUE(farm.says({}));  // nothing selected, nothing asked
        farm.menue(main, "XB_selektiertetieremarkieren");
        EXPECT_TRUE(farm.says({hint}));
        EXPECT_EQ(marked(), "");
    });
    EXPECT_EQ(farm.actions, (QStringList{"2 Sauen selektiert", "Selektion aufgehoben"}));
}

}  // namespace
}  // namespace koben
