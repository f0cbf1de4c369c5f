#pragma once
// Widgets beside each other that go on in the next line where the window is too narrow.
#include <QLayout>
#include <vector>

namespace koben::ui {

class FlowLayout final : public QLayout {
public:
    explicit FlowLayout(QWidget* parent);
    ~FlowLayout() override;
    void addItem(QLayoutItem* item) override { m_items.push_back(item); }
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return arrange(QRect(0, 0, width, 0), false); }
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    /// Places the items in the rectangle (or only measures); the height they need.
    int arrange(const QRect& rect, bool place) const;
    int evenWidth(int width) const;
    std::vector<QLayoutItem*> m_items;
};

}  // namespace koben::ui
