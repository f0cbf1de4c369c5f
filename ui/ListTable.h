#pragma once
// A list box whose rows are columns padded with blanks, shown as the table that it means: sorted by a click on a title,
// walked and marked like any list.
#include <QTableView>

#include "ui/Bound.h"
#include "ui/KeptWidths.h"
#include "ui/RowHand.h"
#include "ui/TypeSearch.h"

namespace koben::ui {

/// The cells of padded rows; a column begins where a word of `titles` does.
class PaddedModel final : public QAbstractTableModel {
public:
    PaddedModel(const ListBox& list, const QString& titles);
    /// Takes the rows over anew and keeps them in the order of the title that was clicked last.
    void refresh();
    void sort(int column, Qt::SortOrder order) override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    QString cell(int item, int column) const;
    int columnOf(const QString& title) const { return static_cast<int>(m_titles.indexOf(title)); }
    int item(int row) const { return row >= 0 && row < rowCount() ? m_order[static_cast<size_t>(row)] : -1; }
    int rowOf(int item) const { return item >= 0 && item < rowCount() ? m_rows[static_cast<size_t>(item)] : -1; }

private:
    void arrange();
    const ListBox& m_list;
    QStringList m_titles;
    std::vector<int> m_begins;
    std::vector<int> m_order, m_rows;  ///< shown row -> item, and back
    int m_column = -1;
    Qt::SortOrder m_direction = Qt::AscendingOrder;
};

class ListTable final : public Bound<QTableView, ListBox>, private RowHand {
public:
    /// `titles` is what the form has above the rows, `searched` the column that a typed number is looked for in.
    ListTable(ListBox& list, Label& titles, const QString& searched);
    void flush();
    QSize sizeHint() const override;
    /// Makes the row current whose cell under `title` is this text, and leaves the marks as they are.
    bool show(const QString& title, const QString& text);
    /// The first row whose searched cell is this text or begins with it; -1 for none.
    int find(const QString& text) const;
    /// Brings a row into sight as the current one; the marks stay.
    void look(int row);
    /// Makes a row current and marks it beside those that are marked.
    void add(int row);

    std::function<void()> filled;  ///< told once rows have come

protected:
    void refresh(Aspect aspect) override;
    void customEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent*) override {}
    void mouseDoubleClickEvent(QMouseEvent*) override {}
    void keyPressEvent(QKeyEvent* event) override;
    void keyboardSearch(const QString&) override {}

    int rows() const override { return m_cells.rowCount(); }
    int currentRow() const override { return m_cells.rowOf(model().current()); }
    bool isMulti() const override { return model().multi; }
    bool isMarked(int row) const override { return model().marked(m_cells.item(row)); }
    std::vector<int> markedRows() const override;
    void chooseRow(int row) override { model().choose(m_cells.item(row)); }
    void markRows(const std::vector<int>& rows) override;

private:
    void fitColumns();
    QString keptUnder() const;
    void restoreOrder();
    void keepOrder();
    void keepWidth();
    PaddedModel m_cells;
    KeptWidths m_widths;
    int m_resized = -1;  ///< the column whose width the user is changing
    QString m_searched;
    TypeSearch* m_search = nullptr;
    bool m_scheduled = false, m_stale = true, m_moved = false;
};

}  // namespace koben::ui
