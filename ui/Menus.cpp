#include "ui/Menus.h"

#include <QAction>
#include <QEvent>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "forms/Form.h"
#include "ui/Application.h"
#include "ui/Look.h"

namespace koben::ui {

namespace {

class BoundAction {
public:
    virtual ~BoundAction() = default;
    virtual Control& control() const = 0;
};

/// An entry of a menu or a button of the tool bar that follows its model.
class EntryAction final : public QAction, public BoundAction, private Control::View {
public:
    EntryAction(Button& model, QObject* parent) : QAction(parent), View(model), m_model(model) {
        setObjectName(model.address());
        setSeparator(model.caption() == u"-");
        if (!model.hint().isEmpty()) setToolTip(model.hint());
        connect(this, &QAction::triggered, this, [this] {
            guarded([this] {
                if (m_model.enabled()) m_model.click();
            });
        });
        show();
    }
    Control& control() const override { return m_model; }

private:
    void changed(Aspect) override { show(); }
    void show() {
        if (!isSeparator()) setText(m_model.caption());
        setEnabled(m_model.enabled());
        setVisible(m_model.visible());
    }
    Button& m_model;
};

/// A sub-menu that follows its model.
class EntryMenu final : public QMenu, public BoundAction, private Control::View {
public:
    EntryMenu(MenuEntry& model, QWidget* parent) : QMenu(parent), View(model), m_model(model) {
        setObjectName(model.address());
        show();
    }
    Control& control() const override { return m_model; }

private:
    void changed(Aspect) override { show(); }
    void show() {
        setTitle(m_model.caption());
        menuAction()->setEnabled(m_model.enabled());
        menuAction()->setVisible(m_model.visible());
    }
    MenuEntry& m_model;
};

std::vector<MenuEntry*> children(const Form& form, const MenuEntry& menu) {
    std::vector<MenuEntry*> entries;
    for (Control* control : form.controls())
        if (auto* entry = dynamic_cast<MenuEntry*>(control); entry && entry->parent == &menu) entries.push_back(entry);
    return entries;
}

QMenu* makeMenu(MenuEntry& model, QWidget* parent) {
    auto* menu = new EntryMenu(model, parent);
    for (MenuEntry* entry : children(model.form(), model)) {
        if (children(model.form(), *entry).empty())
            menu->addAction(new EntryAction(*entry, menu));
        else
            menu->addMenu(makeMenu(*entry, menu));
    }
    return menu;
}

/// The first two parts of a tool's key ("btn_beweg_..."): tools of one kind stand together.
QString kindOf(const Button& tool) { return tool.name().section(u'_', 0, 1); }

/// A tool bar that draws its icons anew when the colours change.
class ToolBar final : public QToolBar {
public:
    explicit ToolBar(const std::vector<Button*>& buttons) {
        setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        setIconSize({20, 20});
        setMovable(false);
        QFont small = font();
        small.setPointSizeF(small.pointSizeF() * 0.85);
        setFont(small);
        for (size_t i = 0; i < buttons.size(); ++i) {
            if (i > 0 && kindOf(*buttons[i]) != kindOf(*buttons[i - 1])) addSeparator();
            addAction(new EntryAction(*buttons[i], this));
            QWidget* button = widgetForAction(actions().constLast());
            button->setFont(small);
            button->setAccessibleName(buttons[i]->hint());
        }
        drawIcons();
    }

protected:
    void changeEvent(QEvent* event) override {
        QToolBar::changeEvent(event);
        if (event->type() == QEvent::PaletteChange) drawIcons();
    }

private:
    void drawIcons() {
        for (QAction* action : actions())
            if (const auto* entry = dynamic_cast<EntryAction*>(action))
                action->setIcon(iconOf(static_cast<Button&>(entry->control()).icon, palette()));
    }
};

}  // namespace

QMenuBar* menuBarOf(const std::vector<MenuEntry*>& menus) {
    auto* bar = new QMenuBar;
    for (MenuEntry* menu : menus) bar->addMenu(makeMenu(*menu, bar));
    return bar;
}

QToolBar* toolBarOf(const std::vector<Button*>& buttons) { return new ToolBar(buttons); }

Control* controlOfAction(const QObject* action) {
    const auto* bound = dynamic_cast<const BoundAction*>(action);
    return bound ? &bound->control() : nullptr;
}

void popUpMenu(Form& form, QWidget& widget, const QPoint& at) {
    auto* menu = new QMenu(&widget);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (Control* control : form.controls())
        if (auto* entry = dynamic_cast<MenuEntry*>(control); entry && entry->name() == u"popzeile")
            menu->addAction(new EntryAction(*entry, menu));
    if (menu->isEmpty())
        delete menu;
    else
        menu->popup(at);
}

}  // namespace koben::ui
