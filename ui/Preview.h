#pragma once
// A look at a text as it will stand on paper.
#include <QString>

class QWidget;

namespace koben::ui {

/// Shows the pages with their number, zoom and direction; from there they can also be printed. `margin` counts blanks
/// at the left, a line of "#" alone is a page break.
void previewText(QWidget& parent, const QString& text, const QString& font, int points, bool bold, bool italic,
                 bool landscape, int margin);

}  // namespace koben::ui
