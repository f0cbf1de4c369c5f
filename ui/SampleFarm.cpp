#include "ui/SampleFarm.h"

#include <QDir>

#include "forms/Koben.h"

namespace koben::ui {

namespace {

const QString Stem = QStringLiteral("Musterbetrieb-");

}  // namespace

SampleFolder::SampleFolder(const QString& userFolder) : m_folder(userFolder, Stem) {
    for (const QString& part : {data(), user()}) QDir().mkpath(part);
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

void removeLeftSampleFarms(const QString& userFolder) { PrivateFolder::removeLeft(userFolder, Stem); }

bool isSampleFarm(const Form& form) { return dynamic_cast<const SamplePlatform*>(&form.koben.platform); }

QString windowTitle(const Form& form) {
    return isSampleFarm(form) ? form.caption() + QStringLiteral(" - Musterbetrieb, nichts davon bleibt")
                              : form.caption();
}

}  // namespace koben::ui
