#include <QApplication>
#include <QPalette>
#include <cstdio>
#include <cstdlib>

#include "ui/Desktop.h"

namespace koben::ui {

namespace {

const char* const noDisplay = "KOBEN braucht eine grafische Oberfläche, es wurde aber kein Bildschirm gefunden.\n";

void quitOnFatal(QtMsgType type, const QMessageLogContext&, const QString& text) {
    std::fputs(qPrintable(text + u'\n'), stderr);
    if (type != QtFatalMsg) return;
    std::fputs(noDisplay, stderr);
    std::_Exit(2);
}

}  // namespace

void refuseWithoutDisplay() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        std::fputs(noDisplay, stderr);
        std::exit(2);
    }
    qInstallMessageHandler(quitOnFatal);  // a display that is named but does not answer
}

bool fileNamesKnowCase() { return true; }

bool isDesktopDark() { return QApplication::palette().color(QPalette::Window).lightness() < 128; }

}  // namespace koben::ui
