#include "ui/GridView.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

#include "forms/Form.h"
#include "ui/Application.h"
#include "ui/Menus.h"

namespace koben::ui {

namespace {

const QEvent::Type flushEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

/// Paints rows as the grid marks them, and a separator row as a line.
class GridDelegate final : public QStyledItemDelegate {
public:
    GridDelegate(const Grid& grid, QObject* parent) : QStyledItemDelegate(parent), m_grid(grid) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        if (index.row() < m_grid.rowCount() && m_grid.isSeparator(index.row() + 1)) {
            painter->setPen(option.palette.color(QPalette::Mid));
            painter->drawLine(option.rect.left(), option.rect.center().y(), option.rect.right() + 1,
                              option.rect.center().y());
            return;
        }
        QStyledItemDelegate::paint(painter, option, index);
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const bool current = index.row() + 1 == m_grid.row();
        option->state.setFlag(QStyle::State_Selected, m_grid.multi ? m_grid.marked(index.row() + 1) : current);
        option->state.setFlag(QStyle::State_HasFocus, current && option->state.testFlag(QStyle::State_HasFocus));
        option->textElideMode = Qt::ElideRight;
    }

private:
    const Grid& m_grid;
};

}  // namespace

GridView::GridView(Grid& grid, const QString& emptyHint)
    : Bound(grid), m_cells(grid), m_emptyHint(emptyHint.isEmpty() ? QStringLiteral("Keine Einträge") : emptyHint) {
    setModel(&m_cells);
    setItemDelegate(new GridDelegate(grid, this));
    setSelectionMode(NoSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(EditKeyPressed | AnyKeyPressed);  // mouse and Enter go to the form
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    const int height = fontMetrics().height() + fontMetrics().height() / 4;
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setMinimumSectionSize(16);
    horizontalHeader()->viewport()->installEventFilter(this);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) { headerClicked(section); });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section, int, int) {
        if (m_headerPressed) m_resized = section;
    });
    connect(horizontalHeader(), &QHeaderView::sectionHandleDoubleClicked, this, [this](int section) {
        model().resizeByUser(section + 1, naturalWidth(section + 1));
        refresh(Aspect::Columns);
    });
    connect(verticalHeader(), &QHeaderView::sectionPressed, this,
            [this](int row) { press(row, QApplication::keyboardModifiers()); });
    grid.startEdit = [this](int row, int column) { edit(row, column); };
    start();
    m_columnsStale = true;
    schedule();
}

GridView::~GridView() { model().startEdit = nullptr; }

QSize GridView::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * 60, verticalHeader()->defaultSectionSize() * 12};
}

void GridView::schedule() {
    if (m_scheduled) return;
    m_scheduled = true;
    QCoreApplication::postEvent(this, new QEvent(flushEvent), Qt::HighEventPriority);
}

void GridView::refresh(Aspect aspect) {
    switch (aspect) {
        case Aspect::Columns:
            m_columnsStale = m_rowsStale = true;
            break;
        case Aspect::Rows:
            m_rowsStale = true;
            break;
        case Aspect::Row:
            m_rowMoved = true;
            break;
        default:
            break;
    }
    schedule();
}

void GridView::customEvent(QEvent* event) {
    if (event->type() == flushEvent)
        flush();
    else
        QTableView::customEvent(event);
}

void GridView::flush() {
    m_scheduled = false;
    const int down = verticalScrollBar()->value(), across = horizontalScrollBar()->value();
    const bool rowsGone = m_cells.rowCount() != model().rowCount();
    if (m_rowsStale || m_columnsStale) {
        const bool columns = m_columnsStale || m_cells.columnCount() != model().columnCount();
        m_cells.refresh(columns && m_cells.columnCount() != model().columnCount());
        if (columns || rowsGone) applyColumns();
        updateGeometries();
        verticalScrollBar()->setValue(down);
        horizontalScrollBar()->setValue(across);
    }
    showCurrent(m_rowMoved);
    m_rowsStale = m_columnsStale = m_rowMoved = false;
    viewport()->update();
    horizontalHeader()->viewport()->update();
    verticalHeader()->viewport()->update();
}

int GridView::naturalWidth(int column) const {
    const QFontMetrics metrics = fontMetrics();
    // the sort arrow needs room beside the title
    int width = metrics.horizontalAdvance(GridModel::caption(model().column(column))) + metrics.height() * 2;
    const int first = std::max(rowAt(0), 0);
    const int last = std::min(model().rowCount(), first + 60);
    for (int row = first + 1; row <= last; ++row)
        width = std::max(width, metrics.horizontalAdvance(model().cell(row, column)) + metrics.height());
    return std::clamp(width, metrics.averageCharWidth() * 5, metrics.averageCharWidth() * 45);
}

void GridView::applyColumns() {
    for (int c = 1; c <= model().columnCount(); ++c) {
        const Column& column = model().column(c);
        const int width = column.width > 0 ? column.width : naturalWidth(c);
        if (columnWidth(c - 1) != width) setColumnWidth(c - 1, width);
        if (isColumnHidden(c - 1) != column.technical) setColumnHidden(c - 1, column.technical);
    }
    QHeaderView* header = horizontalHeader();
    header->setSortIndicatorShown(model().sortColumn() > 0);
    if (model().sortColumn() > 0)
        header->setSortIndicator(model().sortColumn() - 1,
                                 model().sortDirection() == 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
    verticalHeader()->setVisible(static_cast<bool>(model().rowTitle));
    fillWidth();
}

/// The last column takes the room that is left, unless the user has given it a width.
void GridView::fillWidth() {
    int last = model().columnCount();
    while (last > 0 && isColumnHidden(last - 1)) --last;
    if (last == 0 || model().column(last).width > 0) return;
    const int others = horizontalHeader()->length() - columnWidth(last - 1);
    const int width = std::max(naturalWidth(last), viewport()->width() - others);
    if (width != columnWidth(last - 1)) setColumnWidth(last - 1, width);
}

void GridView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (m_cells.columnCount() == model().columnCount()) fillWidth();
}

void GridView::showCurrent(bool scroll) {
    const int row = model().row();
    if (row == 0) {
        setCurrentIndex({});
        return;
    }
    int column = std::max(currentIndex().column(), 0);
    while (column < model().columnCount() && isColumnHidden(column)) ++column;
    const QModelIndex index = m_cells.index(row - 1, column);
    const bool autoScroll = hasAutoScroll();
    setAutoScroll(false);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    setAutoScroll(autoScroll);
    if (!scroll) return;
    const int across = horizontalScrollBar()->value();
    scrollTo(index);
    horizontalScrollBar()->setValue(across);
}

void GridView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (model().rowCount() == 0) viewport()->update();  // the hint stays in the middle
}

void GridView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (model().rowCount() > 0) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const QRect middle = viewport()->rect().adjusted(12, 12, -12, -12);
    painter.drawText(middle, Qt::AlignCenter | Qt::TextWordWrap, m_emptyHint);
}

std::vector<int> GridView::markedRows() const {
    std::vector<int> rows = model().markedRows();
    for (int& row : rows) --row;
    return rows;
}

void GridView::chooseRow(int row) {
    if (row != currentRow())
        guarded([&] { model().choose(row + 1); });
    else if (isMulti())
        markRows({row});
}

void GridView::markRows(const std::vector<int>& rows) {
    std::vector<int> numbers = rows;
    for (int& row : numbers) ++row;
    model().mark(numbers);
}

void GridView::mousePressEvent(QMouseEvent* event) {
    flush();
    if (event->button() != Qt::LeftButton) return;
    if (state() == EditingState) setFocus();  // closes the editor
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid()) return;
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    press(index.row(), event->modifiers());
    flush();
}

void GridView::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton)) return QTableView::mouseMoveEvent(event);
    const int row = rowAt(static_cast<int>(event->position().y()));
    drag(row);
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid())
        guarded([this] { model().click(); });
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid()) return;
    if (m_cells.flags(index) & Qt::ItemIsEditable)
        QTableView::edit(index);
    else
        guarded([this] { model().doubleClick(); });
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
    flush();
    QPoint at = event->globalPos();
    if (event->reason() == QContextMenuEvent::Mouse) {
        const int row = rowAt(event->pos().y());
        if (row >= 0 && !(isMulti() && isMarked(row)) && row != currentRow()) chooseRow(row);
    } else {
        at = viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft());
    }
    model().rightClick();
    popUpMenu(model().form(), *this, at);
}

void GridView::edit(int row, int column) {
    if (model().row() != row) model().setRow(row);
    flush();
    const QModelIndex index = m_cells.index(row - 1, column - 1);
    if (!index.isValid()) return;
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    setFocus(Qt::OtherFocusReason);
    if (m_cells.flags(index) & Qt::ItemIsEditable) QTableView::edit(index);
}

bool GridView::editKey(QKeyEvent* event) {
    const QModelIndex index = currentIndex();
    if (!index.isValid() || !(m_cells.flags(index) & Qt::ItemIsEditable)) return false;
    const bool word = !event->text().isEmpty() && event->text().at(0).isPrint() &&
                      !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (!word && event->key() != Qt::Key_F2) return false;
    return QTableView::edit(index, word ? AnyKeyPressed : EditKeyPressed, event) || true;
}

void GridView::keyPressEvent(QKeyEvent* event) {
    if (state() == EditingState) return;  // the editor's Enter and Tab come up to here
    flush();
    if (event->matches(QKeySequence::Copy)) {
        QApplication::clipboard()->setText(copied());
        return;
    }
    const int page = std::max(viewport()->height() / verticalHeader()->defaultSectionSize() - 1, 1);
    const bool sideways = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    if (moveByKey(event->key(), event->modifiers(), page)) {
        flush();
        if (isMulti()) guarded([this] { model().click(); });  // marking by key is a click, as marking by mouse is
        return;
    }
    if (sideways) {
        const QModelIndex next = moveCursor(event->key() == Qt::Key_Left ? MoveLeft : MoveRight, event->modifiers());
        if (next.isValid()) selectionModel()->setCurrentIndex(next, QItemSelectionModel::NoUpdate);
        return;
    }
    if (editKey(event)) return;
    bool told = false;
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            told = model().key(Key::Enter);
            break;
        case Qt::Key_Delete:
            told = model().key(Key::Delete);
            break;
        case Qt::Key_Insert:
            told = model().key(Key::Insert);
            break;
        default:
            break;
    }
    if (!told) event->ignore();
}

/// Tab accepts like Enter and stays in the row: what comes next is the form's matter.
void GridView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint) {
    QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
}

QString GridView::copied() const {
    std::vector<int> rows = isMulti() ? model().markedRows() : std::vector<int>();
    if (rows.empty() && model().row() > 0) rows = {model().row()};
    std::vector<int> columns;
    for (int visual = 0; visual < m_cells.columnCount(); ++visual) {
        const int column = horizontalHeader()->logicalIndex(visual);
        if (!isColumnHidden(column)) columns.push_back(column + 1);
    }
    const auto line = [&](const std::function<QString(int)>& cell) {
        QStringList cells;
        for (const int column : columns) cells.append(cell(column).replace(u'\t', u' ').replace(u'\n', u' '));
        return cells.join(u'\t') + u'\n';
    };
    QString text = line([&](int column) { return GridModel::caption(model().column(column)); });
    for (const int row : rows) text += line([&](int column) { return model().cell(row, column); });
    return text;
}

void GridView::headerClicked(int section) {
    const bool again = model().sortColumn() == section + 1 && model().sortDirection() == 1;
    guarded([&] { model().sortByUser(section + 1, again ? 2 : 1); });
    m_rowMoved = true;  // the current row is looked for where it now stands
    refresh(Aspect::Columns);
    flush();
}

bool GridView::eventFilter(QObject* object, QEvent* event) {
    if (object == horizontalHeader()->viewport()) {
        if (event->type() == QEvent::MouseButtonPress) m_headerPressed = true;
        if (event->type() == QEvent::MouseButtonRelease) QMetaObject::invokeMethod(this, [this] { headerReleased(); });
    }
    return QTableView::eventFilter(object, event);
}

void GridView::headerReleased() {
    m_headerPressed = false;
    if (m_resized < 0) return;
    const int section = m_resized;
    m_resized = -1;
    model().resizeByUser(section + 1, columnWidth(section));
}

}  // namespace koben::ui
