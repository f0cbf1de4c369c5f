#include "exchange/Empfangsfach.h"

#include <QDir>
#include <QFile>

#include "core/Aktionsnamen.h"
#include "exchange/Geraetedatei.h"
#include "store/Files.h"

namespace koben {
namespace {

constexpr qint64 MostWaiting = 64 << 20;  // bytes; nobody fills the disk from the barn
constexpr int MostReadIn = 50;            // files that stay behind those read in
const QString ReadIn = QStringLiteral("eingelesen/"), Draft = QStringLiteral(".neu");
const QString Stamp = QStringLiteral("yyyy-MM-dd_HHmmss");

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// "000012_2026-07-15_140500_192.168.1.23.KO2": number, time, from where.
QString nameOf(int number, const QDateTime& when, const QString& from) {
    return QStringLiteral("%1_%2_%3.KO2").arg(number, 6, 10, QChar(u'0')).arg(when.toString(Stamp), from);
}

QStringList files(const QString& folder) {
    return QDir(folder).entryList({QStringLiteral("*.KO2")}, QDir::Files, QDir::Name);
}

int numberOf(const QStringList& names) { return names.isEmpty() ? 0 : names.last().section(u'_', 0, 0).toInt(); }

}  // namespace

Quittung Empfangsfach::keep(const QByteArray& bytes, const QString& from, const QDateTime& when) {
    const auto file = Geraetedatei::read(bytes);
    if (!file.problem().isEmpty())
        return {0, QStringLiteral("Das ist keine Datei mit Buchungen: %1").arg(file.problem())};
    const auto count = static_cast<int>(file.bookings().size());
    if (count == 0) return {0, QStringLiteral("In der Datei steht keine Buchung.")};
    const std::lock_guard lock(m_mutex);
    qint64 sum = bytes.size();
    const QStringList names = files(m_folder);
    for (const QString& name : names) {
        const QFile file_(m_folder + name);
        if (file_.size() == bytes.size() && contentOf(m_folder + name) == bytes) return {count, {}};
        sum += file_.size();
    }
    if (sum > MostWaiting) return {0, QStringLiteral("Am Rechner liegt schon zu viel. Lesen Sie dort erst ein.")};
    clearFileReason();
    QDir().mkpath(m_folder);
    const int number = std::max(numberOf(names), numberOf(files(m_folder + ReadIn))) + 1;
    const QString path = m_folder + nameOf(number, when, from);
    const QString reason = writeFileThrough(path + Draft, path, bytes);
    if (reason.isEmpty()) return {count, {}};
    return {0, QStringLiteral("Der Rechner kann die Buchungen nicht speichern: %1.").arg(reason)};
}

std::vector<Empfangsfach::Eingang> Empfangsfach::waiting() const {
    std::vector<Eingang> all;
    for (const QString& name : files(m_folder))
        all.push_back({name, QDateTime::fromString(name.section(u'_', 1, 2), Stamp), name.section(u'_', 3).chopped(4)});
    return all;
}

QByteArray Empfangsfach::bytes(const Eingang& entry) const { return contentOf(m_folder + entry.name); }

QString Empfangsfach::offer(const Eingang& entry) {
    const QByteArray offered = bytes(entry);
    if (offered.isEmpty()) return QStringLiteral("die Datei %1 ist nicht mehr da").arg(m_folder + entry.name);
    if (const QString reason = keepOther(offered); !reason.isEmpty()) return reason;
    return writeFileThrough(m_data + DateiVomGeraet + Draft, m_data + DateiVomGeraet, offered);
}

/// The file that the import would read now may have come by cable, and nobody has read it in: it gets a second place,
/// unless it lies here already.
QString Empfangsfach::keepOther(const QByteArray& offered) const {
    const QByteArray other = contentOf(m_data + DateiVomGeraet);
    if (other.isEmpty() || other == offered) return {};
    QStringList known;
    for (const QString& name : files(m_folder)) known += m_folder + name;
    for (const QString& name : files(m_folder + ReadIn)) known += m_folder + ReadIn + name;
    for (const QString& path : known)
        if (contentOf(path) == other) return {};
    QDir().mkpath(m_folder + ReadIn);
    const QString path =
        m_folder + ReadIn +
        nameOf(numberOf(files(m_folder + ReadIn)), QDateTime::currentDateTime(), QStringLiteral("Geraet"));
    return writeFileThrough(path + Draft, path, other);
}

QString Empfangsfach::putAway(const Eingang& entry) {
    const std::lock_guard lock(m_mutex);
    clearFileReason();
    QDir().mkpath(m_folder + ReadIn);
    const QString reason = replaceFile(m_folder + entry.name, m_folder + ReadIn + entry.name);
    thinOut();
    return reason;
}

void Empfangsfach::thinOut() const {
    const QStringList names = files(m_folder + ReadIn);
    for (qsizetype i = 0; i + MostReadIn < names.size(); ++i) QFile::remove(m_folder + ReadIn + names[i]);
}

}  // namespace koben
