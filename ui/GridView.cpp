#include "ui/GridView.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "forms/Erklaerung.h"
#include "forms/Form.h"
#include "ui/Application.h"
#include "ui/GridDelegate.h"
#include "ui/ListCopy.h"
#include "ui/Menus.h"

namespace koben::ui {

namespace {

const QEvent::Type flushEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

QString described(const Grid& grid) {
    return grid.multi ? QStringLiteral(
                            "Leertaste markiert die Zeile, Strg+Pfeil geht weiter und lässt markiert, eine "
                            "getippte Nummer führt zu ihrer Zeile.")
                      : QStringLiteral("Eine getippte Nummer führt zu ihrer Zeile.");
}

}  // namespace

GridView::GridView(Grid& grid, const QString& emptyHint)
    : Bound(grid),
      m_cells(grid),
      m_widths(grid),
      m_emptyHint(emptyHint.isEmpty() ? QStringLiteral("Keine Einträge") : emptyHint) {
    setModel(&m_cells);
    setItemDelegate(rowDelegate(grid, *this));
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
        measureRows();
        resizeTo(section + 1, naturalWidth(section + 1));
        refresh(Aspect::Columns);
    });
    m_columns = new ColumnHand(*horizontalHeader(), grid);
    m_columns->sort = [this](int column, int direction) { sortBy(column, direction); };
    m_columns->fitWidths = [this] { fitColumns(true); };
    m_search = new TypeSearch(
        *this, [this] { return rows(); }, [this](int row) { return searchText(row); },
        [this](int row) { jumpTo(row); });
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(horizontalHeader(), &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        flush();
        m_columns->popUp(horizontalHeader()->mapToGlobal(at), horizontalHeader()->logicalIndexAt(at));
    });
    setAccessibleDescription(described(grid));
    horizontalHeader()->setAccessibleName(QStringLiteral("Spaltenköpfe"));
    verticalHeader()->setAccessibleName(QStringLiteral("Zeilenköpfe"));
    connect(verticalHeader(), &QHeaderView::sectionPressed, this,
            [this](int row) { press(row, QApplication::keyboardModifiers()); });
    grid.startEdit = [this](int row, int column) { edit(row, column); };
    start();
    m_columnsStale = true;
    schedule();
}

GridView::~GridView() { model().startEdit = nullptr; }

void GridView::setUrgent(std::function<bool(int row)> urgent, const QString& word) {
    m_cells.urgent = urgent;
    m_cells.urgentWord = word;
    delete itemDelegate();
    setItemDelegate(rowDelegate(model(), *this, std::move(urgent)));
}

void GridView::showUrgent() {
    for (int row = 1; model().row() == 0 && row <= model().rowCount(); ++row)
        if (m_cells.urgent(row - 1)) model().setRow(row);
    m_rowMoved = true;
}

void GridView::fitRows(int least, int most) {
    m_leastRows = least;
    m_mostRows = most;
    updateGeometry();
}

QSize GridView::sizeHint() const {
    constexpr int longList = 12;
    const int width = fontMetrics().averageCharWidth() * 60, line = verticalHeader()->defaultSectionSize();
    if (m_mostRows == 0) return {width, line * longList};
    const int rows = std::clamp(model().rowCount(), m_leastRows, m_mostRows);
    return {width, line * rows + horizontalHeader()->sizeHint().height() + 2 * frameWidth()};
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
    if (rowsGone && m_cells.urgent) showUrgent();
    if (m_rowsStale || m_columnsStale) {
        const bool columns = m_columnsStale || m_cells.columnCount() != model().columnCount();
        m_cells.refresh(columns && m_cells.columnCount() != model().columnCount());
        if (columns || rowsGone) applyColumns();
        updateGeometries();
        if (m_mostRows > 0) updateGeometry();
        verticalScrollBar()->setValue(down);
        horizontalScrollBar()->setValue(across);
    }
    if (m_columns->natural() && (m_rowsStale || m_columnsStale)) m_columns->orderNaturally();
    showCurrent(m_rowMoved);
    m_rowsStale = m_columnsStale = m_rowMoved = false;
    viewport()->update();
    horizontalHeader()->viewport()->update();
    verticalHeader()->viewport()->update();
}

void GridView::resizeEvent(QResizeEvent* event) {
    const QRect current = visualRect(currentIndex());
    const bool first = !event->oldSize().isValid() || !isVisible();
    const bool seen = current.isValid() && (first || current.bottom() < event->oldSize().height());
    QTableView::resizeEvent(event);
    if (m_cells.columnCount() == model().columnCount()) fillWidth();
    if (seen && current.bottom() >= event->size().height()) {  // a lower view does not hide the row that was seen
        const int across = horizontalScrollBar()->value();
        scrollTo(currentIndex());
        horizontalScrollBar()->setValue(across);
    }
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
    // marks live in the grid; a selection of Qt's would fill the row as if it were marked
    selectionModel()->setCurrentIndex(index, isMulti()
                                                 ? QItemSelectionModel::NoUpdate
                                                 : QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    setAutoScroll(autoScroll);
    if (!scroll) return;
    const int across = horizontalScrollBar()->value();
    scrollTo(index);
    horizontalScrollBar()->setValue(across);
}

void GridView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (dx != 0)
        QMetaObject::invokeMethod(
            this, [this] { showRowHead(); }, Qt::QueuedConnection);
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
        guarded([&] { model().doubleClick(index.column() + 1); });
}

void GridView::explainCurrent() {
    const int column = std::max(currentIndex().column(), 0) + 1;
    guarded([&] { model().form().act([&] { Zelle_erklaeren(model(), model().row(), column); }); });
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
    flush();
    QPoint at = event->globalPos();
    if (event->reason() == QContextMenuEvent::Mouse) {
        const int row = rowAt(event->pos().y());
        if (row >= 0 && !(isMulti() && isMarked(row)) && row != currentRow()) chooseRow(row);
        if (const QModelIndex cell = indexAt(event->pos()); cell.isValid())
            selectionModel()->setCurrentIndex(cell, QItemSelectionModel::NoUpdate);
    } else {
        at = viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft());
    }
    model().rightClick();
    std::function<void()> explain;
    if (model().explain) explain = [this] { explainCurrent(); };
    popUpMenu(model().form(), *this, at, explain);
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

bool GridView::event(QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();  // the frame tells the focus
    return QTableView::event(event);
}

void GridView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange) return;
    m_fittedRows = -1;
    m_fitted.clear();
    refresh(Aspect::Columns);
}

QString GridView::searchText(int row) const {
    int column = model().columnOf(u"Nummer");
    for (int place = 0; column == 0 && place < horizontalHeader()->count(); ++place)
        if (const int c = horizontalHeader()->logicalIndex(place); !isColumnHidden(c)) column = c + 1;
    return model().cell(row + 1, column);
}

void GridView::jumpTo(int row) {
    jump(row);
    m_rowMoved = true;
    flush();
    if (isMulti()) guarded([this] { model().click(); });
}

/// The header's menu by key, on the column of the current cell.
bool GridView::headerMenuKey(const QKeyEvent& event) {
    const bool menu =
        event.key() == Qt::Key_Menu || (event.key() == Qt::Key_F10 && event.modifiers() & Qt::ShiftModifier);
    if (!menu || !(event.modifiers() & Qt::ControlModifier)) return false;
    const int column = std::max(currentIndex().column(), 0);
    const QPoint at(columnViewportPosition(column), horizontalHeader()->height());
    m_columns->popUp(horizontalHeader()->viewport()->mapToGlobal(at), column);
    return true;
}

void GridView::keyPressEvent(QKeyEvent* event) {
    if (state() == EditingState) return;  // the editor's Enter and Tab come up to here
    flush();
    if (event->matches(QKeySequence::Copy)) {
        QApplication::clipboard()->setMimeData(copied());
        return;
    }
    if (headerMenuKey(*event)) return;
    const int page = std::max(viewport()->height() / verticalHeader()->defaultSectionSize() - 1, 1);
    const bool sideways = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    if (moveByKey(event->key(), event->modifiers(), page)) {
        m_search->end();
        flush();
        if (isMulti()) guarded([this] { model().click(); });  // marking by key is a click, as marking by mouse is
        return;
    }
    if (sideways) {
        const QModelIndex next = moveCursor(event->key() == Qt::Key_Left ? MoveLeft : MoveRight, event->modifiers());
        if (next.isValid()) selectionModel()->setCurrentIndex(next, QItemSelectionModel::NoUpdate);
        return;
    }
    if (editKey(event) || m_search->key(*event)) return;
    bool told = false;
    switch (event->key()) {
        case Qt::Key_F2:
            if (!(told = model().explain != nullptr)) break;
            explainCurrent();
            break;
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

QMimeData* GridView::copied() const {
    std::vector<int> rows = isMulti() ? model().markedRows() : std::vector<int>();
    if (rows.empty() && model().row() > 0) rows = {model().row()};
    std::vector<int> columns;
    std::vector<bool> isText;
    for (int visual = 0; visual < m_cells.columnCount(); ++visual) {
        const int column = horizontalHeader()->logicalIndex(visual) + 1;
        if (isColumnHidden(column - 1)) continue;
        columns.push_back(column);
        isText.push_back(model().column(column).sort == Sort::Text);
    }
    std::vector<QStringList> cells;
    const auto add = [&](const std::function<QString(int)>& cell) {
        QStringList line;
        for (const int column : columns) line.append(cell(column));
        cells.push_back(line);
    };
    add([&](int column) { return GridModel::caption(model().column(column)); });
    for (const int row : rows)
        if (!model().isSeparator(row)) add([&](int column) { return GridModel::shown(model(), row, column); });
    return clipboardRows(cells, isText);
}

void GridView::sortBy(int column, int direction) {
    guarded([&] { model().sortByUser(column, direction); });
    m_columns->orderNaturally();
    m_rowMoved = true;  // the current row is looked for where it now stands
    refresh(Aspect::Columns);
    flush();
}

void GridView::headerClicked(int section) {
    sortBy(section + 1, model().sortColumn() == section + 1 && model().sortDirection() == 1 ? 2 : 1);
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
    resizeTo(section + 1, columnWidth(section));
}

}  // namespace koben::ui
