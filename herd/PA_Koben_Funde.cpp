#include "herd/PA_Koben_Funde.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Tageskopien.h"
#include "forms/RunState.h"
#include "store/Files.h"

namespace koben {

namespace {

/// What became of the last copy of a day, among the user's own files.
QString copyNote(Koben& koben) {
    return koben.platform.userFolder() + RunState(koben.platform, koben.Datenordner).name() +
           QStringLiteral("_Tageskopie.txt");
}

/// The folder for copies outside of this machine, as the backup screen keeps it; "" for none.
QString copiesFolder(const QString& folder) {
    constexpr qsizetype line = 5;
    QFile file(folder + QStringLiteral("S_Datensicherung.ol8"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return ausWindows1252(file.readAll()).split(u'\n').value(line).trimmed();
}

}  // namespace

QString Freier_Dateiname(const QString& stem, const QString& ending) {
    QString path = stem + ending;
    for (int n = 2; QFileInfo::exists(path); ++n) path = stem + u'_' + QString::number(n) + ending;
    return path;
}

QStringList Protokolle_aufheben(const QString& database, QDate today) {
    QStringList kept;
    for (const QString& log : {QStringLiteral("-wal"), QStringLiteral("-journal")}) {
        if (QFileInfo(database + log).size() == 0) continue;
        const QString name = Freier_Dateiname(database.chopped(4) + u'_' + today.toString(Qt::ISODate), log);
        if (const QString reason = replaceFile(database + log, name); !reason.isEmpty())
            throw DatabaseError(
                DatabaseError::Kind::Io,
                fileFailure(QStringLiteral("Das Protokoll %1, in dem die letzten Eingaben stehen können, kann nicht "
                                           "aufgehoben werden, und nichts wurde verändert")
                                .arg(QDir::toNativeSeparators(database + log)),
                            reason));
        kept += QFileInfo(name).fileName();
    }
    return kept;
}

QString Neueste_Kopie(const QString& folder) {
    QFileInfoList found;
    for (const QString& place : {folder, copiesFolder(folder), Tageskopienordner(folder)})
        if (!place.isEmpty())
            found += QDir(place).entryInfoList(
                {QStringLiteral("koben20_backup_*.zip"), QStringLiteral("koben2.$$$"), QStringLiteral("koben2?*.mdb")},
                QDir::Files);
    const auto newest = std::max_element(found.begin(), found.end(), [](const QFileInfo& a, const QFileInfo& b) {
        return a.lastModified() < b.lastModified();
    });
    if (newest == found.end()) return {};
    return QStringLiteral("%1 vom %2")
        .arg(QDir::toNativeSeparators(newest->filePath()), Datum_als_Anzeige(newest->lastModified().date()));
}

QString Fehlende_Datenbank(Koben& koben) {
    const QStringList logs = Protokolle_aufheben(koben.Datenbankpfad, koben.platform.now().date());
    const bool wasThere = RunState(koben.platform, koben.Datenordner).lastDay().isValid();
    if (logs.isEmpty() && !wasThere) return {};
    const QString copy = Neueste_Kopie(koben.Datenordner);
    QString text =
        QStringLiteral("Die Datenbank koben2.mdb war nicht mehr im Datenordner; ein leerer Bestand wurde begonnen.");
    if (!logs.isEmpty())
        text += QStringLiteral(" Ihr Protokoll ist aufgehoben als %1.").arg(logs.join(QStringLiteral(", ")));
    return text + (copy.isEmpty()
                       ? QStringLiteral(" Eine Kopie wurde nicht gefunden: Bitte suchen Sie die Datenbank oder eine "
                                        "Datensicherung, bevor Sie Tiere eingeben.")
                       : QStringLiteral(" Die neueste Kopie ist %1: Bitte holen Sie sie zurück, bevor Sie Tiere "
                                        "eingeben.")
                             .arg(copy));
}

QString Fragliches_Datum(QDate last, QDate today) {
    if (!last.isValid() || (today >= last && today <= last.addYears(1))) return {};
    return QStringLiteral(
               "Die Uhr des Rechners zeigt den %1, %2 als beim letzten Start am %3. Bitte prüfen Sie das "
               "Datum, bevor Sie buchen.")
        .arg(Datum_als_Anzeige(today),
             today < last ? QStringLiteral("früher") : QStringLiteral("mehr als ein Jahr später"),
             Datum_als_Anzeige(last));
}

/// From here on another start may have the data folder: this run holds the folder of the copies instead.
void Tageskopie_ablegen(Koben& koben) {
    RunState(koben.platform, koben.Datenordner).setRunning(false);  // all that is to come is the copy
    koben.workspace.closeAll();
    const QString folder = Tageskopienordner(koben.Datenordner);
    QDir().mkpath(folder);
    QDir().mkpath(koben.platform.userFolder());
    Tageskopie_beginnen({koben.Datenbankpfad, folder, koben.platform.now().date(), copyNote(koben),
                         koben.platform.lockDataFolder(folder)});
}

QString Fehlende_Tageskopie(Koben& koben) {
    return Tageskopie_meldung(Tageskopienordner(koben.Datenordner), copyNote(koben));
}

}  // namespace koben
