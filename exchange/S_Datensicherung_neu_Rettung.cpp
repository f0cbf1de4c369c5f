// The backup's wizard, the way back: which backups there are, what one of them would change, and reading it back.
#include <QDir>
#include <QFile>

#include "core/ErrorLog.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Tageskopien.h"
#include "exchange/S_Datensicherung_neu.h"
#include "forms/RunState.h"

namespace koben {

namespace {

constexpr qint64 wholeWork = 1000;  // steps of a bar

}  // namespace

void S_Datensicherung_neu::start_rettung_Click() {
    const QList<Drive> before = koben.platform.drives();
    koben.message(
        QStringLiteral("Bitte stecken Sie den USB-Stick ein, auf den Sie die letzte Datensicherung gemacht "
                       "haben. Nachdem der Stick erkannt wurde, bestätigen Sie diesen Hinweis mit [OK]."));
    Laufwerke_lesen(drive2, before, {});
    Seite_zeigen(Rettung);
    drive2_Click();
    koben.message(Label1[Rettung].text());
}

/// The backups of a stick lie in its root, those of this machine in the data folder.
void S_Datensicherung_neu::drive2_Click() {
    m_ordner = Datenlaufwerk(drive2) ? koben.Datenordner : m_drives[drive2.current()].root;
    Backups_zeigen();
}

void S_Datensicherung_neu::comordner_Click() {
    const QString chosen = koben.screens.folder(QStringLiteral("In welchem Ordner liegen die Datensicherungen?"));
    if (chosen.isEmpty()) return;
    m_ordner = QDir::cleanPath(chosen) + u'/';
    Backups_zeigen();
}

void S_Datensicherung_neu::comtage_Click() {
    m_ordner = Tageskopienordner(koben.Datenordner);
    Backups_zeigen();
}

void S_Datensicherung_neu::Backups_zeigen() {
    ordner.setText(QDir::toNativeSeparators(m_ordner));
    const bool days = m_ordner == Tageskopienordner(koben.Datenordner);
    backups.setItems(
        days ? Tageskopien(m_ordner)
             : QDir(m_ordner).entryList({QStringLiteral("*.zip")}, QDir::Files, QDir::Name | QDir::IgnoreCase));
    vergleich.setText(
        backups.items().isEmpty()
            ? QStringLiteral("Hier liegt keine Datensicherung. Bitte wählen Sie ein anderes Laufwerk oder "
                             "einen anderen Ordner.")
            : QStringLiteral("Markieren Sie eine Datensicherung, um zu sehen, was sich ändern würde."));
}

void S_Datensicherung_neu::backups_Click() {
    if (backups.current() < 0) return;
    vergleich.setText(Vergleich_text(m_ordner + backups.items()[backups.current()]));
}

QString S_Datensicherung_neu::Vergleich_text(const QString& path) {
    try {
        Progress progress(koben, QStringLiteral("Die Datensicherung wird gelesen ..."), wholeWork);
        const auto found = Sicherung_ansehen(path, koben.Datenordner, [&](double share) {
            return progress.step(static_cast<qint64>(share * wholeWork));
        });
        if (!found) return QStringLiteral("Die Datensicherung wurde nicht zu Ende gelesen.");
        return QStringLiteral("Diese Datensicherung vom %1: %2.")
                   .arg(Datum_als_Anzeige(found->day), Unterschied(*found, Bestand_jetzt(koben), m_heute)) +
               Crlf +
               QStringLiteral("Der jetzige Stand wird vorher aufgehoben im Ordner %1.")
                   .arg(QDir::toNativeSeparators(koben.platform.userFolder()));
    } catch (const DatabaseError& error) {
        return error.message();
    }
}

void S_Datensicherung_neu::weiter_backuprettung_Click() {
    if (backups.current() < 0)
        return koben.message(
            QStringLiteral("Sie haben kein Backup ausgewählt. Bitte markieren Sie zuerst das Backup, "
                           "welches eingelesen werden soll."));
    if (!koben.yesNo(QStringLiteral("Soll die Datensicherung wirklich eingelesen werden. Alle Daten, die seit der "
                                    "ausgewählten Datensicherung eingegeben wurden, gehen dabei verloren!"),
                     true))
        return;
    QString left;
    try {
        Progress progress(koben, QStringLiteral("Die Datensicherung wird eingelesen ..."), wholeWork);
        const ShareDone go = [&](double share) { return progress.step(static_cast<qint64>(share * wholeWork)); };
        if (!Sicherung_zurueckholen(koben, m_ordner + backups.items()[backups.current()], go, left)) return;
    } catch (const DatabaseError& error) {
        ErrorLog(koben.platform.userFolder()).write(koben.platform.now(), error.detail());
        return koben.message(error.message());
    }
    if (left.isEmpty())
        koben.message(
            QStringLiteral("Die Daten wurden eingelesen. Das Programm wird nun beendet. Bei einem erneuten "
                           "Programmstart werden die Daten endgültig übernommen!"));
    else
        koben.message(QStringLiteral("Die Daten wurden eingelesen, aber noch nicht alle Dateien konnten an ihre Stelle "
                                     "treten: %1. Das Programm wird nun beendet. Bitte beheben Sie die Ursache; der "
                                     "nächste Programmstart holt es nach.")
                          .arg(left));
    RunState(koben.platform, koben.Datenordner).setRunning(false);  // it ends as it should
    koben.end();
}

}  // namespace koben
