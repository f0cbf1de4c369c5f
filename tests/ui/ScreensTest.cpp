// The program's own event loop, messages and failures; the printer's pages; the lock of the data folder.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QFile>
#include <QMessageBox>
#include <QPrintPreviewDialog>
#include <QProcess>
#include <QProgressDialog>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QToolBar>

#include "tests/ui/Support.h"
#include "ui/Application.h"
#include "ui/Preview.h"
#include "ui/Printing.h"

namespace koben::ui {
namespace {

class Zettel final : public Form {
public:
    Zettel(Koben& context, std::function<void()> work)
        : Form(context, QStringLiteral("Zettel"), QStringLiteral("Zettel")) {
        ok.onClick = std::move(work);
        cancelButton = &abbrechen;
        abbrechen.onClick = [this] { close(); };
    }
    void Activate() override { ++activations; }
    Button ok{*this, "ok", "&OK"};
    Button abbrechen{*this, "abbrechen", "&Abbrechen"};
    int activations = 0;
};

/// The real screens, with a hand that acts once the event loop stands.
struct ScreensTest : testing::Test {
    WindowScreens screens;
    TestPlatform platform;
    Catalogue catalogue;
    Koben koben{screens, platform, catalogue};
    static void soon(const std::function<void()>& act) { QTimer::singleShot(0, qApp, act); }
};

TEST_F(ScreensTest, FormsRunAboveEachOtherUntilTheyClose) {
    QStringList log;
    Zettel inner(koben, [] {});
    Zettel outer(koben, [&] {
        soon([&] {
            log.append("innen");
            press(screens.front(), Qt::Key_Escape);
        });
        koben.run(inner);
        log.append("zurück");
        soon([&] { screens.front()->close(); });
    });
    soon([&] { outer.ok.click(); });
    koben.run(outer);
    EXPECT_EQ(log, (QStringList{QStringLiteral("innen"), QStringLiteral("zurück")}));
    EXPECT_EQ(outer.activations, 2) << "shown, and after the form above had closed";
    EXPECT_TRUE(inner.closed() && outer.closed());
}

/// Work that goes on gets a bar with a cancel; short work shows nothing, and the next work begins afresh.
TEST_F(ScreensTest, LongWorkShowsABarThatCancels) {
    const auto bar = [] {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* dialog = qobject_cast<QProgressDialog*>(window); dialog && dialog->isVisible()) return dialog;
        return static_cast<QProgressDialog*>(nullptr);
    };
    {
        Progress work(koben, QStringLiteral("Die Liste wird gelesen ..."), 200);
        EXPECT_TRUE(work.step(1));
        EXPECT_EQ(bar(), nullptr) << "at once";
        QThread::msleep(60);
        EXPECT_TRUE(work.step(2));
        QThread::msleep(700);
        EXPECT_TRUE(work.step(20));
        ASSERT_NE(bar(), nullptr);
        EXPECT_EQ(bar()->labelText(), "Die Liste wird gelesen ...");
        soon([&] { bar()->findChild<QPushButton*>()->click(); });
        QThread::msleep(60);
        EXPECT_FALSE(work.step(20)) << "asked by the clock, though the percent is the same";
        EXPECT_TRUE(work.cancelled());
        EXPECT_FALSE(work.step(60));
    }
    EXPECT_EQ(bar(), nullptr);
    Progress next(koben, QStringLiteral("Die Liste wird gelesen ..."), 200);
    EXPECT_TRUE(next.step(20));
}

TEST_F(ScreensTest, QuestionsHaveASafeAnswer) {
    const auto answer = [&](int key, bool noIsDefault) {
        soon([key] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            press(box->focusWidget() ? box->focusWidget() : box, key);
        });
        return screens.yesNo(QStringLiteral("Soll <b>nicht</b> fett\r\nsein?"), noIsDefault);
    };
    EXPECT_TRUE(answer(Qt::Key_Return, false));
    EXPECT_FALSE(answer(Qt::Key_Return, true));
    EXPECT_FALSE(answer(Qt::Key_Escape, false));
}

/// What fails in a form is told there and goes no further: the forms behind know nothing of it, and it works again.
TEST_F(ScreensTest, AFailingHandlerIsToldAndTheFormsRunOn) {
    QStringList told;
    bool full = true, done = false;
    Zettel inner(koben, [&] {
        if (full) {
            soon([&] {
                auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                ASSERT_NE(box, nullptr);
                told.append(box->text());
                press(box, Qt::Key_Escape);
            });
            throw DatabaseError(DatabaseError::Kind::Io, QStringLiteral("Platte voll"));
        }
        done = true;
        inner.close();
    });
    const auto click = [&] { static_cast<QAbstractButton*>(screens.front()->widgetOf(inner.ok))->click(); };
    Zettel outer(koben, [&] {
        soon([&] {
            click();
            EXPECT_FALSE(inner.closed());
            full = false;
            click();
        });
        koben.run(inner);
        EXPECT_TRUE(done) << "the handler behind goes on once the form has closed";
        outer.close();
    });
    soon([&] { outer.ok.click(); });
    koben.run(outer);
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told.first().contains(QStringLiteral("Platte voll"))) << told.first().toStdString();
    EXPECT_TRUE(outer.closed());
}

/// The text of a PDF in the order in which it was painted; pages end with a form feed.
QStringList pagesOf(const QString& path) {
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-raw"), path, QStringLiteral("-")});
    reader.waitForFinished();
    QStringList pages = QString::fromUtf8(reader.readAllStandardOutput()).split(u'\f');
    pages.removeLast();
    return pages;
}

struct Printing : testing::Test {
    void SetUp() override {
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) GTEST_SKIP() << "no pdftotext";
    }
    QStringList print(const std::function<void(PrintJob&)>& work, bool landscape = false) {
        const auto job = beginPdf(path, landscape, [&](const QString& file) { opened = file; });
        work(*job);
        EXPECT_FALSE(QFile::exists(path)) << "whole or not at all";
        job->end();
        return pagesOf(path);
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath("liste.pdf");
    QString opened;
};

TEST_F(Printing, PagesBreakByThemselvesAndByOrder) {
    const QStringList pages = print([](PrintJob& job) {
        job.setSheet({.title = QStringLiteral("Arbeitspläne"),
                      .date = QStringLiteral("15.07.2026"),
                      .head = {{{{QStringLiteral("Nr | Box"), {}}}}, {{{QStringLiteral("--------"), {}}}}}});
        job.setSize(10);
        for (int i = 0; i < 100; ++i) job.line(QStringLiteral("Zeile %1").arg(i));  // about 68 fit on a page
        job.newPage();
        job.line(QStringLiteral("letzte"));
    });
    EXPECT_EQ(opened, path);
    ASSERT_EQ(pages.size(), 3);
    for (int page = 0; page < 3; ++page) {
        EXPECT_TRUE(pages[page].contains("Arbeitspläne") && pages[page].contains(u"15.07.2026"));
        EXPECT_TRUE(pages[page].contains(QStringLiteral("Seite %1 von 3").arg(page + 1))) << pages[page].toStdString();
        EXPECT_EQ(pages[page].contains(u"Nr | Box"), page == 1) << "only where a full page has broken the list";
    }
    EXPECT_EQ(pages.join(QString()).count(u"Zeile "), 100);
}

TEST_F(Printing, PiecesStandOnOneLineAndNothingIsCut) {
    const QString wide = QString(150, u'x') + QStringLiteral(" ENDE");
    const QStringList pages = print([&](PrintJob& job) {
        job.setSize(10);
        job.text(QStringLiteral("Nr Datum     Le "));
        job.setBold(true);
        job.text(QStringLiteral("12 "));
        job.setSize(20);
        job.text(QStringLiteral("A7"));
        job.setBold(false);
        job.setSize(10);
        job.line(QStringLiteral(" Rest"));
        job.line(QStringLiteral("eins\tzwei"));
        job.line(wide);
        job.place(StraightLine{{0, 100}, {50, 100}});
        job.place(Rectangle{{0, 110, 20, 10}, 0.2, 230});
        job.place(PlacedText{{100, 150, 40, 5}, 1, {QStringLiteral("platziert"), {}}});
    });
    ASSERT_EQ(pages.size(), 1);
    QStringList lines = pages[0].split(u'\n', Qt::SkipEmptyParts);
    lines.append(lines.takeFirst());  // what is placed lies below the lines
    ASSERT_GE(lines.size(), 5);
    EXPECT_EQ(lines[0].simplified(), "Nr Datum Le 12 A7 Rest") << pages[0].toStdString();
    EXPECT_EQ(lines[1].simplified(), "eins zwei");
    EXPECT_EQ((lines[2] + lines[3]).count(u'x'), 150);
    EXPECT_TRUE(lines[3].endsWith(u"ENDE"));
    EXPECT_EQ(lines.last().trimmed(), "platziert");
    EXPECT_FALSE(pages[0].contains(u"Seite")) << "a job without a title has its pages for itself";
}

/// The list as printed table, from the preview's own button.
TEST_F(Printing, AListKeptAsPdfFromItsPreview) {
    Bench bench;
    bench.koben.Datenordner = folder.path() + u'/';
    Zettel form(bench.koben, [] {});
    Grid list(form, QStringLiteral("gridli"));
    for (int c = 1; c <= 20; ++c)
        list.addColumn({.key = QString::number(c),
                        .title = QStringLiteral("Spalte %1").arg(c),
                        .align = c % 2 ? Align::Left : Align::Right});
    for (int row = 1; row <= 120; ++row) list.addRow(QStringList(20, QStringLiteral("Zelle %1").arg(row)));
    list.addSeparator();
    list.addRow({QStringLiteral("SUMME")});
    QWidget window;
    bool landscape = false;
    QTimer look;
    look.callOnTimeout([&] {
        auto* dialog = qobject_cast<QPrintPreviewDialog*>(QApplication::activeModalWidget());
        if (!dialog) return;  // a bar stands before it
        look.stop();
        landscape = dialog->printer()->pageLayout().orientation() == QPageLayout::Landscape;
        QAction* pdf = nullptr;
        for (QAction* action : dialog->findChild<QToolBar*>()->actions())
            if (action->text().contains(QStringLiteral("PDF"))) pdf = action;
        EXPECT_TRUE(pdf && pdf->isVisible() && pdf->isEnabled());
        dialog->close();
    });
    look.start(20);
    previewTable(window, bench.koben, list, QStringLiteral("Bestand"));
    EXPECT_TRUE(landscape);
    QPrinter printer(QPrinter::HighResolution);
    setPage(printer, true);
    ASSERT_TRUE(writePdf(path, printer.pageLayout(), [&](QPrinter& target) {
        return drawTable(target, bench.koben, list, QStringLiteral("Bestand"));
    }));
    const QStringList pages = pagesOf(path);
    ASSERT_GE(pages.size(), 3);
    for (const QString& page : pages)
        EXPECT_TRUE(page.contains(u"Spalte 20") && page.contains(u"Bestand")) << page.toStdString();
    EXPECT_EQ(pages.join(QString()).count(u"Zelle 120"), 20);
    EXPECT_TRUE(pages.last().contains(u"SUMME"));
    EXPECT_FALSE(writePdf(folder.filePath(QStringLiteral("fehlt/a.pdf")), printer.pageLayout(),
                          [](QPrinter&) { return Drawing(); }));
}

TEST_F(Printing, WithoutAnEndNothingIsLeft) {
    { beginPdf(folder.filePath("a.pdf"), true, {})->line(QStringLiteral("halb")); }
    for (const int until : {0, 20, 60, 99}) {  // given up while it is laid out, and while it is painted
        const auto job = beginPdf(path, false, [&](const QString& file) { opened = file; });
        for (int page = 0; page < 100; ++page) job->line(QStringLiteral("Zeile")), job->newPage();
        EXPECT_FALSE(job->end([until](int percent) { return percent < until; })) << until;
    }
    EXPECT_EQ(opened, QString());
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    EXPECT_EQ(beginPdf(folder.filePath("fehlt/a.pdf"), true, {}), nullptr);
}

}  // namespace
}  // namespace koben::ui
