// The shape of a report: its choices over closing and opening, dates, a run that is cancelled, closing rows. And a list
// as printed table.
#include "output/Bericht.h"
#include "output/Tabellendruck.h"
#include "tests/output/Liste.h"

namespace koben {
namespace {

class Probebericht final : public Bericht {
public:
    explicit Probebericht(Koben& koben_) : Bericht(koben_, "Probebericht", "Probe") {
        bindButtons(ok, beenden);
        bind(kon, 28);
        bind(opti, 2);
        bindNumber(tz, 35);
        bindText(t, 27);
        bindMarks(li, 3);
        bindMarks(frueher, 4, Marks::Forgotten);
        bindAllAndNone(alle, [this]() -> ListBox& { return li; });
        for (int i = 0; i < 2; ++i) bindDate(tdat[i], calender[i], calend);
        bindWidths(gridli, "probe");
        gridli.addColumn({.key = "nr", .title = "Nr"});
        gridli.addColumn({.key = "wurf", .title = "Würfe", .sort = Sort::Number});
        gridli.addColumn({.key = "stall", .title = "Stall"});
        ok.onClick = [this] {
            fields = markedOrAll(li);
            whole = run("Probe ...", 100, &meter, [](Progress& progress) {
                while (progress.advance() && progress.step(99)) return;
            });
            if (whole) Liste_ausgeben(koben, gridli);
        };
    }
    void fillChoices() override {
        li.setItems({"Nummer", "Art", "Gruppe"});
        frueher.setItems({"Nummer", "Art"});
    }
    void dateChanged(TextBox& field) override { changed += field.text(); }
    using Bericht::addMeansAndSums;

    ControlArray<CheckBox> kon{*this, "kon", {"A", "B"}};
    OptionGroup opti{*this, "opti", {"X", "Y", "Z"}};
    TextBox tz{*this, "tz"}, t{*this, "t"};
    ListBox li{*this, "li", true}, frueher{*this, "frueher", true};
    ControlArray<Button> alle{*this, "alle", {"Alle", "Keine"}};
    ControlArray<TextBox> tdat{*this, "tdat", 2};
    ControlArray<Button> calender{*this, "calender", {"", ""}};
    Calendar calend{*this, "calend"};
    Grid gridli{*this, "gridli"};
    ProgressBar meter{*this, "meter"};
    Button ok{*this, "ok", "OK"}, beenden{*this, "beenden", "Ende"};
    QStringList fields, changed;
    bool whole = false;
};

struct Berichtsform : testing::Test, TestRun {
    void SetUp() override {
        koben.workspace.create(koben.Datenbankpfad);
        catalogue.add<Probebericht>("Probebericht");
    }
    void report(std::function<void(Probebericht&)> script) {
        screens.workIn<Probebericht>(std::move(script));
        koben.open("Probebericht");
    }
};

TEST_F(Berichtsform, ChoicesAreKeptAtTheEndAndComeBack) {
    koben.Konfig_Zahl[29] = 1;
    koben.Konfig_Zahl[2] = 7;  // no option of that number
    koben.Konfig_Text[3] = ";Art;Gruppe;";
    koben.Konfig_Text[4] = ";Art;";
    report([](Probebericht& f) {
        EXPECT_TRUE(!f.kon[0].checked() && f.kon[1].checked());
        EXPECT_EQ(f.opti.selected(), 0);
        EXPECT_TRUE(!f.li.marked(0) && f.li.marked(1) && f.li.marked(2));
        EXPECT_EQ(f.frueher.markedCount(), 0);
        f.kon[0].click(), f.kon[1].click(), f.opti[2].click(), f.tz.type("99999"), f.t.type("Hof"), f.li.mark({0});
        f.frueher.mark({0});
        f.gridli.resizeByUser(2, 123);
        f.closeBox();
    });
    const auto& z = koben.Konfig_Zahl;
    EXPECT_EQ((std::vector<int>{z[28], z[29], z[2], z[35]}), (std::vector<int>{1, 0, 2, 32767}));
    EXPECT_EQ(koben.Konfig_Text[27] + koben.Konfig_Text[3] + koben.Konfig_Text[4], "Hof;Nummer;;Nummer;");
    report([](Probebericht& f) {
        EXPECT_TRUE(f.kon[0].checked() && f.opti.selected() == 2 && f.t.text() == "Hof" && f.tz.text() == "32767");
        EXPECT_EQ(f.gridli.column(2).width, 123);
        f.alle[1].click();
        f.ok.click();
        EXPECT_EQ(f.fields.size(), 3) << "none is all";
    });
    EXPECT_TRUE(screens.log.contains("! Keine zu listenden Daten gefunden"));
}

TEST_F(Berichtsform, DatesShareOneCalendar) {
    report([](Probebericht& f) {
        f.tdat[1].type("17"), f.tdat[1].leave();
        f.calender[0].click();
        EXPECT_TRUE(f.calend.visible());
        f.calender[1].click();
        EXPECT_TRUE(f.calend.visible()) << "for the other date now";
        f.calend.pick(QDate(2026, 8, 1));
        f.calender[0].click(), f.calend.pick(QDate(2026, 7, 2)), f.calender[0].click(), f.calender[0].click();
        EXPECT_FALSE(f.calend.visible());
        EXPECT_EQ(f.tdat[0].text() + f.tdat[1].text(), "02.07.202601.08.2026");
        EXPECT_EQ(f.changed.size(), 3);
    });
}

TEST_F(Berichtsform, ACancelledRunEndsWithoutAWord) {
    screens.onProgress = [](const QString&, int percent) { return percent < 50; };
    report([&](Probebericht& f) {
        f.ok.click();
        EXPECT_FALSE(f.whole || f.meter.visible());
        EXPECT_EQ(f.meter.value(), 99);
    });
    EXPECT_EQ(screens.log, (QStringList{"+ Probebericht", "- Probebericht"}));
    EXPECT_EQ(screens.waiting, 0);
}

TEST_F(Berichtsform, MeansLeaveOutWhatIsZero) {
    report([](Probebericht& f) {
        for (const Value& litters : {Value(2), Value(0), Value(4.06), Value()})
            f.gridli.addValues({QStringLiteral("17"), litters, QStringLiteral("9")});
        Probebericht::addMeansAndSums(f.gridli);
        const auto row = [&](int r) {
            return f.gridli.cell(r, 1) + '|' + f.gridli.cell(r, 2) + '|' + f.gridli.cell(r, 3);
        };
        EXPECT_EQ(row(5) + ' ' + row(6), "SCHNITT|3,0| SUMME|6,1|");
    });
}

/// Every character two millimetres wide at nine points.
const Tabellenblatt Hoch{183, 273, [](const QString& text, const Typeface& face) {
                             return static_cast<double>(text.size()) * 2 * face.points / 9;
                         }};

struct Blatt {
    QStringList texts;
    double right = 0, bottom = 0;
};

Blatt blatt(const DrawPage& page) {
    Blatt out;
    for (const DrawItem& item : page.items)
        if (const auto* text = std::get_if<PlacedText>(&item)) {
            out.texts += text->piece.text;
            out.right = std::max(out.right, text->box.right());
            out.bottom = std::max(out.bottom, text->box.bottom());
            EXPECT_LE(Hoch.measure(text->piece.text, text->piece.font), text->box.width() + 0.01);
        }
    return out;
}

TEST(Tabellendruck, NothingIsCutAndEveryPageHasItsHead) {
    TestRun run;
    const QString longest(200, u'l');
    const struct {
        int columns, rows;
        QString cell;
        bool landscape;
        size_t pages;
    } cases[] = {{3, 5, "kurz", false, 1},
                 {3, 200, "kurz", false, 4},
                 {9, 5, "zehnstelli", false, 1},  // in smaller type
                 {30, 5, "zehnstelli", true, 3},  // columns side by side on further pages
                 {1, 3, longest, true, 1}};
    for (const auto& c : cases) {
        QStringList titles, rows;
        for (int i = 1; i <= c.columns; ++i) titles += "T" + QString::number(i);
        for (int i = 1; i <= c.rows; ++i) rows += QStringList(c.columns, c.cell).join('\t');
        const Liste list(run.koben, titles, rows);
        EXPECT_EQ(braucht_Querformat(list.gridli, Hoch), c.landscape) << c.columns;
        const Drawing drawing = Tabellendruck(list.gridli, Hoch, {.title = "Liste"}, "Hof");
        EXPECT_EQ(drawing.pages.size(), c.pages) << c.columns << " columns, " << c.rows << " rows";
        QStringList all;
        for (const DrawPage& page : drawing.pages) {
            const Blatt one = blatt(page);
            EXPECT_TRUE(one.texts.contains("T1"));
            EXPECT_LE(one.right, Hoch.width + 0.01);
            EXPECT_LE(one.bottom, Hoch.height + 0.01);
            all += one.texts;
        }
        EXPECT_EQ(all.first(), "Hof");
        EXPECT_TRUE(all.contains(titles.last()));
        EXPECT_GE(all.join("").count(c.cell), c.rows * c.columns);
    }
}

}  // namespace
}  // namespace koben
