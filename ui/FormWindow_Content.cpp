// What a window shows: the form's layout, the part of it that scrolls, the buttons that stay in sight, and the order in
// which Tab goes through them.
#include <QBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QSet>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>

#include "ui/Bound.h"
#include "ui/FormWindow.h"
#include "ui/Layout.h"
#include "ui/Menus.h"
#include "ui/QuietLine.h"

namespace koben::ui {

namespace {

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

}  // namespace

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

void FormWindow::orderTabs() {
    m_order.clear();
    collect(layout(), m_order);
    for (size_t i = 1; i < m_order.size(); ++i) setTabOrder(m_order[i - 1], m_order[i]);
}

}  // namespace koben::ui
