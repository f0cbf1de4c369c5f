// The program: the look, the two ports, the main form.
#include <QDir>
#include <QStandardPaths>

#include "app/Katalog.h"
#include "app/Musterbetrieb.h"
#include "core/ErrorLog.h"
#include "core/Tageskopien.h"
#include "forms/Form.h"
#include "ui/Application.h"
#include "ui/DataFolder.h"
#include "ui/Desktop.h"
#include "ui/Look.h"
#include "ui/SampleVisit.h"
#include "ui/SystemPlatform.h"
#include "ui/WindowScreens.h"

using namespace koben;

namespace {

/// The shade that the user has set, the desktop's otherwise.
ui::Shade wantedShade(Platform& platform) {
    const QString set = platform.userSetting(QStringLiteral("Darstellung"), QStringLiteral("Farben"));
    if (set == u"hell") return ui::Shade::Light;
    if (set == u"dunkel") return ui::Shade::Dark;
    return ui::desktopShade();
}

/// The technical side goes to the log, of which the message says where it lies.
QString farewell(Platform& platform, const QString& reason, const QString& detail) {
    const ErrorLog log(platform.userFolder());
    log.write(platform.now(), detail);
    return QStringLiteral("KOBEN muss beendet werden, weil ein Fehler aufgetreten ist:") + Crlf + Crlf + reason + Crlf +
           Crlf + QStringLiteral("Was bis hierher gespeichert wurde, ist erhalten. Bitte starten Sie KOBEN neu.") +
           Crlf + Crlf +
           QStringLiteral("Wenn Sie die Hilfe am Telefon brauchen: Einzelheiten stehen in der Datei %1.")
               .arg(QDir::toNativeSeparators(log.path()));
}

QString mishap(const QString& reason) {
    return QStringLiteral("Die Aktion konnte nicht zu Ende geführt werden.") + Crlf + Crlf + reason + Crlf + Crlf +
           QStringLiteral("Bitte beheben Sie die Ursache und wiederholen Sie die Aktion dann.");
}

/// What fails while the program starts ends it; later failures are told and the program runs on.
int run(ui::Application& application, ui::WindowScreens& screens, Platform& platform) {
    QString reason, detail;
    try {
        Koben koben(screens, platform, katalog());
        application.onFailure = [&](const QString& cause) { screens.failed(mishap(cause)); };
        const auto form = katalog().make(QStringLiteral("PA_Koben"), koben);
        koben.run(*form);
        Tageskopie_abwarten();  // while the platform holds the lock of the copies
        application.onFailure = nullptr;
        return 0;
    } catch (const DatabaseError& error) {
        reason = error.message();
        detail = error.detail();
    } catch (const std::exception& error) {
        reason = programFault();
        detail = QString::fromUtf8(error.what());
    }
    application.onFailure = nullptr;
    screens.message(farewell(platform, reason, detail));
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    ui::refuseWithoutDisplay();
    ui::Application application(argc, argv);
    ui::WindowScreens screens;
    ui::SystemPlatform platform(
        [&](const QString& preset) { return screens.saveFile(QStringLiteral("PDF-Dateien|*.PDF"), preset); });
    ui::applyLook(application, wantedShade(platform));
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    ui::settleDataFolder(screens, platform, documents.filePath(QStringLiteral("Sauenplaner_KOBEN2/")));
    ui::removeLeftSampleFarms(platform.userFolder());
    screens.sample = {&musterkatalog(), Musterbetrieb_anlegen};
    return run(application, screens, platform);
}
