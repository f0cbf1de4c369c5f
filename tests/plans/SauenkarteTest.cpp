// What a failing printer and a cancel leave behind; the cards themselves are played by tests/skripte/papier.skript.
#include "plans/PB_Sauenkarte.h"

#include "tests/plans/Planhof.h"

namespace koben {
namespace {

class Sauenkarte : public testing::Test {
protected:
    Sauenkarte() { hof.catalogue.add<PB_Sauenkarte>("PB_Sauenkarte"); }

    /// Marks all sows and prints, the question answered with yes. The lines without the fonts.
    QStringList print() {
        hof.screens.answers.push_back(true);
        hof.in<PB_Sauenkarte>("PB_Sauenkarte", [](PB_Sauenkarte& form) { play(form, "alletier(0); ok"); });
        if (hof.platform.jobs.empty() || !hof.platform.jobs.back()->ended) return {};
        QStringList lines = hof.platform.jobs.back()->lines;
        for (QString& line : lines)
            if (line != u"{Seite}") line.remove(QRegularExpression("\\{[^}]*\\}"));
        return lines;
    }

    Planhof hof;
};

TEST_F(Sauenkarte, isNotedAsPrintedOnlyWhereItWas) {
    hof.tier("1", "Sau", "Aenderung = 'X'");
    hof.platform.printerReady = false;
    print();
    EXPECT_EQ(hof.show("select Aenderung from Sauen"), "X");
    hof.platform.printerReady = true;
    hof.platform.failAtLine = 10;
    hof.screens.takeLog();
    print();
    EXPECT_EQ(hof.screens.log.filter("! ").size(), 1) << "the failure is told";
    EXPECT_EQ(hof.show("select Aenderung from Sauen"), "X");
    EXPECT_FALSE(hof.platform.jobs.back()->ended);
    hof.platform.failAtLine = 0;
    hof.screens.takeLog();
    for (const int until : {1, 50}) {  // given up while it is drawn, and while it is painted
        hof.screens.onProgress = [until](const QString&, int percent) { return percent < until; };
        EXPECT_EQ(print(), QStringList());
        EXPECT_EQ(hof.show("select Aenderung from Sauen"), "X");
    }
    EXPECT_EQ(hof.screens.log.filter("! "), QStringList()) << "a cancel needs no word";
    hof.screens.onProgress = {};
    EXPECT_FALSE(print().isEmpty());
    EXPECT_EQ(hof.show("select Aenderung from Sauen"), "");
    EXPECT_EQ(hof.actions, QStringList("1 Sauenkarte gedruckt"));
}

}  // namespace
}  // namespace koben
