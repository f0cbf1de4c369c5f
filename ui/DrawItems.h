#pragma once
// The pieces of a drawing on any painter: paper, PDF, window and picture show the same marks.
#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <memory>

#include "forms/Zeichnung.h"

namespace koben::ui {

constexpr double millimetresPerInch = 25.4;
/// Dots to an inch in which drawings are measured, whatever the device has: no rounding of a printer's own moves a
/// line.
constexpr double layoutDots = 1200;

/// The faces of a drawing with their measures in layout dots.
class Faces {
public:
    struct Face {
        QFont font;
        QFontMetricsF metrics;
    };
    const Face& of(const Typeface& typeface);

private:
    QHash<QString, std::shared_ptr<Face>> m_faces;
};

/// Paints what has its place on a page; lines of text are the sheets' own. The painter counts in layout dots.
void paintItem(QPainter& painter, const DrawItem& item, Faces& faces, const Tints& tints);
/// Paints a sketch, its upper left corner where the painter stands.
void paintSketch(QPainter& painter, const Sketch& sketch, Faces& faces, const Tints& tints);
/// A sketch as on white paper.
QImage pictureOf(const Sketch& sketch, double dotsPerInch);

}  // namespace koben::ui
