#include "ui/Bound.h"

#include "ui/Names.h"

namespace koben::ui {

Control* controlOf(QWidget* widget) {
    for (; widget; widget = widget->parentWidget())
        if (const auto* bound = dynamic_cast<const BoundWidget*>(widget)) return &bound->control();
    return nullptr;
}

QString plainCaption(QString caption) {
    return caption.replace(QStringLiteral("&&"), QString(QChar(1))).remove(u'&').replace(QChar(1), u'&');
}

QString accessibleName(const Control& control) {
    if (!control.hint().isEmpty()) return control.hint().endsWith(u':') ? control.hint().chopped(1) : control.hint();
    if (const QString word = wordFor(control); !word.isEmpty()) return word;
    if (const auto* button = dynamic_cast<const Button*>(&control); button && !button->caption().isEmpty())
        return plainCaption(button->caption());
    if (const auto* check = dynamic_cast<const CheckBox*>(&control)) return plainCaption(check->caption());
    if (const auto* option = dynamic_cast<const Option*>(&control)) return plainCaption(option->caption());
    if (dynamic_cast<const Label*>(&control)) return {};  // a label's text speaks for itself
    return control.name();
}

}  // namespace koben::ui
