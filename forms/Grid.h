#pragma once
// The grid: a table of text cells or of a typed result, with a current row, marked rows, sorting, in-place editing and
// a file format of its own. Rows and columns count from 1; row 0 of the printed list is the titles.
#include <QHash>
#include <QStringList>

#include "forms/Control.h"
#include "store/Database.h"

namespace koben {

enum class Align : quint8 { Left = 0, Right = 1, Centre = 2 };
enum class Sort : quint8 { Text = 0, Number = 1, Date = 2 };

struct Column {
    QString key;
    QString title;
    Align align = Align::Left;
    int width = 0;  ///< pixels at 96 dpi; 0 lets the view choose
    Sort sort = Sort::Text;
    QString caption = {};    ///< what the window shows above the column; the title where empty
    bool technical = false;  ///< of no use to a reader (row ids); the window hides it
};

class Grid : public Control {
public:
    Grid(Form& form, const QString& name, bool multi = false) : Control(form, name), multi(multi) {}
    const bool multi;  ///< several rows can be marked; otherwise only the current row counts

    // columns
    void clear();  ///< rows and columns
    void addColumn(const Column& column);
    int columnCount() const { return static_cast<int>(m_columns.size()); }
    Column& column(int number) { return m_columns.at(static_cast<size_t>(number - 1)); }
    const Column& column(int number) const { return m_columns.at(static_cast<size_t>(number - 1)); }
    int columnOf(QStringView key) const;  ///< case-insensitive; 0 where there is none
    void columnsChanged() { notify(Aspect::Columns); }

    // rows
    void clearRows();
    /// Adding and replacing rows makes a bound grid one of plain texts.
    void addRow(const QString& tabSeparated);
    void insertRow(int row, const QString& tabSeparated);
    void setRowCells(int row, const QStringList& cells);
    /// Shows a result: a column for each field, titled by its name (unless columns with those keys stand already),
    /// numbers right-aligned. The grid keeps its own copy.
    void bind(const Table& table);
    /// A column that rows stand by.
    struct Order {
        int column;
        bool down = false;
    };
    /// Brings a bound grid up to date without reading its result again: rows whose counter in the column `key` is among
    /// `ids` go, and `rows` (with the fields of the bound table) come to their places by `order`; rows equal in it
    /// stand by their counters. No row is current or marked then. False, with nothing done, where the whole result must
    /// be bound anew: after changes in place, after many of these, and where the rows stand in another order.
    bool refresh(const Table& rows, const std::vector<qint64>& ids, QStringView key, const std::vector<Order>& order);
    /// Takes over rows, order, current row and marks of another bound grid, with the columns of these keys.
    void share(const Grid& source, const QStringList& keys);
    int rowCount() const { return static_cast<int>(m_order.size()); }
    QString cell(int row, int column) const;
    QString cell(int row, QStringView key) const;
    /// The typed value of a bound grid's cell; a text for other grids.
    Value value(int row, QStringView key) const;
    Value value(int row, int column) const;
    /// The whole number in a cell, without a detour through text where the grid is bound; 0 where there is none.
    qint64 integer(int row, int column) const;
    void setCell(int row, int column, const QString& text);
    void removeRow(int row);  ///< the next row becomes current where the current one goes
    bool isSeparator(int row) const { return columnCount() > 0 && cell(row, 1) == u"."; }

    // current row and marks
    int row() const { return m_row; }  ///< 0 where no row is current
    /// Makes a row current; in a multi grid it is then the one marked row. No event.
    void setRow(int row);
    /// Makes a row current and leaves the marks as they are. No event.
    void setRowKeepingMarks(int row);
    bool marked(int row) const;
    void setMarked(int row, bool on);
    void clearMarks();
    int markedCount() const;
    std::vector<int> markedRows() const;

    // order
    /// Sorts by several columns, ascending: "vom,bis,nummer". Rows equal in all keep their order.
    void sortBy(const QString& keys);
    void sort(int column, int direction);  ///< 1 ascending, 2 descending
    /// Puts the rows into another order: `rows` names each of the present rows once, first to last. Marks and the
    /// current row go with them; `column` and `direction` are what the arrow in the header shows.
    void reorder(const std::vector<int>& rows, int column, int direction);
    int sortColumn() const { return m_sortColumn; }
    int sortDirection() const { return m_sortDirection; }
    /// First row whose cell is like the pattern (the dialect's LIKE); 0 for no hit.
    int findLike(QStringView key, const QString& pattern) const;
    int findText(QStringView key, const QString& text) const;

    /// The grid's own file: columns with all attributes, then the cells. False where it cannot be written or read.
    bool save(const QString& path) const;
    bool load(const QString& path);

    // the user's hand
    void choose(int row);
    void mark(const std::vector<int>& rows);
    void click();
    void doubleClick();
    void rightClick();
    void sortByUser(int column, int direction);
    void resizeByUser(int column, int width);
    /// In-place editing, finished as with Enter. False where the grid does not edit that cell.
    bool editByUser(int row, int column, const QString& text);
    bool key(Key key) override;

    std::function<void()> onRowChange, onClick, onDoubleClick, onRightClick, onDelete;
    std::function<void(int column)> onSorted, onResized;
    std::function<bool(int row, int column)> canEdit;
    std::function<void(int row, int column, const QString& text)> onEdited;
    /// The fixed column at the left edge: what the window shows as a row's name; the number where empty.
    std::function<QString(int row)> rowTitle;
    /// Asks the window to open the editor of a cell.
    std::function<void(int row, int column)> startEdit;

private:
    QString sourceText(int source, int column) const;
    int compare(int sourceA, int sourceB, int column) const;
    void resetRows(int count);
    void unbind();

    std::vector<Column> m_columns;
    Table m_table;
    bool m_bound = false;
    std::vector<int> m_fieldOf;        // column -> field of the bound table
    std::vector<QStringList> m_cells;  // rows of an unbound grid
    QHash<qint64, QString> m_changed;  // cells of a bound grid changed in place
    std::vector<int> m_order;          // displayed row -> source row
    std::vector<bool> m_marks;         // by source row
    int m_row = 0;
    int m_sortColumn = 0, m_sortDirection = 0;
};

}  // namespace koben
