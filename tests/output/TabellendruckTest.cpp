// A list as printed table.
#include "output/Tabellendruck.h"

#include "tests/output/Liste.h"

namespace koben {
namespace {

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
