#include <QBoxLayout>
#include <QButtonGroup>
#include <QLabel>
#include <QMenuBar>
#include <QToolBar>
#include <algorithm>
#include <utility>

#include "ui/CalendarPopup.h"
#include "ui/DrawingView.h"
#include "ui/GridView.h"
#include "ui/Layout.h"
#include "ui/ListView.h"
#include "ui/Look.h"
#include "ui/Menus.h"
#include "ui/Simple.h"
#include "ui/TextViews.h"
#include "ui/TypeSearch.h"

// The controls of a layout, each with its caption, width and what stands beside it.
namespace koben::ui {

const QString buttonBar = QStringLiteral("buttonBar");

namespace {

/// Holds a field and what belongs to it, and hides with the field.
class FieldHolder final : public QWidget, private Control::View {
public:
    explicit FieldHolder(Control& field) : View(field), m_field(field) {
        if (!field.visible()) setVisible(false);
    }

private:
    void changed(Aspect aspect) override {
        if (aspect == Aspect::Visible)
            QMetaObject::invokeMethod(
                this, [this] { setVisibleWithField(); }, Qt::QueuedConnection);
    }
    void setVisibleWithField() {
        if (isHidden() == m_field.visible()) setVisible(m_field.visible());
    }
    const Control& m_field;
};

/// Width of a field for so many characters.
void setCharacters(QWidget& field, int characters, int extra) {
    field.setFixedWidth(field.fontMetrics().horizontalAdvance(u'0') * characters + field.fontMetrics().height() +
                        extra);
}

/// The options of a group in one widget, exclusive among themselves.
Piece choices(const std::vector<Option*>& options, bool segment, bool oneLine) {
    auto* widget = new QWidget;
    auto* box = new QBoxLayout(oneLine ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, widget);
    box->setContentsMargins(0, 0, 0, 0);
    if (segment) box->setSpacing(1);
    auto* exclusive = new QButtonGroup(widget);
    for (Option* option : options) {
        auto* view = new OptionView(*option, segment);
        exclusive->addButton(view);
        box->addWidget(view);
    }
    if (oneLine) box->addStretch(1);
    return {.widget = widget};
}

std::vector<Option*> optionsOf(OptionGroup& group) {
    std::vector<Option*> options;
    for (int i = 0; i < group.count(); ++i) options.push_back(&group[i]);
    return options;
}

}  // namespace

Piece label(Label& model) {
    auto* view = new LabelView(model);
    view->setWordWrap(true);
    return {.widget = view};
}

Piece plain(Label& model) { return {.widget = new LabelView(model)}; }

Piece caption(const QString& text) {
    auto* quiet = new QLabel(text);
    quiet->setTextFormat(Qt::PlainText);
    quiet->setForegroundRole(QPalette::PlaceholderText);
    return {.widget = quiet};
}

Piece heading(Label& model) {
    auto* view = new LabelView(model);
    QFont bold = view->font();
    bold.setBold(true);
    view->setFont(bold);
    return {.widget = view};
}

Piece button(Button& model) { return {.widget = new ButtonView(model)}; }
Piece iconButton(Button& model) { return {.widget = new ButtonView(model, true)}; }
Piece check(CheckBox& model) { return {.widget = new CheckBoxView(model)}; }
Piece segments(OptionGroup& group) { return choices(optionsOf(group), true, true); }
Piece radios(OptionGroup& group, bool oneLine) { return choices(optionsOf(group), false, oneLine); }

Piece text(TextBox& model, int characters) {
    if (model.multiLine) {
        auto* area = new TextView(model);
        if (characters > 0) area->setMinimumWidth(area->fontMetrics().averageCharWidth() * characters);
        return {.widget = area, .stretch = 1};
    }
    auto* line = new LineView(model);
    if (characters > 0)
        setCharacters(*line, characters, 0);
    else
        line->setMinimumWidth(line->fontMetrics().averageCharWidth() * 24);
    return {.widget = line};
}

Piece search(TextBox& model, const QString& placeholder) {
    auto* line = new LineView(model);
    line->setPlaceholderText(placeholder);
    line->setClearButtonEnabled(true);
    setCharacters(*line, std::max(16, static_cast<int>(placeholder.size())), line->fontMetrics().height());
    makeSearchField(*line);
    return {.widget = line};
}

Piece combo(ComboBox& model, int characters) {
    auto* view = new ComboView(model);
    if (characters > 0) setCharacters(*view, characters, view->fontMetrics().height());
    return {.widget = view};
}

Piece spin(TextBox& model, SpinButton& arrows, int characters) {
    auto* line = new LineView(model);
    line->hand.arrows = &arrows;
    setCharacters(*line, characters, 0);
    auto* widget = new FieldHolder(model);
    auto* box = new QHBoxLayout(widget);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(0);
    box->addWidget(line);
    box->addWidget(new ArrowsView(arrows));
    box->addStretch(1);
    widget->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    return {.widget = widget, .field = line};
}

Piece date(TextBox& model, Button& button) {
    if (button.icon.isEmpty()) button.icon = QStringLiteral("kalender");
    auto* line = new LineView(model);
    line->hand.isDate = true;
    setCharacters(*line, 11, 0);
    auto* widget = new FieldHolder(model);
    auto* box = new QHBoxLayout(widget);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(2);
    box->addWidget(line);
    box->addWidget(new ButtonView(button, true));
    box->addStretch(1);
    return {.widget = widget, .field = line};
}

Piece date(TextBox& model, Button& button, Calendar& calendar) {
    const Piece piece = date(model, button);
    (new CalendarPopup(calendar, piece.field))->setParent(piece.widget, Qt::Popup);
    return piece;
}

Piece sharedCalendar(Calendar& calendar) {
    auto* widget = new QWidget;
    widget->setFixedSize(0, 0);
    (new CalendarPopup(calendar, nullptr))->setParent(widget, Qt::Popup);
    return {.widget = widget};
}

Piece input(Control& model, SpinButton* arrows) {
    if (auto* list_ = dynamic_cast<ComboBox*>(&model)) return combo(*list_, 24);
    if (auto* box = dynamic_cast<TextBox*>(&model)) return arrows ? spin(*box, *arrows) : text(*box, 12);
    if (auto* box = dynamic_cast<CheckBox*>(&model)) return check(*box);
    if (auto* text_ = dynamic_cast<Label*>(&model)) return plain(*text_);
    if (auto* list_ = dynamic_cast<ListBox*>(&model)) return list(*list_);
    return automatic(std::vector<Control*>{&model});
}

std::vector<Control*> others(const Form& form, const std::vector<const Control*>& placed) {
    std::vector<Control*> rest;
    for (Control* control : form.controls()) {
        const bool hiddenReport = dynamic_cast<Grid*>(control) && !control->visible();
        if (!hiddenReport && std::find(placed.begin(), placed.end(), control) == placed.end()) rest.push_back(control);
    }
    return rest;
}

Piece list(ListBox& model) { return {.widget = new ListView(model), .stretch = 1}; }
Piece grid(Grid& model, const QString& emptyHint) { return {.widget = new GridView(model, emptyHint), .stretch = 1}; }
Piece drawing(DrawingBox& model) { return {.widget = new DrawingView(model), .stretch = 1}; }
Piece progress(ProgressBar& model) { return {.widget = new ProgressView(model)}; }

Piece buttons(Pieces left, Pieces right) {
    std::vector<Piece> all(left);
    all.push_back(spring());
    all.insert(all.end(), right.begin(), right.end());
    const Piece bar = row(all);
    bar.widget->setObjectName(buttonBar);
    return bar;
}
Piece buttons(Pieces pieces) { return buttons({}, pieces); }

Piece toolBar(const std::vector<Button*>& tools) { return {.widget = toolBarOf(tools)}; }
Piece menus(const std::vector<MenuEntry*>& entries) { return {.widget = menuBarOf(entries)}; }
Piece own(QWidget* widget) { return {.widget = widget}; }

Piece automatic(Form& form) { return automatic(form.controls()); }

namespace {

/// Arranges controls one after the other. A label waits for the field behind it; buttons gather in one line.
class Arranger {
public:
    Piece arrange(const std::vector<Control*>& controls) {
        for (Control* control : controls) place(*control);
        flushLabel();
        flushFields();
        if (!m_buttons.empty()) {
            m_buttons.insert(m_buttons.begin(), spring());
            m_lines.push_back(row(m_buttons));
        }
        return column(m_lines);
    }

private:
    void place(Control& control) {
        if (auto* option = dynamic_cast<Option*>(&control)) {
            if (!m_options.empty() && m_options.front()->name() != option->name()) flushOptions();
            m_options.push_back(option);
            return;
        }
        flushOptions();
        if (dynamic_cast<MenuEntry*>(&control)) return;
        if (auto* frame = dynamic_cast<Frame*>(&control)) return line(heading(*frame));
        if (auto* text_ = dynamic_cast<Label*>(&control)) return flushLabel(), void(m_label = text_);
        if (auto* list_ = dynamic_cast<ComboBox*>(&control)) return input(*list_, combo(*list_));
        if (auto* box = dynamic_cast<TextBox*>(&control))
            return box->multiLine ? line(text(*box)) : input(*box, text(*box, 14));
        if (auto* check_ = dynamic_cast<CheckBox*>(&control)) return line(check(*check_));
        if (auto* button_ = dynamic_cast<Button*>(&control)) return void(m_buttons.push_back(button(*button_)));
        if (auto* grid_ = dynamic_cast<Grid*>(&control)) return line(grid(*grid_));
        if (auto* list_ = dynamic_cast<ListBox*>(&control)) return line(list(*list_));
        if (auto* box = dynamic_cast<DrawingBox*>(&control)) return line(drawing(*box));
        if (auto* bar = dynamic_cast<ProgressBar*>(&control)) return line(progress(*bar));
        if (auto* arrows = dynamic_cast<SpinButton*>(&control)) return line(own(new ArrowsView(*arrows)));
        if (auto* month = dynamic_cast<Calendar*>(&control); month && m_field) {
            (new CalendarPopup(*month, m_field))->setParent(m_field, Qt::Popup);
            return;
        }
        if (auto* pages = dynamic_cast<Tabs*>(&control)) {
            std::vector<Piece> empty;
            for (qsizetype i = 0; i < pages->captions().size(); ++i) empty.push_back(column({}));
            line(tabs(*pages, empty));
        }
    }
    void input(Control& control, const Piece& piece) {
        m_field = piece.widget;
        m_fields.push_back(m_label ? field(*m_label, piece) : field(accessibleName(control), piece));
        m_label = nullptr;
    }
    void line(const Piece& piece) {
        flushLabel();
        flushFields();
        m_lines.push_back(piece);
    }
    void flushLabel() {
        if (!m_label) return;
        Label& waiting = *m_label;
        m_label = nullptr;
        flushFields();
        m_lines.push_back(label(waiting));
    }
    void flushFields() {
        if (!m_fields.empty()) m_lines.push_back(fields(m_fields));
        m_fields.clear();
    }
    void flushOptions() {
        if (m_options.empty()) return;
        const std::vector<Option*> options = std::exchange(m_options, {});
        line(choices(options, false, true));
    }

    std::vector<Piece> m_lines, m_buttons;
    std::vector<FieldRow> m_fields;
    std::vector<Option*> m_options;
    Label* m_label = nullptr;
    QWidget* m_field = nullptr;
};

}  // namespace

Piece automatic(const std::vector<Control*>& controls) { return Arranger().arrange(controls); }

}  // namespace koben::ui
