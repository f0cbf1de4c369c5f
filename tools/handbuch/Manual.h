#pragma once
// The manual as one PDF.
#include <QStringList>

namespace koben::handbuch {

struct Manual {
    QString help, pictures, sign;  ///< the help file, the folder of the windows' pictures, the program's sign
    QStringList withoutPicture;    ///< forms that have none, when it is written

    /// Writes it, whole or not at all. "" or what went wrong.
    QString write(const QString& path);
};

}  // namespace koben::handbuch
