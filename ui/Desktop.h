#pragma once
// What desktops do differently: bodies in Desktop_posix.cpp and Desktop_windows.cpp.

namespace koben::ui {

/// Ends the process with a German sentence instead of an abort where Qt finds no display.
void refuseWithoutDisplay();

/// Whether "A.TXT" and "a.txt" are two files, so that a file dialog has to be asked for both.
bool fileNamesKnowCase();

/// Whether the user has set dark colours for programs.
bool isDesktopDark();

}  // namespace koben::ui
