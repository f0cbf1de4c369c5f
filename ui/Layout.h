#pragma once
// The vocabulary of layouts: small functions that arrange a form's controls. A unit of ui/<folder>/ reads
//
//     LAYOUT(PB_Wartezeiten) { return column({label(form.Label1), grid(form.gridli), buttons({button(form.ok)})}); }
//
// and is listed in ui/Layouts.cpp. Braces keep the order in which the pieces stand.
#include <QString>
#include <QWidget>
#include <initializer_list>
#include <vector>

#include "forms/DrawingBox.h"
#include "forms/Form.h"
#include "ui/Bound.h"

class QLayout;

namespace koben::ui {

/// A piece of a window: a widget, or empty space. `stretch` is its share of spare room in its row or column.
struct Piece {
    QWidget* widget = nullptr;
    QWidget* field = nullptr;  ///< where a caption's key leads, if not to the widget itself
    int stretch = 0;
    bool spring = false;  ///< empty space that takes spare room
    Piece operator*(int share) const {
        Piece piece = *this;
        piece.stretch = share;
        return piece;
    }
};
using Pieces = std::initializer_list<Piece>;

// arranging
Piece row(Pieces pieces);
Piece row(const std::vector<Piece>& pieces);
Piece column(Pieces pieces);
Piece column(const std::vector<Piece>& pieces);
/// Side by side, in further lines where the width does not do.
Piece flow(Pieces pieces);
Piece flow(const std::vector<Piece>& pieces);
/// Empty space that pushes its neighbours apart.
Piece spring();
Piece group(const QString& title, const Piece& content);
/// A titled frame that is a control of the form.
Piece group(Frame& frame, const Piece& content);
/// Two pieces side by side; `left` and `right` are their shares of the width.
Piece split(const Piece& left, const Piece& right, int leftShare, int rightShare);
Piece tabs(Tabs& tabs, Pieces pages);
Piece tabs(Tabs& tabs, const std::vector<Piece>& pages);
/// Pages of the layout's own, for a form that has more than a small screen holds but no tabs of its own.
Piece pages(const std::vector<std::pair<QString, Piece>>& pages);

/// Lines of pieces whose columns stand below each other.
Piece table(const std::vector<std::vector<Piece>>& lines);

// label and field pairs, one below the other
struct FieldRow {
    QString caption;
    Label* label = nullptr;
    Piece piece;
};
/// A caption and its field; "&" in the caption marks the key that leads there.
FieldRow field(const QString& caption, const Piece& piece);
FieldRow field(Label& caption, const Piece& piece);
Piece fields(std::initializer_list<FieldRow> rows);
Piece fields(const std::vector<FieldRow>& rows);

// controls
Piece label(Label& model);           ///< breaks its lines where the window is narrow
Piece plain(Label& model);           ///< one line, as wide as its text
Piece caption(const QString& text);  ///< fixed quiet text of the layout
Piece heading(Label& model);
Piece button(Button& model);
Piece iconButton(Button& model);  ///< the icon alone; the caption is for screen readers
Piece check(CheckBox& model);
Piece segments(OptionGroup& group);  ///< choices on one line, drawn as joined segments
Piece radios(OptionGroup& group, bool oneLine = false);
Piece text(TextBox& model, int characters = 0);            ///< a field, or an area if the box has several lines
Piece search(TextBox& model, const QString& placeholder);  ///< with a button that clears it
Piece combo(ComboBox& model, int characters = 0);
Piece spin(TextBox& model, SpinButton& arrows, int characters = 5);
Piece date(TextBox& model, Button& button, Calendar& calendar);
/// A date field whose calendar serves several; `sharedCalendar` stands once beside them.
Piece date(TextBox& model, Button& button);
Piece sharedCalendar(Calendar& calendar);
Piece list(ListBox& model);
Piece grid(Grid& model, const QString& emptyHint = {});
Piece drawing(DrawingBox& model);
Piece progress(ProgressBar& model);

/// Name of the widget that `buttons` makes: it stays in sight where the rest of a window scrolls.
extern const QString buttonBar;
/// Buttons at the bottom right.
Piece buttons(Pieces pieces);
/// Buttons at the bottom, some at the left and the rest at the right.
Piece buttons(Pieces left, Pieces right);

/// Facts that are only read: caption and value pairs in a quiet block, so many pairs beside each other.
Piece facts(ControlArray<Label>& values, const QStringList& captions, int pairsPerLine = 4);

/// The same with labels of the form as captions, the first of them given.
Piece facts(ControlArray<Label>& values, ControlArray<Label>& captions, int firstCaption, int pairsPerLine = 4);

/// A tool bar across the window.
Piece toolBar(const std::vector<Button*>& buttons);
Piece menus(const std::vector<MenuEntry*>& menus);

/// The usual widget of a control whose kind the layout does not know.
Piece input(Control& model, SpinButton* arrows = nullptr);
/// The form's controls except these, for `automatic`.
std::vector<Control*> others(const Form& form, const std::vector<const Control*>& placed);
/// Any widget of the layout's own.
Piece own(QWidget* widget);

/// Arranges any form without a layout of its own: controls in their order, label beside field.
Piece automatic(Form& form);
/// The same for controls that a layout left out.
Piece automatic(const std::vector<Control*>& controls);

/// How to arrange a form: by its own layout, or by that of the family it is of; nothing for others.
using Arrange = Piece (*)(Form&);
Arrange layoutOf(Form& form);
/// Names of all forms that have a layout of their own.
QStringList laidOutForms();

}  // namespace koben::ui

/// Defines the layout of a form; `form` is the form.
#define LAYOUT(F)                                                               \
    namespace koben::ui {                                                       \
    static Piece arrange_##F(F& form);                                          \
    Piece layout_##F(Form& form);                                               \
    Piece layout_##F(Form& form) { return arrange_##F(static_cast<F&>(form)); } \
    }                                                                           \
    koben::ui::Piece koben::ui::arrange_##F([[maybe_unused]] koben::F& form)
