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
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSet>
#include <QSplitter>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QUrl>
#include <algorithm>

#include "forms/Koben.h"
#include "ui/Application.h"
#include "ui/Bound.h"
#include "ui/Drop.h"
#include "ui/Layout.h"
#include "ui/Look.h"
#include "ui/Menus.h"
#include "ui/Names.h"

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

/// The mnemonic letter of a caption; null where it has none.
QChar mnemonicOf(const QString& caption) {
    for (qsizetype i = 0; i + 1 < caption.size(); ++i)
        if (caption[i] == u'&') {
            if (caption[i + 1] != u'&') return caption[i + 1].toLower();
            ++i;
        }
    return {};
}

}  // namespace

FormWindow::FormWindow(Form& form, QWidget* parent) : QWidget(parent, Qt::Window), m_form(form) {
    setObjectName(form.name());
    setAcceptDrops(true);
    setWindowIcon(programIcon());
    setWindowTitle(form.caption());
    form.captionChanged = [this] { setWindowTitle(m_form.caption()); };
    if (parent) setWindowModality(Qt::ApplicationModal);
    fill();
    nameParts(*this);
    assignMnemonics();
    orderTabs();
}

FormWindow::~FormWindow() { m_form.captionChanged = nullptr; }

/// What is too large for the screen scrolls, but for the buttons below.
void FormWindow::scrollIfTooLarge() {
    const QScreen* screen = QApplication::primaryScreen();
    const QSize free = screen ? screen->availableSize() - QSize(40, 80) : QSize(984, 688);
    const QSize needed = m_content->minimumSizeHint();
    if (m_area || (needed.width() <= free.width() && needed.height() <= free.height())) return;
    QWidget* const focus = focusWidget();
    auto* box = static_cast<QBoxLayout*>(layout());
    QWidget* buttons = nullptr;
    if (QLayout* inner = m_content->layout(); inner && inner->count() > 0)
        if (QWidget* last = inner->itemAt(inner->count() - 1)->widget(); last && last->objectName() == buttonBar)
            buttons = last;
    m_area = new QScrollArea;
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setWidgetResizable(true);
    delete box->replaceWidget(m_content, m_area);
    if (buttons) {
        m_content->layout()->removeWidget(buttons);
        box->insertWidget(box->indexOf(m_area) + 1, buttons);
    }
    m_area->setWidget(m_content);
    box->setStretchFactor(m_area, 1);
    if (focus) focus->setFocus(Qt::OtherFocusReason);
    orderTabs();
}

void FormWindow::fill() {
    auto* box = new QVBoxLayout(this);
    const Arrange arrange = layoutOf(m_form);
    const Piece content = arrange ? arrange(m_form) : automatic(m_form);
    m_content = content.widget;
    box->addWidget(m_content, 1);
    if (auto* menus = findChild<QMenuBar*>()) box->setMenuBar(menus);
    QSet<const Control*> bound;
    for (const QObject* child : findChildren<QObject*>()) {
        if (const auto* widget = dynamic_cast<const BoundWidget*>(child)) bound.insert(&widget->control());
        if (const Control* control = controlOfAction(child)) bound.insert(control);
    }
    for (Control* control : m_form.controls()) {
        const bool hiddenReport = dynamic_cast<Grid*>(control) && !control->visible();
        const bool menu = dynamic_cast<MenuEntry*>(control);
        if (!bound.contains(control) && !hiddenReport && !menu) m_leftOver.push_back(control);
    }
    if (!m_leftOver.empty()) box->addWidget(automatic(m_leftOver).widget);
    if (m_form.acceptButton)
        if (auto* accept = qobject_cast<QPushButton*>(widgetOf(*m_form.acceptButton))) accept->setDefault(true);
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

/// Keeps each letter for the first that claims it. The menu bar claims first: it is the same in every state.
void FormWindow::assignMnemonics() {
    QSet<QChar> taken;
    const auto keep = [&taken](const QString& caption, const std::function<void(const QString&)>& replace) {
        const QChar letter = mnemonicOf(caption);
        if (letter.isNull()) return;
        if (taken.contains(letter))
            replace(plainCaption(caption).replace(u'&', QStringLiteral("&&")));
        else
            taken.insert(letter);
    };
    for (QMenuBar* bar : findChildren<QMenuBar*>())
        for (QAction* action : bar->actions())
            keep(action->text(), [action](const QString& text) { action->setText(text); });
    for (QAbstractButton* button : findChildren<QAbstractButton*>())
        keep(button->text(), [button](const QString& text) { button->setText(text); });
    for (QLabel* label : findChildren<QLabel*>())
        if (label->buddy()) keep(label->text(), [label](const QString& text) { label->setText(text); });
}

QRect FormWindow::naturalPlace() const {
    const QScreen* screen = parentWidget() ? parentWidget()->screen() : QApplication::primaryScreen();
    const QRect free = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    QSize size = sizeHint().expandedTo(minimumSizeHint());
    const QSize content = m_content->sizeHint().expandedTo(m_content->minimumSizeHint());
    size = size.expandedTo(content.grownBy(layout()->contentsMargins()) + QSize(bar, bar));
    const bool large = std::any_of(m_form.controls().begin(), m_form.controls().end(), [](const Control* control) {
        const auto* text = dynamic_cast<const TextBox*>(control);
        return control->visible() && (dynamic_cast<const Grid*>(control) || (text && text->multiLine));
    });
    if (large) size = size.expandedTo(free.size() * (parentWidget() ? 0.7 : 0.92));
    size = size.boundedTo(free.size() - QSize(16, 40));
    return {free.center() - QPoint(size.width() / 2, size.height() / 2), size};
}

void FormWindow::present() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);  // texts that came since the window was made
    scrollIfTooLarge();
    const QStringList kept = m_form.koben.platform.userSetting(placeSection, m_form.name()).split(u',');
    QRect place = naturalPlace();
    if (kept.size() >= 4) {
        const QRect wanted(kept[0].toInt(), kept[1].toInt(), kept[2].toInt(), kept[3].toInt());
        QList<QRect> screens;
        for (const QScreen* screen : QApplication::screens()) screens.append(screen->availableGeometry());
        if (wanted.width() > 50 && wanted.height() > 50) place = placeOnScreen(wanted, screens);
    }
    setGeometry(place);
    firstFocus();
    if (kept.size() >= 5 && kept[4] == u"max")
        showMaximized();
    else
        show();
    activateWindow();
}

void FormWindow::keepPlace() {
    if (!isVisible()) return;
    const QRect place = isMaximized() ? normalGeometry() : geometry();
    QString text = QStringLiteral("%1,%2,%3,%4").arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height());
    if (isMaximized()) text += QStringLiteral(",max");
    m_form.koben.platform.setUserSetting(placeSection, m_form.name(), text);
}

/// Without a word from the form the list has the focus, or else the first field.
void FormWindow::firstFocus() {
    if (focusWidget()) return;
    for (QWidget* widget : m_order)
        if (qobject_cast<QAbstractItemView*>(widget) && widget->isEnabledTo(this) && widget->isVisibleTo(this))
            return widget->setFocus(Qt::OtherFocusReason);
    for (QWidget* widget : m_order)
        if (widget->isEnabledTo(this) && widget->isVisibleTo(this) && !qobject_cast<QTabBar*>(widget))
            return widget->setFocus(Qt::OtherFocusReason);
}

void FormWindow::closeEvent(QCloseEvent* event) {
    if (!m_form.closed()) guarded([this] { m_form.closeBox(); });
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

bool FormWindow::formKey(int key) {
    Control* control = controlOf(focusWidget());
    switch (key) {
        case Qt::Key_Escape:
            if (control && control->key(Key::Escape)) return true;
            m_form.closeBox();
            m_form.settle();
            return true;
        case Qt::Key_F1:
            if (!control || !control->onKey || !control->key(Key::F1)) help();
            return true;
        case Qt::Key_Insert:
            return control && control->key(Key::Insert);
        case Qt::Key_Delete:
            return control && control->key(Key::Delete);
        case Qt::Key_Return:
        case Qt::Key_Enter: {
            Button* accept = m_form.acceptButton;
            if (!accept || !accept->enabled() || !accept->visible()) return false;
            if (QWidget* widget = widgetOf(*accept)) widget->setFocus(Qt::OtherFocusReason);  // leaves the field first
            accept->click();
            return true;
        }
        default:
            return false;
    }
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
    bool taken = true;
    guarded([&] { taken = formKey(event->key()); });
    if (!taken) QWidget::keyPressEvent(event);
}

void FormWindow::help() {
    if (!m_form.koben.catalogue.has(QStringLiteral("PH_Hilfe")) || m_form.name() == u"PH_Hilfe") return;
    m_form.koben.open(QStringLiteral("PH_Hilfe"));
    m_form.settle();
}

QRect placeOnScreen(const QRect& wanted, const QList<QRect>& screens) {
    QRect best;
    for (const QRect& screen : screens) {
        const QRect seen = screen & wanted;
        if (seen.width() * seen.height() > (best & wanted).width() * (best & wanted).height() || best.isNull())
            best = screen;
    }
    if (best.isNull()) return wanted;
    QRect place(wanted.topLeft(), wanted.size().boundedTo(best.size()));
    place.moveLeft(std::clamp(place.left(), best.left(), best.right() - place.width() + 1));
    place.moveTop(std::clamp(place.top(), best.top(), best.bottom() - place.height() + 1));
    return place;
}

}  // namespace koben::ui
