#pragma once
// Text reports on their way to the viewer. (Grid reports go through Liste_ausgeben of forms/Liste.h.)
#include <functional>

#include "forms/Koben.h"

namespace koben {

/// Writes a report's lines to a file of the data folder, makes that the viewer's file and shows it.
/// Where the file cannot be written the old one stays, the user is told, and the viewer stays closed.
void Text_uebergeben(Koben& koben, const QString& text, const QString& file = QStringLiteral("LISTE.TXT"));

/// The title of the report on paper: the caption of the screen that made it, the nearest one behind those that only
/// hand it on.
QString Berichtstitel(const Koben& koben);

/// Reads a text file of the program (Windows-1252, lines ended by LF or CR LF) line by line until `take` says false.
/// False where the file cannot be opened.
bool Zeilen_lesen(const QString& path, const std::function<bool(const QString& line)>& take);

}  // namespace koben
