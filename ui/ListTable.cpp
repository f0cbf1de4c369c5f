#include "ui/ListTable.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <algorithm>
#include <numeric>

#include "forms/Form.h"
#include "forms/Koben.h"
#include "ui/Application.h"
#include "ui/ColumnHand.h"
#include "ui/GridDelegate.h"
#include "ui/ListCopy.h"

namespace koben::ui {

namespace {

const QEvent::Type flushEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

/// The label that became the table's titles: it has its place in the window.
class Titles final : public QObject, public BoundWidget {
public:
    Titles(Label& label, QObject* table) : QObject(table), m_label(label) {}
    Control& control() const override { return m_label; }

private:
    Label& m_label;
};

}  // namespace

PaddedModel::PaddedModel(const ListBox& list, const QString& titles) : m_list(list) {
    for (qsizetype i = 0; i < titles.size(); ++i)
        if (!titles[i].isSpace() && (i == 0 || titles[i - 1].isSpace())) m_begins.push_back(static_cast<int>(i));
    for (const QString& title : titles.split(u' ', Qt::SkipEmptyParts)) m_titles.append(title);
}

int PaddedModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_order.size());
}
int PaddedModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_titles.size());
}

QString PaddedModel::cell(int item, int column) const {
    if (item < 0 || item >= m_list.items().size() || column < 0 || column >= m_titles.size()) return {};
    const auto at = static_cast<size_t>(column);
    const int begin = m_begins[at], length = at + 1 < m_begins.size() ? m_begins[at + 1] - begin : -1;
    return m_list.items().at(item).mid(begin, length).trimmed();
}

QVariant PaddedModel::data(const QModelIndex& index, int role) const {
    return role == Qt::DisplayRole ? cell(item(index.row()), index.column()) : QVariant();
}

QVariant PaddedModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) return {};
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? m_titles.value(section) : QVariant();
}

void PaddedModel::arrange() {
    m_order.resize(static_cast<size_t>(m_list.items().size()));
    std::iota(m_order.begin(), m_order.end(), 0);
    if (m_column >= 0)
        std::stable_sort(m_order.begin(), m_order.end(), [this](int a, int b) {
            const int order = compareNaturally(cell(a, m_column), cell(b, m_column));
            return m_direction == Qt::AscendingOrder ? order < 0 : order > 0;
        });
    m_rows.resize(m_order.size());
    for (size_t row = 0; row < m_order.size(); ++row) m_rows[static_cast<size_t>(m_order[row])] = static_cast<int>(row);
}

void PaddedModel::refresh() {
    beginResetModel();
    arrange();
    endResetModel();
}

void PaddedModel::sort(int column, Qt::SortOrder order) {
    m_column = column;
    m_direction = order;
    refresh();
}

ListTable::ListTable(ListBox& list, Label& titles, const QString& searched)
    : Bound(list), m_cells(list, titles.text()), m_widths(list), m_searched(searched) {
    new Titles(titles, this);
    setModel(&m_cells);
    setItemDelegate(rowDelegate({.current = [this](int row) { return row == currentRow(); },
                                 .marked = [this](int row) { return isMarked(row); },
                                 .separator = [](int) { return false; },
                                 .multi = list.multi},
                                *this));
    setSelectionMode(NoSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 5 / 4);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setSectionsMovable(true);
    horizontalHeader()->setFirstSectionMovable(true);
    restoreOrder();
    connect(horizontalHeader(), &QHeaderView::sectionMoved, this, [this] { keepOrder(); });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) { m_resized = column; });
    horizontalHeader()->viewport()->installEventFilter(this);
    horizontalHeader()->setAccessibleName(QStringLiteral("Spaltenköpfe"));
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    connect(horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, [this] {
        m_moved = true;
        refresh(Aspect::Row);
    });
    m_search = new TypeSearch(
        *this, [this] { return rows(); },
        [this](int row) { return m_cells.cell(m_cells.item(row), m_cells.columnOf(m_searched)); },
        [this](int row) {
            jump(row);
            flush();
        });
    start();
    setAccessibleDescription(
        QStringLiteral("Leertaste markiert die Zeile oder nimmt die Marke zurück, eine getippte Nummer führt zu "
                       "ihrer Zeile."));
}

QSize ListTable::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 60, verticalHeader()->defaultSectionSize() * 14};
}

void ListTable::fitColumns() {
    for (int c = 0; c + 1 < m_cells.columnCount(); ++c) {
        const QString title = m_cells.headerData(c, Qt::Horizontal).toString();
        int widest = fontMetrics().horizontalAdvance(title) + fontMetrics().height();
        for (int item = 0; item < rows(); ++item)
            widest = std::max(widest, fontMetrics().horizontalAdvance(m_cells.cell(item, c)));
        const int width = widest + fontMetrics().height() * (c == 0 ? 2 : 1), kept = m_widths.of(title);
        if (kept > 0 || width > columnWidth(c)) setColumnWidth(c, kept > 0 ? kept : width);
    }
}

QString ListTable::keptUnder() const {
    return QStringLiteral("%1.%2.Spalten").arg(model().form().name(), model().address());
}

/// By the titles, as the user has left them; a title that she has never moved keeps its place beside the others.
void ListTable::restoreOrder() {
    const QString kept = model().form().koben.platform.userSetting(listSection, keptUnder());
    int place = 0;
    for (const QString& title : kept.split(u';', Qt::SkipEmptyParts))
        if (const int column = m_cells.columnOf(title); column >= 0)
            horizontalHeader()->moveSection(horizontalHeader()->visualIndex(column), place++);
}

void ListTable::keepOrder() {
    QStringList titles;
    for (int place = 0; place < horizontalHeader()->count(); ++place)
        titles.append(m_cells.headerData(horizontalHeader()->logicalIndex(place), Qt::Horizontal).toString());
    model().form().koben.platform.setUserSetting(listSection, keptUnder(), titles.join(u';'));
}

/// Once the mouse has let go of a border. The last column only fills what is left.
void ListTable::keepWidth() {
    const int column = std::exchange(m_resized, -1);
    if (column < 0 || horizontalHeader()->visualIndex(column) == horizontalHeader()->count() - 1) return;
    m_widths.keep(m_cells.headerData(column, Qt::Horizontal).toString(), columnWidth(column));
}

bool ListTable::eventFilter(QObject* object, QEvent* event) {
    const bool header = object == horizontalHeader()->viewport();
    if (header && event->type() == QEvent::MouseButtonPress) m_resized = -1;
    if (header && event->type() == QEvent::MouseButtonRelease) QMetaObject::invokeMethod(this, [this] { keepWidth(); });
    return QTableView::eventFilter(object, event);
}

void ListTable::refresh(Aspect aspect) {
    if (aspect == Aspect::Items || aspect == Aspect::Text) m_stale = true;
    if (aspect == Aspect::Row) m_moved = true;
    if (m_scheduled) return;
    m_scheduled = true;
    QCoreApplication::postEvent(this, new QEvent(flushEvent), Qt::HighEventPriority);
}

void ListTable::customEvent(QEvent* event) {
    if (event->type() == flushEvent)
        flush();
    else
        QTableView::customEvent(event);
}

bool ListTable::event(QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
    return QTableView::event(event);
}

void ListTable::flush() {
    m_scheduled = false;
    if (m_stale) {
        const int down = verticalScrollBar()->value();
        const bool first = rows() == 0;
        m_stale = false;
        m_cells.refresh();
        if (first && rows() > 0) fitColumns();
        verticalScrollBar()->setValue(down);
        if (rows() > 0 && filled) filled();
    }
    const QModelIndex index = m_cells.index(currentRow(), std::max(currentIndex().column(), 0));
    if (index.isValid()) {
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        if (m_moved) scrollTo(index);
    }
    m_moved = false;
    viewport()->update();
}

std::vector<int> ListTable::markedRows() const {
    std::vector<int> marks;
    for (int row = 0; row < rows(); ++row)
        if (isMarked(row)) marks.push_back(row);
    return marks;
}

void ListTable::markRows(const std::vector<int>& rows) {
    std::vector<int> items;
    for (const int row : rows) items.push_back(m_cells.item(row));
    model().mark(items);
}

bool ListTable::show(const QString& title, const QString& text) {
    const int column = m_cells.columnOf(title);
    for (int item = 0; item < rows(); ++item)
        if (m_cells.cell(item, column) == text) {
            model().setCurrent(item);
            return true;
        }
    return false;
}

int ListTable::find(const QString& text) const {
    const int column = m_cells.columnOf(m_searched);
    int begins = -1;
    for (int row = 0; row < rows(); ++row) {
        const QString cell = m_cells.cell(m_cells.item(row), column);
        if (cell.compare(text, Qt::CaseInsensitive) == 0) return row;
        if (begins < 0 && cell.startsWith(text, Qt::CaseInsensitive)) begins = row;
    }
    return begins;
}

void ListTable::look(int row) {
    model().setCurrent(m_cells.item(row));
    flush();
}

void ListTable::add(int row) {
    model().setMarked(m_cells.item(row), true);
    look(row);
}

void ListTable::mousePressEvent(QMouseEvent* event) {
    flush();
    if (event->button() != Qt::LeftButton) return;
    press(indexAt(event->position().toPoint()).row(), event->modifiers());
    flush();
}

void ListTable::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton) drag(indexAt(event->position().toPoint()).row());
}

void ListTable::keyPressEvent(QKeyEvent* event) {
    flush();
    if (event->matches(QKeySequence::Copy)) {
        std::vector<QStringList> lines(1);
        std::vector<int> rows = markedRows();
        if (rows.empty() && currentRow() >= 0) rows = {currentRow()};
        for (int c = 0; c < m_cells.columnCount(); ++c)
            lines[0].append(m_cells.headerData(c, Qt::Horizontal).toString());
        for (const int row : rows) {
            lines.emplace_back();
            for (int c = 0; c < m_cells.columnCount(); ++c) lines.back().append(m_cells.cell(m_cells.item(row), c));
        }
        return QApplication::clipboard()->setMimeData(clipboardRows(lines, {true, true, true}));
    }
    const int page = std::max(viewport()->height() / verticalHeader()->defaultSectionSize() - 1, 1);
    if (moveByKey(event->key(), event->modifiers(), page)) {
        m_search->end();
        m_moved = true;
        return flush();
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && isMulti() && m_search->hit()) {  // number, Enter, number, Enter marks one after the other
        add(currentRow());
        return m_search->end();
    }
    if (!m_search->key(*event)) event->ignore();
}

}  // namespace koben::ui
