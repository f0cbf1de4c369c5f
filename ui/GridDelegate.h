#pragma once
// How the rows of a list look.
#include <QStyledItemDelegate>
#include <functional>

class QTableView;

namespace koben {
class Grid;
}

namespace koben::ui {

/// What the painter asks of a row (rows count from 0).
struct RowLooks {
    std::function<bool(int)> current, marked, separator;
    bool multi = false;
    std::function<bool(int)> urgent = {};  ///< empty where no row of the list can be
};

/// Paints rows so that marked, current, and both are told apart without their colours: a marked row is filled and bears
/// a tick, the current one stands in a frame. Where only one row counts, the current one is filled. An
/// urgent row is bold and bears a sign. Belongs to the view.
QStyledItemDelegate* rowDelegate(RowLooks looks, QTableView& view);
QStyledItemDelegate* rowDelegate(const Grid& grid, QTableView& view, std::function<bool(int)> urgent = {});

}  // namespace koben::ui
