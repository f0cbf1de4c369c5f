#pragma once
// From the names in a script to forms and controls.
#include <QString>

#include "forms/Form.h"
#include "forms/Koben.h"
#include "tools/skript/Script.h"

namespace koben::skript {

/// A control, or one page of a tab control.
struct Target {
    Form* form = nullptr;
    Control* control = nullptr;
    int page = -1;          ///< of a tab control; -1 for the control itself
    bool textPart = false;  ///< CONTROL.text
    QString name() const;   ///< FORM.CONTROL, for messages
};

/// "kom(1)" as name and index; index -1 where there is none.
struct Address {
    QString name;
    int index = -1;
};
Address parseAddress(const QString& text);

/// A control of the front form, to be worked.
Target inFront(const Koben& koben, const QString& address);
/// A control of any open form, to be read: CONTROL, CONTROL.text, FORM.CONTROL, FORM.CONTROL.text.
Target toRead(const Koben& koben, const QString& address);
/// A column of a grid by key or number; a Failure where there is none.
int columnOf(const Grid& grid, const QString& column);
/// A row of a list or grid, from 1; a Failure where it is none of 1 to `count`.
int rowOf(const QString& text, int count);

/// The control as a `C`; a Failure that names what was expected where it is none.
template <class C>
C& as(const Target& target, const char* expected) {
    if (auto* control = dynamic_cast<C*>(target.control)) return *control;
    throw Failure{QStringLiteral("%1 ist %2").arg(target.name(), QString::fromUtf8(expected))};
}

}  // namespace koben::skript
