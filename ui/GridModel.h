#pragma once
// The cells of a grid for Qt's table view, formatted when they are painted and not before.
#include <QAbstractTableModel>
#include <functional>

#include "forms/Grid.h"

namespace koben::ui {

class GridModel final : public QAbstractTableModel {
public:
    explicit GridModel(Grid& grid) : m_grid(grid) {}

    /// Takes over rows and columns as they now are. Cheap where only cells changed.
    void refresh(bool columnsToo);

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : m_rows; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : m_columns; }
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    std::function<bool(int row)> urgent;  ///< rows (from 0) of which `urgentWord` is said
    QString urgentWord;

    static Qt::Alignment alignment(const Column& column);
    /// What stands above a column: its caption, or its title in words.
    static QString caption(const Column& column);
    /// What stands in a cell (row and column from 1): its text, amounts of money with both decimals.
    static QString shown(const Grid& grid, int row, int column);

private:
    Grid& m_grid;
    int m_rows = 0;
    int m_columns = 0;
};

}  // namespace koben::ui
