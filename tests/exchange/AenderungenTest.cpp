// The list of changes that the update server is given, read as the update manager reads it.
#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

#include "core/Version.h"
#include "exchange/Versionsliste.h"

namespace koben {
namespace {

TEST(Aenderungen, BeginnenMitDieserFassungUndFallenAb) {
    QFile file(QStringLiteral(KOBEN_SOURCE_DIR "/docs/aenderungen.txt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const auto list = Versionsliste::lesen(bytes, QStringLiteral("0"));
    EXPECT_TRUE(list.whole);
    EXPECT_EQ(list.newest, Version);
    QString newer;
    for (const QString& line : QString::fromUtf8(bytes).split(u'\n', Qt::SkipEmptyParts).mid(2)) {
        EXPECT_LE(line.size(), 78) << line.toStdString();
        if (line.startsWith(u' ')) continue;
        static const QRegularExpression head(QStringLiteral("^(\\d\\.\\d\\.\\d+): \\d\\d\\.\\d\\d\\.\\d{4}$"));
        const QString version = head.match(line).captured(1);
        EXPECT_FALSE(version.isEmpty()) << line.toStdString();
        EXPECT_TRUE(newer.isEmpty() || version < newer)
            << version.toStdString();  // as texts: that is how they are told apart
        newer = version;
    }
}

}  // namespace
}  // namespace koben
