// The list after few changes holds what reading all of it would show: rows, order, counters, whatever has changed how.
#include <random>

#include "tests/herd/Herdenhof.h"

namespace koben {
namespace {

/// Sees whether the list was read whole: only then the columns are made anew.
class Spaltenwache final : public Control::View {
public:
    using View::View;
    void changed(Aspect aspect) override { made += aspect == Aspect::Columns; }
    int made = 0;
};

QString inhalt(const PA_Koben& main) {
    QString text = main.bezstati.text() + u'\n';
    for (int row = 1; row <= main.datali.rowCount(); ++row) {
        for (int c = 1; c <= main.datali.columnCount(); ++c) text += main.datali.cell(row, c) + u'|';
        text += u'\n';
    }
    return text;
}

/// The same choices and settings on a main form that has read nothing yet. Its start may derive a status anew.
QString frisch(const Herdenhof& farm, const PA_Koben& like) {
    Herdenhof other(farm.koben.Datenordner);
    QString text;
    other.start([&](PA_Koben& main) {
        other.koben.Konfig_Zahl = farm.koben.Konfig_Zahl;
        other.koben.Konfig_Text = farm.koben.Konfig_Text;
        main.optianzeige.select(like.optianzeige.selected());
        main.optiverkauft.select(like.optiverkauft.selected());
        main.optisauen.select(like.optisauen.selected());
        other.screens.log.clear();
        main.datenschweinelesen();
        text = inhalt(main);
    });
    return text;
}

class Zufall {
public:
    explicit Zufall(unsigned seed) : m_random(seed) {}
    int below(int n) { return static_cast<int>(m_random() % static_cast<unsigned>(n)); }
    template <size_t N>
    QString eins(const char* const (&words)[N]) {
        return QString::fromUtf8(words[below(static_cast<int>(N))]);
    }

private:
    std::mt19937 m_random;
};

const char* const Arten[] = {"Sau", "Sau", "Sau", "Eber", "Mast", "Ferkel"};
const char* const Nummern[] = {"7", "007", "a", "A", "ä", "Ä", "z", "", "12", "ß", "ss"};

void aendern(Herdenhof& farm, Zufall& z, int animals) {
    const auto id = [&] { return QString::number(z.below(animals) + 1); };
    const auto set = [&](const QString& what) { farm.sql("update Sauen set %1 where ID = %2", what, id()); };
    switch (z.below(9)) {
        case 0:
            return farm.tier(z.eins(Nummern), z.eins(Arten));
        case 1:
            return farm.sql("delete from Sauen where ID = " + id());
        case 2:
            return set(QStringLiteral("Abgangsdatum = ") + (z.below(2) ? "NULL" : "#01/02/2026#"));
        case 3:
            return set("Nummer = '" + z.eins(Nummern) + "'");
        case 4:
            return set(QStringLiteral("Zugangsgewicht_kg = %1, Einkaufspreis = %1").arg(z.below(5) * 0.25));
        case 5:
            return set(QStringLiteral("L_Belegung = #0%1/10/2026#, Anz_Ferkel_Lebend = %1").arg(z.below(9) + 1));
        case 6: {
            Transaction undone(farm.db);
            set("Nummer = 'weg'");
            return farm.koben.herdList->datenschweinelesen();  // sees the change, which then goes
        }
        case 7:
            return farm.sql("update Sauen set Art = '%1' where ID <= %2", z.eins(Arten), id());
        default:
            return farm.sql("insert into Sauen (Nummer, Art, ID) values ('%1', 'Sau', %2)", z.eins(Nummern),
                            10'000 + z.below(1'000'000));
    }
}

TEST(ListenauffrischungTest, zufaelligeAenderungen) {
    Herdenhof farm;
    Zufall z(20260715);
    for (int i = 0; i < 60; ++i) farm.tier(z.eins(Nummern), z.eins(Arten));
    int refreshed = 0;
    farm.start([&](PA_Koben& main) {
        Spaltenwache watch(main.datali);
        for (int round = 0; round < 80 && !testing::Test::HasFailure(); ++round) {
            if (z.below(6) == 0) main.optianzeige.select(z.below(2));
            if (z.below(6) == 0) main.optiverkauft.select(2 * z.below(2));
            if (z.below(5) == 0) main.datali.sortByUser(z.below(main.datali.columnCount()) + 1, z.below(2) + 1);
            if (z.below(6) == 0) farm.koben.Konfig_Text[Text::Sortierung1] = z.below(2) ? "Nummer" : "";
            if (z.below(6) == 0) farm.koben.Konfig_Text[Text::Sortierung2] = z.below(2) ? "L_Belegung" : "";
            for (int i = z.below(3); i >= 0; --i) aendern(farm, z, 60);
            const QString whole = frisch(farm, main);
            farm.koben.herdList = &main;
            main.datali.mark({1, 2});
            watch.made = 0;
            main.datenschweinelesen();
            refreshed += watch.made == 0;
            EXPECT_EQ(inhalt(main), whole) << "round " << round;
            EXPECT_EQ(main.datali.row(), 1);
            EXPECT_EQ(main.datali.markedRows(), std::vector<int>{1});
        }
    });
    EXPECT_GT(refreshed, 25) << "the list is always read whole";
}

/// A long reading can be cancelled; list and choices then stand as before.
TEST(ListenauffrischungTest, abbruchBeimLesen) {
    Herdenhof farm;
    farm.tier("1");
    for (int i = 0; i < 13; ++i) farm.sql("insert into Sauen (Nummer, Art) select Nummer, Art from Sauen");
    farm.sql("update Sauen set Art = 'Eber' where ID < 4");
    farm.start([&](PA_Koben& main) {
        main.optianzeige[2].click();
        const QString before = nummern(main.datali);
        farm.screens.onProgress = [](const QString&, int percent) { return percent < 50; };
        main.optianzeige[1].click();
        EXPECT_EQ(main.optianzeige.selected(), 2);
        EXPECT_EQ(nummern(main.datali), before);
        farm.screens.onProgress = {};
        // what changed before a reading that was cancelled is seen by the next one
        main.optianzeige[0].click();
        farm.sql("update Sauen set Infos = 'x'");  // too many to be read one by one
        farm.screens.onProgress = [](const QString&, int) { return false; };
        main.datenschweinelesen();
        EXPECT_EQ(main.datali.cell(1, u"Infos"), "");
        farm.screens.onProgress = {};
        farm.sql("update Sauen set Nummer = 'neu' where ID = 2");
        main.datenschweinelesen();
        EXPECT_EQ(main.datali.cell(1, u"Infos"), "x");
        EXPECT_EQ(main.datali.cell(2, u"Nummer"), "neu");
        main.optianzeige[2].click();
        main.optianzeige[1].click();
        EXPECT_EQ(main.datali.rowCount(), 8189);
    });
}

}  // namespace
}  // namespace koben
