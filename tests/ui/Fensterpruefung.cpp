#include "tests/ui/Fensterpruefung.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QSet>
#include <QTabWidget>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>
#include <cmath>

#include "ui/Bound.h"
#include "ui/EnterKey.h"
#include "ui/Mnemonics.h"

namespace koben::ui {

namespace {

std::string said(const FormWindow& window, const QWidget& widget, const QString& what = {}) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    const Control* control = controlOf(const_cast<QWidget*>(&widget));
    const QString name = control ? control->address() : label ? label->text() : button ? button->text() : QString();
    return QStringLiteral("%1: %2 „%3“ %4")
        .arg(window.form().name(), QString::fromLatin1(widget.metaObject()->className()), name, what)
        .toStdString();
}

template <class... Around>
bool within(const QWidget* widget) {
    for (const QWidget* up = widget; up; up = up->parentWidget())
        if ((qobject_cast<const Around*>(up) || ...)) return true;
    return false;
}

/// What a text asks for at the width that it has.
QSize wanted(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget); label && label->wordWrap())
        return {label->minimumSizeHint().width(), label->heightForWidth(label->width())};
    if (qobject_cast<const QComboBox*>(&widget)) return {0, widget.fontMetrics().height()};  // its texts scroll
    return qobject_cast<const QLabel*>(&widget) ? widget.sizeHint() : widget.minimumSizeHint();
}

bool showsText(const QWidget& widget) {
    if (widget.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) return false;  // may be cut by its own wish
    if (qobject_cast<const QToolButton*>(&widget)) return false;                       // a sign alone
    if (qobject_cast<const QComboBox*>(widget.parentWidget())) return false;           // its field
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return !label->text().isEmpty();
    return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QGroupBox*>(&widget);
}

/// By the lists' own scrolling a part of them may be out of sight.
bool scrolls(const QWidget* widget) {
    for (const QWidget* up = widget; up; up = up->parentWidget())
        if (qobject_cast<const QAbstractItemView*>(up)) return true;
    return false;
}

bool isWorked(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QTextEdit*>(&widget) ||
           qobject_cast<const QAbstractItemView*>(&widget);
}

double luminance(const QColor& colour) {
    const auto part = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

}  // namespace

double contrast(const QColor& a, const QColor& b) {
    const double x = luminance(a) + 0.05, y = luminance(b) + 0.05;
    return x > y ? x / y : y / x;
}

void expectUncut(const FormWindow& window) {
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || !showsText(*widget) || within<QToolBar, QCalendarWidget>(widget)) continue;
        const QSize wants = wanted(*widget);
        EXPECT_TRUE(widget->width() >= wants.width() && widget->height() >= wants.height())
            << said(window, *widget,
                    QStringLiteral("%1x%2 statt %3x%4")
                        .arg(widget->width())
                        .arg(widget->height())
                        .arg(wants.width())
                        .arg(wants.height()));
        if (scrolls(widget)) continue;
        for (const QWidget* part = widget; part->parentWidget() && part != &window; part = part->parentWidget()) {
            const auto* area = qobject_cast<const QScrollArea*>(part->parentWidget()->parentWidget());
            if (area && area->widget() == part) break;  // scrolls
            EXPECT_TRUE(part->parentWidget()->rect().contains(part->geometry()))
                << said(window, *widget, QStringLiteral("ragt hinaus"));
        }
    }
}

void turnPages(FormWindow& window, const std::function<void()>& look) {
    look();
    for (QTabWidget* pages : window.findChildren<QTabWidget*>()) {
        const int front = pages->currentIndex();
        for (int page = 0; page < pages->count(); ++page) {
            if (page == front || !pages->isTabEnabled(page)) continue;
            pages->setCurrentIndex(page);
            QApplication::processEvents();
            look();
        }
        pages->setCurrentIndex(front);
        QApplication::processEvents();
    }
}

void expectReached(const FormWindow& window, const std::vector<QWidget*>& stops) {
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || !widget->isEnabled() || !isWorked(*widget)) continue;
        if (within<QMenuBar, QToolBar, QCalendarWidget, QAbstractSpinBox>(widget)) continue;
        const Control* control = controlOf(const_cast<QWidget*>(widget));
        const auto* option = dynamic_cast<const Option*>(control);
        if (option && !standsForGroup(*option)) continue;         // by the arrow keys
        if (dynamic_cast<const SpinButton*>(control)) continue;   // by those in its field
        if (control && control->name() == u"calender") continue;  // by F4 in its field
        const bool reached = std::any_of(stops.begin(), stops.end(), [&](const QWidget* stop) {
            return stop == widget || stop->isAncestorOf(widget);
        });
        EXPECT_TRUE(reached) << said(window, *widget);
    }
}

void expectLetters(const FormWindow& window) {
    QSet<QChar> letters;
    const auto once = [&](const QString& text) {
        const QChar letter = mnemonicOf(text);
        if (letter.isNull()) return;
        EXPECT_FALSE(letters.contains(letter)) << qPrintable(window.form().name()) << ": " << qPrintable(text);
        letters.insert(letter);
    };
    for (const QMenuBar* bar : window.findChildren<QMenuBar*>())
        for (const QAction* action : bar->actions()) once(action->text());
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) once(button->text());
    for (const QLabel* label : window.findChildren<QLabel*>())
        if (label->buddy()) once(label->text());
    for (const QTabWidget* pages : window.findChildren<QTabWidget*>())
        for (int page = 0; page < pages->count(); ++page) once(pages->tabText(page));
    for (const QMenu* menu : window.findChildren<QMenu*>()) {
        letters.clear();
        for (const QAction* action : menu->actions()) once(action->text());
    }
}

void expectContrast(const FormWindow& window) {
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || !widget->isEnabled() || !showsText(*widget)) continue;
        const QPalette colours = widget->palette();
        const QColor text = colours.color(widget->foregroundRole());
        const QColor ground = colours.color(widget->backgroundRole());
        EXPECT_GE(contrast(text, ground), 4.5) << said(window, *widget, text.name() + u' ' + ground.name());
    }
}

}  // namespace koben::ui
