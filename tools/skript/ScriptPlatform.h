#pragma once
// The machine of a scripted run: its own folders, clock, printer, settings and update server.
#include <QTemporaryDir>
#include <map>
#include <optional>

#include "core/Ordnersperre.h"
#include "forms/Ports.h"
#include "tools/skript/PrintedJob.h"
#include "tools/skript/Transcript.h"

namespace koben::skript {

class ScriptPlatform final : public Platform {
public:
    explicit ScriptPlatform(Transcript& transcript) : m_transcript(transcript) {}

    // what the script sets up
    void fixClock(QDate day) { m_today = day; }
    void useFolder(const QString& path);
    void answerFrom(const QString& path, const QString& file) { m_net[path] = file; }
    void disconnect() { m_net.clear(); }
    /// A stick of this volume name whose files lie in a folder; "" pulls it out.
    void plugIn(const QString& name, const QString& folder);
    void releaseDataFolder() { m_lock.loslassen(); }
    const std::optional<PrintedJob>& lastJob() const { return m_lastJob; }
    /// A file that the script names: absolute, in the data folder, or, where only that exists, as seen from here.
    QString pathOf(const QString& name);

    QDateTime now() override;
    QStringList printers() override { return {QStringLiteral("PDF-Datei")}; }
    QStringList fonts() override;
    std::unique_ptr<PrintJob> print(const QString& printer, bool landscape) override;
    bool open(const QString& fileOrAddress) override;
    bool start(const QString& command) override;
    WebAnswer httpGet(const QString& path, qint64 most, const WebProgress& go) override;
    WebAnswer download(const QString& path, const QString& file, qint64 most, const WebProgress& go) override;
    QList<Drive> drives() override;
    QString userSetting(const QString& section, const QString& key) override;
    void setUserSetting(const QString& section, const QString& key, const QString& value) override;
    QString userFolder() override { return temporary(QStringLiteral("benutzer")); }
    QString programFolder() override;
    QString dataFolder() override;
    bool lockDataFolder(const QString& folder) override;

private:
    QString temporary(const QString& name);
    QString withoutFolders(QString text);

    Transcript& m_transcript;
    std::optional<QTemporaryDir> m_temporary;
    QString m_dataFolder, m_programFolder;  ///< with a separator at the end; "" until asked for
    QDate m_today;                          ///< invalid: the machine's clock runs
    std::map<QString, QString> m_net;       ///< path -> file with the answer; empty is no connection
    std::map<QString, QString> m_sticks;    ///< volume name -> folder
    std::map<QString, QString> m_settings;
    std::optional<PrintedJob> m_lastJob;
    Ordnersperre m_lock;
};

}  // namespace koben::skript
