// Every window of the program, on a made herd, and one booking typed from end to end.
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSet>
#include <QtTest/QTest>

#include "tests/ui/Fensterpruefung.h"
#include "tests/ui/ProgramTest.h"
#include "ui/Bound.h"
#include "ui/EnterKey.h"
#include "ui/Look.h"

namespace koben::ui {
namespace {

using FormsTest = ProgramTest;

std::string said(const QString& form, const QString& what) {
    return (form + QStringLiteral(": ") + what).toStdString();
}

void expectWhole(const FormWindow& window) {
    const QString form = window.form().name();
    for (const Control* control : window.leftOver()) ADD_FAILURE() << said(form, control->address());
    for (QWidget* widget : window.tabOrder()) {
        const Control* control = controlOf(widget);
        EXPECT_TRUE(!control || !widget->accessibleName().isEmpty()) << said(form, control ? control->address() : form);
    }
    EXPECT_FALSE(window.tabOrder().empty()) << qPrintable(form);
}

/// Where a stop stands to the eye: what scrolls by its place in the content, what stays in sight below all of it.
QRect placeOf(const FormWindow& window, QWidget* stop) {
    const QWidget* ground = &window;
    int below = 1 << 16;
    for (QWidget* up = stop; up && up != &window; up = up->parentWidget())
        if (qobject_cast<QScrollArea*>(up->parentWidget() ? up->parentWidget()->parentWidget() : nullptr))
            ground = up, below = 0;
    return {stop->mapTo(ground, QPoint(0, below)), stop->size()};
}

/// No step goes up, unless it goes on to what stands at the right.
void expectReadingOrder(const FormWindow& window, const std::vector<QWidget*>& stops) {
    for (size_t i = 1; i < stops.size(); ++i) {
        const QRect from = placeOf(window, stops[i - 1]), to = placeOf(window, stops[i]);
        EXPECT_TRUE(to.center().y() >= from.top() || to.center().x() >= from.center().x())
            << said(window.form().name(), stops[i - 1]->objectName() + u'>' + stops[i]->objectName());
    }
}

bool opensByEnter(const Control* control) {
    const auto* grid = dynamic_cast<const Grid*>(control);
    const auto* list = dynamic_cast<const ListBox*>(control);
    const auto* box = dynamic_cast<const TextBox*>(control);
    const bool booksByEnter = control && control->name() == u"schnell";  // the quick entry
    return grid || booksByEnter || (list && list->onDoubleClick) || (box && box->multiLine);
}

/// Walks the window with one key alone, from its first stop until that or the accepting button is reached again.
std::vector<QWidget*> walked(FormWindow& window, Qt::Key key, const std::vector<QWidget*>& wanted) {
    std::vector<QWidget*> stops;
    if (wanted.empty()) return stops;
    const Button* accept = acceptOf(window);
    wanted.front()->setFocus(Qt::TabFocusReason);
    for (int i = 0; i < 200 && window.focusWidget(); ++i) {
        QWidget* focus = window.focusWidget();
        const bool back = !stops.empty() && focus == stops.front();
        if (back || (key == Qt::Key_Return && controlOf(focus) == accept && accept)) break;
        stops.push_back(focus);
        if (key == Qt::Key_Return && opensByEnter(controlOf(focus)))
            moveOn(window, focus);
        else
            QTest::sendKeyEvent(QTest::Click, focus, key, QString(), Qt::NoModifier);
    }
    return stops;
}

/// Tab reaches every stop, Enter every input and then the accepting button, both as the eye reads.
void expectWalks(FormWindow& window) {
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return}) {
        std::vector<QWidget*> wanted;
        for (QWidget* widget : window.tabOrder()) {
            const auto* option = dynamic_cast<const Option*>(controlOf(widget));
            const bool stands = widget->isVisible() && widget->isEnabled() && (!option || standsForGroup(*option));
            if (stands && (key == Qt::Key_Tab || takesEntry(window, widget))) wanted.push_back(widget);
        }
        const std::vector<QWidget*> stops = walked(window, key, wanted);
        EXPECT_EQ(stops.size(), wanted.size()) << said(window.form().name(), QString::number(key, 16));
        for (size_t i = 0; i < std::min(stops.size(), wanted.size()); ++i)
            EXPECT_EQ(stops[i], wanted[i]) << said(
                window.form().name(), wanted[i]->objectName() + QStringLiteral(", not ") + stops[i]->objectName());
        expectReadingOrder(window, stops);
        if (key == Qt::Key_Tab) expectReached(window, stops);
        const Button* accept = acceptOf(window);
        if (key == Qt::Key_Return && accept && !wanted.empty()) {
            EXPECT_EQ(controlOf(window.focusWidget()), accept) << said(window.form().name(), accept->address());
        }
    }
    EXPECT_FALSE(window.form().closed()) << qPrintable(window.form().name());
}

/// The window stands on the screen, and its buttons in the window.
void expectInSight(const FormWindow& window) {
    const QRect room = window.screen()->availableGeometry();
    EXPECT_TRUE(room.contains(window.frameGeometry())) << qPrintable(window.form().name());
    const auto* bar = window.findChild<QWidget*>(buttonBar);
    if (!bar) return;
    for (const QPushButton* button : bar->findChildren<QPushButton*>())
        if (button->isVisible()) {
            EXPECT_TRUE(window.rect().contains(QRect(button->mapTo(&window, QPoint()), button->size())))
                << said(window.form().name(), button->text());
        }
}

/// Chooses the last option of each group, as a user who has her habits finds it.
void chooseLastOptions(Form& form) {
    std::map<QString, Option*> last;
    for (Control* control : form.controls())
        if (auto* option = dynamic_cast<Option*>(control); option && option->visible() && option->enabled())
            last[option->name()] = option;
    for (const auto& [name, option] : last) option->click();
    QApplication::processEvents();
}

struct FormsAtSize : FormsTest, testing::WithParamInterface<int> {};

/// At the usual size of letters and at a large one, there in the dark and with other options chosen than the first. On
/// the screen that most farms have, enlarged as the environment says.
TEST_P(FormsAtSize, EveryWindowStandsWhole) {
    auto& application = static_cast<QApplication&>(*QApplication::instance());
    const QFont usual = QApplication::font();
    if (GetParam() > 10) applyLook(application, Shade::Dark);
    QFont font = usual;
    font.setPointSize(GetParam());
    QApplication::setFont(font);
    QSet<QString> seen;
    runProgram([&](Form& form) {
        seen.insert(form.name());
        FormWindow& window = *screens.windowOf(form);
        if (GetParam() > 10) chooseLastOptions(form);
        expectWhole(window);
        expectLetters(window);
        turnPages(window, [&] { expectUncut(window), expectContrast(window); });
        expectInSight(window);
        expectWalks(window);
        goOn(form);
    });
    for (const QString& name : laidOutForms()) EXPECT_TRUE(seen.contains(name)) << qPrintable(name);
    applyLook(application, Shade::Light);
    QApplication::setFont(usual);
}
INSTANTIATE_TEST_SUITE_P(Points, FormsAtSize, testing::Values(10, 14));

}  // namespace
}  // namespace koben::ui
