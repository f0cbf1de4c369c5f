#pragma once
// The window's table on a grid.
#include <QTableView>

#include "ui/Bound.h"
#include "ui/GridModel.h"
#include "ui/RowHand.h"

namespace koben::ui {

class GridView final : public Bound<QTableView, Grid>, private RowHand {
public:
    /// `emptyHint` stands in the middle of a list without rows.
    explicit GridView(Grid& grid, const QString& emptyHint = {});
    ~GridView() override;

    /// Shows at once what changed; otherwise this happens before the next input.
    void flush();
    /// Titles and marked rows (or the current one) as tab-separated text.
    QString copied() const;
    QSize sizeHint() const override;

protected:
    void refresh(Aspect aspect) override;
    void customEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
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

private:
    void schedule();
    void applyColumns();
    void fillWidth();
    int naturalWidth(int column) const;
    void showCurrent(bool scroll);
    void headerClicked(int section);
    void headerReleased();
    bool editKey(QKeyEvent* event);
    void edit(int row, int column);

    GridModel m_cells;
    QString m_emptyHint;
    bool m_scheduled = false, m_rowsStale = true, m_columnsStale = true, m_rowMoved = false;
    bool m_headerPressed = false;
    int m_resized = -1;
};

}  // namespace koben::ui
