// Charts by their drawing lists: axes, bars that equal cells, what tells series apart in grey, room for names, and the
// SVG of them.
#include <QXmlStreamReader>
#include <cmath>
#include <random>

#include "figures/ChartDrawing.h"
#include "figures/Zeitraum.h"
#include "output/Svg.h"
#include "output/TextWidth.h"
#include "tests/support/Fakes.h"

namespace koben {
namespace {

template <class Item>
std::vector<Item> all(const Sketch& sketch) {
    std::vector<Item> found;
    for (const DrawItem& item : sketch.items)
        if (const auto* one = std::get_if<Item>(&item)) found.push_back(*one);
    return found;
}

QRectF boundsOf(const FilledArea& area) { return {area.points[0], area.points[2]}; }

/// What a placed text covers.
QRectF inked(const PlacedText& text) {
    const double width = textWidth(text.piece.text, text.piece.font.points);
    const double left = text.box.left() + (text.box.width() - width) * text.anchor;
    return {left, text.box.top() + 0.6, width, text.box.height() - 1.2};
}

TEST(Axis, RundeZahlen) {
    const struct {
        double smallest, largest;
        int steps, decimals;
        bool zero;
        const char* ticks;
    } cases[] = {{0, 34, 5, 0, true, "0 10 20 30 40"},
                 {12, 34, 5, 0, true, "0 10 20 30 40"},
                 {0, 3, 10, 0, true, "0 1 2 3"},
                 {0, 0, 5, 0, true, "0 1"},
                 {28.2, 30.9, 4, 1, false, "28 29 30 31"},
                 {11.3, 11.6, 4, 1, false, "11,3 11,4 11,5 11,6"},
                 {0, 12345, 5, 0, true, "0 5.000 10.000 15.000"},
                 {-3, 5, 5, 0, true, "-4 -2 0 2 4 6"},
                 {87.5, 87.5, 5, 1, false, "87,5 87,6"}};
    for (const auto& c : cases) {
        const ValueAxis axis = valueAxis(c.smallest, c.largest, c.steps, c.decimals, c.zero);
        QStringList labels;
        for (const double tick : axis.ticks()) labels += axis.label(tick);
        EXPECT_EQ(labels.join(u' '), c.ticks) << c.smallest << " " << c.largest;
        EXPECT_LE(axis.from, c.smallest + 1e-9);
        EXPECT_GE(axis.to, c.largest - 1e-9);
    }
}

QStringList weeks(QDate from, int count) {
    QStringList names;
    for (int i = 0; i < count; ++i)
        names += Taktname(Takt::Woche, static_cast<qint32>(from.addDays(7 * i).toJulianDay()));
    return names;
}

QString joined(const std::vector<ClassLabel>& labels) {
    QStringList texts;
    for (const ClassLabel& label : labels) texts += QStringLiteral("%1@%2").arg(label.text).arg(label.place);
    return texts.join(u' ');
}

TEST(Axis, Wochen) {
    const QStringList turn = weeks({2026, 12, 14}, 6);  // a year of 53 weeks ends
    EXPECT_EQ(joined(classAxis(Classes::Weeks, turn, 5, 8).labels), "51@0 52@1 53@2 1@3 2@4 3@5");
    EXPECT_EQ(joined(classAxis(Classes::Weeks, turn, 2.5, 8).labels), "51@0 1@3 3@5");
    EXPECT_EQ(joined(classAxis(Classes::Weeks, turn, 5, 8).years), "2026@0 2027@3");
    EXPECT_EQ(joined(classAxis(Classes::Weeks, weeks({2026, 1, 5}, 53), 3, 8).labels).section(u' ', 0, 3),
              "3@1 5@3 7@5 9@7");
    EXPECT_EQ(className(Classes::Weeks, turn[2]), "KW 53/2026");
    EXPECT_EQ(joined(classAxis(Classes::Months, {"2026-11", "2026-12", "2027-01"}, 9, 8).labels), "Nov@0 Dez@1 Jan@2");
}

/// Whatever the room, no name touches another.
TEST(Axis, KeinGedraenge) {
    for (const int count : {5, 53, 70, 120, 530, 1100})
        for (double room = 0.1; room < 8; room *= 1.3) {
            const ClassAxis axis = classAxis(Classes::Weeks, weeks({2019, 3, 4}, count), room, 8);
            for (const auto* labels : {&axis.labels, &axis.years})
                for (size_t i = 1; i < labels->size(); ++i) {
                    const auto &a = (*labels)[i - 1], &b = (*labels)[i];
                    const double share = labels == &axis.years ? 1 : 0.5;
                    const double wide = textWidth(a.text, 8) * share + textWidth(b.text, 8) * (1 - share);
                    EXPECT_GT((b.place - a.place) * room, wide) << count << " " << room << " " << a.text.toStdString();
                }
        }
}

ChartTable tableOf(const QStringList& names, const std::vector<std::vector<Value>>& columns) {
    ChartTable table;
    table.columns.push_back({.key = "name", .title = "Name"});
    for (size_t c = 0; c < columns.size(); ++c)
        table.columns.push_back(
            {.key = QString::number(c), .title = QStringLiteral("Spalte %1").arg(c), .decimals = 0});
    for (qsizetype i = 0; i < names.size(); ++i) {
        Grid::Row row{Value(names[i])};
        for (const auto& column : columns) row += column[static_cast<size_t>(i)];
        table.rows.push_back(row);
    }
    return table;
}

TEST(Chart, BalkenSindZellen) {
    const ChartTable table = tableOf({"a", "b", "c"}, {{10, 20, 0}, {5, Value(), 15}});
    Chart chart{.panels = {{.unit = "Stück", .series = {{2}, {3, Series::Kind::Bars, Look::Second}}}}};
    for (const bool level : {false, true}) {
        chart.panels[0].level = level;
        const Sketch sketch = drawChart(chart, table, {160, 90}, false);
        ASSERT_EQ(sketch.areas.size(), 4u);  // neither for nothing nor for zero
        double unit = 0;
        for (const DrawnArea& area : sketch.areas) {
            const auto [row, column] = *cellOf(area.id);
            const double length = (level ? area.box.width() : area.box.height()) / table.cell(row, column).toDouble();
            if (unit == 0) unit = length;
            EXPECT_NEAR(length, unit, 1e-6) << area.id.toStdString();
        }
        EXPECT_EQ(sketch.area("1.2")->text, "a: Spalte 0 10");
        EXPECT_EQ(sketch.areaAt(sketch.area("3.3")->box.center())->id, "3.3");
        // In grey the second series is told by its hatch, in the legend too.
        int hatched = 0;
        for (const FilledArea& area : all<FilledArea>(sketch)) hatched += area.hatch != Hatch::None;
        EXPECT_EQ(hatched, 3);
    }
}

TEST(Chart, StapelLinienBereiche) {
    const ChartTable table =
        tableOf({"a", "b", "c", "d"}, {{1, 2, Value(), 4}, {3, 3, 3, 3}, {0, 1, 2, 3}, {2, 3, 4, 5}});
    using Kind = Series::Kind;
    const auto draw = [&](std::vector<Series> series) {
        return drawChart({.panels = {{.unit = "Stück", .series = std::move(series)}}}, table, {160, 90}, false);
    };
    const Sketch stacked = draw({{2, Kind::Stack}, {3, Kind::Stack, Look::Second}});
    EXPECT_NEAR(stacked.area("1.2")->box.top(), stacked.area("1.3")->box.bottom(), 1e-6);
    const Sketch lines = draw({{2, Kind::Line}, {3, Kind::Line, Look::Target}});
    std::vector<size_t> runs;
    for (const Polyline& line : all<Polyline>(lines)) runs.push_back(line.points.size());
    EXPECT_EQ(runs, (std::vector<size_t>{2, 2, 2, 4}));  // two samples; a gap parts the first series
    EXPECT_EQ(lines.areas.size(), 3u);
    EXPECT_EQ(all<Polyline>(lines).back().dash, Dash::Dashed);
    const Sketch spans = draw({{3, Kind::Points, Look::First, 4, 5}});
    EXPECT_EQ(all<Mark>(spans).size(), 4u);
    EXPECT_EQ(spans.area("2.3")->text, "b: Spalte 1 3 (1 bis 3)");
    std::set<std::tuple<int, int, int>> looks;
    for (const Look look : {Look::First, Look::Second, Look::Third, Look::Fourth})
        looks.insert({int(lookOf(look).hatch), int(lookOf(look).dash), int(lookOf(look).shape)});
    EXPECT_EQ(looks.size(), 4u);
}

TEST(Chart, LeeresSagtEs) {
    Chart chart{.title = "Titel", .sentence = "Satz.", .panels = {{.series = {{2}}}}, .empty = "Keine Würfe."};
    const Sketch sketch = drawChart(chart, tableOf({"a"}, {{0}}), {160, 90}, true);
    QStringList words;
    for (const PlacedText& text : all<PlacedText>(sketch)) words += text.piece.text;
    EXPECT_EQ(words, (QStringList{"Titel", "Satz.", "Keine Würfe."}));
    EXPECT_TRUE(sketch.areas.empty());
}

/// Ten years of weeks, long names, small sheets: all stays on the sheet, and no text lies on another.
TEST(Chart, PasstAufsBlatt) {
    std::mt19937 bits(3);
    for (const int rows : {1, 7, 53, 530}) {
        std::vector<Value> first, second;
        QStringList longNames;
        for (int i = 0; i < rows; ++i) {
            first.push_back(static_cast<int>(bits() % 40));
            second.push_back(bits() % 5 == 0 ? Value() : Value(static_cast<int>(bits() % 3000)));
            longNames += QStringLiteral("Eber mit langem Namen %1").arg(i);
        }
        for (const bool level : {false, true}) {
            if (level && rows > 30) continue;
            const ChartTable table = tableOf(level ? longNames : weeks({2016, 5, 2}, rows), {first, second});
            const ChartPanel panel{.unit = "Tiere je Woche",
                                   .classes = level ? Classes::Plain : Classes::Weeks,
                                   .series = {{2}, {3, Series::Kind::Line, Look::Third}},
                                   .level = level};
            for (const QSizeF size : {QSizeF(268, 180), QSizeF(110, 70)}) {
                const Sketch sketch = drawChart({.title = "T", .sentence = "S", .panels = {panel}}, table, size, true);
                const auto texts = all<PlacedText>(sketch);
                for (size_t i = 0; i < texts.size(); ++i) {
                    EXPECT_TRUE(QRectF({0, 0}, size).contains(inked(texts[i]))) << texts[i].piece.text.toStdString();
                    for (size_t j = 0; j < i && !(level && size.height() < 100); ++j)
                        EXPECT_FALSE(inked(texts[i]).intersects(inked(texts[j])))
                            << texts[i].piece.text.toStdString() << " on " << texts[j].piece.text.toStdString();
                }
                for (const FilledArea& area : all<FilledArea>(sketch))
                    EXPECT_TRUE(QRectF({0, 0}, size).contains(boundsOf(area)));
            }
        }
    }
}

TEST(Zeichnung, SchraffurBleibtInDerFlaeche) {
    const FilledArea triangle{{{10, 10}, {40, 12}, {20, 35}}, Tone::Accent, 1, Hatch::Crossed};
    const auto side = [](QPointF a, QPointF b, QPointF p) {
        return (b.x() - a.x()) * (p.y() - a.y()) - (b.y() - a.y()) * (p.x() - a.x());
    };
    const auto lines = hatchLines(triangle);
    EXPECT_GT(lines.size(), 30u);
    for (const auto& [from, to] : lines)
        for (const QPointF end : {from, to})
            for (size_t i = 0; i < 3; ++i)
                EXPECT_GT(side(triangle.points[i], triangle.points[(i + 1) % 3], end), -1e-6);
}

TEST(Svg, IstWohlgeformtUndVollstaendig) {
    Sketch sketch{{100, 50}};
    sketch.items = {PlacedText{{0, 0, 50, 5}, 0.5, {"<Sau & \"Eber\">\x01", {"A\"B", 8, true}}, Tone::Warning},
                    StraightLine{{0, 0}, {5, 5}, 0.2, Tone::Grid, Dash::Dotted},
                    Rectangle{{1, 1, 3, 3}, 0, 128},
                    Picture{{0, 0, 5, 5}, "\x89PNG"},
                    Polyline{{{0, 0}, {1, 1}}, 0.4, Tone::Second, Dash::Dashed},
                    FilledArea{corners({0, 0, 2, 2}), Tone::Third, 0.5, Hatch::Level},
                    Mark{{5, 5}, Shape::Circle},
                    Mark{{5, 5}, Shape::Cross}};
    QXmlStreamReader xml(Svg(sketch, "A <B>"));
    QStringList tags;
    QString text;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) tags += xml.name().toString();
        if (xml.isCharacters() && !xml.isWhitespace()) text += xml.text().toString() + u'|';
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_EQ(text, "A <B>|<Sau & \"Eber\">|");
    EXPECT_EQ(tags.join(u' '), "svg title rect text line rect image polyline polygon line circle line line");
}

}  // namespace
}  // namespace koben
