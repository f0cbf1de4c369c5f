#pragma once
// What a screen reader calls the controls of a window: words of the user, never the names that they have in the
// program.
#include <QString>

class QWidget;

namespace koben {
class Control;
}

namespace koben::ui {

/// The word for a control that has neither hint nor caption; "" where none is known.
QString wordFor(const Control& control);

/// Names what a window holds beside its bound widgets: the edits of lists, the arrow behind a tool bar, the parts of a
/// calendar, what divides panes.
void nameParts(QWidget& window);

}  // namespace koben::ui
