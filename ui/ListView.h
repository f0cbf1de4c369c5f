#pragma once
// The window's list on a list box. Where rows are marked it is a list of choices with a box each: Space or a click
// ticks one, and walking, typing or clicking never take the ticks of others.
#include <QAbstractListModel>
#include <QListView>

#include "ui/Bound.h"
#include "ui/RowHand.h"
#include "ui/TypeSearch.h"

namespace koben::ui {

class ListModel final : public QAbstractListModel {
public:
    explicit ListModel(const ListBox& list) : m_list(list) {}
    void refresh() {
        beginResetModel();
        m_rows = static_cast<int>(m_list.items().size());
        endResetModel();
    }
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : m_rows; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole || index.row() >= m_list.items().size()) return {};
        return text(index.row());
    }
    QString text(int row) const { return m_list.rowTitle ? m_list.rowTitle(row) : m_list.items().value(row); }

private:
    const ListBox& m_list;
    int m_rows = 0;
};

class ListView final : public Bound<QListView, ListBox>, private RowHand {
public:
    explicit ListView(ListBox& list);
    void flush();
    QSize sizeHint() const override;

protected:
    void refresh(Aspect aspect) override;
    void customEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent*) override {}
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyboardSearch(const QString&) override {}
    void keyPressEvent(QKeyEvent* event) override;

    int rows() const override { return static_cast<int>(model().items().size()); }
    int currentRow() const override { return model().current(); }
    bool isMulti() const override { return model().multi; }
    bool isMarked(int row) const override { return model().marked(row); }
    std::vector<int> markedRows() const override;
    void chooseRow(int row) override { model().choose(row); }
    void markRows(const std::vector<int>& rows) override { model().mark(rows); }

private:
    ListModel m_items;
    TypeSearch* m_search = nullptr;
    bool m_scheduled = false, m_stale = true, m_moved = false;
};

}  // namespace koben::ui
