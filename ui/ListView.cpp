#include "ui/ListView.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

namespace koben::ui {

namespace {

const QEvent::Type flushEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

class ListDelegate final : public QStyledItemDelegate {
public:
    ListDelegate(const ListBox& list, QObject* parent) : QStyledItemDelegate(parent), m_list(list) {}

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const bool on = m_list.multi ? m_list.marked(index.row()) : index.row() == m_list.current();
        option->state.setFlag(QStyle::State_Selected, on);
        if (!m_list.multi) return;
        // marked rows are told by a tick too, and a click on its box marks one more
        option->features |= QStyleOptionViewItem::HasCheckIndicator;
        option->checkState = on ? Qt::Checked : Qt::Unchecked;
        option->state.setFlag(QStyle::State_HasFocus, index.row() == m_list.current());
    }

private:
    const ListBox& m_list;
};

}  // namespace

ListView::ListView(ListBox& list) : Bound(list), m_items(list) {
    setModel(&m_items);
    setItemDelegate(new ListDelegate(list, this));
    setSelectionMode(NoSelection);
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
    m_search = new TypeSearch(
        *this, [this] { return rows(); }, [this](int row) { return m_items.text(row); },
        [this](int row) {
            jump(row);
            m_moved = true;
            flush();
        });
    m_search->searchWords();
    start();
    if (list.multi)
        setAccessibleDescription(QStringLiteral(
            "Leertaste setzt den Haken oder nimmt ihn zurück, ein getipptes Wort führt zu seiner Zeile."));
}

QSize ListView::sizeHint() const {
    int widest = 20 * fontMetrics().averageCharWidth();
    for (int row = 0; row < std::min(rows(), 200); ++row)
        widest = std::max(widest, fontMetrics().horizontalAdvance(m_items.text(row)));
    return {std::min(widest, 45 * fontMetrics().averageCharWidth()) + 3 * fontMetrics().height(),
            fontMetrics().height() * 10};
}

void ListView::refresh(Aspect aspect) {
    if (aspect == Aspect::Items || aspect == Aspect::Text) m_stale = true;
    if (aspect == Aspect::Row) m_moved = true;
    if (m_scheduled) return;
    m_scheduled = true;
    QCoreApplication::postEvent(this, new QEvent(flushEvent), Qt::HighEventPriority);
}

void ListView::customEvent(QEvent* event) {
    if (event->type() == flushEvent)
        flush();
    else
        QListView::customEvent(event);
}

void ListView::flush() {
    m_scheduled = false;
    const int down = verticalScrollBar()->value();
    if (m_stale) m_items.refresh();
    verticalScrollBar()->setValue(down);
    const QModelIndex index = m_items.index(model().current());
    if (index.isValid()) {
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
        if (m_moved) scrollTo(index);
    }
    m_stale = m_moved = false;
    viewport()->update();
}

std::vector<int> ListView::markedRows() const {
    std::vector<int> marks;
    for (int row = 0; row < rows(); ++row)
        if (model().marked(row)) marks.push_back(row);
    return marks;
}

void ListView::mousePressEvent(QMouseEvent* event) {
    flush();
    if (event->button() != Qt::LeftButton) return;
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool range = event->modifiers() & Qt::ShiftModifier;
    press(index.row(), isMulti() && !range ? event->modifiers() | Qt::ControlModifier : event->modifiers());
    flush();
}

void ListView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton && !isMulti()) drag(indexAt(event->position().toPoint()).row());
}

void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid()) model().doubleClick();
}

void ListView::keyPressEvent(QKeyEvent* event) {
    flush();
    const int height = std::max(sizeHintForRow(0), 1);
    const bool walks = isMulti() && !(event->modifiers() & Qt::ShiftModifier) && event->key() != Qt::Key_A;
    const Qt::KeyboardModifiers modifiers = walks ? event->modifiers() | Qt::ControlModifier : event->modifiers();
    if (moveByKey(event->key(), modifiers, std::max(viewport()->height() / height - 1, 1))) {
        m_search->end();
        return flush();
    }
    bool told = false;
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            told = model().key(Key::Enter);
            if (!told && model().onDoubleClick) {
                model().doubleClick();
                told = true;
            }
            break;
        case Qt::Key_Delete:
            told = model().key(Key::Delete);
            break;
        case Qt::Key_Insert:
            told = model().key(Key::Insert);
            break;
        default:
            told = m_search->key(*event);
    }
    if (!told) event->ignore();
}

}  // namespace koben::ui
