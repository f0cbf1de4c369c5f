#pragma once
// How the program looks: style, font, palettes, icons.
#include <QIcon>
#include <QPalette>

class QApplication;

namespace koben::ui {

enum class Shade { Light, Dark };

/// The shade of the desktop, by the lightness of its palette.
Shade desktopShade();
QPalette palette(Shade shade);
/// Sets style, font and palette of the whole program.
void applyLook(QApplication& application, Shade shade);

/// An icon of the program in the colours of a palette; empty for a name that has no drawing.
QIcon iconOf(const QString& name, const QPalette& palette);
/// The program's own sign, for windows and the task bar.
QIcon programIcon();

}  // namespace koben::ui
