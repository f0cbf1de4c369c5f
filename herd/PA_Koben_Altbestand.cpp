// A database of the old engine under the data file's name: its herd becomes one of this program, and the file is kept.
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "core/Aktionsnamen.h"
#include "core/Altbestand.h"
#include "herd/PA_Koben.h"
#include "herd/PA_Koben_Funde.h"
#include "store/Files.h"

namespace koben {

namespace {

bool sameContent(const QString& one, const QString& other) {
    constexpr qint64 piece = 1 << 20;
    QFile a(one), b(other);
    if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly) || a.size() != b.size()) return false;
    while (!a.atEnd())
        if (a.read(piece) != b.read(piece)) return false;
    return true;
}

/// The name under which the file stays; a start that was cut off may have given it one already. Never over another.
QString keepOriginal(const QString& path, QDate today) {
    const QString stem = path.chopped(4) + QStringLiteral("_original_") + today.toString(QStringLiteral("yyyy_MM_dd"));
    const QString ending = QStringLiteral(".mdb");
    if (sameContent(path, stem + ending)) return stem + ending;
    const QString name = Freier_Dateiname(stem, ending);
    if (const QString reason = keepFile(path, name); !reason.isEmpty())
        throw DatabaseError(
            DatabaseError::Kind::Io,
            fileFailure(QStringLiteral("Die alte Datenbank %1 kann nicht als %2 aufgehoben werden, und ohne das wird "
                                       "sie nicht ersetzt")
                            .arg(path, QFileInfo(name).fileName()),
                        reason));
    return name;
}

/// Half a herd is none: what is left of it comes over only where the user asks for it.
[[noreturn]] void refuseDamaged(const QString& path, const QStringList& lost) {
    throw DatabaseError(
        DatabaseError::Kind::Io,
        QStringLiteral(
            "Die Datenbank %1 liegt im alten Format vor und ist beschädigt (%2). Sie bleibt unverändert, und "
            "es wurde nichts übernommen. Bitte legen Sie eine Datensicherung an ihre Stelle. Gibt es keine, "
            "verschieben Sie die Datei in einen anderen Ordner, starten Sie KOBEN neu, und übernehmen Sie "
            "unter Optionen / Datenübernahme aus KOBEN 1.0, was noch lesbar ist.")
            .arg(path, lost.join(QStringLiteral("; "))));
}

QString told(const Altuebernahme& taken, const QString& original) {
    QString text = QStringLiteral(
                       "Die Datenbank koben2.mdb lag im alten Format vor. Ihr Bestand ist übernommen: %1 und "
                       "%2. Das Original ist aufgehoben als %3.")
                       .arg(counted(taken.tiere, "Tier", "Tiere"), counted(taken.buchungen, "Buchung", "Buchungen"),
                            QFileInfo(original).fileName());
    if (!taken.hinweise.isEmpty())
        text += QStringLiteral(" Dabei zu beachten: %1.").arg(taken.hinweise.join(QStringLiteral("; ")));
    return text;
}

}  // namespace

void PA_Koben::Altbestand_umstellen() {
    const QString path = koben.Datenbankpfad;
    const QDate today = koben.platform.now().date();
    std::optional<Altuebernahme> taken;
    QString original;
    {
        Progress progress(koben, QStringLiteral("Der Bestand wird aus der alten Datenbank übernommen ..."), 100);
        const auto fill = [&](Database& db) {
            const auto go = [&](int percent) { return progress.step(percent); };
            if (makeTablesOf(db, path, go)) taken = takeOverKoben2(db, path, go);
            if (!taken)
                throw DatabaseError(DatabaseError::Kind::Io,
                                    QStringLiteral("Die Übernahme der alten Datenbank %1 wurde abgebrochen. Die Datei "
                                                   "ist unverändert. Bitte starten Sie KOBEN neu, um sie zu "
                                                   "übernehmen.")
                                        .arg(QDir::toNativeSeparators(path)));
            if (!taken->ganz) refuseDamaged(path, taken->hinweise);
        };
        koben.workspace.makeInstead(path, fill, [&] {
            Protokolle_aufheben(path, today);
            original = keepOriginal(path, today);
        });
    }
    m_hinweise += told(*taken, original);
}

}  // namespace koben
