#pragma once
// The program's own icons, drawn from their SVG texts by as much of that format as they use: paths, circles, ellipses
// and rectangles, filled or with outlines. So they need no plugin, and are sharp at every size.
#include <QImage>

namespace koben::ui {

/// A square picture of so many pixels; `colour` stands for "currentColor". Empty where the text is no such drawing.
QImage drawnIcon(const QByteArray& svg, const QColor& colour, int pixels);

}  // namespace koben::ui
