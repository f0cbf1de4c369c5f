#include "ui/Layout.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QMenuBar>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <algorithm>
#include <utility>

#include "ui/CalendarPopup.h"
#include "ui/DrawingView.h"
#include "ui/FlowLayout.h"
#include "ui/GridView.h"
#include "ui/ListView.h"
#include "ui/Look.h"
#include "ui/Menus.h"
#include "ui/Simple.h"
#include "ui/TextViews.h"
#include "ui/TypeSearch.h"

namespace koben::ui {

const QString buttonBar = QStringLiteral("buttonBar");

namespace {

Piece boxed(QBoxLayout* box, const std::vector<Piece>& pieces) {
    auto* widget = new QWidget;
    box->setContentsMargins(0, 0, 0, 0);
    for (const Piece& piece : pieces) {
        if (piece.spring)
            box->addStretch(piece.stretch > 0 ? piece.stretch : 1);
        else if (piece.widget)
            box->addWidget(piece.widget, piece.stretch);
    }
    widget->setLayout(box);
    int stretch = 0;
    for (const Piece& piece : pieces) stretch = std::max(stretch, piece.spring ? 0 : piece.stretch);
    return {.widget = widget, .stretch = stretch};
}

/// Follows a frame of the form: its caption, and shows, hides and greys what stands in it.
class GroupView final : public Bound<QGroupBox, Frame> {
public:
    explicit GroupView(Frame& model) : Bound(model) { start(); }

protected:
    void refresh(Aspect) override { setTitle(model().text()); }
};

class TabsView final : public Bound<QTabWidget, Tabs> {
public:
    explicit TabsView(Tabs& model) : Bound(model) {
        connect(this, &QTabWidget::currentChanged, this, [this](int page) {
            if (page != this->model().front()) this->model().choose(page);
        });
        start();
    }

protected:
    void refresh(Aspect) override {
        const QSignalBlocker quiet(this);
        setCurrentIndex(model().front());
    }
};

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

Piece inGroup(QGroupBox* box, const Piece& content) {
    auto* layout = new QVBoxLayout(box);
    const int gap = layout->spacing() > 0 ? layout->spacing() : 6;
    layout->setContentsMargins(0, gap + 2, 0, gap);
    layout->addWidget(content.widget);
    return {.widget = box, .stretch = content.stretch};
}

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

Piece row(const std::vector<Piece>& pieces) { return boxed(new QHBoxLayout, pieces); }
Piece row(Pieces pieces) { return row(std::vector<Piece>(pieces)); }

namespace {

/// The blocks of fields that stand below each other in a piece.
void collectFields(QLayout* layout, std::vector<QFormLayout*>& blocks) {
    if (auto* block = qobject_cast<QFormLayout*>(layout)) return blocks.push_back(block);
    if (!qobject_cast<QVBoxLayout*>(layout)) return;
    for (int i = 0; i < layout->count(); ++i)
        if (const QWidget* widget = layout->itemAt(i)->widget(); widget && widget->layout())
            collectFields(widget->layout(), blocks);
}

/// Fields below each other begin at one line, whichever heading they stand under.
void alignFields(QLayout* layout) {
    std::vector<QFormLayout*> blocks;
    collectFields(layout, blocks);
    if (blocks.size() < 2) return;
    int widest = 0;
    std::vector<QWidget*> captions;
    for (const QFormLayout* block : blocks)
        for (int row = 0; row < block->rowCount(); ++row)
            if (const QLayoutItem* item = block->itemAt(row, QFormLayout::LabelRole); item && item->widget()) {
                captions.push_back(item->widget());
                widest = std::max(widest, item->widget()->sizeHint().width());
            }
    for (QWidget* caption : captions) caption->setMinimumWidth(widest);
}

}  // namespace

Piece column(const std::vector<Piece>& pieces) {
    const Piece piece = boxed(new QVBoxLayout, pieces);
    alignFields(piece.widget->layout());
    return piece;
}
Piece column(Pieces pieces) { return column(std::vector<Piece>(pieces)); }
Piece flow(const std::vector<Piece>& pieces) {
    auto* widget = new QWidget;
    auto* lines = new FlowLayout(widget);
    for (const Piece& piece : pieces)
        if (piece.widget) lines->addWidget(piece.widget);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    widget->setSizePolicy(policy);
    return {.widget = widget};
}
Piece flow(Pieces pieces) { return flow(std::vector<Piece>(pieces)); }
Piece spring() { return {.spring = true}; }

Piece group(const QString& title, const Piece& content) { return inGroup(new QGroupBox(title), content); }
Piece group(Frame& frame, const Piece& content) { return inGroup(new GroupView(frame), content); }

Piece split(const Piece& left, const Piece& right, int leftShare, int rightShare) {
    auto* splitter = new QSplitter(Qt::Horizontal);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(left.widget);
    splitter->addWidget(right.widget);
    splitter->setStretchFactor(0, leftShare);
    splitter->setStretchFactor(1, rightShare);
    return {.widget = splitter, .stretch = 1};
}

Piece tabs(Tabs& model, const std::vector<Piece>& pages) {
    auto* view = new TabsView(model);
    const QSignalBlocker quiet(view);
    int page = 0;
    for (const Piece& piece : pages) {
        auto* frame = new QWidget;
        auto* layout = new QVBoxLayout(frame);
        layout->addWidget(piece.widget);
        if (piece.stretch == 0) layout->addStretch(1);
        view->addTab(frame, model.captions().value(page++));
    }
    view->setCurrentIndex(model.front());
    view->tabBar()->setAccessibleName(QStringLiteral("Seiten"));
    return {.widget = view, .stretch = 1};
}
Piece tabs(Tabs& model, Pieces pages) { return tabs(model, std::vector<Piece>(pages)); }

Piece pages(const std::vector<std::pair<QString, Piece>>& pages) {
    auto* view = new QTabWidget;
    for (const auto& [title, piece] : pages) {
        auto* frame = new QWidget;
        auto* layout = new QVBoxLayout(frame);
        layout->addWidget(piece.widget);
        layout->addStretch(1);
        view->addTab(frame, title);
    }
    view->tabBar()->setAccessibleName(QStringLiteral("Seiten"));
    return {.widget = view, .stretch = 1};
}

Piece table(const std::vector<std::vector<Piece>>& lines) {
    auto* widget = new QWidget;
    auto* grid = new QGridLayout(widget);
    grid->setContentsMargins(0, 0, 0, 0);
    int line = 0, columns = 0;
    for (const auto& pieces : lines) {
        int column = 0;
        for (const Piece& piece : pieces) {
            if (piece.widget) grid->addWidget(piece.widget, line, column);
            ++column;
        }
        columns = std::max(columns, column);
        ++line;
    }
    grid->setColumnStretch(columns, 1);
    return {.widget = widget};
}

FieldRow field(const QString& caption, const Piece& piece) { return {caption, nullptr, piece}; }
FieldRow field(Label& caption, const Piece& piece) { return {{}, &caption, piece}; }

Piece fields(const std::vector<FieldRow>& rows) {
    auto* widget = new QWidget;
    auto* form = new QFormLayout(widget);
    form->setContentsMargins(0, 0, 0, 0);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    for (const FieldRow& row : rows) {
        QWidget* target = row.piece.field ? row.piece.field : row.piece.widget;
        QLabel* caption = nullptr;
        if (row.label) {
            caption = new LabelView(*row.label);
            caption->setBuddy(target);
            target->setAccessibleName(plainCaption(row.label->text()).remove(u':'));
        } else if (Control* control = controlOf(target)) {
            caption = new CaptionView(*control, row.caption, target);
        } else {
            caption = new QLabel(row.caption);
        }
        // a sentence for a caption goes on below itself
        const int widest = caption->fontMetrics().averageCharWidth() * 55;
        if (caption->sizeHint().width() > widest) {
            caption->setWordWrap(true);
            caption->setFixedWidth(widest);
        }
        form->addRow(caption, row.piece.widget);
    }
    return {.widget = widget};
}
Piece fields(std::initializer_list<FieldRow> rows) { return fields(std::vector<FieldRow>(rows)); }

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
    setCharacters(*line, 16, line->fontMetrics().height());
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
