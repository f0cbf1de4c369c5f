#include "ui/SearchMarks.h"

#include <QEvent>
#include <QKeyEvent>
#include <QStringList>
#include <QWidget>

#include "forms/Form.h"
#include "ui/Application.h"

namespace koben::ui {

namespace {

class Collector final : public QObject {
public:
    Collector(QWidget& field, TextBox& search, Grid& list) : QObject(&field), m_search(search), m_list(list) {
        field.installEventFilter(this);
        field.setToolTip(QStringLiteral("Nummer suchen; + dahinter markiert das Tier zu den schon markierten"));
    }

protected:
    bool eventFilter(QObject* field, QEvent* event) override {
        if (event->type() == QEvent::FocusIn) m_collected.clear();
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->text() != u"+")
            return QObject::eventFilter(field, event);
        guarded([this] { collect(); });
        return true;
    }

private:
    /// The search moves the list's current row, which is then the one marked row: the others are marked again.
    void collect() {
        if (m_search.text().trimmed().isEmpty() || m_list.row() == 0) return;
        const QString id = m_list.cell(m_list.row(), u"ID");
        if (!m_collected.contains(id)) m_collected.append(id);
        std::vector<int> rows;
        const int column = m_list.columnOf(u"ID");
        for (int row = 1; row <= m_list.rowCount(); ++row)
            if (m_collected.contains(m_list.cell(row, column))) rows.push_back(row);
        m_list.mark(rows);
        m_list.click();
        m_search.edited(QString());
    }
    TextBox& m_search;
    Grid& m_list;
    QStringList m_collected;  ///< by ID
};

}  // namespace

void markFromSearch(QWidget& field, TextBox& search, Grid& list) { new Collector(field, search, list); }

}  // namespace koben::ui
