#pragma once
// The sample farm: a made herd in a folder of its own, which goes when the visit ends, and the machine as a visit has
// it. Settings, widths and places that the visitor changes stay in memory. Nothing of it reaches the user's data, and
// what the program does with other places of the machine (backups, devices, files to import) is not on offer there.
#include <functional>
#include <map>

#include "core/PrivateFolder.h"
#include "ui/SystemPlatform.h"

namespace koben {

class Catalogue;
class Form;

namespace ui {

/// What the program lends to a visit. Without `make` there is none.
struct SampleFarm {
    const Catalogue* forms = nullptr;  ///< those that work on the herd alone
    /// Makes the database, with bookings up to this day; throws DatabaseError.
    std::function<void(const QString& path, QDate today)> make = {};
};

/// The folder of one visit. Throws DatabaseError where it cannot be made.
class SampleFolder {
public:
    explicit SampleFolder(const QString& userFolder);
    QString data() const { return m_folder.file(QStringLiteral("daten/")); }
    QString user() const { return m_folder.file(QStringLiteral("nutzer/")); }

private:
    PrivateFolder m_folder;
};

/// The machine as a visit has it. What the user has set for her windows holds there too; what is set there is
/// forgotten.
class SamplePlatform final : public SystemPlatform {
public:
    SamplePlatform(Platform& own, const SampleFolder& folder, std::function<QString(const QString&)> choosePdf);
    QDateTime now() override { return m_own.now(); }
    QStringList printers() override { return m_own.printers(); }
    bool start(const QString&) override { return false; }
    QString userSetting(const QString& section, const QString& key) override;
    void setUserSetting(const QString& section, const QString& key, const QString& value) override;
    QString userFolder() override { return m_folder.user(); }
    QString dataFolder() override { return m_folder.data(); }

private:
    Platform& m_own;
    const SampleFolder& m_folder;
    std::map<QString, QString> m_set;
};

/// Removes what visits have left whose program was killed; those of other running programs stay.
void removeLeftSampleFarms(const QString& userFolder);

/// Whether a form belongs to a visit.
bool isSampleFarm(const Form& form);
/// A form's caption as its window bears it.
QString windowTitle(const Form& form);

}  // namespace ui
}  // namespace koben
