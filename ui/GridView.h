#pragma once
// The window's table on a grid.
#include <QTableView>

#include "ui/Bound.h"
#include "ui/ColumnHand.h"
#include "ui/GridModel.h"
#include "ui/KeptWidths.h"
#include "ui/RowHand.h"
#include "ui/TypeSearch.h"

class QMimeData;

namespace koben::ui {

class GridView final : public Bound<QTableView, Grid>, private RowHand {
public:
    /// `emptyHint` stands in the middle of a list without rows.
    explicit GridView(Grid& grid, const QString& emptyHint = {});
    ~GridView() override;

    /// Shows at once what changed; otherwise this happens before the next input.
    void flush();
    /// Titles and marked rows (or the current one) for the clipboard.
    QMimeData* copied() const;
    /// Shows where the current cell comes from.
    void explainCurrent();
    /// Lets the user mark no row at all, where that is a choice of its own.
    void allowNoMark() { m_keepsOne = false; }
    /// Rows (from 0) that must be seen at a glance, and the word for it. The first of them is current when rows come.
    void setUrgent(std::function<bool(int row)> urgent, const QString& word);
    /// Asks for the height of its rows, at least and at most of so many, instead of that of a long list.
    void fitRows(int least, int most);
    /// As wide as all columns beside each other.
    int wholeWidth();
    TypeSearch& search() { return *m_search; }
    ColumnHand& columns() { return *m_columns; }
    QSize sizeHint() const override;

protected:
    void refresh(Aspect aspect) override;
    void customEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyboardSearch(const QString&) override {}
    void scrollContentsBy(int dx, int dy) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

    int rows() const override { return model().rowCount(); }
    int currentRow() const override { return model().row() - 1; }
    bool isMulti() const override { return model().multi; }
    bool isMarked(int row) const override { return model().marked(row + 1); }
    std::vector<int> markedRows() const override;
    void chooseRow(int row) override;
    void markRows(const std::vector<int>& rows) override;
    bool keepsOneMarked() const override { return m_keepsOne; }

private:
    void schedule();
    void applyColumns();
    void fillWidth();
    void measureRows();
    int widestCell(int column, int step) const;
    void fitColumns(bool anew);
    int naturalWidth(int column) const;
    int givenWidth(int column) const;
    int widthOf(int column) const;
    void resizeTo(int column, int width);
    void fitRowHead();
    void showRowHead();
    QString searchText(int row) const;
    void jumpTo(int row);
    void sortBy(int column, int direction);
    bool headerMenuKey(const QKeyEvent& event);
    void showCurrent(bool scroll);
    void showUrgent();
    void headerClicked(int section);
    void headerReleased();
    bool editKey(QKeyEvent* event);
    void edit(int row, int column);

    GridModel m_cells;
    ColumnHand* m_columns = nullptr;
    KeptWidths m_widths;  ///< of a list whose form keeps none
    TypeSearch* m_search = nullptr;
    QHash<QString, int> m_fitted;  ///< widths by the columns' keys, once they were fitted to the rows
    int m_fittedRows = -1;         ///< how many rows there were then
    int m_doubled = -1;            ///< the column (from 0) that says the same as the row head; -1 for none
    bool m_keepsOne = true;
    int m_leastRows = 0, m_mostRows = 0;  ///< that it asks the height of; 0 for a long list
    QString m_emptyHint;
    bool m_scheduled = false, m_rowsStale = true, m_columnsStale = true, m_rowMoved = false;
    bool m_headerPressed = false;
    int m_resized = -1;
};

}  // namespace koben::ui
