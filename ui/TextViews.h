#pragma once
// The widgets of text fields: one line, several lines, with a list. Each character that the user brings in, typed or
// pasted, passes the field's key filter.
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QValidator>
#include <memory>

#include "ui/Bound.h"

namespace koben::ui {

/// Lets through what the field's key filter lets through: compares with the text before and filters the piece between.
class KeyFilter final : public QValidator {
public:
    KeyFilter(const TextBox& model, QLineEdit& edit) : m_model(model), m_edit(edit) {}
    State validate(QString& text, int& cursor) const override;
    /// The program changes the text: no filter.
    void setText(const QString& text);

private:
    const TextBox& m_model;
    QLineEdit& m_edit;
    bool m_program = false;
};

/// What a field does at the edges of an edit, the same for all its widgets.
class FieldHand {
public:
    explicit FieldHand(TextBox& model) : m_model(model) {}
    /// True where the key was not the widget's: Enter (which is then the window's), arrows of a spin button, days and
    /// calendar of a date field.
    bool key(QWidget& widget, QKeyEvent& event);
    /// True where the field is entered, not just come back to from a message or another program.
    bool focusIn(const QFocusEvent& event);
    void focusOut(const QFocusEvent& event);

    SpinButton* arrows = nullptr;
    bool isDate = false;
    /// A date that was none and went as the field was left; "" again once there is another one.
    QString refused;

private:
    int dayStep(const QKeyEvent& event) const;
    bool dayKey(const QKeyEvent& event);
    bool openCalendar(const QWidget& field) const;
    TextBox& m_model;
    bool m_inside = false;
};

class LineView final : public Bound<QLineEdit, TextBox> {
public:
    explicit LineView(TextBox& model);
    FieldHand hand;

protected:
    void refresh(Aspect aspect) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    KeyFilter m_filter;
    bool m_markOnRelease = false;
};

class TextView final : public Bound<QPlainTextEdit, TextBox> {
public:
    explicit TextView(TextBox& model);
    FieldHand hand;

protected:
    void refresh(Aspect aspect) override;
    void keyPressEvent(QKeyEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void told();
    QString filtered(const QString& text) const;
    bool m_program = false;
};

class ComboView final : public Bound<QComboBox, ComboBox> {
public:
    explicit ComboView(ComboBox& model);
    FieldHand hand;

protected:
    void refresh(Aspect aspect) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void fill();
    void typed(const QString& text);
    QString m_typed;  ///< what the user wrote, without what was completed
    std::unique_ptr<KeyFilter> m_filter;
    QStringList m_shown;
};

}  // namespace koben::ui
