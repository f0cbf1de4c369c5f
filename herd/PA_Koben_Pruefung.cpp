// The check of the database's pages, and the line that tells what a start has found.
#include <QDir>
#include <QFile>

#include "core/ErrorLog.h"
#include "forms/RunState.h"
#include "herd/PA_Koben.h"
#include "herd/PA_Koben_Funde.h"

namespace koben {

namespace {

/// What the check says, in the user's words; "" where all is whole.
QString told(const std::optional<QString>& found, const QString& folder) {
    if (!found)
        return QStringLiteral(
            "Die Prüfung der Datenbank wurde abgebrochen. Bitte holen Sie sie unter Optionen / Datenbank prüfen nach.");
    if (found->isEmpty()) return {};
    const QString copy = Neueste_Kopie(folder);
    return QStringLiteral(
               "Die Datenbank ist beschädigt; Daten darin können fehlen oder falsch sein. Bitte geben Sie "
               "nichts mehr ein, und holen Sie eine Datensicherung zurück%1.")
        .arg(copy.isEmpty() ? QString() : QStringLiteral(" (die neueste Kopie ist %1)").arg(copy));
}

/// Nothing where it was given up; what was found goes to the log.
std::optional<QString> checked(Koben& koben, Check check) {
    Progress progress(koben, QStringLiteral("Die Datenbank wird geprüft ..."), 100);
    std::optional<QString> found;
    try {
        found = koben.workspace.check(koben.Datenbankpfad, check, [&](int percent) { return progress.step(percent); });
    } catch (const DatabaseError& error) {
        if (error.kind != DatabaseError::Kind::NotADatabase) throw;
        found = error.detail();  // so damaged that it cannot even be looked at
    }
    if (found && !found->isEmpty()) ErrorLog(koben.platform.userFolder()).write(koben.platform.now(), *found);
    return found;
}

}  // namespace

/// A run that was cut off, or a log that is left of it: the disk may have been cut off too.
void PA_Koben::Seiten_pruefen_nach_Abbruch(bool logLeft) {
    if (m_neu || (!logLeft && !RunState(koben.platform, koben.Datenordner).running())) return;
    if (const QString said = told(checked(koben, Check::Quick), koben.Datenordner); !said.isEmpty()) m_hinweise += said;
}

void PA_Koben::Datenbank_pruefen() {
    const auto found = checked(koben, Check::Full);
    const QString said = told(found, koben.Datenordner);
    koben.message(said.isEmpty() ? QStringLiteral("Die Datenbank wurde geprüft. Sie ist in Ordnung.") : said);
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
