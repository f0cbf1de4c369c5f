#pragma once
// How the program looks: style, font, palettes, icons.
#include <QIcon>
#include <QPalette>

#include "forms/Zeichnung.h"

class QApplication;
class QCalendarWidget;

namespace koben::ui {

enum class Shade { Light, Dark };

/// The shade of the desktop, by the lightness of its palette.
Shade desktopShade();
QPalette palette(Shade shade);
/// Sets style, font and palette of the whole program.
void applyLook(QApplication& application, Shade shade);

/// An icon of the program in the colours of a palette; empty for a name that has no drawing.
QIcon iconOf(const QString& name, const QPalette& palette);
/// The colour of what is wrong or holiday; legible on the ground of lists and fields in both shades.
QColor alertColour(const QPalette& palette);
/// The tones of drawings on the ground of lists.
Tints drawingTints(const QPalette& palette);
/// Writes a calendar's days off in that colour.
void showDaysOff(QCalendarWidget& calendar);
/// The program's own sign, for windows and the task bar.
QIcon programIcon();

}  // namespace koben::ui
