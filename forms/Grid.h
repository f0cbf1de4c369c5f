#pragma once
// The grid: a table of typed cells or of a whole result, with a current row, marked rows, sorting, in-place editing and
// a file format of its own. Rows and columns count from 1; row 0 of the printed list is the titles.
#include <QHash>
#include <QList>
#include <QStringList>
#include <optional>

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
    int decimals = -1;       ///< digits that a number shows behind its comma; -1 as many as it has
};

/// Where a figure in a list comes from: what it means, what it is made of, and the bookings or animals behind it.
struct Explanation {
    QString sentence;  ///< what the figure is, in German
    /// The figure and, where it is a quotient, its parts, as they read. The columns of the rows named like them,
    /// "Zähler", "Nenner" and "Wert", add up to them.
    std::optional<QString> numerator = {}, denominator = {}, value = {};
    struct Line {
        QList<Value> cells;
        qint64 animal = 0;  ///< ID of the animal that the line is about, 0 for none
    };
    std::vector<Column> columns = {};
    std::vector<Line> lines = {};

    /// "Zähler", "Nenner" and "Wert" with their values, as far as there are any.
    std::vector<std::pair<QString, QString>> figures() const;
};

class Grid : public Control {
public:
    Grid(ControlHost& form, const QString& name, bool multi = false) : Control(form, name), multi(multi) {}
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
    /// A row that a program made: cells may be missing at its end.
    using Row = QList<Value>;
    /// Adding rows makes a bound grid one of cells of its own. A cell holds any text; none is read as structure.
    void addRow(const QStringList& cells) { insertRow(rowCount() + 1, cells); }
    void insertRow(int row, const QStringList& cells);
    /// Typed cells: a number shows as its column says, Null as nothing. `animal` is the ID of the animal that the row
    /// is about, 0 for none: by it a window leads there.
    void addValues(Row cells, qint64 animal = 0) { insert(rowCount() + 1, {std::move(cells), false, animal}); }
    qint64 animal(int row) const;
    /// A line before a sum, or with another one the end of a block. Shows as "." in its first cell.
    void addSeparator() { insert(rowCount() + 1, {{Value(QStringLiteral("."))}, true}); }
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
    /// Takes over the columns and the rows, typed and in their order; no row is current or marked.
    void copy(const Grid& source);
    int rowCount() const { return static_cast<int>(m_order.size()); }
    QString cell(int row, int column) const;
    QString cell(int row, QStringView key) const;
    /// The typed value of a cell, whatever it shows as.
    Value value(int row, QStringView key) const;
    Value value(int row, int column) const;
    /// The whole number in a cell, without a detour through text where the grid is bound; 0 where there is none.
    qint64 integer(int row, int column) const;
    void setCell(int row, int column, const QString& text);
    void removeRow(int row);  ///< the next row becomes current where the current one goes
    bool isSeparator(int row) const;
    /// Where a cell comes from; nothing where the list does not say. Follows the rows however they are sorted.
    std::optional<Explanation> explanation(int row, int column) const;

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
    void sort(int column, int direction);  ///< 1 ascending, 2 descending
    /// Puts the rows into another order: `rows` names each of the present rows once, first to last. Marks and the
    /// current row go with them; `column` and `direction` are what the arrow in the header shows.
    void reorder(const std::vector<int>& rows, int column, int direction);
    int sortColumn() const { return m_sortColumn; }
    int sortDirection() const { return m_sortDirection; }
    /// First row whose cell is like the pattern (the dialect's LIKE); 0 for no hit.
    int findLike(QStringView key, const QString& pattern) const;
    int findText(QStringView key, const QString& text) const;

    /// The grid's own file: columns with all attributes, then the cells as they show. False where it cannot be written
    /// or read. In the file a separator is a row whose first cell is ".".
    bool save(const QString& path) const { return writeFile(path, fileText()); }
    bool load(const QString& path);
    QByteArray fileText() const;
    /// Replaces a file that may go with the machine: whole or not at all, but the disk is not waited for.
    static bool writeFile(const QString& path, const QByteArray& bytes);

    // the user's hand
    void choose(int row);
    void mark(const std::vector<int>& rows);
    void click();
    void doubleClick(int column = 0);  ///< on the current row; 0 where no cell is meant
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
    /// Says where a cell comes from. `row` counts in the order in which the rows were added. Goes with the rows: copy()
    /// takes it over, clearRows() drops it.
    std::function<std::optional<Explanation>(int row, int column)> explain;
    /// Leads on from a row: goes before `onDoubleClick`, counts rows and goes with them like `explain`. A list that
    /// leads on comes up where its current row is.
    std::function<void(int row, int column)> lead;
    /// Asks the window to open the editor of a cell.
    std::function<void(int row, int column)> startEdit;

private:
    struct Source {
        Row cells;
        bool separator = false;
        qint64 animal = 0;
    };
    QString sourceText(int source, int column) const;
    const Value& sourceValue(int source, int column) const;
    void insert(int row, Source source);
    int compare(int sourceA, int sourceB, int column) const;
    void resetRows(int count);
    void unbind();

    std::vector<Column> m_columns;
    Table m_table;
    bool m_bound = false;
    std::vector<int> m_fieldOf;        // column -> field of the bound table
    std::vector<Source> m_cells;       // rows of an unbound grid
    QHash<qint64, QString> m_changed;  // cells of a bound grid changed in place
    std::vector<int> m_order;          // displayed row -> source row
    std::vector<bool> m_marks;         // by source row
    int m_row = 0;
    int m_sortColumn = 0, m_sortDirection = 0;
};

}  // namespace koben
