#pragma once
// The one rule for the Enter key, in every window: from input to input in the order in which they stand, past whatever
// only helps, to the button that accepts, which the next Enter presses.

class QWidget;

namespace koben {

class Button;
class Form;
class Option;

namespace ui {

class Window;

/// The button that accepts what the window holds, as far as it can be pressed now; nothing where there is none.
Button* acceptOf(const Window& window);
/// Enter in a list that opens nothing presses the accepting button where that only opens an entry.
bool opensEntry(const Form& form);
/// The one choice of a group at which Tab and Enter stop: the selected one, or the first where none is that can be
/// chosen now.
bool standsForGroup(const Option& option);
/// Enter stops at the widget: it takes an entry, or holds a choice.
bool takesEntry(const Window& window, QWidget* widget);
/// Puts the focus where Enter goes from `from`.
void moveOn(Window& window, QWidget* from);

}  // namespace ui
}  // namespace koben
