#include <gtest/gtest.h>

#include <QStandardPaths>

#include "ui/Application.h"
#include "ui/Look.h"

int main(int argc, char** argv) {
    // The screen that most farms have; a platform that names its own screen keeps it.
    if (const QByteArray platform = qgetenv("QT_QPA_PLATFORM"); platform.isEmpty() || platform == "offscreen")
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" KOBEN_SOURCE_DIR "/tests/ui/bildschirm.json");
    QStandardPaths::setTestModeEnabled(true);
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    testing::InitGoogleTest(&argc, argv);
    koben::ui::Application application(argc, argv);
    koben::ui::applyLook(application, koben::ui::Shade::Light);
    return RUN_ALL_TESTS();
}
