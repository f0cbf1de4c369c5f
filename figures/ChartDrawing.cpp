#include "figures/ChartDrawing.h"

#include "figures/ChartPanelPainter.h"
#include "output/TextWidth.h"

namespace koben {

namespace {

constexpr double titlePoints = 11, sentencePoints = 8, between = 4;

bool hasValues(const ChartPanel& panel, const ChartTable& table) {
    const int last = panel.lastRow > 0 ? panel.lastRow : static_cast<int>(table.rows.size());
    for (const Series& series : panel.series)
        for (int row = panel.firstRow; row <= last; ++row)
            if (const Value& value = table.cell(row, series.column); series.look != Look::Target && !value.isNull())
                if (!panel.fromZero || value.toDouble() != 0) return true;
    return false;
}

PlacedText words(const QRectF& box, double anchor, const QString& text, double points, bool bold, Tone tone) {
    return {box, anchor, {text, {chartFace, points, bold}}, tone};
}

/// Title and sentence; what they leave is for the panels.
QRectF drawWords(const Chart& chart, QRectF room, Sketch& sketch) {
    const double title = lineHeight(titlePoints) * 1.3, line = lineHeight(sentencePoints);
    sketch.items.push_back(
        words({room.topLeft(), QSizeF(room.width(), title)}, 0, chart.title, titlePoints, true, Tone::Text));
    const QStringList lines = wrapText(chart.sentence, sentencePoints, room.width());
    const double below = static_cast<double>(lines.size()) * line;
    for (qsizetype i = 0; i < lines.size(); ++i)
        sketch.items.push_back(
            words({room.left(), room.bottom() - below + static_cast<double>(i) * line, room.width(), line}, 0, lines[i],
                  sentencePoints, false, Tone::Quiet));
    return room.adjusted(0, title + 1, 0, -below - 2);
}

}  // namespace

Sketch drawChart(const Chart& chart, const ChartTable& table, QSizeF size, bool withWords) {
    Sketch sketch{size};
    QRectF room = QRectF({0, 0}, size).adjusted(1, 1, -1, -1);
    if (withWords) room = drawWords(chart, room, sketch);
    std::vector<const ChartPanel*> panels;
    for (const ChartPanel& panel : chart.panels)
        if (hasValues(panel, table)) panels.push_back(&panel);
    if (panels.empty()) {
        const QStringList lines = wrapText(chart.empty, sentencePoints + 1, room.width() * 0.8);
        const double line = lineHeight(sentencePoints + 1);
        double y = room.center().y() - line * static_cast<double>(lines.size()) / 2;
        for (const QString& text : lines) {
            sketch.items.push_back(
                words({room.left(), y, room.width(), line}, 0.5, text, sentencePoints + 1, false, Tone::Quiet));
            y += line;
        }
        return sketch;
    }
    const double count = static_cast<double>(panels.size());
    const QSizeF each = chart.sideBySide ? QSizeF((room.width() - (count - 1) * between) / count, room.height())
                                         : QSizeF(room.width(), (room.height() - (count - 1) * between) / count);
    QPointF at = room.topLeft();
    int group = 0;
    for (const ChartPanel* panel : panels) {
        group = ChartPanelPainter(*panel, table, {at, each}, sketch).paint(group);
        at += chart.sideBySide ? QPointF(each.width() + between, 0) : QPointF(0, each.height() + between);
    }
    return sketch;
}

}  // namespace koben
