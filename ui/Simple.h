#pragma once
// The widgets of the simple controls: label, buttons, check box, option, arrows, progress.
#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include "ui/Bound.h"

namespace koben::ui {

class LabelView final : public Bound<QLabel, Label> {
public:
    explicit LabelView(Label& model);

protected:
    void refresh(Aspect aspect) override;
};

/// A fixed caption beside a control: hides and greys with it, and its mnemonic leads there.
class CaptionView final : public QLabel, private Control::View {
public:
    CaptionView(Control& control, const QString& text, QWidget* buddy);

private:
    void changed(Aspect aspect) override;
    const Control& m_model;
};

class ButtonView final : public Bound<QPushButton, Button> {
public:
    explicit ButtonView(Button& model, bool iconOnly = false);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    /// Looks anew whether pressing it would do anything.
    void review() { showState(); }

protected:
    void refresh(Aspect aspect) override;
    bool usable() const override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    const bool m_iconOnly;
};

class CheckBoxView final : public Bound<QCheckBox, CheckBox> {
public:
    explicit CheckBoxView(CheckBox& model);

protected:
    void refresh(Aspect aspect) override;
};

/// One choice of a group, drawn as a radio button or as a segment of a row of choices.
class OptionView final : public Bound<QRadioButton, Option> {
public:
    OptionView(Option& model, bool segment);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void refresh(Aspect aspect) override;
    bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    const bool m_segment;
};

/// Two small arrows that stand at the right end of a field.
class ArrowsView final : public Bound<QWidget, SpinButton> {
public:
    explicit ArrowsView(SpinButton& model);

protected:
    void refresh(Aspect) override {}
};

class ProgressView final : public Bound<QProgressBar, ProgressBar> {
public:
    explicit ProgressView(ProgressBar& model);

protected:
    void refresh(Aspect aspect) override;
};

}  // namespace koben::ui
