// Widgets and controls: what the user does reaches the control once, what the program sets raises nothing.
#include <QAbstractButton>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSet>

#include "core/PZ_Koben_Subs.h"
#include "tests/ui/Support.h"
#include "ui/Desktop.h"

namespace koben::ui {
namespace {

/// An entry screen in small. The order of its controls is that of the Tab key.
class Eingabe final : public Form {
public:
    explicit Eingabe(Koben& context) : Form(context, QStringLiteral("Eingabe"), QStringLiteral("Eingabe")) {
        tdat.onKeyPress = Nur_Zahlzeichen;
        tdat.onLostFocus = [this] { log += "verlassen "; };
        tdat.onGotFocus = [this] { log += "betreten "; };
        tz.onKeyPress = Nur_Ziffern;
        tz.maxLength = 3;
        tz.onChange = [this] { log += "geändert "; };
        kom.setItems({QStringLiteral("K"), QStringLiteral("N")});
        kom.onClick = [this] { log += "gewählt "; };
        kon.onClick = [this] { log += "Häkchen "; };
        opti.onClick = [this](int i) { log += QStringLiteral("Wahl%1 ").arg(i); };
        ok.onClick = [this] { log += "ok "; };
        zweiter.onClick = [this] { log += "zweiter "; };
        abbrechen.onClick = [this] { close(); };
        acceptButton = &ok;
        cancelButton = &abbrechen;
    }
    TextBox tdat{*this, "tdat"};
    Button calender{*this, "calender", "Kalender"};
    Calendar calend{*this, "calend"};
    TextBox tz{*this, "tz"};
    ComboBox kom{*this, "kom"};
    CheckBox kon{*this, "kon", "&Fett"};
    OptionGroup opti{*this, "opti", {"Alle", "Keine"}};
    Button ok{*this, "ok", "&OK"};
    Button zweiter{*this, "zweiter", "&Ohne Namen"};
    Button abbrechen{*this, "abbrechen", "&Abbrechen"};
    QString log;
};

struct BinderTest : testing::Test, Bench {
    Eingabe form{koben};
    void hand(const std::function<void(FormWindow&)>& play) { run(form, play); }
    QWidget* widget(FormWindow& window, const Control& control) { return window.widgetOf(control); }
};

TEST_F(BinderTest, FilterTakesTypedAndPastedCharacters) {
    hand([&](FormWindow& window) {
        QWidget* tz = widget(window, form.tz);
        tz->setFocus();
        form.log.clear();
        type(window, "1a2");
        EXPECT_EQ(form.tz.text(), "12");
        EXPECT_EQ(form.log, "geändert geändert ");
        QApplication::clipboard()->setText("x9y87");
        static_cast<QLineEdit*>(tz)->setCursorPosition(0);
        static_cast<QLineEdit*>(tz)->paste();
        EXPECT_EQ(form.tz.text(), "912") << "filtered, then cut to the length";
        static_cast<QLineEdit*>(tz)->backspace();
        EXPECT_EQ(form.tz.text(), "12");
    });
}

TEST_F(BinderTest, ProgramSetsWithoutEventsAndWithoutFilter) {
    hand([&](FormWindow& window) {
        form.log.clear();
        form.tz.setText("viele");
        form.kom.setCurrent(1);
        form.kon.setChecked(true);
        form.opti.select(1);
        form.opti.select(-1);
        EXPECT_EQ(form.log, QString());
        EXPECT_EQ(static_cast<QLineEdit*>(widget(window, form.tz))->text(), "viele");
        EXPECT_EQ(static_cast<QComboBox*>(widget(window, form.kom))->currentText(), "N");
        EXPECT_TRUE(static_cast<QAbstractButton*>(widget(window, form.kon))->isChecked());
        for (int i : {0, 1})
            EXPECT_FALSE(static_cast<QAbstractButton*>(widget(window, form.opti[i]))->isChecked()) << i;
    });
}

TEST_F(BinderTest, ListFieldCompletesWhatIsTyped) {
    form.kom.setItems({QStringLiteral("Abferkelstall"), QStringLiteral("Abteil 1"), QStringLiteral("Abteil 12"),
                       QStringLiteral("20059")});
    hand([&](FormWindow& window) {
        auto* edit = static_cast<QComboBox*>(widget(window, form.kom))->lineEdit();
        widget(window, form.kom)->setFocus();
        const struct {
            const char* key;  // "<" the backspace
            const char *text, *marked;
        } keys[] = {{"a", "Abferkelstall", "bferkelstall"},
                    {"b", "Abferkelstall", "ferkelstall"},
                    {"t", "Abteil 1", "eil 1"},
                    {"<", "Abt", ""},  // what was completed goes first, and does not come back
                    {"<", "Ab", ""},
                    {"x", "Abx", ""},
                    {"<", "Ab", ""},
                    {"<", "A", ""},
                    {"<", "", ""},
                    {"2", "2", ""},  // a number stays the one that was typed
                    {"0", "20", ""}};
        for (const auto& [key, text, marked] : keys) {
            *key == '<' ? press(window.focusWidget(), Qt::Key_Backspace) : type(window, QString::fromUtf8(key));
            EXPECT_EQ(form.kom.text(), QString::fromUtf8(text)) << key;
            EXPECT_EQ(edit->selectedText(), QString::fromUtf8(marked)) << key;
        }
    });
}

TEST_F(BinderTest, WrongFieldsBearASignThatIsReadAloudToo) {
    hand([&](FormWindow& window) {
        for (TextBox* field : {static_cast<TextBox*>(&form.tdat), static_cast<TextBox*>(&form.kom)}) {
            QWidget* shown = widget(window, *field);
            auto* combo = qobject_cast<QComboBox*>(shown);
            QLineEdit* edit = combo ? combo->lineEdit() : static_cast<QLineEdit*>(shown);
            for (const bool wrong : {true, true, false}) {
                field->setWrong(wrong);
                EXPECT_EQ(edit->actions().size(), wrong ? 1 : 0);
                EXPECT_EQ(edit->accessibleDescription().isEmpty(), !wrong);
            }
        }
    });
}

TEST_F(BinderTest, EnterMovesOnAndEscapeCancels) {
    hand([&](FormWindow& window) {
        widget(window, form.tdat)->setFocus();
        type(window, "5.7.");
        press(window.focusWidget(), Qt::Key_Return);
        EXPECT_EQ(window.focusWidget(), widget(window, form.tz)) << "Enter in a field is Tab";
        EXPECT_EQ(form.log.count("verlassen"), 1);
        EXPECT_FALSE(form.closed());
        screens.answer = 0;
        press(window.focusWidget(), Qt::Key_Escape);
        EXPECT_TRUE(form.closed());
    });
}

/// A whole date in the field, a key, and what stands there then.
TEST_F(BinderTest, DatesTakeKeysForDays) {
    const struct {
        const char* before;
        int key;
        const char *text, *after;
    } keys[] = {{"", 0, "t", "15.07.2026"},
                {"01.03.2026", 0, "-", "28.02.2026"},
                {"31.12.2026", 0, "+", "01.01.2027"},
                {"14", 0, "+", "15.07.2026"},
                {"", Qt::Key_Up, "", "15.07.2026"},
                {"15.07.2026", Qt::Key_Up, "", "16.07.2026"},
                {"1", 0, "-", "-1"},
                {"15.07.2026", Qt::Key_Down, "", "14.07.2026"}};
    hand([&](FormWindow& window) {
        for (const auto& [before, key, text, after] : keys) {
            widget(window, form.tdat)->setFocus();
            form.tdat.setText(QString::fromUtf8(before));
            press(window.focusWidget(), key, {}, QString::fromUtf8(text));
            EXPECT_EQ(form.tdat.text(), QString::fromUtf8(after)) << before << ' ' << text << key;
        }
    });
}

TEST_F(BinderTest, ARefusedDateLeavesAMarkThatSaysWhy) {
    form.tdat.onLostFocus = [&] { form.tdat.setText(Datum_ergaenzen(form.tdat.text(), koben.Heute)); };
    hand([&](FormWindow& window) {
        auto* field = static_cast<QLineEdit*>(widget(window, form.tdat));
        for (const bool wrong : {true, false}) {
            field->setFocus();
            type(window, wrong ? QStringLiteral("3113") : QStringLiteral("3107"));
            press(field, Qt::Key_Return);
            EXPECT_EQ(form.tdat.text().isEmpty(), wrong);
            EXPECT_EQ(field->actions().size(), wrong ? 1 : 0);
            EXPECT_EQ(field->accessibleDescription().contains("3113"), wrong);
            EXPECT_EQ(quietLine(window).contains("3113"), true);
        }
    });
}

TEST_F(BinderTest, TheCalendarOpensByKeyAndGivesTheFieldBack) {
    form.calender.onClick = [&] { form.calend.setVisible(!form.calend.visible()); };
    hand([&](FormWindow& window) {
        for (const auto& [key, modifier] : {std::pair(Qt::Key_F4, Qt::NoModifier), {Qt::Key_Down, Qt::AltModifier}}) {
            widget(window, form.tdat)->setFocus();
            press(window.focusWidget(), key, modifier);
            EXPECT_TRUE(form.calend.visible());
            press(widget(window, form.calend), Qt::Key_Escape);
            EXPECT_FALSE(form.calend.visible());
            EXPECT_EQ(window.focusWidget(), widget(window, form.tdat));
        }
    });
}

TEST_F(BinderTest, WhatIsTypedIsNotThrownAwayByEscape) {
    hand([&](FormWindow& window) {
        widget(window, form.tz)->setFocus();
        type(window, "7");
        press(window.focusWidget(), Qt::Key_Escape);
        EXPECT_FALSE(form.closed());
        EXPECT_EQ(screens.told.size(), 1);
        form.ok.onClick = [&] { screens.done(QStringLiteral("Belegung 1023")); };
        static_cast<QAbstractButton*>(widget(window, form.ok))->click();
        EXPECT_EQ(quietLine(window), "Gespeichert: Belegung 1023");
        press(window.focusWidget(), Qt::Key_Escape);
        EXPECT_TRUE(form.closed()) << "saved since";
        EXPECT_EQ(screens.told.size(), 1);
    });
}

TEST_F(BinderTest, ButtonByKeyLeavesTheFieldFirst) {
    hand([&](FormWindow& window) {
        widget(window, form.tdat)->setFocus();
        form.log.clear();
        static_cast<QAbstractButton*>(widget(window, form.ok))->click();  // as a mnemonic does
        EXPECT_EQ(form.log, "verlassen ok ");
    });
}

TEST_F(BinderTest, LockedForAMomentKeepsTheFocus) {
    hand([&](FormWindow& window) {
        widget(window, form.tz)->setFocus();
        form.tz.setEnabled(false);
        form.tz.setEnabled(true);
        QApplication::processEvents();
        EXPECT_EQ(window.focusWidget(), widget(window, form.tz));
        form.tz.setEnabled(false);
        QApplication::processEvents();
        EXPECT_FALSE(widget(window, form.tz)->isEnabled());
    });
}

/// The place is kept by the title bar too; letters of another size bring another size of the window.
TEST_F(BinderTest, ThePlaceIsKeptAndItsSizeWhileTheLettersStay) {
    const QString key = "Fenster/Eingabe";
    hand([&](FormWindow& window) {
        window.setGeometry(60, 70, 420, 330);
        EXPECT_TRUE(window.close());
    });
    ASSERT_TRUE(platform.settings[key].startsWith("60,70,420,330,h")) << platform.settings[key].toStdString();
    for (const bool same : {true, false}) {
        if (!same) platform.settings[key] = QStringLiteral("60,70,420,330,h99");
        Eingabe next(koben);
        run(next, [&](FormWindow& window) {
            EXPECT_EQ(window.geometry().topLeft(), QPoint(60, 70));
            EXPECT_EQ(window.size() == QSize(420, 330), same);
        });
    }
}

TEST(Place, ComesBackOnlyOntoAScreen) {
    const QList<QRect> one{QRect(0, 0, 1366, 768)};
    EXPECT_EQ(placeOnScreen(QRect(100, 100, 800, 500), one), QRect(100, 100, 800, 500));
    EXPECT_EQ(placeOnScreen(QRect(2000, 100, 800, 500), one), QRect(566, 100, 800, 500)) << "its screen has gone";
    EXPECT_EQ(placeOnScreen(QRect(0, 0, 2560, 1400), one), QRect(0, 0, 1366, 768)) << "its screen was larger";
    const QList<QRect> two{QRect(0, 0, 1366, 768), QRect(1366, 0, 1920, 1080)};
    EXPECT_EQ(placeOnScreen(QRect(1400, 50, 800, 500), two), QRect(1400, 50, 800, 500));
}

TEST(FileFilter, MatchesAnyCase) {
    const bool cased = fileNamesKnowCase();
    EXPECT_EQ(fileFilter(QStringLiteral("CSV-Dateien|*.CSV|Alle Dateien|*.*")),
              cased ? "CSV-Dateien (*.[Cc][Ss][Vv]);;Alle Dateien (*)" : "CSV-Dateien (*.csv);;Alle Dateien (*)");
    EXPECT_EQ(fileFilter(QStringLiteral("Bilder (*.a)|*.a1;*.b")),
              cased ? "Bilder (*.[Aa]1 *.[Bb])" : "Bilder (*.a1 *.b)");
}

}  // namespace
}  // namespace koben::ui
