// What differs from system to system: where the data lie, icons where no plugin draws them.
#include <QBuffer>
#include <QImageReader>

#include "tests/support/Fakes.h"
#include "ui/DataFolder.h"
#include "ui/IconDrawing.h"
#include "ui/Look.h"

namespace koben::ui {
namespace {

TEST(DataFolder, LiesOnTheProgramsDrive) {
    EXPECT_EQ(usualDataFolder("D:/Programme/KOBEN/bin", "C:/Users/Eva"), "D:/Daten/Sauenplaner_KOBEN2/");
    EXPECT_EQ(usualDataFolder("/usr/bin", "/home/eva"), "/home/eva/Daten/Sauenplaner_KOBEN2/");
    EXPECT_EQ(usualDataFolder("//server/koben/bin", "C:/Users/Eva"), "C:/Users/Eva/Daten/Sauenplaner_KOBEN2/");
}

/// A drive on which nothing can be made: one that is not there, or, without drives, a file in the way.
TEST(DataFolder, AnotherIsOfferedOnce) {
    const QTemporaryDir here;
    const QString before = QDir::currentPath();
    QDir::setCurrent(here.path());
    QFile(here.filePath("Q:")).open(QIODevice::WriteOnly);
    for (const bool agreed : {false, true}) {
        FakeScreens screens;
        FakePlatform platform;
        platform.data = "Q:/Daten/Sauenplaner_KOBEN2/";
        screens.answers = {agreed};
        settleDataFolder(screens, platform, here.filePath("Eigene/"));
        ASSERT_EQ(screens.log.size(), 1);
        EXPECT_TRUE(screens.log[0].contains(QDir::toNativeSeparators(platform.data)));
        EXPECT_EQ(agreedDataFolder(platform), agreed ? here.filePath("Eigene/") : QString());
        platform.data = here.path();
        settleDataFolder(screens, platform, here.path());
        EXPECT_EQ(screens.log.size(), 1) << "it is there";
    }
    QDir::setCurrent(before);
}

TEST(IconDrawing, LooksAsAnSvgReaderDrawsIt) {
    EXPECT_FALSE(programIcon().isNull());
    EXPECT_TRUE(drawnIcon("<svg viewBox='0 0 16 16'><path d='M1 1", Qt::black, 16).isNull());
    const bool reader = QImageReader::supportedImageFormats().contains("svg");
    for (const QFileInfo& icon : QDir(":/icons").entryInfoList({"*.svg"})) {
        QFile file(icon.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QByteArray svg = file.readAll();
        const QImage ours = drawnIcon(svg, Qt::red, 48).convertToFormat(QImage::Format_ARGB32);
        ASSERT_FALSE(ours.isNull()) << icon.filePath().toStdString();
        svg.replace("currentColor", "#ff0000");
        QBuffer buffer(&svg);
        QImageReader drawn(&buffer, "svg");
        drawn.setScaledSize(ours.size());
        const QImage theirs = reader ? drawn.read().convertToFormat(QImage::Format_ARGB32) : ours;
        qint64 away = 0, seen = 0;
        for (int y = 0; y < 48; ++y)
            for (int x = 0; x < 48; ++x) {
                away += std::abs(qAlpha(ours.pixel(x, y)) - qAlpha(theirs.pixel(x, y)));
                seen += qAlpha(ours.pixel(x, y));
            }
        EXPECT_LT(away, seen / 20) << icon.fileName().toStdString();
        EXPECT_GT(seen, 0) << icon.fileName().toStdString();
    }
}

}  // namespace
}  // namespace koben::ui
