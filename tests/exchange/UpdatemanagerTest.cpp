// The update manager: what it says to each answer of the server, and where the setup goes.
#include <QRegularExpression>

#include "core/Version.h"
#include "exchange/HV_Updatemanager.h"
#include "tests/support/Fakes.h"

namespace koben {
namespace {

class UpdatemanagerTest : public testing::Test, protected TestRun {
protected:
    /// Opens the screen, which asks at once, and leaves it. What the user saw last, by its beginning.
    QString open(std::deque<bool> answers, std::deque<QString> inputs = {}) {
        screens.answers = std::move(answers);
        screens.inputs = std::move(inputs);
        HV_Updatemanager form(koben);
        form.labelakt[0].setText("2.0.59");
        screens.workIn<HV_Updatemanager>([&](HV_Updatemanager& shown) {
            seen = shown.labelakt[1].text() + '|' + shown.Text2.text();
            note = shown.hinweis.text();
        });
        koben.run(form);
        EXPECT_TRUE(screens.answers.empty() && screens.inputs.empty());
        return screens.takeLog().filter(QRegularExpression("^[!?]")).last().left(19);
    }

    QString seen, note;
};

TEST_F(UpdatemanagerTest, wasErZurListeSagt) {
    const QString waiting = "Daten werden aus dem Internet eingelesen (sofern eine Verbindung besteht)...";
    const QString failed = "! Es ist ein Fehler", current = "! Ihre Version ist ", older = "? Ihre Version ist ";
    const std::tuple<const char*, QString, QString> table[] = {
        {"A\nB\n2.0.59: x\n2.0.58: y\n", current, "2.0.59|Sie haben die aktuellste Version!"},
        {"A\nB\n2.0.61: a\n: b\n c: d\n2.0.60 e\n2.0.59: f\n: g\n2.0.7: h\n", older,
         "2.0.61|2.0.61: a\r\n: b\r\n c: d\r\n2.0.60 e\r\n"},
        {"A\r\nB\r\n2.0.60: \xe4\r\n2.0.59: x", older, "2.0.60|2.0.60: ä\r\n"},
        {"A\nB\n2.0.100: x\n2.0.99: y\n", older, "2.0.100|"},  // compared as texts
        {"A\nB\n2.0.60: x\nunteilbar\n2.0.59: y\n", failed, "2.0.60|" + waiting},
        {"A\nB\n2.0.60: x\n2.0.59: y\nunteilbar\n", older, "2.0.60|2.0.60: x\r\n"},
        {"A\nB", failed, "|" + waiting},
        {"<html>\n<head>\n<meta charset=\"utf-8\">\n", failed, "|" + waiting}};
    for (const auto& [list, said, shown] : table) {
        platform.web[Update::List] = list;
        EXPECT_EQ(open(said == older ? std::deque<bool>{true, false} : std::deque<bool>{true}), said) << list;
        EXPECT_EQ(seen, shown);
        EXPECT_EQ(note.startsWith("Es konnte nicht geprüft werden"), said == failed) << list;
    }
}

TEST_F(UpdatemanagerTest, dasSetupWirdGespeichertUndNieGestartet) {
    platform.web[Update::List] = "A\nB\n2.0.60: x\n2.0.59: y\n";
    platform.trouble.reason = "der Server antwortet nicht";
    EXPECT_EQ(open({true, true}, {path("setup.exe")}), "! Das Update konnte");
    platform.web[Update::Setup] = "MZ";
    open({true, true}, {""});
    EXPECT_FALSE(exists("setup.exe"));
    open({true, true}, {path("setup.exe")});
    EXPECT_EQ(bytes("setup.exe"), "MZ");
    EXPECT_TRUE(note.contains("setup.exe") && platform.started.isEmpty() && platform.opened.isEmpty());
}

}  // namespace
}  // namespace koben
