#include "ui/GridDelegate.h"

#include <QHeaderView>
#include <QPainter>
#include <QTableView>

#include "forms/Grid.h"
#include "ui/Look.h"

namespace koben::ui {

namespace {

class RowDelegate final : public QStyledItemDelegate {
public:
    RowDelegate(RowLooks looks, QTableView& view)
        : QStyledItemDelegate(&view), m_looks(std::move(looks)), m_view(view) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const int row = index.row();
        if (m_looks.separator(row)) {
            painter->setPen(option.palette.color(QPalette::Mid));
            painter->drawLine(option.rect.left(), option.rect.center().y(), option.rect.right() + 1,
                              option.rect.center().y());
            return;
        }
        const bool current = m_looks.current(row), filled = isFilled(row);
        QStyleOptionViewItem content(option);
        initStyleOption(&content, index);
        if (filled) painter->fillRect(option.rect, content.palette.color(QPalette::Active, QPalette::Highlight));
        const bool first = index.column() == edgeColumn(1), last = index.column() == edgeColumn(-1);
        if ((m_looks.multi || m_looks.urgent) && first) {
            content.rect.setLeft(content.rect.left() + gutter(content.fontMetrics));
            if (m_looks.multi && filled) drawTick(*painter, option.rect, content);
            if (isUrgent(row)) drawUrgent(*painter, option.rect, content, filled);
        }
        m_view.style()->drawControl(QStyle::CE_ItemViewItem, &content, painter, &m_view);
        if (current && m_looks.multi) drawFrame(*painter, option.rect, content.palette, filled, first, last);
        if (current && index == m_view.currentIndex() && m_view.hasFocus())
            drawCell(*painter, option.rect, content, filled);
    }
    /// Room for the tick at the left of a row.
    static int gutter(const QFontMetrics& metrics) { return metrics.height(); }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const bool filled = isFilled(index.row());
        option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus);
        if (filled)
            for (const auto group : {QPalette::Active, QPalette::Inactive})
                option->palette.setColor(group, QPalette::Text,
                                         option->palette.color(group, QPalette::HighlightedText));
        if (isUrgent(index.row())) option->font.setBold(true);
        option->textElideMode = Qt::ElideRight;
    }

private:
    bool isFilled(int row) const { return m_looks.multi ? m_looks.marked(row) : m_looks.current(row); }
    bool isUrgent(int row) const { return m_looks.urgent && m_looks.urgent(row); }
    int edgeColumn(int step) const {
        const QHeaderView* header = m_view.horizontalHeader();
        for (int place = step > 0 ? 0 : header->count() - 1; place >= 0 && place < header->count(); place += step)
            if (const int column = header->logicalIndex(place); !header->isSectionHidden(column)) return column;
        return -1;
    }
    static void drawTick(QPainter& painter, const QRect& cell, const QStyleOptionViewItem& option) {
        const qreal unit = gutter(option.fontMetrics) / 12.0;
        const QPointF at(cell.left() + 4 * unit, cell.center().y() + 0.5);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(option.palette.color(QPalette::Active, QPalette::HighlightedText), 1.6 * unit,
                            Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(
            QPolygonF({at, at + QPointF(2.4 * unit, 2.6 * unit), at + QPointF(6.4 * unit, -3 * unit)}));
        painter.restore();
    }
    static void drawUrgent(QPainter& painter, const QRect& cell, const QStyleOptionViewItem& option, bool filled) {
        painter.save();
        painter.setFont(option.font);
        painter.setPen(filled ? option.palette.color(QPalette::Active, QPalette::HighlightedText)
                              : alertColour(option.palette));
        painter.drawText(QRect(cell.left(), cell.top(), gutter(option.fontMetrics), cell.height()), Qt::AlignCenter,
                         QStringLiteral("!"));
        painter.restore();
    }
    static void drawFrame(QPainter& painter, const QRect& cell, const QPalette& palette, bool filled, bool first,
                          bool last) {
        painter.save();
        painter.setPen(
            QPen(palette.color(QPalette::Active, filled ? QPalette::HighlightedText : QPalette::Link), filled ? 1 : 2));
        const int inset = filled ? 3 : 1;  // a ring within the filled row
        const QRect inner = cell.adjusted(first ? inset : 0, inset, last ? -inset : 0, 1 - inset);
        painter.drawLine(inner.left(), inner.top(), inner.right() + 1, inner.top());
        painter.drawLine(inner.left(), inner.bottom(), inner.right() + 1, inner.bottom());
        if (first) painter.drawLine(inner.topLeft(), inner.bottomLeft());
        if (last) painter.drawLine(inner.topRight(), inner.bottomRight());
        painter.restore();
    }
    /// The cell that Left and Right move and F2 edits.
    static void drawCell(QPainter& painter, const QRect& cell, const QStyleOptionViewItem& option, bool filled) {
        painter.save();
        painter.setPen(QPen(option.palette.color(QPalette::Active, filled ? QPalette::HighlightedText : QPalette::Link),
                            1, Qt::DotLine));
        painter.drawRect(cell.adjusted(2, 2, -3, -3));
        painter.restore();
    }
    const RowLooks m_looks;
    QTableView& m_view;
};

}  // namespace

QStyledItemDelegate* rowDelegate(RowLooks looks, QTableView& view) { return new RowDelegate(std::move(looks), view); }

QStyledItemDelegate* rowDelegate(const Grid& grid, QTableView& view, std::function<bool(int)> urgent) {
    return rowDelegate({.current = [&grid](int row) { return row + 1 == grid.row(); },
                        .marked = [&grid](int row) { return grid.marked(row + 1); },
                        .separator = [&grid](int row) { return row < grid.rowCount() && grid.isSeparator(row + 1); },
                        .multi = grid.multi,
                        .urgent = std::move(urgent)},
                       view);
}

}  // namespace koben::ui
