#pragma once
// The window of one form: content, keys that belong to the window, its place on the screen.
#include <QWidget>
#include <vector>

#include "forms/Form.h"

class QScrollArea;

namespace koben::ui {

class FormWindow final : public QWidget {
public:
    explicit FormWindow(Form& form, QWidget* parent = nullptr);
    ~FormWindow() override;

    Form& form() const { return m_form; }
    /// The widget of a control; nothing where the window has none.
    QWidget* widgetOf(const Control& control) const;
    /// Controls that the form's own layout left out (they are arranged below it).
    const std::vector<Control*>& leftOver() const { return m_leftOver; }
    /// Focusable widgets in the order of the Tab key.
    const std::vector<QWidget*>& tabOrder() const { return m_order; }

    /// Shows the window where it was last, or at its natural size in the middle of its screen.
    void present();
    void keepPlace();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void fill();
    void scrollIfTooLarge();
    void orderTabs();
    void assignMnemonics();
    void firstFocus();
    bool formKey(int key);
    void help();
    QRect naturalPlace() const;

    Form& m_form;
    QWidget* m_content = nullptr;
    QScrollArea* m_area = nullptr;  ///< around the content where that is too large for the screen
    std::vector<Control*> m_leftOver;
    std::vector<QWidget*> m_order;
};

/// Where a window may stand: `wanted` if it lies on one of the screens, moved and shrunk into the nearest else.
QRect placeOnScreen(const QRect& wanted, const QList<QRect>& screens);

}  // namespace koben::ui
