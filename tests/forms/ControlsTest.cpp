#include "core/PZ_Koben_Subs.h"
#include "tests/forms/Proben.h"

namespace koben {
namespace {

struct ControlsTest : testing::Test {
    TestRun run;
    LeereMaske form{run.koben};
};

TEST_F(ControlsTest, TypingRunsTheKeyFilterAndTheLimit) {
    const struct {
        int (*filter)(int);
        int maxLength;
        bool multiLine;
        const char* before;
        const char* typed;
        const char* after;
        const char* changes;  // the text at each change event
    } cases[] = {
        {nullptr, 2, false, "xyz", "abc", "ab", "a|ab|"},
        {nullptr, 0, false, "alt", "", "", "|"},
        {nullptr, 0, false, "", "", "", ""},
        {nullptr, 0, true, "", "a\r\nb", "a\r\nb", "a|a\r|a\r\n|a\r\nb|"},
        {Nur_Ziffern, 0, false, "7", "1x2", "12", "1|12|"},
        {Nur_Ziffern, 0, false, "7", "xy", "", "|"},
        {Nur_Ziffern, 0, true, "", "1\n2", "1\n2", "1|1\n|1\n2|"},
        // a control character is one blank
        {nullptr, 0, false, "", "a\t\r\n\x7f", "a    ", "a|a |a  |a   |a    |"},
        {nullptr, 0, true, "", "a\t\n\x01", "a \n ", "a|a |a \n|a \n |"},
        {Nur_Ziffern, 0, false, "7", "1\t2", "12", "1|12|"},
    };
    for (const auto& c : cases) {
        TextBox box(form, "t");
        box.setText(c.before);
        box.maxLength = c.maxLength;
        box.multiLine = c.multiLine;
        if (c.filter) box.onKeyPress = c.filter;
        std::string changes;
        box.onChange = [&] { changes += box.text().toStdString() + '|'; };
        box.type(QString::fromUtf8(c.typed));
        EXPECT_EQ(box.text().toStdString(), c.after) << c.typed;
        EXPECT_EQ(changes, c.changes) << c.typed;
    }
}

TEST_F(ControlsTest, ATextThatCannotBeReadStaysMarkedAsItWasTyped) {
    TextBox box(form, "t"), lines(form, "t");
    box.readable = [](const QString& text) { return !severalSeparators(text); };
    box.onLostFocus = [&] { box.setText(Zahl_formatieren(QString(box.text()), 2)); };
    for (const auto& [typed, left, wrong] : {std::tuple{"1.234,56", "1.234,56", true},
                                             {"12,,5", "12,,5", true},
                                             {"1234,5", "1234,50", false},
                                             {"-", "0,00", false}}) {
        box.type(typed);
        box.leave();
        EXPECT_EQ(box.text().toStdString(), left);
        EXPECT_EQ(box.wrong(), wrong) << typed;
    }
    box.edited("a\tb");  // from the clipboard
    EXPECT_EQ(box.text().toStdString(), "a b");
    box.setText("c\r\nd");
    EXPECT_EQ(box.text().toStdString(), "c  d");
    lines.multiLine = true;
    lines.edited("c\td\r\n");
    EXPECT_EQ(lines.text().toStdString(), "c d\r\n");
}

TEST_F(ControlsTest, AHandlerMayWriteTheFieldWhileItIsTyped) {
    TextBox date(form, "tdat");
    date.setText("01.01.2026");
    date.onKeyPress = [&](int code) {
        if (code == '+') date.setText("02.01.2026");
        return code == '+' ? 0 : code;
    };
    date.type("+");
    EXPECT_EQ(date.text().toStdString(), "02.01.2026");

    TextBox upper(form, "t");
    upper.onChange = [&] { upper.setText(upper.text().toUpper()); };
    upper.type("abc");
    EXPECT_EQ(upper.text().toStdString(), "ABC");
    upper.readOnly = true;
    upper.type("neu");
    EXPECT_EQ(upper.text().toStdString(), "ABC");
    EXPECT_EQ(upper.filter('a'), 0);
}

TEST_F(ControlsTest, ComboFollowsItsTextToTheEntry) {
    ComboBox combo(form, "kom");
    combo.setItems({"eins", "zwei", "zwei"});
    int clicks = 0;
    combo.onClick = [&] { ++clicks; };
    combo.choose(2);
    EXPECT_EQ(combo.current(), 2);
    for (const auto& [text, entry] : {std::pair{"eins", 0}, {"frei", -1}}) {
        combo.type(text);
        EXPECT_EQ(combo.current(), entry) << text;
    }
    combo.setText("zwei");
    EXPECT_EQ(combo.current(), 1);
    combo.setCurrent(-1);
    EXPECT_EQ(combo.text(), "");
    EXPECT_EQ(clicks, 1);
    combo.fixed = true;
    combo.setText("zwei");
    combo.setText("unbekannt");
    EXPECT_EQ(combo.text().toStdString(), "zwei");
}

TEST_F(ControlsTest, ListMarksAndCurrentRow) {
    ListBox list(form, "li", true);
    list.setItems({"a", "b", "c"});
    list.choose(1);
    EXPECT_TRUE(list.marked(1));
    list.mark({0, 2, 9});
    EXPECT_EQ(list.current(), 1);
    EXPECT_EQ(list.markedCount(), 2);
    EXPECT_FALSE(list.marked(1));
    list.addItem("d");
    EXPECT_FALSE(list.marked(3));
    list.setItems({"x"});
    EXPECT_EQ(list.current(), -1);
    EXPECT_EQ(list.markedCount(), 0);
}

TEST_F(ControlsTest, AFormFindsItsControls) {
    Button plain(form, "beenden", "&Schließen");
    ControlArray<Button> one(form, "neu", {"Neu"});
    ControlArray<TextBox> many(form, "tz", 2);
    const std::tuple<const char*, int, Control*> cases[] = {
        {"Beenden", -1, &plain}, {"beenden", 0, &plain}, {"beenden", 1, nullptr}, {"neu", -1, &one[0]},
        {"neu", 0, &one[0]},     {"tz", 1, &many[1]},    {"tz", -1, nullptr},     {"tz", 2, nullptr}};
    for (const auto& [name, index, found] : cases)
        EXPECT_EQ(form.find(QString::fromUtf8(name), index), found) << name << index;
}

TEST_F(ControlsTest, AViewMayGoWhileItIsTold) {
    struct Follower : Control::View {
        using View::View;
        std::function<void()> told;
        void changed(Aspect) override { told(); }
    };
    Label label(form, "bez", "a");
    int told = 0;
    auto second = std::make_unique<Follower>(label);
    Follower first(label);
    second->told = first.told = [&] { ++told; };
    auto killer = std::make_unique<Follower>(label);
    killer->told = [&] { second.reset(); };
    label.setText("b");
    EXPECT_EQ(told, 2);
    label.setText("c");
    EXPECT_EQ(told, 3);
}

}  // namespace
}  // namespace koben
