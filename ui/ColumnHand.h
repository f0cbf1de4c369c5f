#pragma once
// How the user arranges a list: columns moved and hidden, numbers of animals in their natural order. Kept for each list
// in the user's settings under the columns' keys, so that a version that adds a column finds the others where they
// were.
#include <QHeaderView>
#include <QObject>
#include <functional>

#include "forms/Grid.h"

class QMenu;

namespace koben::ui {

/// Section of the user's settings under which lists are kept.
extern const QString listSection;

/// Below 0, 0, above 0: digits by their number (9, 10, 100), the rest by letters.
int compareNaturally(const QString& a, const QString& b);

class ColumnHand final : public QObject {
public:
    ColumnHand(QHeaderView& header, Grid& grid);

    /// Puts the columns where the user has them. Also after the header has forgotten them.
    void apply();
    /// Whether texts are ordered naturally when the user sorts by them.
    bool natural() const { return m_natural; }
    /// Brings the rows into natural order where the list stands by a column of texts and the user wants it so.
    void orderNaturally();

    /// The header's menu; `column` (from 0, or -1) is the one it was opened on.
    void popUp(const QPoint& at, int column);

    std::function<void(int column, int direction)> sort;  ///< asks for an order
    std::function<void()> fitWidths;                      ///< asks for widths fitted anew

private:
    QString key(const char* what) const;
    bool shown(int column) const { return !m_header.isSectionHidden(column); }
    std::vector<int> wanted() const;
    void keep();
    void setShown(int column, bool on);
    void shift(int column, int by);
    void restore();
    void addColumns(QMenu& menu);
    void addOrder(QMenu& menu, int column);

    QHeaderView& m_header;
    Grid& m_grid;
    QStringList m_kept;  ///< keys in the user's order, "-" before those that are hidden
    bool m_natural = false;
    bool m_applying = false;
};

}  // namespace koben::ui
