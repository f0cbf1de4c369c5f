#include "ui/DataFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

namespace koben::ui {

namespace {

const QString Section = QStringLiteral("Ordner"), Key = QStringLiteral("Daten");

bool hasDrive(const QString& path) { return path.size() > 1 && path[0].isLetter() && path[1] == u':'; }

/// Makes what lies above the folder, and tries whether something can be made there.
bool canBeMade(const QString& folder) {
    const QString above = QFileInfo(QDir::cleanPath(folder)).path();
    return QDir().mkpath(above) && QTemporaryFile(above + QStringLiteral("/koben-XXXXXX")).open();
}

}  // namespace

QString usualDataFolder(const QString& programFolder, const QString& home) {
    return (hasDrive(programFolder) ? programFolder.left(2) : home) + QStringLiteral("/Daten/Sauenplaner_KOBEN2/");
}

QString agreedDataFolder(Platform& platform) { return platform.userSetting(Section, Key); }

void settleDataFolder(Screens& screens, Platform& platform, const QString& other) {
    const QString folder = platform.dataFolder();
    if (!hasDrive(folder) || QFileInfo::exists(folder) || canBeMade(folder)) return;
    const QString question =
        QStringLiteral(
            "Der Datenordner \"%1\" kann nicht angelegt werden, weil auf diesem Laufwerk nicht geschrieben "
            "werden darf. Sollen Ihre Daten stattdessen in Ihrem eigenen Ordner \"%2\" liegen? KOBEN merkt "
            "sich das für alle weiteren Starts. Andere Benutzer dieses Rechners sehen sie dort nicht.")
            .arg(QDir::toNativeSeparators(folder), QDir::toNativeSeparators(other));
    if (screens.yesNo(question)) platform.setUserSetting(Section, Key, other);
}

}  // namespace koben::ui
