#pragma once
// What the parts of a form's window ask of it, so that none of them needs to know how it is built.
#include <QStringList>
#include <QWidget>
#include <vector>

namespace koben {

class Button;
class Control;
class Form;

namespace ui {

class Window : public QWidget {
public:
    using QWidget::QWidget;

    virtual Form& form() const = 0;
    /// The widget of a control; nothing where the window has none.
    virtual QWidget* widgetOf(const Control& control) const = 0;
    /// Focusable widgets in the order of the Tab key.
    virtual const std::vector<QWidget*>& tabOrder() const = 0;
    /// Presses a button for the user: asks before it would throw away what was typed.
    virtual void press(Button& button) = 0;
};

/// Asks the user a question of the window's own.
class Decisions {
public:
    virtual ~Decisions() = default;
    /// A button for each caption; the last one is safe, and the default. Gives the position of the button.
    virtual int decide(const QString& text, const QStringList& captions) = 0;
};

}  // namespace ui
}  // namespace koben
