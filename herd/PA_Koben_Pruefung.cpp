// The check of the database's pages, and the line that tells what a start has found.
#include <QDir>
#include <QFile>

#include "core/ErrorLog.h"
#include "forms/RunState.h"
#include "herd/PA_Koben.h"
#include "herd/PA_Koben_Funde.h"
#include "herd/PA_Pruefung.h"

namespace koben {

/// A run that was cut off, or a log that is left of it: the disk may have been cut off too.
bool PA_Koben::Abgebrochen(bool logLeft) const {
    return !m_neu && (logLeft || RunState(koben.platform, koben.Datenordner).running());
}

void PA_Koben::Seiten_pruefen_nach_Abbruch() {
    const auto found = Seiten_pruefen(koben, Check::Quick);
    if (!found)
        m_hinweise += QStringLiteral(
            "Die Prüfung der Datenbank wurde abgebrochen. Bitte holen Sie sie unter Optionen / Datenbank prüfen nach.");
    else if (!found->isEmpty())
        m_hinweise += *found;
}

/// What the cut-off run may have left between the tables; what it had no time to derive is made up for before.
void PA_Koben::Daten_pruefen_nach_Abbruch() {
    Progress progress(koben, QStringLiteral("Die Daten werden geprüft ..."), 100);
    const auto found = Daten_pruefen(m_db, koben, [&](int percent) { return progress.step(percent / 2); });
    const auto rows = found ? Verlauf_pruefen(koben, m_db, [&](int percent) { return progress.step(50 + percent / 2); })
                            : std::nullopt;
    if (found && (enthaelt(*found, Pruefbefund::Art::Abgeleitet) || enthaelt(*found, Pruefbefund::Art::OhneTier)))
        m_hinweise += QStringLiteral(
            "KOBEN wurde beim letzten Mal nicht ordentlich beendet, und nicht alle Daten passen zusammen. Was nicht "
            "passt, zeigt und repariert Optionen / Datenbank prüfen.");
    else if (rows && rows->art == Pruefbefund::Art::Fremd)
        m_hinweise += QStringLiteral(
            "KOBEN wurde beim letzten Mal nicht ordentlich beendet, und einige Einträge stehen anders da, als KOBEN "
            "sie "
            "geschrieben hat. Welche das sind, zeigt Optionen / Datenbank prüfen.");
}

void PA_Koben::Fehlerprotokoll_zeigen() {
    const ErrorLog log(koben.platform.userFolder());
    if (!QFile::exists(log.path()))
        koben.message(QStringLiteral("Es gibt kein Fehlerprotokoll, weil bisher kein Fehler aufgetreten ist."));
    else if (!koben.platform.open(log.path()))
        koben.message(QStringLiteral("Das Fehlerprotokoll kann nicht angezeigt werden, weil kein Programm dafür "
                                     "eingerichtet ist. Bitte öffnen Sie die Datei %1 selbst.")
                          .arg(QDir::toNativeSeparators(log.path())));
}

void PA_Koben::Uhr_pruefen() {
    RunState last(koben.platform, koben.Datenordner);
    const QDate today = koben.platform.now().date();
    if (const QString said = Fragliches_Datum(last.lastDay(), today); !said.isEmpty()) m_hinweise += said;
    last.setLastDay(today);
}

void PA_Koben::Hinweise_zeigen() {
    const QStringList all = m_hinweise + m_einstellungshinweise;
    hinweis.setText(all.join(u' '));
    hinweis.setVisible(!all.isEmpty());
}

}  // namespace koben
