// How wide the columns and the row head of a list are.
#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>

#include "ui/GridView.h"

namespace koben::ui {

namespace {

/// To find the widest cells, all rows are looked at up to this many cells, and so many texts of a column measured.
constexpr qint64 mostCounted = 400'000;
constexpr int mostMeasured = 300;

}  // namespace

/// Looks for the widest cell of each column, in all rows as long as these are not too many. Only the longest texts are
/// measured: measuring costs far more than counting letters.
void GridView::measureRows() {
    const int rowCount = model().rowCount(), columns = model().columnCount();
    const qint64 cells = static_cast<qint64>(rowCount) * std::max(columns, 1);
    const int step = static_cast<int>(1 + cells / mostCounted);
    m_fitted.clear();
    for (int column = 1; column <= columns; ++column)
        if (const Column& c = model().column(column); !c.technical)
            m_fitted.insert(c.key, widestCell(column, c.sort == Sort::Date ? step * 20 : step));  // dates are alike
    m_fittedRows = rowCount;
}

int GridView::widestCell(int column, int step) const {
    QFont bold = font();
    bold.setBold(m_cells.urgent != nullptr);
    const QFontMetrics metrics(bold);
    int widest = 0, measured = 0;
    qsizetype longest = 0;
    for (int row = 1; row <= model().rowCount(); row += step) {
        const QString text = model().cell(row, column);
        const bool longer = text.size() > longest;
        if (!longer && (measured > mostMeasured || text.size() * 4 < longest * 3)) continue;
        longest = std::max(longest, text.size());
        widest = std::max(widest, metrics.horizontalAdvance(GridModel::shown(model(), row, column)));
        ++measured;
    }
    return widest;
}

int GridView::naturalWidth(int column) const {
    const QFontMetrics metrics = fontMetrics();
    // the sort arrow needs room beside the title
    const int title = metrics.horizontalAdvance(GridModel::caption(model().column(column))) + metrics.height() * 2;
    const int tick =
        (isMulti() || m_cells.urgent) && horizontalHeader()->visualIndex(column - 1) == 0 ? metrics.height() : 0;
    const int width = std::max(title, m_fitted.value(model().column(column).key) + metrics.height()) + tick;
    return std::clamp(width, metrics.averageCharWidth() * 5, metrics.averageCharWidth() * 45);
}

/// The form's, or else the user's; 0 where nobody has given one.
int GridView::givenWidth(int column) const {
    const Column& c = model().column(column);
    return c.width > 0 || model().onResized ? c.width : m_widths.of(GridModel::caption(c));
}

int GridView::widthOf(int column) const {
    const int given = givenWidth(column);
    return given > 0 ? given : naturalWidth(column);
}

void GridView::resizeTo(int column, int width) {
    if (!model().onResized) m_widths.keep(GridModel::caption(model().column(column)), width);
    model().resizeByUser(column, width);
}

int GridView::wholeWidth() {
    flush();
    int width = verticalScrollBar()->sizeHint().width() + 2 * frameWidth() +
                (verticalHeader()->isVisibleTo(this) ? verticalHeader()->width() : 0);
    for (int c = 1; c <= model().columnCount(); ++c)
        if (!isColumnHidden(c - 1)) width += widthOf(c);
    return width;
}

/// Widths are fitted to the rows once, and again only where rows came; sorting never changes them.
void GridView::fitColumns(bool anew) {
    const bool same = std::all_of(m_fitted.keyBegin(), m_fitted.keyEnd(),
                                  [this](const QString& key) { return model().columnOf(key) > 0; });
    if (anew || !same || m_fittedRows != model().rowCount()) {
        const QHash<QString, int> before = same && !anew ? m_fitted : QHash<QString, int>();
        measureRows();
        for (auto at = before.begin(); at != before.end(); ++at)
            m_fitted[at.key()] = std::max(m_fitted.value(at.key()), at.value());
    }
    if (!anew) return;
    for (int c = 1; c <= model().columnCount(); ++c)
        if (!isColumnHidden(c - 1)) resizeTo(c, naturalWidth(c));
    refresh(Aspect::Columns);
}

/// As wide as its widest title, whatever rows are in sight.
void GridView::fitRowHead() {
    m_doubled = -1;
    if (!model().rowTitle || model().rowCount() == 0) return verticalHeader()->hide();
    const int rowCount = model().rowCount(), step = std::max(1, rowCount / 500);
    int widest = verticalHeader()->fontMetrics().horizontalAdvance(QStringLiteral("0000"));
    std::vector<bool> same(static_cast<size_t>(model().columnCount()), rowCount > 0);
    for (int row = 1; row <= rowCount; row += step) {
        const QString title = m_cells.headerData(row - 1, Qt::Vertical).toString();
        widest = std::max(widest, verticalHeader()->fontMetrics().horizontalAdvance(title));
        for (int c = 1; c <= model().columnCount(); ++c)
            if (same[static_cast<size_t>(c - 1)] && model().cell(row, c) != title)
                same[static_cast<size_t>(c - 1)] = false;
    }
    for (int c = 0; c < model().columnCount() && m_doubled < 0; ++c)
        if (same[static_cast<size_t>(c)] && !isColumnHidden(c)) m_doubled = c;
    verticalHeader()->setFixedWidth(widest + verticalHeader()->fontMetrics().height());
    showRowHead();
}

/// What a column says already need not stand beside it, until that column has left the sight.
void GridView::showRowHead() {
    if (!model().rowTitle || model().rowCount() == 0) return;
    const bool inSight = m_doubled >= 0 && columnViewportPosition(m_doubled) + columnWidth(m_doubled) > 0;
    if (verticalHeader()->isHidden() != inSight) verticalHeader()->setVisible(!inSight);
}

void GridView::applyColumns() {
    fitColumns(false);
    m_columns->apply();
    for (int c = 1; c <= model().columnCount(); ++c) {
        const int width = widthOf(c);
        if (!isColumnHidden(c - 1) && columnWidth(c - 1) != width) setColumnWidth(c - 1, width);
    }
    QHeaderView* header = horizontalHeader();
    header->setSortIndicatorShown(model().sortColumn() > 0);
    if (model().sortColumn() > 0)
        header->setSortIndicator(model().sortColumn() - 1,
                                 model().sortDirection() == 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
    fitRowHead();
    fillWidth();
}

/// The last column takes the room that is left, unless the user has given it a width.
void GridView::fillWidth() {
    int place = model().columnCount();
    while (place > 0 && isColumnHidden(horizontalHeader()->logicalIndex(place - 1))) --place;
    const int last = place > 0 ? horizontalHeader()->logicalIndex(place - 1) + 1 : 0;
    if (last == 0 || givenWidth(last) > 0) return;
    if (model().column(last).align == Align::Right) return;  // a number far from its neighbours is hard to read
    const int others = horizontalHeader()->length() - columnWidth(last - 1);
    const int width = std::max(naturalWidth(last), viewport()->width() - others);
    if (width != columnWidth(last - 1)) setColumnWidth(last - 1, width);
}

}  // namespace koben::ui
