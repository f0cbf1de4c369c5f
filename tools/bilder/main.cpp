// koben-bilder [folder [variant]]: opens every window of the program on a made herd, without a screen, and writes a
// picture of each in light and dark, at 100, 150 and 200 percent and with large letters. The folder is "bilder" in the
// current one unless told; a variant is one of those below.
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <cstdio>
#include <map>
#include <string_view>

#include "analytics/PB_Deckungsbeitrag.h"
#include "analytics/PB_Gruppierungen.h"
#include "analytics/PB_Statistiken.h"
#include "app/Katalog.h"
#include "app/Musterbetrieb.h"
#include "bookings/Ferkelliste.h"
#include "bookings/PE_Bewegungsdaten.h"
#include "exchange/PO_Update.h"
#include "exchange/S_Datensicherung_neu.h"
#include "figures/PA_Grafiken.h"
#include "forms/Stammdaten.h"
#include "herd/PA_Koben.h"
#include "herd/PB_Neues_Schwein.h"
#include "order/PO_Bestellschein.h"
#include "output/PA_Zwischenliste.h"
#include "plans/PB_Arbeitsplan.h"
#include "tools/altdatei/OldFileWriter.h"
#include "tools/herdengenerator/Output.h"
#include "ui/Application.h"
#include "ui/FormWindow.h"
#include "ui/GridView.h"
#include "ui/Look.h"
#include "ui/SystemPlatform.h"
#include "ui/WindowScreens.h"

using namespace koben;

namespace {

const QDate today(2026, 7, 15);

/// A screen as farms have it, how much it enlarges, and how large the desktop's letters are.
struct Variant {
    const char* name;
    const char* shade;
    const char* scale;
    int points;  ///< 0 for the desktop's own
    int width, height;
};
const Variant Variants[] = {{"hell_1", "hell", "1", 0, 1366, 768},      {"hell_15", "hell", "1.5", 0, 1366, 768},
                            {"hell_2", "hell", "2", 0, 1920, 1080},     {"hell_14pt", "hell", "1", 14, 1366, 768},
                            {"dunkel_1", "dunkel", "1", 0, 1366, 768},  {"dunkel_15", "dunkel", "1.5", 0, 1366, 768},
                            {"dunkel_2", "dunkel", "2", 0, 1920, 1080}, {"dunkel_14pt", "dunkel", "1", 14, 1366, 768}};

/// Forms that the main form opens and that need nothing prepared.
const char* const plainForms[] = {"PB_Neues_Schwein",
                                  "PB_Verkauf_Ferkel",
                                  "PB_Verluste_Ferkel",
                                  "PB_Verkauf_Schweine",
                                  "PA_Tagesblick",
                                  "PA_Kennzahlen",
                                  "PA_Grafiken",
                                  "PB_Sauenkarte",
                                  "PB_Sauenkarte_gezeichnet",
                                  "PB_Tierinformation_Schweine",
                                  "PB_Tierinformation_Buchungen",
                                  "PB_Arbeitsplan",
                                  "PB_Bestand",
                                  "PB_Bestandsregister",
                                  "PB_Deckungsbeitrag",
                                  "PB_Statusplan",
                                  "PB_Wartezeiten",
                                  "PB_Statistiken",
                                  "PB_Gruppierungen",
                                  "PB_Logiktest",
                                  "PB_Lebenslauf",
                                  "PA_Verlauf",
                                  "PA_Prüfung",
                                  "PB_Selektieren",
                                  "PB_Stallnr",
                                  "PV_Bestandsdaten",
                                  "PV_Arbeitsplandaten",
                                  "PV_Medizin",
                                  "PV_Stichworte",
                                  "PV_Termine",
                                  "PO_Einstellungen",
                                  "S_Datensicherung_neu",
                                  "S_Importtabelle",
                                  "PO_Pocketexport",
                                  "PO_Pocketimport",
                                  "PO_Hausnetz",
                                  "PO_Vorschau",
                                  "PE_Schnellliste",
                                  "HV_Updatemanager",
                                  "PO_Bestellschein",
                                  "PH_Hilfe"};

/// A machine of its own: a folder of the run, a fixed day, nothing kept, nothing started.
class PicturePlatform final : public ui::SystemPlatform {
public:
    explicit PicturePlatform(const QString& folder)
        : SystemPlatform([](const QString&) { return QString(); }), m_folder(folder) {}
    QDateTime now() override { return today.startOfDay(); }
    bool open(const QString&) override { return true; }
    bool start(const QString&) override { return true; }
    WebAnswer httpGet(const QString&, qint64, const WebProgress&) override {
        return {WebAnswer::Result::Read,
                QStringLiteral("KOBEN - Der Sauenplaner\nStand 15.07.2026\n9.0.2: Datensicherungen werden geprüft\n"
                               ": und lassen sich vor dem Zurückholen ansehen\n9.0.1: Listen\n2.0.59: Statusplan\n")
                    .toUtf8()};
    }
    WebAnswer download(const QString&, const QString&, qint64, const WebProgress&) override { return {}; }
    QList<Drive> drives() override {
        constexpr qint64 gigabyte = 1'000'000'000;
        return {{QStringLiteral("/"), {}, 180 * gigabyte, 500 * gigabyte},
                {QStringLiteral("/media/TAMRO_ROT/"), QStringLiteral("TAMRO_ROT"), 12 * gigabyte, 16 * gigabyte}};
    }
    QString userSetting(const QString& section, const QString& key) override { return m_settings[section + key]; }
    void setUserSetting(const QString& section, const QString& key, const QString& value) override {
        m_settings[section + key] = value;
    }
    QString dataFolder() override { return m_folder; }
    bool lockDataFolder(const QString&) override { return true; }

private:
    QString m_folder;
    std::map<QString, QString> m_settings;
};

/// Takes each window's picture as it opens, opens what opens from there, and closes it.
class Photographer final : public ui::WindowScreens {
public:
    Photographer(const QString& folder, const QString& variant) : m_folder(folder), m_variant(variant) {}
    void message(const QString& text) override { told(text); }
    bool yesNo(const QString& text, bool) override { return told(text), true; }
    bool okCancel(const QString& text) override { return told(text), true; }
    QString input(const QString& prompt, const QString& preset, const QString&) override {
        return told(prompt), preset;
    }
    QString openFile(const QString&) override { return {}; }
    QString saveFile(const QString&, const QString&) override { return {}; }
    QString folder(const QString&) override { return {}; }
    void breathe() override {}

    void run(Form& form) override {
        const ui::OrdinaryCursor cursor;
        windowOf(form)->present();
        // a list bears the name of the window that it came from
        const Form* behind =
            form.koben.stack().size() > 1 ? form.koben.stack()[form.koben.stack().size() - 2] : nullptr;
        auto* list = dynamic_cast<PA_Zwischenliste*>(&form);
        take(form, m_empty          ? QStringLiteral("PA_Koben_leer")
                   : list && behind ? form.name() + u'_' + behind->name()
                                    : form.name());
        turnPages(form);
        if (form.closed()) return;
        if (m_empty) return form.close();
        if (auto* herd = dynamic_cast<PA_Koben*>(&form)) visitFrom(*herd);
        if (auto* frame = dynamic_cast<PE_Bewegungsdaten*>(&form)) visitFrom(*frame);
        if (auto* records = dynamic_cast<Stammdatenliste*>(&form)) records->neu.click();
        if (auto* piglets = dynamic_cast<Ferkelliste*>(&form)) piglets->neu.click();
        if (auto* order = dynamic_cast<PO_Bestellschein*>(&form)) fill(*order);
        if (auto* plan = dynamic_cast<PB_Arbeitsplan*>(&form)) plan->ok[0].click();
        if (auto* statistics = dynamic_cast<PB_Statistiken*>(&form)) statistics->ok[0].click();
        if (auto* margin = dynamic_cast<PB_Deckungsbeitrag*>(&form)) {
            for (auto& year : margin->t) year->setText(QStringLiteral("2026"));
            margin->ok.click();
        }
        if (auto* groups = dynamic_cast<PB_Gruppierungen*>(&form)) {
            groups->auswertungok[0].click();
            take(form, form.name() + QStringLiteral("_Ergebnis"));
        }
        if (auto* plots = dynamic_cast<PA_Grafiken*>(&form)) turn(*plots);
        if (auto* animal = dynamic_cast<PB_Neues_Schwein*>(&form); animal && animal->comlebenslauf.visible()) {
            take(form, form.name() + QStringLiteral("_Aendern"));
            animal->t[3].setText(QStringLiteral("hinkt"));
            animal->ok.click();
            return;
        }
        if (list && list->gridli.explain) explain(list->gridli);
        if (auto* backup = dynamic_cast<S_Datensicherung_neu*>(&form)) {
            backup->kon_backupkonzept.setChecked(true);
            backup->start_sicherung.click();
            take(form, form.name() + QStringLiteral("_Stick"));
        }
        if (auto* update = dynamic_cast<PO_Update*>(&form)) {
            update->pfad.type(form.koben.Datenordner + QStringLiteral("koben1"));
            update->pfad.leave();
            take(form, form.name() + QStringLiteral("_Gefunden"));
            update->start.click();
            take(form, form.name() + QStringLiteral("_Fertig"));
        }
        form.close();
    }
    int pictures() const { return m_pictures; }
    /// The program before its first animal.
    void showEmpty(bool on) { m_empty = on; }

private:
    void told(const QString& text) {
        std::printf("%s: %s\n", front() ? qUtf8Printable(front()->form().name()) : "-",
                    qUtf8Printable(text.simplified().left(100)));
    }

    void take(const Form& form, QString name) {
        ui::FormWindow* window = windowOf(form);
        for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
        for (const auto* control : window->leftOver())
            std::printf("%s: %s hat keinen Platz im Layout\n", qUtf8Printable(name),
                        qUtf8Printable(control->address()));
        name.replace(QStringLiteral("ä"), QStringLiteral("ae")).replace(QStringLiteral("ü"), QStringLiteral("ue"));
        const QString path = QStringLiteral("%1/%2_%3.png").arg(m_folder, name, m_variant);
        if (window->grab().save(path)) ++m_pictures;
    }

    void turnPages(Form& form) {
        for (QTabWidget* pages : windowOf(form)->findChildren<QTabWidget*>()) {
            for (int page = 1; page < pages->count(); ++page) {
                pages->setCurrentIndex(page);
                take(form, QStringLiteral("%1_%2").arg(form.name()).arg(page + 1));
            }
            pages->setCurrentIndex(0);
        }
    }

    void turn(PA_Grafiken& plots) {
        for (int plot = 1; plot < plots.li.items().size(); ++plot) {
            plots.li.choose(plot);
            take(plots, plots.name() + u'_' + plots.li.items()[plot]);
        }
    }

    static void fill(PO_Bestellschein& order) {
        const char* const customer[] = {"4711", "Hof Böhm", "Erika Böhm", "Dorfstraße 4", "12345", "Neudorf"};
        for (int i = 0; i < 6; ++i) order.t[i].type(QString::fromUtf8(customer[i]));
        for (const int row : {3, 7, 9}) {
            order.li.choose(row);
            for (int n = 0; n < row; ++n) order.UpDown.up();
        }
        order.ok.click();
    }

    /// Where the last figure of the first row comes from.
    void explain(Grid& list) {
        auto* view = dynamic_cast<ui::GridView*>(windowOf(list.form())->widgetOf(list));
        if (list.row() == 0) list.setRow(1);
        view->flush();
        view->selectionModel()->setCurrentIndex(view->QTableView::model()->index(0, list.columnCount() - 1),
                                                QItemSelectionModel::NoUpdate);
        view->explainCurrent();
    }

    void visitFrom(PA_Koben& herd) {
        herd.cmdok.click();
        take(herd, QStringLiteral("PA_Koben_Tier"));
        herd.optianzeige[1].click();
        take(herd, QStringLiteral("PA_Koben_Sauen"));
        herd.comdrucken.click();
        Koben& koben = herd.koben;
        change(herd);
        lookBack(herd);
        for (const char* name : plainForms) {
            koben.Buchungsmodus = QStringLiteral("Neu");
            koben.open(QString::fromUtf8(name));
            herd.settle();
        }
        koben.open(QStringLiteral("PE_Bewegungsdaten"));
        koben.open(QStringLiteral("PO_Update"));  // replaces the herd
    }

    /// Something for the history, the life story and the check to tell.
    static void change(PA_Koben& herd) {
        herd.koben.Buchungsmodus = QStringLiteral("Ändern");
        herd.koben.open(QStringLiteral("PB_Neues_Schwein"));
        herd.settle();
        for (const char* sql : {"update Sauen set Infos = 'von fremder Hand' where Infos = 'hinkt'",
                                "update Sauen set Anz_Belegungen = 99 where ID = 3"})
            herd.koben.Hauptdatenbank.execute(QString::fromUtf8(sql));
    }

    void lookBack(PA_Koben& herd) {
        herd.Stand_zeigen(QStringLiteral("01.05.2026"));
        take(herd, QStringLiteral("PA_Koben_Stand"));
        herd.Stand_zeigen(QStringLiteral("heute"));
    }

    void visitFrom(PE_Bewegungsdaten& frame) {
        for (int kind = 0; kind < 8; ++kind) {
            frame.opti[kind].click();
            frame.koben.Buchungsmodus = frame.li.rowCount() > 0 ? QStringLiteral("Ändern") : QStringLiteral("Neu");
            frame.koben.open(QString::fromUtf8(Buchungsarten[kind].screen));
        }
    }

    QString m_folder, m_variant;
    int m_pictures = 0;
    bool m_empty = false;
};

/// An installation of the predecessor, with a few animals.
void installPredecessor(const QString& folder) {
    OldFileWriter old(3);
    old.program();
    for (int i = 1; i <= 30; ++i) {
        old.row(QStringLiteral("Sauen"), {{QStringLiteral("Art"), "Sau"},
                                          {QStringLiteral("Nummer"), QString::number(100 + i)},
                                          {QStringLiteral("Stallnr"), QStringLiteral("A%1").arg(i % 7)}});
        old.row(QStringLiteral("Belegung"), {{QStringLiteral("Kennung"), i % 31},
                                             {QStringLiteral("Datum"), 46000.25 + i},
                                             {QStringLiteral("Ebernr"), "E1"}});
    }
    QDir().mkpath(folder);
    for (const auto& [name, bytes] : {std::pair{"koben.mdb", old.bytes()}, std::pair{"koben.exe", QByteArray("x")}}) {
        QFile file(folder + u'/' + QString::fromLatin1(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) < 0) std::printf("%s fehlt\n", name);
    }
}

/// What a telephone has booked: new, doubled and unknown.
void bringFromDevice(const QString& folder) {
    QFile file(folder + QStringLiteral("/KOBEN2_DATEN_VON_POCKET.KO2"));
    const QByteArray lines =
        "4\r\n1\t13.07.2026\tE7\t1\tK\t\t12,50\t\t\tN\r\n2\t13.07.2026\tE7\t1\tK\t\t0\t\t\tN\r\n"
        "2\t13.07.2026\tE8\t1\tK\t\t0\t\t\tN\r\n4711\t13.07.2026\tE7\t1\tK\t\t0\t\t\tN\r\n"
        "0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n";
    if (!file.open(QIODevice::WriteOnly) || file.write(lines) < 0)
        std::printf("%s fehlt\n", qPrintable(file.fileName()));
}

/// One run in this process, in the environment of its variant.
int photograph(int argc, char** argv, const QString& folder, const Variant& variant) {
    ui::Application application(argc, argv);
    if (variant.points > 0) {
        QFont font = application.font();
        font.setPointSize(variant.points);
        application.setFont(font);
    }
    ui::applyLook(application, std::string_view(variant.shade) == "dunkel" ? ui::Shade::Dark : ui::Shade::Light);
    Photographer screens(folder, QString::fromLatin1(variant.name));
    screens.sample = {&musterkatalog(), Musterbetrieb_anlegen};
    const auto show = [&screens](const QString& place) {
        PicturePlatform platform(place);
        Koben koben(screens, platform, katalog());
        const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
        koben.run(*main);
    };
    const QTemporaryDir data;
    screens.showEmpty(true);
    show(data.filePath(QStringLiteral("leer/")));
    screens.showEmpty(false);
    Vorgaben herd;
    herd.sauen = 60;
    herd.ende = today;
    writeDatabase(makeHerde(herd), data.filePath(QStringLiteral("koben2.mdb")));
    installPredecessor(data.filePath(QStringLiteral("koben1")));
    bringFromDevice(data.path());
    show(data.path() + u'/');
    std::printf("%s: %d Bilder\n", variant.name, screens.pictures());
    return screens.pictures() > 0 ? 0 : 1;
}

/// The variant in a process of its own: scale and screen are settled when a program starts.
bool start(const char* program, const QString& folder, const Variant& variant) {
    QTemporaryFile screen;
    if (!screen.open()) return false;
    screen.write(QStringLiteral(R"({"screens":[{"name":"Bild","x":0,"y":0,"width":%1,"height":%2,"logicalDpi":96,)"
                                R"("logicalBaseDpi":96,"dpr":1}]})")
                     .arg(variant.width)
                     .arg(variant.height)
                     .toLatin1());
    screen.close();
    QProcess run;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen:configfile=") + screen.fileName());
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromLatin1(variant.scale));
    run.setProcessEnvironment(environment);
    run.setProcessChannelMode(QProcess::ForwardedChannels);
    run.start(QString::fromLocal8Bit(program), {folder, QString::fromLatin1(variant.name), QStringLiteral("hier")});
    run.waitForFinished(-1);
    return run.exitStatus() == QProcess::NormalExit && run.exitCode() == 0;
}

}  // namespace

int main(int argc, char** argv) {
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("bilder");
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "Der Ordner %s kann nicht angelegt werden.\n", qUtf8Printable(folder));
        return 1;
    }
    int failed = 0;
    for (const Variant& variant : Variants) {
        if (argc > 2 && std::string_view(argv[2]) != variant.name) continue;
        if (argc > 3) return photograph(argc, argv, folder, variant);
        failed += !start(argv[0], folder, variant);
    }
    return failed == 0 ? 0 : 1;
}
