#include "ui/FormWindow.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTabBar>
#include <QTimer>
#include <QUrl>
#include <algorithm>

#include "bookings/Buchungseingabe.h"
#include "forms/Koben.h"
#include "ui/Application.h"
#include "ui/Bound.h"
#include "ui/Drop.h"
#include "ui/EnterKey.h"
#include "ui/GridView.h"
#include "ui/Look.h"
#include "ui/Mnemonics.h"
#include "ui/Names.h"
#include "ui/QuietLine.h"
#include "ui/SampleFarm.h"
#include "ui/Simple.h"
#include "ui/SystemPlatform.h"
#include "ui/WindowKeys.h"

namespace koben::ui {

namespace {

const QString placeSection = QStringLiteral("Fenster");

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
    setWindowTitle(ui::windowTitle(form));
    form.captionChanged = [this] { setWindowTitle(ui::windowTitle(m_form)); };
    if (parent) setWindowModality(Qt::ApplicationModal);
    fill();
    nameParts(*this);
    prepareKeys(*this);
    assignMnemonics(*this);
    orderTabs();
    follow();
}

FormWindow::~FormWindow() { m_form.captionChanged = nullptr; }

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
    // texts that break their lines want more height than their hint tells
    if (const QLayout* inner = m_content->layout(); inner && inner->hasHeightForWidth()) {
        const QMargins edges = layout()->contentsMargins();
        const int across = size.width() - edges.left() - edges.right() - bar;
        size.rheight() += std::max(0, inner->totalHeightForWidth(across) - content.height());
    }
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

/// Of an entry the empty choice that stands first of all, as the kind of an animal does: it must be made.
QWidget* FormWindow::openChoice() const {
    for (QWidget* widget : m_order) {
        if (!isEntry(m_form) || !takesEntry(*this, widget)) continue;
        const auto* choice = dynamic_cast<const ComboBox*>(controlOf(widget));
        return choice && choice->fixed && choice->text().isEmpty() ? widget : nullptr;
    }
    return nullptr;
}

/// Without a word from the form the list has the focus, or else the first field. A choice that must be made comes
/// before the field that the form named.
void FormWindow::firstFocus() {
    if (focusWidget()) {
        if (QWidget* choice = openChoice()) choice->setFocus(Qt::OtherFocusReason);
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
    if (button.name().startsWith(u"ok") && !mayLackChoice()) return;
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

/// A new entry without the choice that must be made can be saved, but is in no list that goes by it.
bool FormWindow::mayLackChoice() {
    QWidget* const choice = m_form.koben.Buchungsmodus == u"Neu" && decisions() ? openChoice() : nullptr;
    if (!choice) return true;
    const int answer = decisions()->decide(
        QStringLiteral(
            "Bei „%1“ ist noch nichts gewählt. Ohne diese Angabe steht das Neue in keiner Liste, die nach ihr "
            "auswählt.")
            .arg(choice->accessibleName()),
        {QStringLiteral("&Trotzdem speichern"), QStringLiteral("Jetzt &wählen")});
    if (answer != 0) choice->setFocus(Qt::TabFocusReason);
    return answer == 0;
}

void FormWindow::reviewButtons() {
    const QWidget* accept = m_form.acceptButton ? widgetOf(*m_form.acceptButton) : nullptr;
    for (QPushButton* button : findChildren<QPushButton*>()) {
        if (auto* view = dynamic_cast<ButtonView*>(button)) view->review();
        button->setDefault(button == accept);  // a wizard has another one on each page
    }
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
    if (main) {  // the program ends by its menu or its close box
        if (auto* back = dynamic_cast<Button*>(m_form.find(u"comheute")); back && back->visible()) press(*back);
        return true;
    }
    if (control && control->onKey) return control->key(Key::Escape);
    if (mayClose()) m_form.act([this] { m_form.closeBox(); });
    return true;
}

bool FormWindow::enter(Qt::KeyboardModifiers modifiers) {
    QWidget* const focus = focusWidget();
    Control* control = controlOf(focus);
    const bool list = dynamic_cast<Grid*>(control) || dynamic_cast<ListBox*>(control);
    if (auto* own = qobject_cast<QPushButton*>(focus); own && !control && !modifiers) {
        own->click();  // of the window's own
        return true;
    }
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
