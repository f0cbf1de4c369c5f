// Files let fall on a window: a list of animals shows its preview, in the import screen and from the main form, and
// writes nothing.
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QTemporaryDir>

#include "app/Katalog.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "exchange/S_Importtabelle.h"
#include "tests/ui/Support.h"

namespace koben::ui {
namespace {

/// True where the window takes the file.
bool fallenLassen(QWidget& window, const QUrl& url) {
    QMimeData data;
    data.setUrls({url});
    const QPoint at(50, 50);
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(&window, &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &drop);
    QApplication::processEvents();
    return true;
}

TEST(AblageTest, EineDateiZeigtIhreVorschau) {
    const QTemporaryDir data;
    const QString list = data.filePath("meine Herde.csv");
    QFile file(list);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Art;Saunummer\r\nSau;0815\r\n");
    file.close();
    TestScreens screens;
    TestPlatform platform;
    platform.folder = data.path() + u'/';
    Koben koben(screens, platform, katalog());
    QString preview;
    bool onMain = false, onImport = false, address = true, elsewhere = true;
    screens.hand = [&](Form& form) {
        FormWindow& window = *screens.windowOf(form);
        if (auto* import = dynamic_cast<S_Importtabelle*>(&form)) {
            QApplication::processEvents();
            preview += import->Text1.text();
            import->Text1.setText(QString());
            onImport = fallenLassen(window, QUrl::fromLocalFile(list));
            preview += u'|' + import->Text1.text();
        } else if (form.name() == u"PA_Koben") {
            address = fallenLassen(window, QUrl(QStringLiteral("https://example.org/herde.csv")));
            onMain = fallenLassen(window, QUrl::fromLocalFile(list));
            koben.Buchungsart_Nr = 0;
            koben.open("PV_Stichworte");
        } else {
            elsewhere = fallenLassen(window, QUrl::fromLocalFile(list));
        }
    };
    const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
    koben.run(*main);
    EXPECT_TRUE(onMain && onImport);
    EXPECT_FALSE(address || elsewhere);
    ASSERT_EQ(preview.count(u"0815"), 2) << preview.toStdString();
    Workspace workspace;
    EXPECT_EQ(workspace.open(koben.Datenbankpfad).table("select * from Sauen").rowCount(), 0);
}

/// The separator of a file that is chosen in the window is found; where several stand in the first line it is asked
/// for.
TEST(AblageTest, SpaltenMitKommaUndTabulator) {
    const QTemporaryDir data;
    const struct {
        const char *text, *sow;
        int answer, questions;
    } files[] = {{"Art\tSaunummer\nSau\t0815\n", "Saunummer", -1, 0},
                 {"Art,Saunummer\nSau,0815\n", "Saunummer", -1, 0},
                 {"Art;Saunummer, lang\nSau;0815\n", "Saunummer, lang", 1, 1}};
    for (const auto& [text, sow, answer, questions] : files) {
        const QString path = data.filePath(QStringLiteral("Herde.csv"));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        TestScreens screens;
        screens.answer = answer;
        TestPlatform platform;
        platform.folder = data.path() + u'/';
        Koben koben(screens, platform, katalog());
        screens.hand = [&](Form& form) {
            if (form.name() == u"PA_Koben") return koben.open(QStringLiteral("S_Importtabelle"));
            auto& import = static_cast<S_Importtabelle&>(form);
            auto* next = screens.windowOf(form)->widgetOf(import.comnächster2);
            import.SSTab1.choose(1);
            QApplication::processEvents();
            EXPECT_FALSE(next->isEnabled()) << "no file yet";
            screens.told.clear();
            import.DateiZeigen(path);
            EXPECT_EQ(screens.told.size(), 1 + questions) << text;
            EXPECT_TRUE(import.kom[1].items().contains(QString::fromUtf8(sow))) << text;
        };
        const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
        koben.run(*main);
    }
}

}  // namespace
}  // namespace koben::ui
