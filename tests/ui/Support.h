#pragma once
// A run of the program for window tests: scripted answers, a fixed day, nothing kept, real key and mouse events.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <map>

#include "forms/Form.h"
#include "forms/Koben.h"
#include "ui/FormWindow.h"
#include "ui/SystemPlatform.h"
#include "ui/WindowScreens.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace koben::ui {

class TestPlatform final : public SystemPlatform {
public:
    TestPlatform() : SystemPlatform([this](const QString&) { return pdf; }) { server.clear(); }
    QDateTime now() override { return QDate(2026, 7, 15).startOfDay(); }
    bool open(const QString&) override { return true; }
    bool start(const QString&) override { return true; }
    QString userSetting(const QString& section, const QString& key) override { return settings[section + u'/' + key]; }
    void setUserSetting(const QString& section, const QString& key, const QString& value) override {
        settings[section + u'/' + key] = value;
    }
    QString dataFolder() override { return folder; }
    QString userFolder() override { return user.isEmpty() ? SystemPlatform::userFolder() : user; }
    bool lockDataFolder(const QString&) override { return true; }
    std::map<QString, QString> settings;
    QString folder, user;
    QString pdf;  ///< the file that prints go to; none as long as it is empty
};

/// Shows forms as the program does; `hand` then plays the user, and whatever it leaves open is closed.
class TestScreens final : public WindowScreens {
public:
    void message(const QString& text) override { told.append(text); }
    bool yesNo(const QString& text, bool) override { return told.append(text), yes; }
    bool okCancel(const QString& text) override { return told.append(text), yes; }
    QString input(const QString& prompt, const QString&, const QString&) override {
        return told.append(prompt), QString();
    }
    int decide(const QString& text, const QStringList& captions) override {
        return told.append(text), answer < 0 ? static_cast<int>(captions.size()) - 1 : answer;
    }
    void tone(int, int) override { ++tones; }
    void run(Form& form) override {
        windowOf(form)->present();
        QApplication::processEvents();
        if (hand) hand(form);
        QApplication::processEvents();
        if (!form.closed()) form.close();
    }
    std::function<void(Form&)> hand;
    QStringList told;
    bool yes = true;
    int answer = -1;  ///< to the window's own questions; -1 the safe one
    int tones = 0;
};

inline void press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text), up(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(widget, &down);
    QApplication::sendEvent(widget, &up);
    QApplication::processEvents();
}

/// What the quiet line of a window says.
inline QString quietLine(const QWidget& window) {
    const auto* line = window.findChild<QLabel*>(QStringLiteral("Hinweiszeile"));
    return line ? line->text() : QString();
}

/// Types into whatever has the focus of the window.
inline void type(FormWindow& window, const QString& text) {
    for (const QChar c : text) press(window.focusWidget(), 0, {}, QString(c));
}

inline void click(QWidget* widget, QPoint at, Qt::KeyboardModifiers modifiers = {},
                  Qt::MouseButton button = Qt::LeftButton) {
    const QPointF global = widget->mapToGlobal(at);
    QMouseEvent down(QEvent::MouseButtonPress, at, global, button, button, modifiers);
    QApplication::sendEvent(widget, &down);
    QMouseEvent up(QEvent::MouseButtonRelease, at, global, button, Qt::NoButton, modifiers);
    QApplication::sendEvent(widget, &up);
    QApplication::processEvents();
}

/// A context without a database, for forms made by the tests.
struct Bench {
    TestScreens screens;
    TestPlatform platform;
    Catalogue catalogue;
    Koben koben{screens, platform, catalogue};
    Bench() { koben.Heute = QStringLiteral("15.07.2026"); }
    /// Runs a form with a hand on its window.
    void run(Form& form, const std::function<void(FormWindow&)>& hand) {
        screens.hand = [&](Form& shown) { hand(*screens.windowOf(shown)); };
        koben.run(form);
    }
};

}  // namespace koben::ui
