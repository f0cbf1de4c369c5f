#pragma once
// Where windows stand: on a screen that exists, frame and all, and where they were left.
#include <QMargins>
#include <QRect>
#include <QString>

class QWidget;

namespace koben::ui {

/// Where a window may stand: `wanted` if it lies on one of the screens, moved and shrunk into the nearest else.
QRect placeOnScreen(const QRect& wanted, const QList<QRect>& screens);

/// The room of each screen for the content of a window: without the system's bars and without the window's frame.
QList<QRect> roomOnScreens(const QWidget& window);
/// The same of the screen that the window stands on.
QRect roomOf(const QWidget& window);

/// A window's place as the user left it.
struct KeptPlace {
    QRect rect;              ///< empty where none was kept
    bool sizeHolds = false;  ///< letters were as large then as they are now
    bool maximized = false;

    /// From the text that `text()` gave; other texts give no place.
    static KeptPlace from(const QString& text, const QWidget& window);
    static QString text(const QWidget& window);
};

}  // namespace koben::ui
