#include "forms/Startseite.h"

namespace koben {

namespace {

const QString Section = QStringLiteral("Tagesblick"), StartKey = QStringLiteral("Start");
constexpr const char* Words[] = {"", "neben", "statt"};

}  // namespace

Startseite readStartseite(Platform& platform) {
    const QString kept = platform.userSetting(Section, StartKey);
    for (const auto choice : {Startseite::Daneben, Startseite::Statt})
        if (kept == QString::fromUtf8(Words[static_cast<int>(choice)])) return choice;
    return Startseite::Liste;
}

void keepStartseite(Platform& platform, Startseite choice) {
    platform.setUserSetting(Section, StartKey, QString::fromUtf8(Words[static_cast<int>(choice)]));
}

}  // namespace koben
