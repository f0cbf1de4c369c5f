#include "forms/DrawingBox.h"

#include <cmath>

namespace koben {

void DrawingBox::setSketch(Sketch sketch) {
    m_draw = nullptr;
    m_sketch = std::move(sketch);
    redraw();
}

void DrawingBox::setDraw(Draw draw) {
    m_draw = std::move(draw);
    m_sketch = m_draw ? m_draw(m_size) : Sketch();
    redraw();
}

void DrawingBox::redraw() {
    if (!m_sketch.area(m_current)) m_current.clear();
    notify(Aspect::Items);
}

const Sketch& DrawingBox::fitted(QSizeF room) {
    if (!m_draw || room == m_size || room.isEmpty()) return m_sketch;
    m_size = room;
    return m_sketch = m_draw(m_size);
}

void DrawingBox::setCurrent(const QString& area) {
    const QString there = m_sketch.area(area) ? area : QString();
    if (there == m_current) return;
    m_current = there;
    notify(Aspect::Row);
}

QString DrawingBox::currentText() const {
    const DrawnArea* area = m_sketch.area(m_current);
    return area ? area->text : QString();
}

QString DrawingBox::beside(int along, int across) const {
    const std::vector<DrawnArea>& areas = m_sketch.areas;
    const DrawnArea* here = m_sketch.area(m_current);
    if (!here) return areas.empty() ? QString() : areas.front().id;
    if (along != 0) {
        for (auto i = here - areas.data() + along; i >= 0 && i < static_cast<qsizetype>(areas.size()); i += along)
            if (areas[static_cast<size_t>(i)].group == here->group) return areas[static_cast<size_t>(i)].id;
        return {};
    }
    const DrawnArea* nearest = nullptr;
    const auto far = [&](const DrawnArea& area) {
        return std::pair(std::abs(area.group - here->group), std::abs(area.box.center().x() - here->box.center().x()));
    };
    for (const DrawnArea& area : areas)
        if ((area.group - here->group) * across > 0 && (!nearest || far(area) < far(*nearest))) nearest = &area;
    return nearest ? nearest->id : QString();
}

void DrawingBox::choose(const QString& area) {
    if (area.isEmpty() || area == m_current) return;
    setCurrent(area);
    if (onCurrent) act(onCurrent);
}

void DrawingBox::clickAt(const QString& area) {
    if (!m_sketch.area(area)) return;
    choose(area);
    if (onClick) act([this] { onClick(m_current); });
}

bool DrawingBox::key(Key key) {
    if (key != Key::Enter || m_current.isEmpty() || !onClick) return Control::key(key);
    clickAt(m_current);
    return true;
}

}  // namespace koben
