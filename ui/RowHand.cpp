#include "ui/RowHand.h"

#include <algorithm>
#include <numeric>

namespace koben::ui {

void RowHand::press(int row, Qt::KeyboardModifiers modifiers) {
    m_lastDrag = row;
    if (row < 0) return;
    if (isMulti() && modifiers & Qt::ControlModifier) return toggle(row);
    if (isMulti() && modifiers & Qt::ShiftModifier && m_anchor >= 0) return extendTo(row);
    m_anchor = row;
    m_gathering = false;
    chooseRow(row);
}

void RowHand::chooseKeepingMarks(int row) {
    const std::vector<int> marks = markedRows();
    chooseRow(row);
    markRows(marks);
}

void RowHand::jump(int row) {
    const bool gathers = !keepsOneMarked() || (m_gathering && !markedRows().empty());
    if (!isMulti() || !gathers) return press(row, Qt::NoModifier);
    m_anchor = row;
    if (row != currentRow()) chooseKeepingMarks(row);
}

void RowHand::drag(int row) {
    if (row < 0 || row == m_lastDrag || m_lastDrag < 0) return;
    m_lastDrag = row;
    if (isMulti())
        extendTo(row);
    else
        chooseRow(row);
}

void RowHand::toggle(int row) {
    std::vector<int> marks = markedRows();
    const auto at = std::lower_bound(marks.begin(), marks.end(), row);
    if (at != marks.end() && *at == row)
        marks.erase(at);
    else
        marks.insert(at, row);
    if (marks.empty() && keepsOneMarked()) marks.push_back(row);
    m_anchor = row;
    m_gathering = true;
    if (row != currentRow()) chooseRow(row);
    markRows(marks);
}

void RowHand::extendTo(int row) {
    if (m_anchor < 0 || m_anchor >= rows()) m_anchor = std::max(currentRow(), 0);
    std::vector<int> marks(static_cast<size_t>(std::abs(row - m_anchor) + 1));
    std::iota(marks.begin(), marks.end(), std::min(row, m_anchor));
    if (row != currentRow()) chooseRow(row);
    markRows(marks);
}

bool RowHand::moveByKey(int key, Qt::KeyboardModifiers modifiers, int page) {
    const int count = rows();
    if (count == 0) return false;
    if (key == Qt::Key_A && modifiers & Qt::ControlModifier && isMulti()) {
        std::vector<int> all(static_cast<size_t>(count));
        std::iota(all.begin(), all.end(), 0);
        markRows(all);
        return true;
    }
    if (key == Qt::Key_Space && isMulti() && currentRow() >= 0) {
        toggle(currentRow());
        return true;
    }
    int row = currentRow();
    switch (key) {
        case Qt::Key_Up:
            row -= 1;
            break;
        case Qt::Key_Down:
            row += 1;
            break;
        case Qt::Key_PageUp:
            row -= page;
            break;
        case Qt::Key_PageDown:
            row += page;
            break;
        case Qt::Key_Home:
            row = 0;
            break;
        case Qt::Key_End:
            row = count - 1;
            break;
        default:
            return false;
    }
    row = std::clamp(row, 0, count - 1);
    if (isMulti() && modifiers & Qt::ControlModifier && !(modifiers & Qt::ShiftModifier)) {
        m_gathering = true;
        m_anchor = row;
        if (row != currentRow()) chooseKeepingMarks(row);
        return true;
    }
    if (row == currentRow() && !(modifiers & Qt::ShiftModifier)) return true;
    if (isMulti() && modifiers & Qt::ShiftModifier)
        extendTo(row);
    else
        press(row, Qt::NoModifier);
    m_lastDrag = -1;
    return true;
}

}  // namespace koben::ui
