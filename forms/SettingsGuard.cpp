#include "forms/SettingsGuard.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "core/Einstellungen.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "store/Files.h"

namespace koben {

namespace {

const QString Checksum = QStringLiteral("Pruefsumme");
const QString Time = QStringLiteral("Zeit");
const QString Days = QStringLiteral("Tage");
const QString Open = QStringLiteral("Offen");
const QString GoodDay = QStringLiteral("GutVom");

/// The values that dates rest on.
struct DaysRow {
    int slot;
    const char* name;
};
const DaysRow Values[] = {{Zahl::TageBelegungFerkelung, "Belegung bis Ferkelung"},
                          {Zahl::TageFerkelungBelegung, "Ferkelung bis Belegung"},
                          {Zahl::TageFerkelungAbsetzung, "Ferkelung bis Absetzung"},
                          {Zahl::TageAbsetzungBelegung, "Absetzung bis Belegung"},
                          {Zahl::TageBelegungKontrolle, "Belegung bis Trächtigkeitskontrolle"},
                          {Zahl::TageGeburtBelegung, "Geburt bis Belegung"},
                          {Zahl::ToleranzTage, "Toleranz"}};

QString daysOf(const Variablen& v) {
    QStringList days;
    for (const DaysRow& row : Values) days += QString::number(v.Konfig_Zahl[static_cast<size_t>(row.slot)]);
    return days.join(u';');
}

QString checksumOf(const QByteArray& bytes) {
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

std::optional<QByteArray> contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return file.readAll();
}

}  // namespace

SettingsGuard::SettingsGuard(Koben& koben) : m_koben(koben), m_state(koben.platform, koben.Datenordner) {}

QString SettingsGuard::file() const { return m_koben.Datenordner + QStringLiteral("Einstellungen.ko2"); }

QString SettingsGuard::goodFile() const {
    return m_koben.platform.userFolder() + QStringLiteral("Einstellungen_gut_%1.ko2").arg(m_state.name());
}

/// When the file was last written: a disk that loses a byte leaves that as it is, whoever edits does not.
QString SettingsGuard::fileTime() const {
    return QString::number(QFileInfo(file()).lastModified().toMSecsSinceEpoch());
}

QStringList SettingsGuard::load(int currentYear, QString& failed) {
    Einstellungen_vorgeben(m_koben, currentYear);
    Einstellungen_aufraeumen(m_koben);
    const auto bytes = contentOf(file());
    const bool known = !m_state.get(Checksum).isEmpty();
    const Finding finding = bytes ? look(*bytes) : known ? Finding::Missing : Finding::AsLeft;
    if (QFile::exists(file())) Einstellungen_laden(m_koben);
    QStringList said;
    if (finding != Finding::AsLeft && finding != Finding::Older) said += tell(finding, bytes.value_or(QByteArray()));
    if (const QString changed = changedDays(); !changed.isEmpty()) said += changed;
    if (finding == Finding::Damaged || finding == Finding::Missing || (known && !changedDays().isEmpty()))
        m_state.set(Open, QStringLiteral("1"));
    if (isOpen() && !lastGood().isEmpty())
        said += QStringLiteral(
                    "Unter Optionen / Einstellungen lassen sich die letzten guten Einstellungen vom %1 zurückholen; "
                    "[OK] behält dort die jetzigen.")
                    .arg(lastGood());
    if (!bytes && !QFile::exists(file())) failed = save();
    return said;
}

SettingsGuard::Finding SettingsGuard::look(const QByteArray& bytes) const {
    const QString known = m_state.get(Checksum);
    const bool readable = Einstellungen_schadhafte_Zeile(bytes) == 0;
    if (known == checksumOf(bytes)) return Finding::AsLeft;
    if (!readable) return Finding::Damaged;
    if (known.isEmpty()) return Finding::Older;
    return m_state.get(Time) == fileTime() ? Finding::Damaged : Finding::Edited;
}

QString SettingsGuard::tell(Finding finding, const QByteArray& bytes) {
    if (finding == Finding::Missing)
        return QStringLiteral("Die Einstellungsdatei Einstellungen.ko2 war nicht mehr da; es gelten Standardwerte.");
    if (finding == Finding::Edited)
        return QStringLiteral("Die Einstellungsdatei Einstellungen.ko2 wurde außerhalb von KOBEN geändert.");
    const int line = Einstellungen_schadhafte_Zeile(bytes);
    const QString kept = keepDamaged(bytes);
    return QStringLiteral("Die Einstellungsdatei Einstellungen.ko2 ist beschädigt%1. %2")
        .arg(line == 0 ? QString() : QStringLiteral("; ab Zeile %1 gelten Standardwerte").arg(line),
             kept.isEmpty() ? QStringLiteral("Sie konnte nicht aufgehoben werden, weil im Ordner %1 nicht geschrieben "
                                             "werden kann.")
                                  .arg(QDir::toNativeSeparators(m_koben.platform.userFolder()))
                            : QStringLiteral("Sie ist aufgehoben als %1.").arg(QDir::toNativeSeparators(kept)));
}

/// Where dates rest on other values than at the end of the last run: which, from what to what.
QString SettingsGuard::changedDays() const {
    const QStringList before = m_state.get(Days).split(u';');
    if (before.size() != static_cast<qsizetype>(std::size(Values))) return {};
    QStringList changed;
    for (qsizetype i = 0; i < before.size(); ++i) {
        const QString now = QString::number(m_koben.Konfig_Zahl[static_cast<size_t>(Values[i].slot)]);
        if (now != before[i])
            changed += QStringLiteral("%1 %2 statt %3").arg(QString::fromUtf8(Values[i].name), now, before[i]);
    }
    if (changed.isEmpty()) return {};
    return QStringLiteral("Termine beruhen auf anderen Tagen als beim letzten Lauf: %1.")
        .arg(changed.join(QStringLiteral(", ")));
}

/// The path of the kept copy; "" where it could not be written.
QString SettingsGuard::keepDamaged(const QByteArray& bytes) const {
    const QString folder = m_koben.platform.userFolder();
    QDir().mkpath(folder);
    const QString day = m_koben.platform.now().date().toString(Qt::ISODate);
    QString path = folder + QStringLiteral("Einstellungen_beschädigt_%1.ko2").arg(day);
    for (int n = 2; QFile::exists(path) && contentOf(path) != bytes; ++n)
        path = folder + QStringLiteral("Einstellungen_beschädigt_%1_%2.ko2").arg(day).arg(n);
    return QFile::exists(path) || writeFile(path, bytes).isEmpty() ? path : QString();
}

QString SettingsGuard::save(bool agreed) {
    if (const QString reason = Einstellungen_sichern(m_koben); !reason.isEmpty()) return reason;
    const auto bytes = contentOf(file());
    if (!bytes) return {};
    remember(*bytes, m_koben);
    if (agreed) m_state.set(Open, QString());
    if (!isOpen()) keepGood(*bytes);
    return {};
}

void SettingsGuard::adopt() {
    const auto bytes = contentOf(file());
    if (!bytes || Einstellungen_schadhafte_Zeile(*bytes) != 0) return;
    Variablen values;
    Einstellungen_vorgeben(values, m_koben.platform.now().date().year());
    Einstellungen_uebernehmen(*bytes, values);
    remember(*bytes, values);
    m_state.set(Open, QString());
    keepGood(*bytes);
}

void SettingsGuard::remember(const QByteArray& bytes, const Variablen& values) {
    m_state.set(Checksum, checksumOf(bytes));
    m_state.set(Time, fileTime());
    m_state.set(Days, daysOf(values));
}

void SettingsGuard::keepGood(const QByteArray& bytes) {
    QDir().mkpath(m_koben.platform.userFolder());
    if (writeFile(goodFile(), bytes).isEmpty()) m_state.set(GoodDay, Datum_als_Anzeige(m_koben.platform.now().date()));
}

bool SettingsGuard::isOpen() const { return !m_state.get(Open).isEmpty(); }

QString SettingsGuard::lastGood() const {
    return isOpen() && QFile::exists(goodFile()) ? m_state.get(GoodDay) : QString();
}

QString SettingsGuard::takeBack() {
    const auto bytes = contentOf(goodFile());
    if (!bytes || Einstellungen_schadhafte_Zeile(*bytes) != 0)
        return QStringLiteral(
            "Die letzten guten Einstellungen können nicht gelesen werden. Die jetzigen bleiben, wie sie sind. Bitte "
            "prüfen Sie die Tage des Zyklus, und bestätigen Sie sie mit [OK].");
    Einstellungen_uebernehmen(*bytes, m_koben);
    return save(true);
}

}  // namespace koben
