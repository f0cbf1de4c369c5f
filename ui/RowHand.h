#pragma once
// How the user's hand walks and marks the rows of a list: mouse, drag, Ctrl, Shift, arrows. Marks live in the control
// alone (any pattern over any number of rows), not in Qt's selection.
#include <QAbstractItemView>
#include <vector>

namespace koben::ui {

class RowHand {
public:
    virtual ~RowHand() = default;

protected:
    // rows count from 0 here; -1 is none
    virtual int rows() const = 0;
    virtual int currentRow() const = 0;
    virtual bool isMulti() const = 0;
    virtual bool isMarked(int row) const = 0;
    virtual std::vector<int> markedRows() const = 0;
    virtual void chooseRow(int row) = 0;
    virtual void markRows(const std::vector<int>& rows) = 0;
    /// Whether the current row stays marked as long as no other is: what is then done to the marked rows never reaches
    /// none. Not so in lists in which marking none is a choice of its own.
    virtual bool keepsOneMarked() const { return false; }

    void press(int row, Qt::KeyboardModifiers modifiers);
    void drag(int row);
    /// Moves, marks or extends by a key; false where the key is none of these. `page` is the rows in sight.
    bool moveByKey(int key, Qt::KeyboardModifiers modifiers, int page);
    /// Makes a row current from afar (by its number). Rows that were gathered one by one stay marked.
    void jump(int row);

private:
    void toggle(int row);
    void extendTo(int row);
    void chooseKeepingMarks(int row);
    bool m_gathering = false;  ///< rows are marked one by one
    int m_anchor = -1;
    int m_lastDrag = -1;
};

}  // namespace koben::ui
