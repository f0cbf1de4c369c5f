// The first start of an empty program, and the visit to the sample farm: nothing of it stays.
#include <QDirIterator>
#include <QPushButton>
#include <QTemporaryDir>

#include "app/Katalog.h"
#include "app/Musterbetrieb.h"
#include "herd/PA_Koben.h"
#include "herd/PB_Neues_Schwein.h"
#include "store/DatabaseError.h"
#include "tests/ui/Fensterpruefung.h"
#include "tests/ui/Support.h"
#include "ui/Bound.h"
#include "ui/SampleVisit.h"

namespace koben::ui {
namespace {

struct MusterbetriebTest : testing::Test {
    QTemporaryDir place;
    TestScreens screens;
    TestPlatform platform;
    Koben own{screens, platform, katalog()};
    MusterbetriebTest() {
        platform.folder = place.filePath("daten/");
        platform.user = place.filePath("nutzer/");
        screens.sample = {&musterkatalog(), Musterbetrieb_anlegen};
    }
    /// Starts the program on its empty folder; `first` works its main form, `other` all that opens from there.
    void start(const std::function<void(PA_Koben&)>& first, const std::function<void(Form&)>& other) {
        screens.hand = [&](Form& form) {
            auto* main = dynamic_cast<PA_Koben*>(&form);
            QApplication::processEvents();
            main&&& form.koben == &own ? first(*main) : other(form);
        };
        const auto main = katalog().make(QStringLiteral("PA_Koben"), own);
        own.run(*main);
    }
    QPushButton* button(const Form& form, const QString& caption) {
        for (QPushButton* each : screens.windowOf(form)->findChildren<QPushButton*>())
            if (plainCaption(each->text()).startsWith(caption) && each->isVisible()) return each;
        return nullptr;
    }
    void expectFine(const Form& form) {
        FormWindow& window = *screens.windowOf(form);
        expectUncut(window);
        expectLetters(window);
        expectContrast(window);
    }
    std::map<QString, QString> kept() {
        std::erase_if(platform.settings, [](const auto& setting) { return setting.second.isEmpty(); });
        return platform.settings;
    }
    /// All files below the places of the user's, with what they hold.
    QStringList files() const {
        QStringList all;
        for (QDirIterator walk(place.path(), QDir::Files, QDirIterator::Subdirectories); walk.hasNext();) {
            QFile file(walk.next());
            if (file.open(QIODevice::ReadOnly))
                all += file.fileName() + u' ' + QString::fromLatin1(file.readAll().toHex().right(2000));
        }
        all.sort();
        return all;
    }
};

TEST_F(MusterbetriebTest, DreiWegeBisZumErstenTier) {
    start(
        [&](PA_Koben& main) {
            const QWidget* list = screens.windowOf(main)->widgetOf(main.datali);
            EXPECT_FALSE(list->isVisible());
            expectFine(main);
            EXPECT_EQ(screens.told.size(), 1) << "the hint of a first start, and nothing else";
            EXPECT_TRUE(button(main, "Bestand aus einer Datei") && button(main, "Musterbetrieb"));
            ASSERT_TRUE(button(main, "Erste Tiere"));
            button(main, "Erste Tiere")->click();
            main.settle();
            QApplication::processEvents();
            EXPECT_EQ(main.datali.rowCount(), 1);
            EXPECT_TRUE(list->isVisible());
        },
        [&](Form& form) {
            auto* entry = dynamic_cast<PB_Neues_Schwein*>(&form);
            ASSERT_TRUE(entry) << qPrintable(form.name());
            entry->kom[0].choose(0);
            entry->t[0].type("1");
            entry->ok.click();
        });
}

TEST_F(MusterbetriebTest, NichtsDavonBleibt) {
    QString folder;
    start(
        [&](PA_Koben& main) {
            const QStringList before = files();
            const auto settings = kept();
            button(main, "Musterbetrieb")->click();
            QApplication::processEvents();
            EXPECT_FALSE(folder.isEmpty() || QDir(folder).exists());
            EXPECT_EQ(files(), before);
            EXPECT_EQ(kept(), settings);
            EXPECT_TRUE(screens.windowOf(main)->isVisible());
            EXPECT_TRUE(main.Bestand_leer());
            EXPECT_EQ(quietLine(*screens.windowOf(main)), QString()) << "what was done there was not done here";
        },
        [&](Form& form) {
            auto& visit = dynamic_cast<PA_Koben&>(form);
            folder = visit.koben.Datenordner;
            EXPECT_TRUE(screens.windowOf(form)->windowTitle().contains("Musterbetrieb, nichts davon bleibt"));
            EXPECT_GT(visit.datali.rowCount(), 100);
            expectFine(visit);
            EXPECT_FALSE(screens.windowOf(*own.front())->isVisible());
            for (const char* entry : {"O_Datensicherung", "O_ImportExcelCSV", "O_Exportpocketpc", "O_Updatemanager"})
                EXPECT_FALSE(visit.find(QString::fromUtf8(entry))->enabled()) << entry;
            dynamic_cast<Button&>(*visit.find(u"XB_schweinlöschen")).click();
            EXPECT_TRUE(quietLine(*screens.windowOf(form)).contains("gelöscht"));
            visit.datali.resizeByUser(2, 77);
            removeLeftSampleFarms(platform.user);
            EXPECT_TRUE(QFile::exists(folder + "koben2.mdb")) << "a start beside it leaves a running visit alone";
            button(form, "Musterbetrieb verlassen")->click();
            EXPECT_TRUE(form.closed());
        });
}

TEST_F(MusterbetriebTest, FehlerUndReste) {
    screens.sample.make = [](const QString&, QDate) {
        throw DatabaseError(DatabaseError::Kind::Io, QStringLiteral("Der Datenträger ist voll."));
    };
    start(
        [&](PA_Koben& main) {
            button(main, "Musterbetrieb")->click();
            EXPECT_TRUE(screens.told.last().contains("Datenträger ist voll"));
            EXPECT_TRUE(screens.windowOf(main)->isVisible());
        },
        [](Form& form) { ADD_FAILURE() << qPrintable(form.name()); });
    ASSERT_TRUE(QDir(platform.user).mkpath("Musterbetrieb-tot/daten"));
    QDir(platform.user).mkpath("Anderes");
    removeLeftSampleFarms(platform.user);
    EXPECT_EQ(QDir(platform.user).entryList({"Muster*", "Anderes"}, QDir::Dirs), QStringList{"Anderes"});
}

}  // namespace
}  // namespace koben::ui
