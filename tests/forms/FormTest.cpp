#include "tests/forms/Proben.h"

namespace koben {
namespace {

/// Writes its life down.
struct Maske : Form {
    Maske(Koben& run, const QString& name, QStringList& life) : Form(run, name, name), log(life) {}
    void Load() override { log += "load " + name(); }
    void FirstShown() override { log += "first " + name(); }
    void Activate() override {
        log += "activate " + name();
        if (onActivate) onActivate();
    }
    std::function<void()> onActivate;
    QStringList& log;
    Button neu{*this, "neu", "&Neu"};
    Button abbrechen{*this, "abbrechen", "&Abbrechen"};
};

struct FormTest : testing::Test {
    TestRun run;
    QStringList& log = run.screens.log;
    Maske aussen{run.koben, "A", log};
    Maske innen{run.koben, "B", log};
    std::string taken() { return run.screens.takeLog().join(", ").toStdString(); }
};

TEST_F(FormTest, TheFormBehindActivatesOnceAfterTheHandlerThatOpenedAnother) {
    aussen.neu.onClick = [&] {
        run.koben.run(innen);
        log += "click goes on";
    };
    run.screens.work([&](Form&) {
        log += "click";
        aussen.neu.click();
        log += "done";
    });
    run.koben.run(aussen);
    EXPECT_EQ(taken(),
              "+ A, load A, first A, activate A, click, + B, load B, first B, activate B, - B, click goes on, "
              "activate A, done, - A");
}

TEST_F(FormTest, AFormOpenedWhileActivatingActivatesAgain) {
    int shown = 0;
    aussen.onActivate = [&] {
        if (++shown == 1) run.koben.run(innen);
    };
    run.koben.run(aussen);
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(run.koben.front(), nullptr);
}

TEST_F(FormTest, AFormThatClosesInItsLoadIsNeverShown) {
    struct Zu : Maske {
        using Maske::Maske;
        void Load() override { close(); }
    } zu{run.koben, "Z", log};
    run.koben.run(zu);
    EXPECT_EQ(taken(), "+ Z, - Z");
    run.screens.work([](Form&) { throw std::runtime_error("Fehler"); });
    EXPECT_THROW(run.koben.run(aussen), std::runtime_error);
    EXPECT_EQ(run.koben.front(), nullptr) << "an exception leaves a form open";
}

/// It is told where it failed; the form stays, the forms behind go on. A form that cannot load closes.
TEST_F(FormTest, WhatAHandlerThrowsGoesNoFurther) {
    struct Kaputt : Maske {
        using Maske::Maske;
        void Load() override { throw std::runtime_error("broken"); }
    } kaputt{run.koben, "K", log};
    innen.neu.onClick = [] { throw DatabaseError(DatabaseError::Kind::Io, "Die Platte ist voll."); };
    innen.abbrechen.onClick = [&] { run.koben.run(kaputt); };
    aussen.neu.onClick = [&] {
        run.koben.run(innen);
        log += "click goes on";
    };
    run.screens.work([&](Form&) { aussen.neu.click(); });
    run.screens.work([&](Form&) {
        innen.neu.click();
        innen.abbrechen.click();
        EXPECT_FALSE(innen.closed());
        EXPECT_TRUE(kaputt.closed());
    });
    run.koben.run(aussen);
    const QStringList told = log.filter("! ");
    ASSERT_EQ(told.size(), 2);
    EXPECT_TRUE(told[0].contains("Die Platte ist voll.") && told[0].contains("nichts davon gespeichert"));
    EXPECT_TRUE(told[1].contains("Im Programm ist ein Fehler") && !told[1].contains("broken"));
    for (const QString& line : told) log.removeAll(line);
    EXPECT_EQ(taken(),
              "+ A, load A, first A, activate A, + B, load B, first B, activate B, + K, - K, activate B, - B, click "
              "goes on, activate A, - A");
}

TEST_F(FormTest, CloseBoxDoesWhatCancelDoes) {
    std::string done;
    aussen.abbrechen.onClick = [&] { done += 'x'; };
    aussen.cancelButton = &aussen.abbrechen;
    EXPECT_TRUE(aussen.neu.key(Key::Escape));
    EXPECT_EQ(done, "x");
    EXPECT_FALSE(aussen.closed());  // the button decides
    aussen.abbrechen.setEnabled(false);
    aussen.closeBox();
    EXPECT_EQ(done, "x");
    EXPECT_FALSE(aussen.closed());
    aussen.cancelButton = nullptr;
    aussen.closeBox();
    EXPECT_TRUE(aussen.closed());
}

TEST_F(FormTest, TheEndClosesEveryFormWithoutActivation) {
    aussen.neu.onClick = [&] { run.koben.run(innen); };
    run.screens.work([&](Form&) { aussen.neu.click(); });
    run.screens.work([&](Form&) { run.koben.end(); });
    run.koben.run(aussen);
    EXPECT_TRUE(aussen.closed());
    EXPECT_EQ(taken(), "+ A, load A, first A, activate A, + B, load B, first B, activate B, - B, - A");
}

TEST_F(FormTest, MenuEntriesAreReachedThroughTheirMenus) {
    MenuEntry menu(aussen, "menue", "&Eingabe"), sub(aussen, "unter", "Unter", &menu), entry(aussen, "e", "E", &sub);
    EXPECT_TRUE(entry.reachable());
    menu.setEnabled(false);
    EXPECT_TRUE(!entry.reachable() && entry.enabled());
}

TEST_F(FormTest, ColumnWidthsComeBackByKey) {
    Grid grid(aussen, "gridli");
    grid.addColumn({.key = "a=b", .title = "A", .width = 40});
    grid.addColumn({.key = "c", .title = "C"});
    run.koben.saveWidths(grid, "Liste");
    Grid later(innen, "gridli");
    later.addColumn({.key = "neu", .title = "Neu", .width = 5});
    later.addColumn({.key = "A=B", .title = "A", .width = 1});
    run.koben.restoreWidths(later, "Liste");
    EXPECT_EQ(later.column(1).width, 5);
    EXPECT_EQ(later.column(2).width, 40);
    run.koben.restoreWidths(later, "Andere");
    EXPECT_EQ(later.column(2).width, 40);
}

}  // namespace
}  // namespace koben
