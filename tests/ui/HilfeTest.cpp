// F1 within an entry: the help stands above it and leaves it as it was.
#include "tests/ui/Support.h"

namespace koben::ui {
namespace {

/// An entry that presets its field whenever it comes to the front.
struct Eintrag final : Form {
    explicit Eintrag(Koben& koben) : Form(koben, QStringLiteral("PE_Probe"), QStringLiteral("Probe")) {
        hilfe.onClick = [this] { this->koben.open(QStringLiteral("PH_Hilfe")); };
        liste.onClick = [this] { this->koben.open(QStringLiteral("PB_Probe")); };
    }
    void Activate() override {
        ++activations;
        tz.setText(QStringLiteral("1"));
    }
    TextBox tz{*this, "tz"};
    Button hilfe{*this, "hilfe", "Hilfe"}, liste{*this, "liste", "Liste"};
    int activations = 0;
};

template <char Kind>
struct Blatt final : Form {
    explicit Blatt(Koben& koben) : Form(koben, QStringLiteral("P%1_Blatt").arg(QLatin1Char(Kind)), QString()) {}
    Label text{*this, "text", "Ein Kapitel"};
};

TEST(Hilfe, LeavesWhatIsTyped) {
    Bench bench;
    bench.catalogue.add<Blatt<'H'>>(QStringLiteral("PH_Hilfe"));
    bench.catalogue.add<Blatt<'B'>>(QStringLiteral("PB_Probe"));
    Eintrag entry(bench.koben);
    int opened = 0;
    bench.screens.hand = [&](Form& form) {
        if (&form != &entry) return void(++opened);
        FormWindow& window = *bench.screens.windowOf(entry);
        QWidget* field = window.widgetOf(entry.tz);
        field->setFocus();
        type(window, QStringLiteral("4"));
        const QString typed = entry.tz.text();
        ASSERT_NE(typed, QStringLiteral("1"));
        press(field, Qt::Key_F1);
        EXPECT_EQ(opened, 1);
        EXPECT_EQ(entry.tz.text(), typed);
        entry.hilfe.click();
        EXPECT_EQ(opened, 2) << "by its button too";
        EXPECT_EQ(entry.tz.text(), typed);
        entry.liste.click();
        EXPECT_EQ(entry.activations, 2) << "another form may have changed what the entry shows";
    };
    bench.koben.run(entry);
}

}  // namespace
}  // namespace koben::ui
