#pragma once
// The window's view of a drawing on a form.
#include "forms/DrawingBox.h"
#include "ui/Bound.h"
#include "ui/DrawItems.h"

namespace koben::ui {

/// Arrows walk the areas, Home and End lead to the first and last, Enter clicks; the mouse shows what an area says.
class DrawingView final : public Bound<QWidget, DrawingBox> {
public:
    explicit DrawingView(DrawingBox& box);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint() / 2; }

protected:
    void refresh(Aspect aspect) override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    double dotsPerMillimetre() const;
    /// Brings the drawing up to the widget's size.
    const Sketch& fit();
    QTransform placing();
    const DrawnArea* areaAt(QPointF point);
    bool walk(int key);

    Faces m_faces;
    QString m_pressed;
};

}  // namespace koben::ui
