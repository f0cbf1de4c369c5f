#pragma once
// The window of one form: content, keys that belong to the window, what was typed and not saved, its place.
#include <memory>
#include <vector>

#include "forms/Form.h"
#include "ui/Draft.h"
#include "ui/Place.h"
#include "ui/Window.h"

class QScrollArea;
class QLabel;

namespace koben::ui {

class QuietLine;

class FormWindow final : public Window {
public:
    explicit FormWindow(Form& form, QWidget* parent = nullptr);
    ~FormWindow() override;

    Form& form() const override { return m_form; }
    QWidget* widgetOf(const Control& control) const override;
    /// Controls that the form's own layout left out (they are arranged below it).
    const std::vector<Control*>& leftOver() const { return m_leftOver; }
    const std::vector<QWidget*>& tabOrder() const override { return m_order; }

    /// Shows the window where it was last, or at its natural size in the middle of its screen.
    void present();
    void keepPlace();
    void press(Button& button) override;
    /// Says a sentence in the quiet line.
    void say(const QString& text);
    /// An action of the form reached the disk: what stands in the inputs is saved.
    void saved() { m_saved = true; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool event(QEvent* event) override;

private:
    class MarkTeller;
    class PageWatch;

    void fill();
    void takeOutButtons();
    void stackButtons();
    void orderTabs();
    void firstFocus();
    void tellPrintTrouble();
    void focusWrong();
    void showHead();
    void follow();
    bool formKey(const QKeyEvent& event);
    bool escape(Control* control);
    bool enter(Qt::KeyboardModifiers modifiers);
    void help();
    QSize neededSize() const;
    QRect naturalPlace() const;
    void fit();
    bool mayClose();
    bool mayLeaveAnimal();
    bool mayLackChoice();
    QWidget* openChoice() const;
    void reviewButtons();
    Decisions* decisions() const;

    Form& m_form;
    QWidget* m_content = nullptr;
    QScrollArea* m_area = nullptr;  ///< around the content, which scrolls where it is too large for the screen
    QWidget* m_buttons = nullptr;   ///< below it, always in sight
    QLabel* m_head = nullptr;
    QuietLine* m_quiet = nullptr;
    std::vector<Control*> m_leftOver;
    std::vector<QWidget*> m_order;
    std::vector<std::unique_ptr<MarkTeller>> m_tellers;
    std::vector<std::unique_ptr<PageWatch>> m_pages;
    Draft m_draft;
    QSize m_needed;
    bool m_saved = false;
    bool m_asking = false;
    bool m_fitting = false;
};

}  // namespace koben::ui
