#include "forms/RunState.h"

#include <QCryptographicHash>
#include <QDir>

namespace koben {

namespace {

const QString Day = QStringLiteral("Tag");
const QString Running = QStringLiteral("Laeuft");

/// Folders have signs that a settings file does not bear in its headings.
QString sectionOf(const QString& folder) {
    const QByteArray path = QDir::cleanPath(QDir(folder).absolutePath()).toUtf8();
    const QByteArray hash = QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex().left(12);
    return QStringLiteral("Lauf_") + QString::fromLatin1(hash);
}

}  // namespace

RunState::RunState(Platform& platform, const QString& dataFolder)
    : m_platform(platform), m_section(sectionOf(dataFolder)) {}

QDate RunState::lastDay() const { return QDate::fromString(get(Day), Qt::ISODate); }

void RunState::setLastDay(QDate day) { set(Day, day.toString(Qt::ISODate)); }

bool RunState::running() const { return get(Running) == u"1"; }

void RunState::setRunning(bool on) { set(Running, on ? QStringLiteral("1") : QString()); }

}  // namespace koben
