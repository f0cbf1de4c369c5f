#include "ui/Layout.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "ui/FlowLayout.h"
#include "ui/Simple.h"

namespace koben::ui {

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

Piece inGroup(QGroupBox* box, const Piece& content) {
    auto* layout = new QVBoxLayout(box);
    const int gap = layout->spacing() > 0 ? layout->spacing() : 6;
    layout->setContentsMargins(0, gap + 2, 0, gap);
    layout->addWidget(content.widget);
    return {.widget = box, .stretch = content.stretch};
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

/// The strokes that scroll titles wider than the window are no stops of their own: the arrow keys walk the titles.
static void nameAsPages(QTabWidget& view) {
    view.tabBar()->setAccessibleName(QStringLiteral("Seiten"));
    for (auto* button : view.tabBar()->findChildren<QToolButton*>()) button->setFocusPolicy(Qt::NoFocus);
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
    nameAsPages(*view);
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
    nameAsPages(*view);
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

}  // namespace koben::ui
