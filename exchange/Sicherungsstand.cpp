#include "exchange/Sicherungsstand.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

const Stick Gruen{QStringLiteral("grün"), QStringLiteral("TAMRO_GRUEN"), QStringLiteral("Wochenbackup (Grün)"),
                  QStringLiteral("Grüner")};
const Stick Blau{QStringLiteral("blau"), QStringLiteral("TAMRO_BLAU"), QStringLiteral("Monatsbackup (Blau)"),
                 QStringLiteral("Blauer")};
const Stick Rot{QStringLiteral("rot"), QStringLiteral("TAMRO_ROT"), QStringLiteral("Jahresbackup (Rot)"),
                QStringLiteral("Roter")};

namespace {

constexpr int daysOfMonth = 60, daysOfYear = 180;

QString fileIn(const QString& folder) { return folder + QStringLiteral("S_Datensicherung.ol8"); }

bool due(const QString& last, QDate today, int days) {
    return last.isEmpty() || (Ist_Datum(last) && Datum_aus_Text(last).daysTo(today) > days);
}

}  // namespace

Sicherungsstand Sicherungsstand::lesen(const QString& folder) {
    Sicherungsstand found;
    QFile file(fileIn(folder));
    if (!file.open(QIODevice::ReadOnly)) return found;
    QStringList lines = ausWindows1252(file.readAll()).split(u'\n');
    QString* const texts[] = {&found.letztwochenbackup, &found.letztmonatsbackup, &found.letztjahresbackup,
                              &found.letztcloudbackup};
    qsizetype at = 0;
    for (QString* text : texts) *text = lines.value(at++).trimmed();
    found.backupkonzept = lines.value(at++).trimmed() == u"1";
    found.cloud = lines.value(at).trimmed();
    return found;
}

bool Sicherungsstand::schreiben(const QString& folder) const {
    QStringList lines{letztwochenbackup,
                      letztmonatsbackup,
                      letztjahresbackup,
                      letztcloudbackup,
                      backupkonzept ? QStringLiteral("1") : QStringLiteral("0"),
                      cloud};
    return Textdatei_schreiben(fileIn(folder), lines.join(Crlf) + Crlf);
}

const Stick& Sicherungsstand::faelligerStick(QDate today) const {
    if (due(letztjahresbackup, today, daysOfYear)) return Rot;
    return due(letztmonatsbackup, today, daysOfMonth) ? Blau : Gruen;
}

QString& Sicherungsstand::letztes(const Stick& stick) {
    if (stick.colour == Rot.colour) return letztjahresbackup;
    return stick.colour == Blau.colour ? letztmonatsbackup : letztwochenbackup;
}

int Laufwerk_von(const QList<Drive>& drives, const QString& folder) {
    const QString found = QFileInfo(folder).canonicalFilePath();
    const QString path = (found.isEmpty() ? QDir::cleanPath(folder) : found) + u'/';
    int best = -1;
    for (int i = 0; i < drives.size(); ++i)
        if (path.startsWith(drives[i].root) && (best < 0 || drives[i].root.size() > drives[best].root.size())) best = i;
    return best;
}

QString Laufwerksname(const Drive& drive) {
    const QString root = QDir::toNativeSeparators(drive.root.size() > 1 ? drive.root.chopped(1) : drive.root);
    return drive.name.isEmpty() ? root : root + QStringLiteral(" [%1]").arg(drive.name);
}

}  // namespace koben
