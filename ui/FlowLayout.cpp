#include "ui/FlowLayout.h"

#include <QWidget>
#include <algorithm>

namespace koben::ui {

namespace {

constexpr int gap = 6;  // pixels between neighbours and lines

}  // namespace

FlowLayout::FlowLayout(QWidget* parent) : QLayout(parent) { setContentsMargins(0, 0, 0, 0); }

FlowLayout::~FlowLayout() {
    for (QLayoutItem* item : m_items) delete item;
}

QLayoutItem* FlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? m_items[static_cast<size_t>(index)] : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
    QLayoutItem* item = itemAt(index);
    if (item) m_items.erase(m_items.begin() + index);
    return item;
}

QSize FlowLayout::sizeHint() const {
    QSize size(0, 0);
    for (const QLayoutItem* item : m_items) {
        if (item->isEmpty()) continue;
        const QSize hint = item->sizeHint();
        size = QSize(size.width() + hint.width() + gap, std::max(size.height(), hint.height()));
    }
    return size;
}

QSize FlowLayout::minimumSize() const {
    QSize size(0, 0);
    for (const QLayoutItem* item : m_items)
        if (!item->isEmpty()) size = size.expandedTo(item->sizeHint());
    return size;
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    QRect even = rect;
    even.setWidth(evenWidth(rect.width()));
    arrange(even, true);
}

/// The narrowest width with no more lines than this one has: its lines are of about one length, and no item is left
/// alone in the last.
int FlowLayout::evenWidth(int width) const {
    const int height = arrange({0, 0, width, 0}, false);
    int fits = width, over = minimumSize().width() - 1;
    while (fits - over > 1) {
        const int middle = (fits + over) / 2;
        (arrange({0, 0, middle, 0}, false) <= height ? fits : over) = middle;
    }
    return fits;
}

int FlowLayout::arrange(const QRect& rect, bool place) const {
    int x = rect.x(), y = rect.y(), lineHeight = 0;
    std::vector<std::pair<QLayoutItem*, int>> line;  // items of the line and where they begin
    const auto finish = [&] {
        for (const auto& [item, left] : line) {
            const QSize size = item->sizeHint();
            if (place) item->setGeometry(QRect(QPoint(left, y + (lineHeight - size.height()) / 2), size));
        }
        line.clear();
    };
    for (QLayoutItem* item : m_items) {
        if (item->isEmpty()) continue;
        const QSize size = item->sizeHint();
        if (!line.empty() && x + size.width() > rect.right() + 1) {
            finish();
            y += lineHeight + gap;
            x = rect.x();
            lineHeight = 0;
        }
        line.emplace_back(item, x);
        x += size.width() + gap;
        lineHeight = std::max(lineHeight, size.height());
    }
    finish();
    return y + lineHeight - rect.y();
}

}  // namespace koben::ui
