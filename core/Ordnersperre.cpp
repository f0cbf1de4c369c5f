#include "core/Ordnersperre.h"

#include <QDir>
#include <QFileInfo>

namespace koben {

namespace {

QString lockOf(const QString& folder) { return QDir(folder).filePath(QStringLiteral("koben.lock")); }

}  // namespace

QString Ordnersperre::hindernis(const QString& folder) {
    const QFileInfo file(lockOf(folder));
    const QString remedy = QStringLiteral(
        " KOBEN läuft nicht ein zweites Mal. Bitte löschen oder verschieben Sie \"%1\", und starten Sie KOBEN neu.");
    const auto told = [&](const char* problem) {
        return QString::fromUtf8(problem) + remedy.arg(QDir::toNativeSeparators(file.filePath()));
    };
    if (file.isDir())
        return told("Die Sperrdatei des Datenordners kann nicht angelegt werden, weil dort ein Ordner liegt.");
    if (file.isSymLink() && !file.exists())
        return told("Die Sperrdatei des Datenordners ist ein Verweis auf eine Datei, die es nicht gibt.");
    if (file.exists() && (!file.isFile() || !file.isReadable() || !file.isWritable()))
        return told(
            "Die Sperrdatei des Datenordners gehört einem anderen Benutzer oder System und lässt sich nicht öffnen.");
    return {};
}

bool Ordnersperre::held(const QString& folder) {
    Ordnersperre probe;
    return QFileInfo::exists(lockOf(folder)) && hindernis(folder).isEmpty() && !probe.nehmen(folder);
}

bool Ordnersperre::nehmen(const QString& folder) { return m_lock.take(lockOf(folder)); }

}  // namespace koben
