#include "store/FileCheck.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "store/Connection.h"

namespace koben {
namespace {

using Kind = DatabaseError::Kind;

constexpr qsizetype kHeaderSize = 100;
constexpr qsizetype kVersionAt = 60;      // of SQLite's header: user_version
constexpr qsizetype kApplicationAt = 68;  // application_id

quint32 bigEndian(const QByteArray& bytes, qsizetype at) {
    quint32 value = 0;
    for (qsizetype i = 0; i < 4; ++i) value = value << 8 | static_cast<quint8>(bytes[at + i]);
    return value;
}

bool oldEngine(const QByteArray& header) { return header.startsWith(QByteArray("\0\1\0\0Standard Jet DB", 19)); }
bool successor(const QByteArray& header) { return header.startsWith(QByteArray("\0\1\0\0Standard ACE DB", 19)); }

}  // namespace

void checkDatabaseFile(const QString& path) {
    const QFileInfo info(path);
    const QString shown = QDir::toNativeSeparators(path);
    if (!info.exists())
        throw DatabaseError(Kind::Io,
                            QStringLiteral("Die Datenbank %1 gibt es nicht. Bitte den Datenordner prüfen.").arg(shown));
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        throw DatabaseError(
            Kind::Io, QStringLiteral("Die Datenbank %1 kann nicht gelesen werden. Bitte die Rechte der Datei prüfen.")
                          .arg(shown));
    const QByteArray header = file.read(kHeaderSize);
    if (oldEngine(header))
        throw DatabaseError(
            Kind::ForeignFormat,
            QStringLiteral("Die Datei %1 ist eine Datenbank im alten Format (MDB). Sie wurde erkannt und bleibt "
                           "unverändert. Dateien der Formate Jet 3 und Jet 4 übernimmt KOBEN, wenn sie beim Start als "
                           "koben2.mdb im Datenordner liegen. Bitte verschieben Sie eine Datei in einem anderen Format "
                           "in einen anderen Ordner, um mit einem neuen Bestand zu beginnen.")
                .arg(shown));
    if (successor(header))
        throw DatabaseError(
            Kind::ForeignFormat,
            QStringLiteral("Die Datei %1 ist eine Datenbank im Format ACCDB. Dieses Format liest KOBEN nicht; die "
                           "Datei bleibt unverändert. Bitte speichern Sie sie mit dem Programm, das sie geschrieben "
                           "hat, im Format MDB (2000 oder 2002-2003) als koben2.mdb im Datenordner, und starten Sie "
                           "KOBEN dann neu.")
                .arg(shown));
    const bool sqlite = header.size() == kHeaderSize && header.startsWith(QByteArray("SQLite format 3\0", 16));
    if (!sqlite || bigEndian(header, kApplicationAt) != kApplicationId)
        throw DatabaseError(
            Kind::NotADatabase,
            QStringLiteral("Die Datei %1 ist keine KOBEN-Datenbank oder sie ist beschädigt. Sie bleibt unverändert. "
                           "Bitte den Datenordner prüfen oder eine Datensicherung zurückholen.")
                .arg(shown));
    if (bigEndian(header, kVersionAt) > static_cast<quint32>(kFileVersion))
        throw DatabaseError(
            Kind::NewerVersion,
            QStringLiteral("Die Datenbank %1 stammt von einer neueren KOBEN-Version. Sie bleibt unverändert. "
                           "Bitte die neuere Version des Programms benutzen.")
                .arg(shown));
}

bool isAccdb(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && successor(file.read(kHeaderSize));
}

}  // namespace koben
