#include "ui/EnterKey.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <algorithm>

#include "forms/Form.h"
#include "ui/Bound.h"
#include "ui/Window.h"

namespace koben::ui {

namespace {

/// Where a window says nothing, these accept; the one that is in sight counts.
const char* const Accepting[] = {"ok", "neu", "comnächster2"};

bool canBePressed(const Window& window, const Button& button) {
    const QWidget* widget = window.widgetOf(button);
    return widget && widget->isVisibleTo(&window) && widget->isEnabledTo(&window);
}

bool sameGroup(const Control* a, const Control* b) {
    return dynamic_cast<const Option*>(a) && dynamic_cast<const Option*>(b) && a->name() == b->name();
}

/// Where a widget, or the one around it, stands in the order of the Tab key.
size_t placeOf(const std::vector<QWidget*>& order, QWidget* widget) {
    for (; widget; widget = widget->parentWidget())
        if (const auto at = std::find(order.begin(), order.end(), widget); at != order.end())
            return static_cast<size_t>(at - order.begin());
    return order.size();
}

}  // namespace

Button* acceptOf(const Window& window) {
    const Form& form = window.form();
    if (form.acceptButton) return canBePressed(window, *form.acceptButton) ? form.acceptButton : nullptr;
    for (const char* name : Accepting)
        if (auto* button = dynamic_cast<Button*>(form.find(QString::fromUtf8(name))))
            if (canBePressed(window, *button)) return button;
    return nullptr;
}

bool opensEntry(const Form& form) { return form.acceptButton && form.acceptButton->name() == u"neu"; }

bool standsForGroup(const Option& option) {
    const Option* first = nullptr;
    for (const Control* control : option.form().controls()) {
        const auto* other = dynamic_cast<const Option*>(control);
        if (!other || !sameGroup(other, &option) || !other->visible() || !other->enabled()) continue;
        if (other->selected()) return other == &option;
        if (!first) first = other;
    }
    return first == &option;
}

bool takesEntry(const Window& window, QWidget* widget) {
    if (!widget->isVisibleTo(&window) || !widget->isEnabledTo(&window)) return false;
    Control* control = controlOf(widget);
    if (const auto* box = dynamic_cast<const TextBox*>(control)) return !box->readOnly;
    if (const auto* option = dynamic_cast<const Option*>(control)) return standsForGroup(*option);
    return dynamic_cast<const CheckBox*>(control) || dynamic_cast<const Grid*>(control) ||
           dynamic_cast<const ListBox*>(control);
}

void moveOn(Window& window, QWidget* from) {
    const std::vector<QWidget*>& order = window.tabOrder();
    const size_t at = from ? placeOf(order, from) : order.size();
    const Control* here = controlOf(from);
    const auto stop = [&](size_t begin, size_t end) {
        for (size_t i = begin; i < end; ++i)
            if (takesEntry(window, order[i]) && !sameGroup(controlOf(order[i]), here)) return order[i];
        return static_cast<QWidget*>(nullptr);
    };
    QWidget* next = stop(std::min(at + 1, order.size()), order.size());
    if (const auto* search = qobject_cast<QLineEdit*>(from); search && search->isClearButtonEnabled())
        for (size_t i = order.size(); i-- > at + 1;)  // from a search to the list that it searches
            if (qobject_cast<QAbstractItemView*>(order[i]) && takesEntry(window, order[i])) next = order[i];
    if (const Button* accept = next ? nullptr : acceptOf(window)) next = window.widgetOf(*accept);
    if (!next) next = stop(0, order.size());
    if (next) next->setFocus(Qt::TabFocusReason);
}

}  // namespace koben::ui
