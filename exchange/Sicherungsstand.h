#pragma once
// What is remembered of the backups: when they were last made, and the concept of three sticks.
#include <QDate>
#include <QString>

#include "forms/Ports.h"

namespace koben {

/// The three sticks of the concept, each for backups of another age.
struct Stick {
    QString colour;     ///< "grün"
    QString volume;     ///< name of its volume
    QString kind;       ///< "Wochenbackup (Grün)"
    QString adjective;  ///< "grüner"
};
extern const Stick Gruen, Blau, Rot;

/// The file S_Datensicherung.ol8. Dates are texts "dd.mm.yyyy", "" before the first backup of their kind.
struct Sicherungsstand {
    QString letztwochenbackup, letztmonatsbackup, letztjahresbackup, letztcloudbackup;
    bool backupkonzept = false;
    QString cloud;

    /// What a missing or short file does not say stays empty.
    static Sicherungsstand lesen(const QString& folder);
    /// False where it could not be written; then the old file stands.
    bool schreiben(const QString& folder) const;

    /// The stick whose turn it is: a due backup of a year before one of a month, otherwise that of the week.
    const Stick& faelligerStick(QDate today) const;
    /// The date of the stick's last backup.
    QString& letztes(const Stick& stick);
};

/// The volume that a folder lies on, by its place in the list: that with the longest root above the folder; -1 for
/// none.
int Laufwerk_von(const QList<Drive>& drives, const QString& folder);
/// As a list of volumes names it: "/media/stick [TAMRO_ROT]".
QString Laufwerksname(const Drive& drive);

}  // namespace koben
