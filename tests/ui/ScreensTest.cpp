// The program's own event loop, messages and failures; the printer's pages; the lock of the data folder.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QFile>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include "tests/ui/Support.h"
#include "ui/Application.h"
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
            log.append(QStringLiteral("innen"));
            press(screens.front(), Qt::Key_Escape);
        });
        koben.run(inner);
        log.append(QStringLiteral("zurück"));
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
        QThread::msleep(700);
        EXPECT_TRUE(work.step(20));
        ASSERT_NE(bar(), nullptr);
        EXPECT_EQ(bar()->labelText(), QStringLiteral("Die Liste wird gelesen ..."));
        soon([&] { bar()->findChild<QPushButton*>()->click(); });
        EXPECT_FALSE(work.step(40));
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

int pagesOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return 0;
    const QByteArray pdf = file.readAll();
    return static_cast<int>(pdf.count("/Type /Page\n"));
}

TEST(Printing, PagesBreakByThemselvesAndByOrder) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("liste.pdf"));
    QString opened;
    {
        const auto job = beginPdf(path, false, [&](const QString& file) { opened = file; });
        ASSERT_NE(job, nullptr);
        job->setSize(10);
        for (int i = 0; i < 100; ++i) job->line(QStringLiteral("Zeile %1").arg(i));  // about 68 fit on a page
        job->newPage();
        job->line(QStringLiteral("letzte"));
        EXPECT_FALSE(QFile::exists(path)) << "whole or not at all";
        job->end();
    }
    EXPECT_EQ(opened, path);
    EXPECT_EQ(pagesOf(path), 3);
}

TEST(Printing, WithoutAnEndNothingIsLeft) {
    const QTemporaryDir folder;
    { beginPdf(folder.filePath(QStringLiteral("a.pdf")), true, {})->line(QStringLiteral("halb")); }
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    EXPECT_EQ(beginPdf(folder.filePath(QStringLiteral("fehlt/a.pdf")), true, {}), nullptr);
}

TEST(DataFolder, IsHeldByOneProcess) {
    const QTemporaryDir folder;
    const auto none = [](const QString&) { return QString(); };
    {
        SystemPlatform first(none), second(none);
        EXPECT_TRUE(first.lockDataFolder(folder.path()));
        EXPECT_TRUE(first.lockDataFolder(folder.path())) << "it holds it already";
        EXPECT_FALSE(second.lockDataFolder(folder.path()));
    }
    QFile left(folder.filePath(QStringLiteral("koben.lock")));  // by a process that is gone
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    left.write("999999999\nkoben\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    left.close();
    SystemPlatform next(none);
    EXPECT_TRUE(next.lockDataFolder(folder.path()));
}

}  // namespace
}  // namespace koben::ui
