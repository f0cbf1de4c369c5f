#include "ui/FormWindow.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QSplitter>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QUrl>
#include <algorithm>

#include "bookings/Buchungseingabe.h"
#include "forms/Koben.h"
#include "ui/Application.h"
#include "ui/Bound.h"
#include "ui/Drop.h"
#include "ui/EnterKey.h"
#include "ui/GridView.h"
#include "ui/Layout.h"
#include "ui/Look.h"
#include "ui/Menus.h"
#include "ui/Mnemonics.h"
#include "ui/Names.h"
#include "ui/QuietLine.h"
#include "ui/Simple.h"
#include "ui/SystemPlatform.h"
#include "ui/WindowKeys.h"

namespace koben::ui {

namespace {

const QString placeSection = QStringLiteral("Fenster");

/// The focusable widgets in a widget, as the eye goes: through layouts, pages and split panes.
void collect(QWidget* widget, std::vector<QWidget*>& order);

void collect(QLayout* layout, std::vector<QWidget*>& order) {
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (item->widget())
            collect(item->widget(), order);
        else if (item->layout())
            collect(item->layout(), order);
    }
}

void collect(QWidget* widget, std::vector<QWidget*>& order) {
    if (qobject_cast<QMenuBar*>(widget) || qobject_cast<QToolBar*>(widget)) return;
    if (auto* pages = qobject_cast<QTabWidget*>(widget)) {
        order.push_back(pages->tabBar());
        for (int i = 0; i < pages->count(); ++i) collect(pages->widget(i), order);
        return;
    }
    if (auto* panes = qobject_cast<QSplitter*>(widget)) {
        for (int i = 0; i < panes->count(); ++i) collect(panes->widget(i), order);
        return;
    }
    if (auto* area = qobject_cast<QScrollArea*>(widget)) return collect(area->widget(), order);
    if (widget->focusPolicy() & Qt::TabFocus) {
        order.push_back(widget);
        return;
    }
    if (widget->layout()) collect(widget->layout(), order);
}

/// The scrolling part of a window asks for what its content asks for, and does with less.
class ContentArea final : public QScrollArea {
public:
    explicit ContentArea(QWidget* content) {
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setFocusPolicy(Qt::NoFocus);
        setWidget(content);
        content->setAutoFillBackground(false);
        viewport()->setAutoFillBackground(false);
    }
    QSize sizeHint() const override { return widget()->sizeHint(); }
    QSize minimumSizeHint() const override {
        const int letter = fontMetrics().height();
        return widget()->minimumSizeHint().boundedTo({letter * 12, letter * 5});
    }
};

constexpr int FrameKnown = 150;  // milliseconds until the desktop has drawn a new window's frame
constexpr int MostNamed = 12;    // animals named in the head

}  // namespace

/// Says how many rows of a list are marked, once that changes.
class FormWindow::MarkTeller final : private Control::View {
public:
    MarkTeller(Grid& grid, FormWindow& window) : View(grid), m_grid(grid), m_window(window) {}

private:
    void changed(Aspect aspect) override {
        if ((aspect != Aspect::Marks && aspect != Aspect::Row) || std::exchange(m_waiting, true)) return;
        QMetaObject::invokeMethod(
            &m_window, [this] { tell(); }, Qt::QueuedConnection);
    }
    void tell() {
        m_waiting = false;
        const QString text = markedText(m_grid);
        // what was said since is newer than marks that went
        if (text != m_told && (!text.isEmpty() || m_window.m_quiet->text() == m_told)) m_window.say(text);
        m_told = text;
    }
    Grid& m_grid;
    FormWindow& m_window;
    QString m_told;
    bool m_waiting = false;
};

/// Looks at the buttons anew when another page comes to the front.
class FormWindow::PageWatch final : private Control::View {
public:
    PageWatch(Tabs& tabs, FormWindow& window) : View(tabs), m_window(window) {}

private:
    void changed(Aspect) override {
        QMetaObject::invokeMethod(
            &m_window, [window = &m_window] { window->reviewButtons(); }, Qt::QueuedConnection);
    }
    FormWindow& m_window;
};

FormWindow::FormWindow(Form& form, QWidget* parent) : Window(parent, Qt::Window), m_form(form), m_draft(form) {
    setObjectName(form.name());
    setAcceptDrops(true);
    setWindowIcon(programIcon());
    setWindowTitle(form.caption());
    form.captionChanged = [this] { setWindowTitle(m_form.caption()); };
    if (parent) setWindowModality(Qt::ApplicationModal);
    fill();
    nameParts(*this);
    prepareKeys(*this);
    assignMnemonics(*this);
    orderTabs();
    follow();
}

FormWindow::~FormWindow() { m_form.captionChanged = nullptr; }

void FormWindow::fill() {
    auto* box = new QVBoxLayout(this);
    const Arrange arrange = layoutOf(m_form);
    const Piece content = arrange ? arrange(m_form) : automatic(m_form);
    m_content = content.widget;
    if (auto* menus = m_content->findChild<QMenuBar*>()) box->setMenuBar(menus);
    m_head = new QLabel(this);
    m_head->setTextFormat(Qt::PlainText);
    m_head->setWordWrap(true);
    m_head->hide();
    box->addWidget(m_head);
    QSet<const Control*> bound;
    QList<QObject*> shown = m_content->findChildren<QObject*>() + findChildren<QObject*>();
    shown.append(m_content);
    for (const QObject* child : shown) {
        if (const auto* widget = dynamic_cast<const BoundWidget*>(child)) bound.insert(&widget->control());
        if (const Control* control = controlOfAction(child)) bound.insert(control);
    }
    takeOutButtons();
    m_area = new ContentArea(m_content);
    box->addWidget(m_area, 1);
    for (Control* control : m_form.controls()) {
        const bool hiddenList =
            !control->visible() && (dynamic_cast<Grid*>(control) || dynamic_cast<ListBox*>(control));
        const bool menu = dynamic_cast<MenuEntry*>(control);
        if (!bound.contains(control) && !hiddenList && !menu) m_leftOver.push_back(control);
    }
    if (!m_leftOver.empty()) box->addWidget(automatic(m_leftOver).widget);
    if (m_buttons) box->addWidget(m_buttons);
    m_quiet = new QuietLine(this);
    box->addWidget(m_quiet);
    if (m_form.acceptButton)
        if (auto* accept = qobject_cast<QPushButton*>(widgetOf(*m_form.acceptButton))) accept->setDefault(true);
}

/// The bar of buttons stays in sight where the rest of the window scrolls.
void FormWindow::takeOutButtons() {
    QLayout* inner = m_content->layout();
    if (!inner || inner->count() == 0) return;
    QWidget* last = inner->itemAt(inner->count() - 1)->widget();
    if (!last || last->objectName() != buttonBar) return;
    inner->removeWidget(last);
    m_buttons = last;
}

/// A bar that is wider than the screen becomes two: what stands at the left, and what accepts and closes below it.
void FormWindow::stackButtons() {
    auto* bar = m_buttons ? qobject_cast<QBoxLayout*>(m_buttons->layout()) : nullptr;
    if (!bar || m_buttons->minimumSizeHint().width() <= roomOf(*this).width() - 24) return;
    std::vector<QWidget*> rows[2];
    int row = 0;
    while (QLayoutItem* item = bar->takeAt(0)) {
        item->widget() ? rows[row].push_back(item->widget()) : void(row = 1);
        delete item;
    }
    bar->setDirection(QBoxLayout::TopToBottom);
    for (const auto& widgets : rows) {
        auto* line = new QHBoxLayout;
        line->addStretch(1);
        for (QWidget* widget : widgets) line->addWidget(widget);
        bar->addLayout(line);
    }
}

/// What hangs on the lists, the pages and the focus.
void FormWindow::follow() {
    for (Control* control : m_form.controls()) {
        if (auto* grid = dynamic_cast<Grid*>(control); grid && grid->multi)
            m_tellers.push_back(std::make_unique<MarkTeller>(*grid, *this));
        if (auto* tabs = dynamic_cast<Tabs*>(control)) m_pages.push_back(std::make_unique<PageWatch>(*tabs, *this));
    }
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && m_content->isAncestorOf(now)) m_area->ensureWidgetVisible(now, 20, 20);
    });
}

QWidget* FormWindow::widgetOf(const Control& control) const {
    for (QWidget* widget : findChildren<QWidget*>())
        if (const auto* bound = dynamic_cast<const BoundWidget*>(widget); bound && &bound->control() == &control)
            return widget;
    return nullptr;
}

void FormWindow::orderTabs() {
    m_order.clear();
    collect(layout(), m_order);
    for (size_t i = 1; i < m_order.size(); ++i) setTabOrder(m_order[i - 1], m_order[i]);
}

Decisions* FormWindow::decisions() const { return dynamic_cast<Decisions*>(&m_form.koben.screens); }

void FormWindow::say(const QString& text) { m_quiet->say(text); }

/// Whom an entry is for, where that is more than one.
void FormWindow::showHead() {
    if (!dynamic_cast<Buchungseingabe*>(&m_form)) return;
    const Grid& animals = PE_Bewegungsdaten::behind(m_form.koben).schweinli;
    const std::vector<int> rows = animals.markedRows();
    if (rows.size() < 2) return m_head->hide();
    QStringList numbers;
    for (size_t i = 0; i < rows.size() && i < MostNamed; ++i) numbers.append(animals.cell(rows[i], u"Nummer"));
    QString text = QStringLiteral("Buchung für %1 Tiere: ").arg(rows.size()) + numbers.join(QStringLiteral(", "));
    if (rows.size() > MostNamed) text += QStringLiteral(" und %1 weitere").arg(rows.size() - MostNamed);
    m_head->setText(text);
    m_head->show();
}

// ------------------------------------------------------------------------------------------------------------- place

/// What the window must be to show all of its content.
QSize FormWindow::neededSize() const {
    const QSize content = m_content->minimumSizeHint();
    const int across = std::max(content.width(), m_area->width());
    const int height = m_content->layout() && m_content->layout()->hasHeightForWidth()
                           ? std::max(m_content->layout()->minimumHeightForWidth(across), content.height())
                           : content.height();
    return QSize(content.width(), height) + (size() - m_area->size());
}

QRect FormWindow::naturalPlace() const {
    const QRect room = roomOf(*this);
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const QSize content = m_content->sizeHint().expandedTo(m_content->minimumSizeHint());
    QSize size = sizeHint().expandedTo(minimumSizeHint()) + QSize(bar, bar);
    size.setWidth(std::max(size.width(), content.grownBy(layout()->contentsMargins()).width() + bar));
    const bool large = std::any_of(m_form.controls().begin(), m_form.controls().end(), [](const Control* control) {
        const auto* text = dynamic_cast<const TextBox*>(control);
        return control->visible() && (dynamic_cast<const Grid*>(control) || (text && text->multiLine));
    });
    for (QTableView* table : findChildren<QTableView*>())
        if (auto* list = dynamic_cast<GridView*>(table); list && list->model().visible())
            size.setWidth(std::max(size.width(), list->wholeWidth() + 4 * bar));
    if (large) size = size.expandedTo(room.size() * (parentWidget() ? 0.7 : 0.95));
    size = size.boundedTo(room.size());
    return {room.center() - QPoint(size.width() / 2, size.height() / 2), size};
}

/// Grows with its content as far as the screen has room, and stays on the screen with its frame.
void FormWindow::fit() {
    if (!isVisible() || isMaximized() || isFullScreen()) return;
    QRect place = geometry();
    const QSize needed = neededSize();
    if (needed != m_needed) place.setSize(place.size().expandedTo(needed));
    m_needed = needed;
    place = placeOnScreen(place, roomOnScreens(*this));
    if (place != geometry()) setGeometry(place);
}

bool FormWindow::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest && isVisible() && !std::exchange(m_fitting, true))
        QTimer::singleShot(0, this, [this] {
            m_fitting = false;
            fit();
        });
    return QWidget::event(event);
}

void FormWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    reviewButtons();
    QTimer::singleShot(0, this, [this] { fit(); });
    QTimer::singleShot(FrameKnown, this, [this] { fit(); });
}

void FormWindow::present() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);  // texts that came since the window was made
    showHead();
    stackButtons();
    QRect place = naturalPlace();
    const auto kept = KeptPlace::from(m_form.koben.platform.userSetting(placeSection, m_form.name()), *this);
    if (!kept.rect.isEmpty()) {
        if (kept.sizeHolds) place.setSize(kept.rect.size());
        place.moveTopLeft(kept.rect.topLeft());
        place = placeOnScreen(place, roomOnScreens(*this));
    }
    setGeometry(place);
    firstFocus();
    if (kept.maximized)
        showMaximized();
    else
        show();
    activateWindow();
    m_needed = neededSize();
    m_draft.settle();
}

void FormWindow::keepPlace() {
    if (isVisible()) m_form.koben.platform.setUserSetting(placeSection, m_form.name(), KeptPlace::text(*this));
}

/// Without a word from the form the list has the focus, or else the first field. Of an entry a choice that must be made
/// comes before the field that the form named, where it stands before it and is empty.
void FormWindow::firstFocus() {
    if (QWidget* const named = focusWidget()) {
        for (QWidget* widget : m_order) {
            if (widget == named || !isEntry(m_form)) return;
            const auto* choice = dynamic_cast<const ComboBox*>(controlOf(widget));
            if (choice && choice->fixed && choice->text().isEmpty() && takesEntry(*this, widget))
                return widget->setFocus(Qt::OtherFocusReason);
        }
        return;
    }
    const auto first = [this](const auto& wanted) {
        for (QWidget* widget : m_order)
            if (widget->isEnabledTo(this) && widget->isVisibleTo(this) && wanted(widget))
                return widget->setFocus(Qt::OtherFocusReason), true;
        return false;
    };
    first([](QWidget* widget) { return qobject_cast<QAbstractItemView*>(widget); }) ||
        first([this](QWidget* widget) { return takesEntry(*this, widget); }) ||
        first([](QWidget* widget) { return !qobject_cast<QTabBar*>(widget); });
}

// ------------------------------------------------------------------------------------------- what is typed, and saved

void FormWindow::press(Button& button) {
    if (button.name() == u"nextschwein" && m_draft.pending() && !mayLeaveAnimal()) return;
    const QStringList before = m_draft.state();
    m_saved = false;
    button.click();
    if (m_form.closed()) return;
    tellPrintTrouble();
    if (m_saved || m_draft.state() != before) m_draft.settle();
    reviewButtons();
    showHead();
    if (controlOf(focusWidget()) == &button) focusWrong();
}

/// Where a form passes over a failed print in silence.
void FormWindow::tellPrintTrouble() {
    auto* platform = dynamic_cast<SystemPlatform*>(&m_form.koben.platform);
    if (platform && !platform->printTrouble.isEmpty()) say(std::exchange(platform->printTrouble, {}));
}

/// Back to the first field that a rule refused.
void FormWindow::focusWrong() {
    for (QWidget* widget : m_order)
        if (const Control* control = controlOf(widget); control && control->wrong() && takesEntry(*this, widget))
            return widget->setFocus(Qt::TabFocusReason);
}

bool FormWindow::mayClose() {
    if (m_form.closed() || !m_draft.pending() || !decisions()) return true;
    if (std::exchange(m_asking, true)) return false;
    const int answer = decisions()->decide(QStringLiteral("Die Eingabe ist noch nicht gespeichert."),
                                           {QStringLiteral("Eingabe &verwerfen"), QStringLiteral("&Weiter eingeben")});
    m_asking = false;
    return answer == 0;
}

bool FormWindow::mayLeaveAnimal() {
    if (!decisions()) return true;
    const int answer =
        decisions()->decide(QStringLiteral("Für dieses Tier ist etwas eingetragen, das noch nicht gebucht ist."),
                            {QStringLiteral("&Buchen und weiter"), QStringLiteral("&Verwerfen und weiter"),
                             QStringLiteral("&Hier bleiben")});
    if (answer != 0) return answer == 1;
    auto* book = dynamic_cast<Button*>(m_form.find(u"ok", 2));
    if (!book || !book->enabled()) return false;
    press(*book);
    return !m_form.closed() && !m_draft.pending();
}

void FormWindow::reviewButtons() {
    for (QPushButton* button : findChildren<QPushButton*>())
        if (auto* view = dynamic_cast<ButtonView*>(button)) view->review();
}

void FormWindow::closeEvent(QCloseEvent* event) {
    if (!m_form.closed() && mayClose()) {
        keepPlace();
        m_form.act([this] { m_form.closeBox(); });
    }
    event->setAccepted(m_form.closed());
}

void FormWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && event->mimeData()->urls().first().isLocalFile() && takesFile(m_form))
        event->acceptProposedAction();
}

void FormWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    dropFile(m_form, event->mimeData()->urls().first().toLocalFile());
}

bool FormWindow::escape(Control* control) {
    QLineEdit* search = nullptr;
    for (QLineEdit* edit : findChildren<QLineEdit*>())
        if (edit->isClearButtonEnabled() && edit->isVisibleTo(this) && !edit->text().isEmpty()) search = edit;
    const bool main = dynamic_cast<HerdList*>(&m_form);
    if (search && (main || search == focusWidget())) {
        if (auto* box = dynamic_cast<TextBox*>(controlOf(search)))
            box->edited(QString());
        else
            search->clear();
        return true;
    }
    if (main) return true;  // the program ends by its menu or its close box
    if (control && control->onKey) return control->key(Key::Escape);
    if (mayClose()) m_form.act([this] { m_form.closeBox(); });
    return true;
}

bool FormWindow::enter(Qt::KeyboardModifiers modifiers) {
    QWidget* const focus = focusWidget();
    Control* control = controlOf(focus);
    const bool list = dynamic_cast<Grid*>(control) || dynamic_cast<ListBox*>(control);
    if (modifiers & Qt::ControlModifier || (list && opensEntry(m_form))) {
        const Button* accept = acceptOf(*this);
        auto* button = accept ? qobject_cast<QAbstractButton*>(widgetOf(*accept)) : nullptr;
        if (button) button->click();  // which leaves the field first
        return true;
    }
    moveOn(*this, focus);
    return true;
}

bool FormWindow::formKey(const QKeyEvent& event) {
    Control* control = controlOf(focusWidget());
    switch (event.key()) {
        case Qt::Key_Escape:
            return escape(control);
        case Qt::Key_F1:
            if (!control || !control->onKey || !control->key(Key::F1)) help();
            return true;
        case Qt::Key_Insert:
            return control && control->key(Key::Insert);
        case Qt::Key_Delete:
            return control && control->key(Key::Delete);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return enter(event.modifiers());
        default:
            return windowKey(*this, event);
    }
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
    bool taken = true;
    guarded([&] { taken = formKey(*event); });
    if (!taken) QWidget::keyPressEvent(event);
}

void FormWindow::help() {
    if (!m_form.koben.catalogue.has(QStringLiteral("PH_Hilfe")) || m_form.name() == u"PH_Hilfe") return;
    m_form.act([this] { m_form.koben.open(QStringLiteral("PH_Hilfe")); });
}

}  // namespace koben::ui
