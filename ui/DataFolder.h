#pragma once
// Where this user's data lie.
#include "forms/Ports.h"

namespace koben::ui {

/// The farm's data belong on the drive of the program, "X:/Daten/Sauenplaner_KOBEN2/", for every user of the machine;
/// where there are no drives, into the user's home.
QString usualDataFolder(const QString& programFolder, const QString& home);

/// The folder that the user has agreed to instead; "" for none.
QString agreedDataFolder(Platform& platform);

/// Before the main form: where the platform's data folder is missing and cannot be made on its drive, says so and
/// offers `other`, which is remembered once it is agreed to. Otherwise the start goes on, and ends for that reason.
void settleDataFolder(Screens& screens, Platform& platform, const QString& other);

}  // namespace koben::ui
