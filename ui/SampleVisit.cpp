#include "ui/SampleVisit.h"

#include <QDir>
#include <QTemporaryDir>
#include <map>

#include "core/Einstellungen.h"
#include "core/Konfig.h"
#include "core/Ordnersperre.h"
#include "forms/Koben.h"
#include "ui/FormWindow.h"
#include "ui/SystemPlatform.h"
#include "ui/WindowScreens.h"

namespace koben::ui {

namespace {

const QString Stem = QStringLiteral("Musterbetrieb-");
const QString Name = QStringLiteral("Musterbetrieb");

/// The folder of one visit. Its lock tells it from one that a killed program has left.
class VisitFolder {
public:
    explicit VisitFolder(const QString& userFolder)
        : m_folder(QDir().mkpath(userFolder) ? userFolder + Stem + QStringLiteral("XXXXXX") : QString()) {
        if (m_folder.isValid() && QDir(m_folder.path()).mkpath(QStringLiteral("daten")) &&
            QDir(m_folder.path()).mkpath(QStringLiteral("nutzer")) && m_lock.nehmen(m_folder.path()))
            return;
        throw DatabaseError(DatabaseError::Kind::Io,
                            QStringLiteral("Im Ordner \"%1\" kann nicht geschrieben werden. Bitte prüfen Sie, ob auf "
                                           "dem Datenträger noch Platz ist und ob Sie dort Schreibrechte haben.")
                                .arg(QDir::toNativeSeparators(userFolder)));
    }
    QString data() const { return m_folder.filePath(QStringLiteral("daten/")); }
    QString user() const { return m_folder.filePath(QStringLiteral("nutzer/")); }

private:
    QTemporaryDir m_folder;
    Ordnersperre m_lock;
};

/// The machine as a visit has it. What the user has set for her windows holds there too; what is set there is
/// forgotten.
class SamplePlatform final : public SystemPlatform, public SampleMachine {
public:
    SamplePlatform(Platform& own, const VisitFolder& place, WindowScreens& screens)
        : SystemPlatform([&screens](const QString& preset) {
              return screens.saveFile(QStringLiteral("PDF-Dateien|*.PDF"), preset);
          }),
          m_own(own),
          m_place(place) {
        server.clear();
    }
    QDateTime now() override { return m_own.now(); }
    QStringList printers() override { return m_own.printers(); }
    bool start(const QString&) override { return false; }
    QString userSetting(const QString& section, const QString& key) override {
        const auto set = m_set.find(section + u'/' + key);
        return set == m_set.end() ? m_own.userSetting(section, key) : set->second;
    }
    void setUserSetting(const QString& section, const QString& key, const QString& value) override {
        m_set[section + u'/' + key] = value;
    }
    QString userFolder() override { return m_place.user(); }
    QString dataFolder() override { return m_place.data(); }

private:
    Platform& m_own;
    const VisitFolder& m_place;
    std::map<QString, QString> m_set;
};

/// The settings that a visit begins with: those of a new installation, and on every sheet where it comes from.
void writeSettings(const QString& folder, QDate today) {
    Variablen v;
    v.Datenordner = folder;
    Einstellungen_vorgeben(v, today.year());
    v.Konfig_Text[Text::Berichtskopf] = Name;
    Einstellungen_sichern(v);  // a visit does without, too
}

/// The windows that stand, out of sight for as long as this lives.
class Aside {
public:
    explicit Aside(WindowScreens& screens) : m_window(screens.front()) {
        if (m_window) m_window->hide();
    }
    ~Aside() {
        if (!m_window) return;
        m_window->show();
        m_window->activateWindow();
    }
    Aside(const Aside&) = delete;
    Aside& operator=(const Aside&) = delete;

private:
    FormWindow* m_window;
};

}  // namespace

void visitSampleFarm(Koben& own, WindowScreens& screens) {
    if (!screens.sample.make || !screens.sample.forms) return;
    const VisitFolder place(own.platform.userFolder());
    const QDate today = own.platform.now().date();
    {
        const WaitCursor wait(own);
        screens.sample.make(place.data() + QStringLiteral("koben2.mdb"), today);
        writeSettings(place.data(), today);
    }
    SamplePlatform platform(own.platform, place, screens);
    Koben visit(screens, platform, *screens.sample.forms);
    const Aside aside(screens);
    visit.run(*visit.catalogue.make(QStringLiteral("PA_Koben"), visit));
}

void removeLeftSampleFarms(const QString& userFolder) {
    const QDir folder(userFolder);
    for (const QString& name : folder.entryList({Stem + u'*'}, QDir::Dirs | QDir::NoSymLinks)) {
        QDir left(folder.filePath(name));
        Ordnersperre lock;
        if (lock.nehmen(left.path())) left.removeRecursively();
    }
}

}  // namespace koben::ui
