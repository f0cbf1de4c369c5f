#include "tools/skript/Addressing.h"

#include <algorithm>

namespace koben::skript {

namespace {

bool same(QStringView a, QStringView b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

Form& front(const Koben& koben) {
    if (Form* form = koben.front()) return *form;
    throw Failure{QStringLiteral("keine Maske ist offen")};
}

Target find(Form& form, const QString& text) {
    const Address address = parseAddress(text);
    if (Control* control = form.find(address.name, address.index)) {
        auto* tabs = dynamic_cast<Tabs*>(control);
        return {&form, control, tabs ? address.index : -1};
    }
    auto* tabs = dynamic_cast<Tabs*>(form.find(address.name));
    if (tabs && address.index >= 0 && address.index < tabs->captions().size()) return {&form, tabs, address.index};
    throw Failure{QStringLiteral("%1 hat kein Steuerelement %2").arg(form.name(), text)};
}

/// The open form of that name that was opened last.
Form* openForm(const Koben& koben, const QString& name) {
    const auto& stack = koben.stack();
    const auto found = std::find_if(stack.rbegin(), stack.rend(), [&](Form* form) { return same(form->name(), name); });
    return found == stack.rend() ? nullptr : *found;
}

}  // namespace

QString Target::name() const {
    const QString member = page < 0 ? control->address() : QStringLiteral("%1(%2)").arg(control->name()).arg(page);
    return form->name() + u'.' + member;
}

Address parseAddress(const QString& text) {
    const qsizetype open = text.indexOf(u'(');
    if (open < 0) return {text, -1};
    bool ok = text.endsWith(u')');
    const int index = ok ? QStringView(text).mid(open + 1).chopped(1).toInt(&ok) : -1;
    if (!ok || index < 0) throw Failure{QStringLiteral("%1 ist kein Name eines Steuerelements").arg(text)};
    return {text.left(open), index};
}

Target inFront(const Koben& koben, const QString& address) {
    Form& form = front(koben);
    const qsizetype dot = address.indexOf(u'.');
    if (dot < 0) return find(form, address);
    if (openForm(koben, address.left(dot)) == &form) return find(form, address.mid(dot + 1));
    throw Failure{QStringLiteral("%1 liegt nicht in der vordersten Maske (%2)").arg(address, form.name())};
}

Target toRead(const Koben& koben, const QString& address) {
    QStringList parts = address.split(u'.');
    Form* form = &front(koben);
    if (parts.size() > 1)
        if (Form* named = openForm(koben, parts.first())) form = named, parts.removeFirst();
    const bool textPart = parts.size() == 2 && same(parts.last(), u"text");
    if (parts.size() != (textPart ? 2 : 1))
        throw Failure{QStringLiteral("%1: diese Maske ist nicht offen").arg(address)};
    Target target = find(*form, parts.first());
    target.textPart = textPart;
    return target;
}

int columnOf(const Grid& grid, const QString& column) {
    if (const int byKey = grid.columnOf(column)) return byKey;
    bool ok = false;
    const int number = column.toInt(&ok);
    if (ok && number >= 1 && number <= grid.columnCount()) return number;
    throw Failure{QStringLiteral("%1 hat keine Spalte %2").arg(grid.address(), column)};
}

int rowOf(const QString& text, int count) {
    bool ok = false;
    const int row = text.toInt(&ok);
    if (ok && row >= 1 && row <= count) return row;
    throw Failure{QStringLiteral("keine Zeile %1 (die Liste hat %2)").arg(text).arg(count)};
}

}  // namespace koben::skript
