#pragma once
// The whole program on a small herd, for walks over its windows.
#include <QTemporaryDir>

#include "app/Katalog.h"
#include "tests/ui/Support.h"
#include "tools/herdengenerator/Output.h"

namespace koben::ui {

struct ProgramTest : testing::Test {
    QTemporaryDir data;
    TestScreens screens;
    TestPlatform platform;
    Koben koben{screens, platform, katalog()};
    ProgramTest() {
        platform.folder = data.path() + u'/';
        Vorgaben herd;
        herd.sauen = 12;
        herd.ende = QDate(2026, 7, 15);
        writeDatabase(makeHerde(herd), data.filePath(QStringLiteral("koben2.mdb")));
    }
    void runProgram(const std::function<void(Form&)>& hand) {
        screens.hand = hand;
        const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
        koben.run(*main);
    }
};

}  // namespace koben::ui
