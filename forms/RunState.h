#pragma once
// What this user's machine remembers of the last run on a data folder: in the user's own settings, so that the folder
// can be compared with it.
#include "forms/Ports.h"

namespace koben {

class RunState {
public:
    RunState(Platform& platform, const QString& dataFolder);

    /// "" where nothing is remembered.
    QString get(const QString& key) const { return m_platform.userSetting(m_section, key); }
    void set(const QString& key, const QString& value) { m_platform.setUserSetting(m_section, key, value); }

    /// The folder's name in the user's own files.
    QString name() const { return m_section; }
    /// The day of the last start on this folder; invalid before the first.
    QDate lastDay() const;
    void setLastDay(QDate day);
    /// True from a start until the end of that run.
    bool running() const;
    void setRunning(bool on);

private:
    Platform& m_platform;
    QString m_section;
};

}  // namespace koben
