#pragma once
// A typist at the windows: plays key strokes as a text, sends each as a real key event to whatever has the focus, and
// counts them. "1023<Tab>E1<Alt+O>" is eight strokes; a key held with another counts once.
#include <QKeySequence>
#include <QMenu>
#include <QtTest/QTest>

#include "tests/ui/Support.h"

namespace koben::ui {

class Typist {
public:
    explicit Typist(WindowScreens& screens) : m_screens(screens) {}
    int strokes = 0;

    void play(const QString& keys) {
        for (qsizetype i = 0; i < keys.size(); ++i) {
            const qsizetype end = keys[i] == u'<' ? keys.indexOf(u'>', i) : -1;
            if (end < 0) {
                stroke(QTest::asciiToKey(keys[i].toLatin1()), {}, QString(keys[i]));
                continue;
            }
            const QStringList named = keys.mid(i + 1, end - i - 1).split(u'*');  // "<Tab*3>"
            const QKeyCombination key = QKeySequence(named[0])[0];
            for (int n = named.value(1, QStringLiteral("1")).toInt(); n > 0; --n)
                stroke(key.key(), key.keyboardModifiers(), {});
            i = end;
        }
    }

private:
    void stroke(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
        ++strokes;
        QWidget* widget = QApplication::activePopupWidget();
        if (!widget) widget = QApplication::activeModalWidget();
        FormWindow* window = m_screens.front();
        if (!widget || dynamic_cast<FormWindow*>(widget)) widget = window;
        if (QWidget* focus = widget->focusWidget(); focus && !qobject_cast<QMenu*>(widget)) widget = focus;
        QTest::sendKeyEvent(QTest::Click, widget, key, text, modifiers);
        QApplication::processEvents();
    }
    WindowScreens& m_screens;
};

}  // namespace koben::ui
