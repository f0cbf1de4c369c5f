#include "ui/SampleFarm.h"

#include <QDir>

#include "forms/Koben.h"

namespace koben::ui {

namespace {

const QString Stem = QStringLiteral("Musterbetrieb-");

}  // namespace

SampleFolder::SampleFolder(const QString& userFolder)
    : m_folder(QDir().mkpath(userFolder) ? userFolder + Stem + QStringLiteral("XXXXXX") : QString()) {
    if (m_folder.isValid() && QDir(m_folder.path()).mkpath(QStringLiteral("daten")) &&
        QDir(m_folder.path()).mkpath(QStringLiteral("nutzer")) && m_lock.nehmen(m_folder.path()))
        return;
    throw DatabaseError(DatabaseError::Kind::Io,
                        QStringLiteral("Im Ordner \"%1\" kann nicht geschrieben werden. Bitte prüfen Sie, ob auf dem "
                                       "Datenträger noch Platz ist und ob Sie dort Schreibrechte haben.")
                            .arg(QDir::toNativeSeparators(userFolder)));
}

SamplePlatform::SamplePlatform(Platform& own, const SampleFolder& folder,
                               std::function<QString(const QString&)> choosePdf)
    : SystemPlatform(std::move(choosePdf)), m_own(own), m_folder(folder) {
    server.clear();
}

QString SamplePlatform::userSetting(const QString& section, const QString& key) {
    const auto set = m_set.find(section + u'/' + key);
    return set == m_set.end() ? m_own.userSetting(section, key) : set->second;
}

void SamplePlatform::setUserSetting(const QString& section, const QString& key, const QString& value) {
    m_set[section + u'/' + key] = value;
}

void removeLeftSampleFarms(const QString& userFolder) {
    const QDir folder(userFolder);
    for (const QString& name : folder.entryList({Stem + u'*'}, QDir::Dirs | QDir::NoSymLinks)) {
        QDir left(folder.filePath(name));
        Ordnersperre lock;
        if (lock.nehmen(left.path())) left.removeRecursively();
    }
}

bool isSampleFarm(const Form& form) { return dynamic_cast<const SamplePlatform*>(&form.koben.platform); }

QString windowTitle(const Form& form) {
    return isSampleFarm(form) ? form.caption() + QStringLiteral(" - Musterbetrieb, nichts davon bleibt")
                              : form.caption();
}

}  // namespace koben::ui
