#include "ui/SampleVisit.h"

#include "core/Einstellungen.h"
#include "core/Konfig.h"
#include "forms/Koben.h"
#include "ui/FormWindow.h"
#include "ui/WindowScreens.h"

namespace koben::ui {

namespace {

/// The settings that a visit begins with: those of a new installation, and on every sheet where it comes from.
void writeSettings(const QString& folder, QDate today) {
    Variablen v;
    v.Datenordner = folder;
    Einstellungen_vorgeben(v, today.year());
    v.Konfig_Text[Text::Berichtskopf] = QStringLiteral("Musterbetrieb");
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
    const SampleFolder place(own.platform.userFolder());
    const QDate today = own.platform.now().date();
    {
        const WaitCursor wait(own);
        screens.sample.make(place.data() + QStringLiteral("koben2.mdb"), today);
        writeSettings(place.data(), today);
    }
    SamplePlatform platform(own.platform, place, [&screens](const QString& preset) {
        return screens.saveFile(QStringLiteral("PDF-Dateien|*.PDF"), preset);
    });
    Koben visit(screens, platform, *screens.sample.forms);
    const Aside aside(screens);
    visit.run(*visit.catalogue.make(QStringLiteral("PA_Koben"), visit));
}

}  // namespace koben::ui
