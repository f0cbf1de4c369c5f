#pragma once
// The quiet line at the bottom of every window: what was just done, or what a field had to refuse.
#include <QLabel>

namespace koben {

class Grid;

namespace ui {

class QuietLine final : public QLabel {
public:
    explicit QuietLine(QWidget* parent);
    /// Shows a sentence and has it read aloud; "" clears the line.
    void say(const QString& text);
};

/// Says it in the window that holds the widget, if that has a quiet line.
void say(const QWidget& widget, const QString& text);

/// "3 Sauen markiert" for the marked rows of a list of animals, "" for less than two.
QString markedText(const Grid& grid);

/// What the window says of an action that has reached the disk.
QString doneText(const QString& action);

}  // namespace ui
}  // namespace koben
