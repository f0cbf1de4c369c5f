#include "ui/Draft.h"

#include "ui/Bound.h"

namespace koben::ui {

namespace {

QString marksOf(const Grid& grid) {
    QStringList rows;
    for (const int row : grid.markedRows()) rows.append(QString::number(row));
    return rows.join(u',');
}

QString marksOf(const ListBox& list) {
    QStringList rows;
    for (int row = 0; row < list.items().size(); ++row)
        if (list.marked(row)) rows.append(QString::number(row));
    return rows.join(u',');
}

}  // namespace

bool isEntry(const Form& form) {
    const Button* cancel = form.cancelButton;
    return (cancel && plainCaption(cancel->caption()) == u"Abbrechen") || form.name() == u"PB_Verkauf_Schweine";
}

QStringList Draft::state() const {
    QStringList state;
    for (const Control* control : m_form.controls()) {
        if (const auto* box = dynamic_cast<const TextBox*>(control)) {
            if (!box->readOnly) state.append(box->text());
        } else if (const auto* check = dynamic_cast<const CheckBox*>(control)) {
            state.append(check->checked() ? QStringLiteral("an") : QString());
        } else if (const auto* option = dynamic_cast<const Option*>(control)) {
            state.append(option->selected() ? QStringLiteral("an") : QString());
        } else if (const auto* grid = dynamic_cast<const Grid*>(control); grid && grid->multi) {
            state.append(marksOf(*grid));
        } else if (const auto* list = dynamic_cast<const ListBox*>(control); list && list->multi) {
            state.append(marksOf(*list));
        }
    }
    return state;
}

}  // namespace koben::ui
