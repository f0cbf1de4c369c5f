#pragma once
// What the machine does, on a desktop.
#include <QSettings>
#include <QUrl>
#include <functional>
#include <memory>

#include "core/Ordnersperre.h"
#include "core/Version.h"
#include "forms/Ports.h"

namespace koben::ui {

/// The name under which a document goes into a file instead of onto paper.
extern const QString pdfPrinter;

class SystemPlatform : public Platform {
public:
    /// `choosePdf` asks for the file of a PDF, given a preset; "" for none.
    explicit SystemPlatform(std::function<QString(const QString& preset)> choosePdf);
    ~SystemPlatform() override;

    QDateTime now() override;
    QStringList printers() override;
    QStringList fonts() override;
    std::unique_ptr<PrintJob> print(const QString& printer, bool landscape) override;
    bool writePdf(const Drawing& document, const QString& path) override;
    bool writePng(const Sketch& sketch, const QString& path) override;
    void copyPicture(const Sketch& sketch) override;
    void copyCells(const Grid& list) override;
    QString pasted() override;
    bool open(const QString& fileOrAddress) override;
    bool start(const QString& command) override;
    WebAnswer httpGet(const QString& path, qint64 most, const WebProgress& go) override;
    WebAnswer download(const QString& path, const QString& file, qint64 most, const WebProgress& go) override;
    QList<Drive> drives() override;
    QString userSetting(const QString& section, const QString& key) override;
    void setUserSetting(const QString& section, const QString& key, const QString& value) override;
    QString userFolder() override;
    QString programFolder() override;
    QString dataFolder() override;
    bool lockDataFolder(const QString& folder) override;

    QString printTrouble;             ///< why the last print did not come, in the user's words; "" once it was told
    QString refused;                  ///< the file or address that the system would not open last; "" where it did
    QString server = Update::Server;  ///< of updates
    int serverSilence = 10'000;       ///< milliseconds without a byte after which the server counts as gone

private:
    QUrl onServer(const QString& path) const;

    std::function<QString(const QString&)> m_choosePdf;
    QSettings m_settings;
    Ordnersperre m_lock;
};

}  // namespace koben::ui
