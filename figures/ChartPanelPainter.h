#pragma once
// One pair of axes of a chart with what stands between them.
#include "figures/Chart.h"

namespace koben {

class ChartPanelPainter {
public:
    /// Keeps references to all; draws into the box.
    ChartPanelPainter(const ChartPanel& panel, const ChartTable& table, QRectF box, Sketch& sketch);
    /// Draws; areas of the first series are of this group, and so on. Gives the next group's number.
    int paint(int group);

private:
    int count() const { return m_last - m_panel.firstRow + 1; }
    QStringList names() const;
    bool isThere(const Series& series) const;  ///< has a value at all
    void measure();
    double drawHead(double y);
    void drawBands();
    void drawValueAxis();
    void drawClassAxis();
    void drawBars(int group);
    void drawBar(const Series& series, int place, QPointF along, double from, double to, int group);
    void drawLine(const Series& series, int group);
    void drawInterval(const Series& series, int place);
    void addArea(const Series& series, int place, QRectF box, int group);
    void addText(const QRectF& box, double anchor, const QString& text, Tone tone = Tone::Text, bool bold = false);

    /// Where a place of the classes (0.5 is the middle of the first) and a value meet.
    QPointF at(double place, double value) const;
    QRectF between(double place, double value, double toPlace, double toValue) const;
    int row(int place) const { return m_panel.firstRow + place; }

    const ChartPanel& m_panel;
    const ChartTable& m_table;
    const QRectF m_box;
    Sketch& m_sketch;
    int m_last;
    QRectF m_plot;
    ValueAxis m_axis;
    double m_room = 1;  ///< of one class
};

}  // namespace koben
