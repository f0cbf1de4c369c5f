// The manual of the shipped help, without pictures, read back out of its PDF.
#include <gtest/gtest.h>

#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "tools/handbuch/Book.h"
#include "tools/handbuch/Manual.h"

namespace koben::handbuch {
namespace {

const QString help = QStringLiteral(KOBEN_SOURCE_DIR "/hilfe/HILFEKOBEN.HLP");

/// The text of each page, blanks as one, lines kept.
QStringList pagesOf(const QString& pdf) {
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    if (!reader.waitForFinished(60'000) || reader.exitCode() != 0) return {};
    static const QRegularExpression blanks(QStringLiteral("[^\\S\\n\\f]+"),
                                           QRegularExpression::UseUnicodePropertiesOption);
    return QString::fromUtf8(reader.readAllStandardOutput()).replace(blanks, QStringLiteral(" ")).split(u'\f');
}

/// Without blanks: lines break where they like.
QString packed(QString text) {
    text = text.simplified();
    return text.remove(u' ');
}

TEST(Handbuch, InhaltNenntJedesKapitelMitSeinerSeite) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int argc = 1;
    char name[] = "test_handbuch", *argv[] = {name, nullptr};
    const QGuiApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString pdf = folder.filePath(QStringLiteral("h.pdf"));
    const QString sign = QStringLiteral(KOBEN_SOURCE_DIR "/ui/icons/koben.svg");
    Manual manual{.help = help, .pictures = {}, .sign = sign, .withoutPicture = {}};
    ASSERT_EQ(manual.write(pdf), QString());
    EXPECT_TRUE(manual.withoutPicture.contains(QStringLiteral("PA_Koben")));
    const QStringList pages = pagesOf(pdf);
    ASSERT_GT(pages.size(), 20) << "pdftotext";

    QFile file(help);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const Hilfedatei chapters(forPrint(QString::fromUtf8(file.readAll())));
    const QString contents = pages.mid(1, 4).join(u'\n');
    int last = 0;
    for (const Kapitel& chapter : chapters.chapters()) {
        QString title = QRegularExpression::escape(chapter.title.simplified());
        const auto entry =
            QRegularExpression(QStringLiteral("\\n ?(\\d\\.\\d+) %1[ .]+(\\d+) ?\\n").arg(title)).match(contents);
        ASSERT_TRUE(entry.hasMatch()) << chapter.title.toStdString();
        const int page = entry.captured(2).toInt();
        const QString heading = entry.captured(1) + u' ' + chapter.title.simplified();
        EXPECT_TRUE(packed(pages.value(page - 1)).contains(packed(heading)))
            << heading.toStdString() << " on page " << page;
        EXPECT_LE(last, page);
        last = page;
        const QString text = packed(pages.mid(page - 1, 6).join(u'\n'));
        for (const QString& field : chapter.fields()) EXPECT_TRUE(text.contains(packed(field))) << field.toStdString();
    }
    for (int page = 2; page <= pages.size() - 1; ++page)  // the last form feed ends the last page
        EXPECT_EQ(pages[page - 1].trimmed().section(QRegularExpression(QStringLiteral("\\s")), -1),
                  QString::number(page));
}

TEST(Handbuch, SuchtUnterDenHauptwoertern) {
    EXPECT_EQ(keywords(QStringLiteral("Den Arbeitsplan für morgen drucken")).join(u','), QStringLiteral("Arbeitsplan"));
    EXPECT_EQ(keywords(QStringLiteral("Logik-Prüfung: Eine Sau, 240 Ferkel")).join(u','),
              QStringLiteral("Logik-Prüfung,Sau,Ferkel"));
}

}  // namespace
}  // namespace koben::handbuch
