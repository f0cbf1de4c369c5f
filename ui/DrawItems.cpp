#include "ui/DrawItems.h"

#include <QPainterPath>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

namespace koben::ui {

namespace {

constexpr double pointsPerInch = 72;
constexpr double dots = layoutDots / millimetresPerInch;

QRectF inDots(const QRectF& millimetres) { return {millimetres.topLeft() * dots, millimetres.size() * dots}; }

QPolygonF inDots(const std::vector<QPointF>& points) {
    QPolygonF polygon;
    for (const QPointF& point : points) polygon.append(point * dots);
    return polygon;
}

/// Items in the order of the list, each with pen and brush of its own.
class ItemPainter {
public:
    ItemPainter(QPainter& painter, Faces& faces, const Tints& tints)
        : m_painter(painter), m_faces(faces), m_tints(tints) {}

    void paint(const TextLine&) {}
    void paint(const PlacedText& text) {
        const Faces::Face& face = m_faces.of(text.piece.font);
        const QRectF box = inDots(text.box);
        const double spare = box.width() - face.metrics.horizontalAdvance(text.piece.text);
        m_painter.setPen(colour(text.tone));
        m_painter.setFont(face.font);
        m_painter.drawText(QPointF(box.left() + spare * text.anchor,
                                   box.center().y() + (face.metrics.ascent() - face.metrics.descent()) / 2),
                           text.piece.text);
    }
    void paint(const StraightLine& line) {
        m_painter.setPen(pen(line.width, line.tone, line.dash));
        m_painter.drawLine(line.from * dots, line.to * dots);
    }
    void paint(const Rectangle& drawn) {
        m_painter.setPen(pen(drawn.width, Tone::Text));
        m_painter.setBrush(drawn.shade < 0 ? QBrush() : colour(Tone::Text, 1 - drawn.shade / 255.0));
        m_painter.drawRect(inDots(drawn.box));
    }
    void paint(const Picture& picture) { m_painter.drawImage(inDots(picture.box), QImage::fromData(picture.file)); }
    void paint(const Polyline& line) {
        m_painter.setPen(pen(line.width, line.tone, line.dash));
        m_painter.drawPolyline(inDots(line.points));
    }
    void paint(const FilledArea& area) {
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(area.strength > 0 ? colour(area.tone, area.strength) : QBrush());
        m_painter.drawPolygon(inDots(area.points));
        m_painter.setPen(pen(hatchWidth, area.tone));
        for (const auto& [from, to] : hatchLines(area)) m_painter.drawLine(from * dots, to * dots);
        m_painter.setPen(pen(area.width, area.tone));
        m_painter.setBrush({});
        if (area.width > 0) m_painter.drawPolygon(inDots(area.points));
    }
    void paint(const Mark& mark) {
        const std::vector<QPointF> points = markPoints(mark);
        m_painter.setPen(pen(0.35, mark.tone));
        m_painter.setBrush(colour(mark.filled ? mark.tone : Tone::Ground));
        if (points.empty())
            m_painter.drawEllipse(mark.at * dots, mark.size / 2 * dots, mark.size / 2 * dots);
        else if (mark.shape != Shape::Cross)
            m_painter.drawPolygon(inDots(points));
        else
            for (size_t i = 0; i < points.size(); i += 2) m_painter.drawLine(points[i] * dots, points[i + 1] * dots);
    }

private:
    QColor colour(Tone tone, double strength = 1) const { return QColor::fromRgb(tint(m_tints, tone, strength)); }
    QPen pen(double width, Tone tone, Dash dash = Dash::Solid) const {
        if (width <= 0) return QPen(Qt::NoPen);
        QPen pen(colour(tone), width * dots, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
        QList<double> pattern;
        for (const double length : dashLengths(dash, width)) pattern.append(length / width);
        if (!pattern.isEmpty()) pen.setDashPattern(pattern);
        return pen;
    }

    QPainter& m_painter;
    Faces& m_faces;
    const Tints& m_tints;
};

}  // namespace

const Faces::Face& Faces::of(const Typeface& typeface) {
    const QString key =
        QStringLiteral("%1|%2|%3|%4").arg(typeface.name).arg(typeface.points).arg(typeface.bold).arg(typeface.italic);
    auto& face = m_faces[key];
    if (!face) {
        QFont font(typeface.name.isEmpty() ? QStringLiteral("Courier New") : typeface.name);
        const double points = typeface.points > 0 ? std::clamp(typeface.points, 1.0, 200.0) : 10;
        font.setPixelSize(qRound(points * layoutDots / pointsPerInch));
        font.setHintingPreference(QFont::PreferNoHinting);
        font.setBold(typeface.bold);
        font.setItalic(typeface.italic);
        face = std::make_shared<Face>(Face{font, QFontMetricsF(font)});
    }
    return *face;
}

void paintItem(QPainter& painter, const DrawItem& item, Faces& faces, const Tints& tints) {
    std::visit([&](const auto& drawn) { ItemPainter(painter, faces, tints).paint(drawn); }, item);
    painter.setPen(Qt::black);
    painter.setBrush({});
}

void paintSketch(QPainter& painter, const Sketch& sketch, Faces& faces, const Tints& tints) {
    for (const DrawItem& item : sketch.items) paintItem(painter, item, faces, tints);
}

QImage pictureOf(const Sketch& sketch, double dotsPerInch) {
    QImage image((sketch.size * dotsPerInch / millimetresPerInch).toSize(), QImage::Format_RGB32);
    image.fill(tint(paperTints(), Tone::Ground) | 0xff000000);
    image.setDotsPerMeterX(qRound(dotsPerInch / 0.0254));
    image.setDotsPerMeterY(qRound(dotsPerInch / 0.0254));
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(dotsPerInch / layoutDots, dotsPerInch / layoutDots);
    Faces faces;
    paintSketch(painter, sketch, faces, paperTints());
    return image;
}

}  // namespace koben::ui
