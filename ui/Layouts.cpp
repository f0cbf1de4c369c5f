// The table of layouts, gathered from the layout units. A form without one is arranged automatically.
#include <QHash>

#include "Layouts.h"
#include "ui/Families.h"
#include "ui/Layout.h"

namespace koben::ui {

#define DECLARE(F) Piece layout_##F(Form& form);
KOBEN_LAYOUTS(DECLARE)
#undef DECLARE

namespace {

const QHash<QString, Arrange>& table() {
#define ENTRY(F) {QStringLiteral(#F), &layout_##F},
    static const QHash<QString, Arrange> layouts{KOBEN_LAYOUTS(ENTRY)};
#undef ENTRY
    return layouts;
}

}  // namespace

Arrange layoutOf(Form& form) {
    if (const Arrange own = table().value(form.name(), nullptr)) return own;
    return familyLayout(form);
}

QStringList laidOutForms() { return table().keys(); }

}  // namespace koben::ui
