#include "ui/DrawingView.h"

#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include "ui/Look.h"

namespace koben::ui {

namespace {

/// A drawing as a screen reader knows it: its value is what stands at the current area.
class AccessibleDrawing final : public QAccessibleWidget {
public:
    explicit AccessibleDrawing(DrawingView& view) : QAccessibleWidget(&view, QAccessible::Chart), m_view(view) {}
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? m_view.model().currentText() : QAccessibleWidget::text(kind);
    }

private:
    const DrawingView& m_view;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* view = dynamic_cast<DrawingView*>(object);
    return view ? new AccessibleDrawing(*view) : nullptr;
}

}  // namespace

DrawingView::DrawingView(DrawingBox& box) : Bound(box) {
    static const bool installed = [] { return QAccessible::installFactory(makeAccessible), true; }();
    Q_UNUSED(installed)
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    start();
    if (box.onClick)
        setAccessibleDescription(
            QStringLiteral("Die Pfeiltasten führen von Wert zu Wert, die Eingabetaste zeigt, was dahinter steht."));
}

double DrawingView::dotsPerMillimetre() const { return logicalDpiX() / millimetresPerInch; }

QSize DrawingView::sizeHint() const {
    const QSizeF size = model().suitsItself() ? QSizeF(185, 75) : model().sketch().size;
    return (size * dotsPerMillimetre()).toSize();
}

void DrawingView::refresh(Aspect aspect) {
    if (aspect == Aspect::Row) {
        QAccessibleValueChangeEvent event(this, model().currentText());
        QAccessible::updateAccessibility(&event);
    } else {
        updateGeometry();  // a drawing that suits itself asks for other room than one of its own size
    }
    update();
}

const Sketch& DrawingView::fit() {
    return model().fitted(QSizeF(rect().adjusted(3, 3, -3, -3).size()) / dotsPerMillimetre());
}

/// From millimetres of the drawing to pixels.
QTransform DrawingView::placing() {
    const QSizeF size = fit().size, room = QSizeF(rect().adjusted(3, 3, -3, -3).size());
    const double natural = dotsPerMillimetre();
    const double scale =
        model().suitsItself() ? natural : std::min(room.width() / size.width(), room.height() / size.height());
    const QPointF spare((room.width() - size.width() * scale) / 2, (room.height() - size.height() * scale) / 2);
    return QTransform::fromTranslate(3 + std::max(spare.x(), 0.0), 3 + std::max(spare.y(), 0.0)).scale(scale, scale);
}

void DrawingView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const Tints tints = model().paper ? paperTints() : drawingTints(palette());
    painter.fillRect(rect(), QColor::fromRgb(tint(tints, Tone::Ground)));
    const QTransform place = placing();
    painter.save();
    painter.setTransform(place, true);
    painter.scale(millimetresPerInch / layoutDots, millimetresPerInch / layoutDots);
    paintSketch(painter, model().sketch(), m_faces, tints);
    painter.restore();
    painter.setBrush(Qt::NoBrush);
    if (const DrawnArea* area = model().sketch().area(model().current())) {
        painter.setPen(QPen(palette().color(QPalette::Text), 1.5));
        painter.drawRect(place.mapRect(area->box).adjusted(-1.5, -1.5, 1.5, 1.5));
    }
    painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Link), 2) : QPen(palette().color(QPalette::Mid), 1));
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

const DrawnArea* DrawingView::areaAt(QPointF point) {
    const QTransform place = placing();
    return model().sketch().areaAt(place.inverted().map(point));
}

bool DrawingView::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const DrawnArea* area = areaAt(help->pos());
    if (!area || area->text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), area->text, this, placing().mapRect(area->box).toAlignedRect());
    return true;
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
    setCursor(model().onClick && areaAt(event->position()) ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const DrawnArea* area = areaAt(event->position());
    m_pressed = area ? area->id : QString();
    if (area) model().choose(m_pressed);
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const DrawnArea* area = areaAt(event->position());
    if (area && area->id == m_pressed) model().clickAt(m_pressed);
}

/// True for a key that leads to an area; where there is none beside, the current one stays.
bool DrawingView::walk(int key) {
    const std::vector<DrawnArea>& areas = fit().areas;
    if (areas.empty()) return false;
    switch (key) {
        case Qt::Key_Left:
            return model().choose(model().beside(-1, 0)), true;
        case Qt::Key_Right:
            return model().choose(model().beside(1, 0)), true;
        case Qt::Key_Up:
            return model().choose(model().beside(0, -1)), true;
        case Qt::Key_Down:
            return model().choose(model().beside(0, 1)), true;
        case Qt::Key_Home:
            return model().choose(areas.front().id), true;
        case Qt::Key_End:
            return model().choose(areas.back().id), true;
        default:
            return false;
    }
}

void DrawingView::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (enter ? !model().current().isEmpty() && model().key(Key::Enter) : walk(event->key())) return;
    event->ignore();
}

}  // namespace koben::ui
