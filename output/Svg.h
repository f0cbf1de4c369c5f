#pragma once
// A drawing as an SVG file.
#include "forms/Zeichnung.h"

namespace koben {

/// The whole text of the file, UTF-8, in millimetres and on the paper's colours. Texts keep their words: what would be
/// markup is escaped, and what no XML may hold is left out.
QByteArray Svg(const Sketch& sketch, const QString& title);

}  // namespace koben
