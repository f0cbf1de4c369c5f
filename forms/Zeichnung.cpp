#include "forms/Zeichnung.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace koben {

// ------------------------------------------------------------------------------------------------------ tones, strokes

const Tints& paperTints() {
    static const Tints tints{0x000000, 0x4a525a, 0xc8cdd2, 0x1f4f7f, 0xc8791e, 0x4f8030, 0xa01c1c, 0xffffff};
    return tints;
}

quint32 tint(const Tints& tints, Tone tone, double strength) {
    const quint32 full = tints[static_cast<size_t>(tone)], ground = tints[static_cast<size_t>(Tone::Ground)];
    quint32 mixed = 0;
    for (const int bits : {16, 8, 0}) {
        const double of = full >> bits & 255, on = ground >> bits & 255;
        mixed |= static_cast<quint32>(std::lround(on + (of - on) * std::clamp(strength, 0.0, 1.0))) << bits;
    }
    return mixed;
}

std::vector<double> dashLengths(Dash dash, double width) {
    const double dot = std::max(width, 0.25);
    switch (dash) {
        case Dash::Dashed:
            return {2, 1.2};
        case Dash::Dotted:
            return {dot, 0.9};
        case Dash::DashDot:
            return {2.4, 0.9, dot, 0.9};
        default:
            return {};
    }
}

std::vector<QPointF> corners(const QRectF& box) {
    return {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()};
}

std::vector<QPointF> markPoints(const Mark& mark) {
    const double r = mark.size / 2;
    const auto at = [&](double x, double y) { return mark.at + QPointF(x * r, y * r); };
    switch (mark.shape) {
        case Shape::Square:
            return {at(-0.9, -0.9), at(0.9, -0.9), at(0.9, 0.9), at(-0.9, 0.9)};
        case Shape::Triangle:
            return {at(0, -1.1), at(1, 0.8), at(-1, 0.8)};
        case Shape::Cross:
            return {at(-0.8, -0.8), at(0.8, 0.8), at(-0.8, 0.8), at(0.8, -0.8)};
        default:
            return {};
    }
}

namespace {

constexpr double hatchStep = 1.3;  // millimetres between two lines

using Strokes = std::vector<std::pair<QPointF, QPointF>>;

/// Lines at right angles to `across`, on one raster for all areas of a page, as far as they lie inside.
void addHatch(const std::vector<QPointF>& points, QPointF across, Strokes& strokes) {
    const QPointF along(-across.y(), across.x());
    double from = std::numeric_limits<double>::max(), to = std::numeric_limits<double>::lowest();
    for (const QPointF& point : points) {
        const double at = QPointF::dotProduct(point, across);
        from = std::min(from, at), to = std::max(to, at);
    }
    std::vector<double> cuts;
    for (double at = std::ceil(from / hatchStep) * hatchStep; at < to; at += hatchStep) {
        cuts.clear();
        for (size_t i = 0; i < points.size(); ++i) {
            const QPointF a = points[i], b = points[(i + 1) % points.size()];
            const double da = QPointF::dotProduct(a, across) - at, db = QPointF::dotProduct(b, across) - at;
            if ((da < 0) != (db < 0)) cuts.push_back(QPointF::dotProduct(a + (b - a) * (da / (da - db)), along));
        }
        std::sort(cuts.begin(), cuts.end());
        for (size_t i = 0; i + 1 < cuts.size(); i += 2)
            strokes.emplace_back(across * at + along * cuts[i], across * at + along * cuts[i + 1]);
    }
}

}  // namespace

Strokes hatchLines(const FilledArea& area) {
    const QPointF rising(std::sqrt(0.5), std::sqrt(0.5)), falling(std::sqrt(0.5), -std::sqrt(0.5));
    Strokes strokes;
    if (area.hatch == Hatch::Rising || area.hatch == Hatch::Crossed) addHatch(area.points, rising, strokes);
    if (area.hatch == Hatch::Falling || area.hatch == Hatch::Crossed) addHatch(area.points, falling, strokes);
    if (area.hatch == Hatch::Level) addHatch(area.points, {0, 1}, strokes);
    return strokes;
}

namespace {

void move(TextLine&, QPointF) {}
void move(PlacedText& text, QPointF by) { text.box.translate(by); }
void move(StraightLine& line, QPointF by) { line.from += by, line.to += by; }
void move(Rectangle& drawn, QPointF by) { drawn.box.translate(by); }
void move(Picture& picture, QPointF by) { picture.box.translate(by); }
void move(Mark& mark, QPointF by) { mark.at += by; }
template <class Shaped>
void move(Shaped& drawn, QPointF by) {
    for (QPointF& point : drawn.points) point += by;
}

}  // namespace

DrawItem moved(DrawItem item, QPointF by) {
    std::visit([by](auto& drawn) { move(drawn, by); }, item);
    return item;
}

// ------------------------------------------------------------------------------------------------------------ sketches

const DrawnArea* Sketch::areaAt(QPointF point) const {
    const auto found =
        std::find_if(areas.rbegin(), areas.rend(), [&](const DrawnArea& area) { return area.box.contains(point); });
    return found == areas.rend() ? nullptr : &*found;
}

const DrawnArea* Sketch::area(const QString& id) const {
    const auto found = std::find_if(areas.begin(), areas.end(), [&](const DrawnArea& area) { return area.id == id; });
    return found == areas.end() ? nullptr : &*found;
}

void place(const Sketch& sketch, QPointF at, PrintJob& job) {
    for (const DrawItem& item : sketch.items) job.place(moved(item, at));
}

// ---------------------------------------------------------------------------------------------------------------- jobs

void DrawnJob::line(const QString& last) {
    text(last);
    endLine();
}

void DrawnJob::endLine() {
    if (m_line.pieces.empty()) return;
    m_drawing.pages.back().items.push_back(std::exchange(m_line, {}));
}

void DrawnJob::newPage() {
    endLine();
    m_drawing.pages.emplace_back();
}

bool DrawnJob::end(const Go& go) {
    endLine();
    return finish(m_drawing, go);
}

namespace {

void play(const TextLine& line, PrintJob& job) {
    for (size_t i = 0; i < line.pieces.size(); ++i) {
        const auto& [text, font] = line.pieces[i];
        job.setFont(font.name);
        job.setSize(font.points);
        job.setBold(font.bold);
        job.setItalic(font.italic);
        if (i + 1 < line.pieces.size())
            job.text(text);
        else
            job.line(text);
    }
}

}  // namespace

void play(const Drawing& drawing, PrintJob& job) {
    job.setSheet(drawing.sheet);
    for (size_t page = 0; page < drawing.pages.size(); ++page) {
        if (page > 0) job.newPage();
        for (const DrawItem& item : drawing.pages[page].items)
            if (const auto* line = std::get_if<TextLine>(&item))
                play(*line, job);
            else
                job.place(item);
    }
    job.end();
}

}  // namespace koben
