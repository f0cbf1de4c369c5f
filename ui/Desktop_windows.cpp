#include <QSettings>

#include "ui/Desktop.h"

namespace koben::ui {

/// There is always a display.
void refuseWithoutDisplay() {}

bool fileNamesKnowCase() { return false; }

/// Qt's palette is light whatever the user has set.
bool isDesktopDark() {
    const QSettings colours(
        QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize"),
        QSettings::NativeFormat);
    return colours.value(QStringLiteral("AppsUseLightTheme"), 1).toInt() == 0;
}

}  // namespace koben::ui
