#include "figures/ChartPanelPainter.h"

#include <algorithm>
#include <cmath>

#include "output/TextWidth.h"

namespace koben {

namespace {

constexpr double points = 8;
constexpr double air = 1.2;          // between a name and its axis
constexpr double stepLength = 9;     // least distance of two values' lines
constexpr double sampleWidth = 6;    // of a legend
constexpr double hatchedFrom = 1.6;  // bars below that width have no hatch, below half of it no edge
constexpr double markedFrom = 2.4;   // lines bear marks where their points are so far apart
constexpr double cap = 0.8;          // half of the bar at the end of an interval

}  // namespace

ChartPanelPainter::ChartPanelPainter(const ChartPanel& panel, const ChartTable& table, QRectF box, Sketch& sketch)
    : m_panel(panel),
      m_table(table),
      m_box(box),
      m_sketch(sketch),
      m_last(panel.lastRow > 0 ? panel.lastRow : static_cast<int>(table.rows.size())),
      m_plot(box) {}

QStringList ChartPanelPainter::names() const {
    QStringList names;
    for (int i = 0; i < count(); ++i) names += m_table.cell(row(i), 1).toText();
    return names;
}

bool ChartPanelPainter::isThere(const Series& series) const {
    for (int i = 0; i < count(); ++i)
        if (!m_table.cell(row(i), series.column).isNull()) return true;
    return false;
}

int ChartPanelPainter::paint(int group) {
    m_plot.setTop(drawHead(m_box.top()) + lineHeight(points) * (m_panel.bands.empty() ? 0.5 : 1.5));
    measure();
    drawBands();
    drawValueAxis();
    drawBars(group);
    for (const Series& series : m_panel.series) {
        if (series.kind == Series::Kind::Line || series.kind == Series::Kind::Points) drawLine(series, group);
        ++group;
    }
    drawClassAxis();
    return group;
}

// ---------------------------------------------------------------------------------------------------------------- axes

/// The room of the axes' names, and from it the plot.
void ChartPanelPainter::measure() {
    double smallest = 1e300, largest = -1e300;
    int decimals = 0;
    std::vector<double> stacked(static_cast<size_t>(count()));
    for (const Series& series : m_panel.series) {
        decimals = std::max(decimals, m_table.columns[static_cast<size_t>(series.column) - 1].decimals);
        for (int i = 0; i < count(); ++i)
            for (const int column : {series.column, series.low, series.high}) {
                const Value& value = m_table.cell(row(i), column);
                if (value.isNull()) continue;
                double& sum = stacked[static_cast<size_t>(i)];
                const bool onTop = series.kind == Series::Kind::Stack;
                const double reached = onTop ? sum += value.toDouble() : value.toDouble();
                smallest = std::min(smallest, reached), largest = std::max(largest, reached);
            }
    }
    const double line = lineHeight(points);
    const double across = m_panel.level ? m_box.width() * 0.6 : m_plot.height() - 2 * line;
    const double wanted = m_panel.level ? 2 * stepLength : stepLength;
    m_axis =
        valueAxis(smallest, largest, std::clamp(static_cast<int>(across / wanted), 2, 10), decimals, m_panel.fromZero);
    double widest = 0;
    if (m_panel.level)
        for (const QString& name : names()) widest = std::max(widest, textWidth(name, points));
    else
        for (const double tick : m_axis.ticks()) widest = std::max(widest, textWidth(m_axis.label(tick), points));
    widest = std::min(widest, m_box.width() / 3);
    const double last = m_panel.level ? textWidth(m_axis.label(m_axis.to), points) / 2 : air;
    const bool second =
        !m_panel.classTitle.isEmpty() || m_panel.classes == Classes::Weeks || m_panel.classes == Classes::Months;
    m_plot.adjust(widest + air, 0, -last, -(line + air) - (second && !m_panel.level ? line : 0));
    m_room = (m_panel.level ? m_plot.height() : m_plot.width()) / std::max(count(), 1);
}

QPointF ChartPanelPainter::at(double place, double value) const {
    const double share = (value - m_axis.from) / (m_axis.to - m_axis.from);
    if (m_panel.level) return {m_plot.left() + share * m_plot.width(), m_plot.top() + place * m_room};
    return {m_plot.left() + place * m_room, m_plot.bottom() - share * m_plot.height()};
}

QRectF ChartPanelPainter::between(double place, double value, double toPlace, double toValue) const {
    return QRectF(at(place, value), at(toPlace, toValue)).normalized();
}

void ChartPanelPainter::addText(const QRectF& box, double anchor, const QString& text, Tone tone, bool bold) {
    m_sketch.items.push_back(PlacedText{box, anchor, {text, {chartFace, points, bold}}, tone});
}

/// What the values are, and the legend of several series; gives where they end.
double ChartPanelPainter::drawHead(double y) {
    const double line = lineHeight(points);
    addText({m_box.left(), y, m_box.width(), line}, 0, cutText(m_panel.unit, points, m_box.width()), Tone::Text, true);
    y += line + 0.5;
    if (m_panel.series.size() < 2) return y;
    double x = m_box.left();
    for (const Series& series : m_panel.series) {
        if (!isThere(series)) continue;
        const QString name = m_table.columns[static_cast<size_t>(series.column) - 1].title;
        const double width = sampleWidth + 1 + textWidth(name, points) + 4;
        if (x > m_box.left() && x + width > m_box.right()) x = m_box.left(), y += line;
        const SeriesLook& look = lookOf(series.look);
        const double middle = y + line / 2;
        if (series.kind == Series::Kind::Bars || series.kind == Series::Kind::Stack) {
            m_sketch.items.push_back(
                FilledArea{corners({x, middle - 1.2, sampleWidth, 2.4}), look.tone, look.strength, look.hatch});
        } else {
            if (series.kind == Series::Kind::Line)
                m_sketch.items.push_back(Polyline{{{x, middle}, {x + sampleWidth, middle}}, 0.4, look.tone, look.dash});
            if (series.look != Look::Target)
                m_sketch.items.push_back(Mark{{x + sampleWidth / 2, middle}, look.shape, 1.8, look.tone});
        }
        addText({x + sampleWidth + 1, y, width - sampleWidth - 1, line}, 0, name);
        x += width;
    }
    return y + line;
}

void ChartPanelPainter::drawBands() {
    const QStringList all = names();
    for (const Band& band : m_panel.bands) {
        const auto first = all.indexOf(band.first), last = all.indexOf(band.last);
        if (first < 0 || last < 0) continue;
        const QRectF box = between(static_cast<double>(first), m_axis.from, static_cast<double>(last) + 1, m_axis.to);
        m_sketch.items.push_back(FilledArea{corners(box), Tone::Quiet, 0.12, Hatch::None, 0});
        for (const double x : {box.left(), box.right()})
            m_sketch.items.push_back(StraightLine{{x, box.top()}, {x, box.bottom()}, 0.15, Tone::Quiet, Dash::Dotted});
        addText({box.left(), box.top() - lineHeight(points), box.width(), lineHeight(points)}, 0.5, band.name,
                Tone::Quiet);
    }
}

void ChartPanelPainter::drawValueAxis() {
    const double line = lineHeight(points);
    for (const double tick : m_axis.ticks()) {
        const QPointF from = at(0, tick), to = at(count(), tick);
        m_sketch.items.push_back(StraightLine{from, to, 0.1, Tone::Grid});
        if (m_panel.level)
            addText({from.x() - 10, m_plot.bottom() + air / 2, 20, line}, 0.5, m_axis.label(tick));
        else
            addText({m_box.left(), from.y() - line / 2, m_plot.left() - m_box.left() - air, line}, 1,
                    m_axis.label(tick));
    }
}

void ChartPanelPainter::drawClassAxis() {
    const double line = lineHeight(points), zero = std::clamp(0.0, m_axis.from, m_axis.to);
    m_sketch.items.push_back(StraightLine{at(0, zero), at(count(), zero), 0.25, Tone::Quiet});
    if (m_panel.level) {
        const QStringList all = names();
        for (int i = 0; i < count(); ++i)
            addText({m_box.left(), at(i + 0.5, 0).y() - line / 2, m_plot.left() - m_box.left() - air, line}, 1,
                    cutText(all[i], points, m_plot.left() - m_box.left() - air));
        return;
    }
    const double y = m_plot.bottom() + air / 2;
    const ClassAxis axis = classAxis(m_panel.classes, names(), m_room, points);
    for (const auto& [place, text] : axis.labels) {
        const double x = at(place + 0.5, 0).x();
        if (x + textWidth(text, points) / 2 > m_box.right()) continue;
        m_sketch.items.push_back(StraightLine{{x, m_plot.bottom()}, {x, m_plot.bottom() + air / 2}, 0.15, Tone::Quiet});
        addText({x - 10, y, 20, line}, 0.5, text);
    }
    for (const auto& [place, text] : axis.years) {
        const double x = at(place, 0).x();
        if (place > 0)
            m_sketch.items.push_back(StraightLine{{x, m_plot.bottom()}, {x, y + 2 * line}, 0.15, Tone::Quiet});
        if (x + 0.6 + textWidth(text, points) <= m_box.right())
            addText({x + 0.6, y + line, 20, line}, 0, text, Tone::Quiet);
    }
    if (axis.years.empty())
        addText({m_plot.left(), y + line, m_plot.width(), line}, 0.5, m_panel.classTitle, Tone::Quiet);
}

// -------------------------------------------------------------------------------------------------------------- values

void ChartPanelPainter::addArea(const Series& series, int place, QRectF box, int group) {
    const int column = series.column;
    QString text = className(m_panel.classes, m_table.cell(row(place), 1).toText()) + QStringLiteral(": ") +
                   m_table.columns[static_cast<size_t>(column) - 1].title + u' ' + m_table.text(row(place), column);
    if (series.low > 0 && !m_table.cell(row(place), series.low).isNull())
        text += QStringLiteral(" (%1 bis %2)")
                    .arg(m_table.text(row(place), series.low), m_table.text(row(place), series.high));
    const double wider = std::max(0.0, 1.2 - box.width()) / 2, higher = std::max(0.0, 1.2 - box.height()) / 2;
    m_sketch.areas.push_back({QStringLiteral("%1.%2").arg(row(place)).arg(column),
                              box.adjusted(-wider, -higher, wider, higher), text, group});
}

void ChartPanelPainter::drawBars(int group) {
    const auto isBars = [](const Series& series) { return series.kind == Series::Kind::Bars; };
    const auto beside = std::count_if(m_panel.series.begin(), m_panel.series.end(), isBars);
    const double filled = m_room > 1 ? 0.8 : 1;
    std::vector<double> stacked(static_cast<size_t>(count()));
    double begin = (1 - filled) / 2;
    for (const Series& series : m_panel.series) {
        const bool onTop = series.kind == Series::Kind::Stack;
        const double width = onTop ? filled : filled / static_cast<double>(std::max<qsizetype>(beside, 1));
        for (int i = 0; (onTop || isBars(series)) && i < count(); ++i) {
            const double value = m_table.cell(row(i), series.column).toDouble();
            double& below = stacked[static_cast<size_t>(i)];
            const double from = onTop ? below : 0, place = i + (onTop ? (1 - filled) / 2 : begin);
            if (value != 0) drawBar(series, i, {place, place + width}, from, from + value, group);
            if (onTop) below += value;
        }
        if (isBars(series)) begin += width;
        ++group;
    }
}

void ChartPanelPainter::drawBar(const Series& series, int place, QPointF along, double from, double to, int group) {
    const SeriesLook& look = lookOf(series.look);
    const QRectF box = between(along.x(), from, along.y(), to);
    const double width = (along.y() - along.x()) * m_room;
    const bool narrow = width < hatchedFrom;
    m_sketch.items.push_back(FilledArea{corners(box), look.tone, narrow ? std::max(look.strength, 0.6) : look.strength,
                                        narrow ? Hatch::None : look.hatch, width < hatchedFrom / 2 ? 0 : 0.2});
    addArea(series, place, box, group);
}

void ChartPanelPainter::drawInterval(const Series& series, int place) {
    const Value &low = m_table.cell(row(place), series.low), &high = m_table.cell(row(place), series.high);
    if (low.isNull() || high.isNull()) return;
    const QPointF from = at(place + 0.5, low.toDouble()), to = at(place + 0.5, high.toDouble());
    const QPointF side = m_panel.level ? QPointF(0, cap) : QPointF(cap, 0);
    const Tone tone = lookOf(series.look).tone;
    m_sketch.items.push_back(StraightLine{from, to, 0.3, tone});
    for (const QPointF end : {from, to}) m_sketch.items.push_back(StraightLine{end - side, end + side, 0.3, tone});
}

/// A class without a value parts the line.
void ChartPanelPainter::drawLine(const Series& series, int group) {
    const SeriesLook& look = lookOf(series.look);
    std::vector<std::pair<int, QPointF>> places;
    std::vector<QPointF> run;
    const auto endRun = [&] {
        if (run.size() > 1 && series.kind == Series::Kind::Line)
            m_sketch.items.push_back(Polyline{run, 0.4, look.tone, look.dash});
        run.clear();
    };
    for (int i = 0; i < count(); ++i) {
        const Value& value = m_table.cell(row(i), series.column);
        if (value.isNull()) {
            endRun();
            continue;
        }
        run.push_back(at(i + 0.5, value.toDouble()));
        places.emplace_back(i, run.back());
        if (series.low > 0) drawInterval(series, i);
    }
    endRun();
    if (series.look == Look::Target) return;
    const bool marked = m_room >= markedFrom || series.kind == Series::Kind::Points;
    const double reach = std::clamp(m_room / 2, 0.3, 1.5);
    for (size_t i = 0; i < places.size(); ++i) {
        const auto& [place, point] = places[i];
        const bool alone =
            (i == 0 || places[i - 1].first < place - 1) && (i + 1 == places.size() || places[i + 1].first > place + 1);
        if (marked || alone) m_sketch.items.push_back(Mark{point, look.shape, 1.8, look.tone});
        addArea(series, place, QRectF(point - QPointF(reach, 1.5), point + QPointF(reach, 1.5)), group);
    }
}

}  // namespace koben
