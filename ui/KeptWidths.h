#pragma once
// The widths that the user has given the columns of a list, by their titles, in her settings.
#include <QHash>
#include <QString>

namespace koben {

class Control;

namespace ui {

class KeptWidths {
public:
    explicit KeptWidths(const Control& list);
    /// 0 where the user has given none.
    int of(const QString& title) const { return m_widths.value(title); }
    void keep(const QString& title, int width);

private:
    const Control& m_list;
    QHash<QString, int> m_widths;
};

}  // namespace ui
}  // namespace koben
