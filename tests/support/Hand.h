#pragma once
// The user's hand at the controls of a form, in a line.
#include <gtest/gtest.h>

#include "forms/Controls.h"
#include "forms/Form.h"
#include "forms/Grid.h"

namespace koben {

/// The user goes into a field, types and leaves it; in a fixed list he chooses.
inline void typeInto(TextBox& field, const QString& text) {
    auto* list = dynamic_cast<ComboBox*>(&field);
    field.enter();
    if (list && list->fixed)
        list->choose(static_cast<int>(list->items().indexOf(text)));
    else
        field.type(text);
    field.leave();
}

/// A control of type C by its address: "tdat", "tz(1)".
template <class C>
C* controlAt(const Form& form, const QString& address) {
    const QString index = address.section(u'(', 1).chopped(address.contains(u'(') ? 1 : 0);
    return dynamic_cast<C*>(form.find(address.section(u'(', 0, 0), index.isEmpty() ? -1 : index.toInt()));
}

inline TextBox& fieldAt(const Form& form, const QString& address) {
    auto* found = controlAt<TextBox>(form, address);
    return found ? *found : throw std::out_of_range(address.toStdString());
}

/// Marks rows of a grid or of a list by hand: "1,3".
inline void markRows(const Form& form, const QString& address, const QString& numbers) {
    std::vector<int> rows;
    for (const QString& number : numbers.split(u',')) rows.push_back(number.toInt());
    if (auto* list = controlAt<ListBox>(form, address)) return list->mark(rows);
    auto* grid = controlAt<Grid>(form, address);
    grid->mark(rows);
    grid->click();
}

/// What the user does, "tdat=0907; tz(0)=8; ok(0)": enters into fields, clicks what has no text, marks rows ("li*1,3"),
/// chooses one ("li:2"). Other arguments stand for %1, %2 ...
template <class... A>
void play(Form& form, QString steps, const A&... values) {
    ((steps = steps.arg(values)), ...);
    for (const QString& step : steps.split("; ")) {
        const QString address = step.section(u'=', 0, 0);
        if (step.contains(u'='))
            typeInto(fieldAt(form, address), step.section(u'=', 1));
        else if (step.contains(u'*'))
            markRows(form, step.section(u'*', 0, 0), step.section(u'*', 1));
        else if (step.contains(u':'))
            controlAt<Grid>(form, step.section(u':', 0, 0))->choose(step.section(u':', 1).toInt());
        else if (auto* button = controlAt<Button>(form, address))
            button->click();
        else if (auto* option = controlAt<Option>(form, address))
            option->click();
        else if (auto* box = controlAt<CheckBox>(form, address))
            box->click();
        else
            ADD_FAILURE() << address.toStdString() << " cannot be clicked";
    }
}

/// The texts of fields, "tdat tz(0)", joined by "|".
inline QString textsOf(const Form& form, const QString& addresses) {
    QStringList texts;
    for (const QString& address : addresses.split(u' ')) texts += fieldAt(form, address).text();
    return texts.join(u'|');
}

}  // namespace koben
