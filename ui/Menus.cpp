#include "ui/Menus.h"

#include <QAction>
#include <QEvent>
#include <QLayout>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "forms/Form.h"
#include "ui/Application.h"
#include "ui/Bound.h"
#include "ui/Look.h"
#include "ui/Mnemonics.h"
#include "ui/WindowKeys.h"

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
    /// The letter that the entry bears where its caption has none of its own.
    void setLetter(QChar letter) {
        m_letter = letter;
        show();
    }
    /// Keys shown beside the entry that the window or the list takes itself.
    void setShownKeys(const QString& keys) {
        m_keys = keys;
        show();
    }

private:
    void changed(Aspect) override { show(); }
    void show() {
        const QString& caption = m_model.caption();
        const QString text = m_letter.isNull() ? caption : withLetter(caption, m_letter);
        if (!isSeparator()) setText(m_keys.isEmpty() ? text : text + u'\t' + m_keys);
        setEnabled(m_model.enabled());
        setVisible(m_model.visible());
    }
    Button& m_model;
    QChar m_letter;
    QString m_keys;
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

/// Gives the entries of a menu without a letter a free one.
void assignLetters(const QMenu& menu) {
    QSet<QChar> taken;
    for (const QAction* action : menu.actions()) taken.insert(mnemonicOf(action->text()));
    for (QAction* action : menu.actions())
        if (auto* entry = dynamic_cast<EntryAction*>(action); entry && mnemonicOf(action->text()).isNull()) {
            const QChar letter = freeLetter(action->text().section(u'\t', 0, 0), taken);
            if (letter.isNull()) continue;
            taken.insert(letter);
            entry->setLetter(letter);
        }
}

QMenu* makeMenu(MenuEntry& model, QWidget* parent) {
    auto* menu = new EntryMenu(model, parent);
    for (MenuEntry* entry : children(model.form(), model)) {
        if (!children(model.form(), *entry).empty()) {
            menu->addMenu(makeMenu(*entry, menu));
            continue;
        }
        auto* action = new EntryAction(*entry, menu);
        action->setShortcut(QKeySequence(menuKeys(entry->name())));
        if (entry->name() == u"XB_schweinlöschen") action->setShownKeys(shownKeys(QStringLiteral("Löschen")));
        menu->addAction(action);
    }
    assignLetters(*menu);
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

    QSize minimumSizeHint() const override { return {0, QToolBar::minimumSizeHint().height()}; }

protected:
    void changeEvent(QEvent* event) override {
        QToolBar::changeEvent(event);
        if (event->type() == QEvent::PaletteChange) drawIcons();
        if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) m_whole = 0;
    }
    /// Where the captions have no room the icons stand alone: no button goes out of sight.
    void resizeEvent(QResizeEvent* event) override {
        if (m_whole == 0) m_whole = widthWithCaptions();
        setToolButtonStyle(width() < m_whole ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextUnderIcon);
        QToolBar::resizeEvent(event);
    }

private:
    /// Asked of the buttons themselves once they have their fonts.
    int widthWithCaptions() {
        setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        for (QWidget* button : findChildren<QWidget*>()) button->ensurePolished();
        layout()->invalidate();
        return layout()->sizeHint().width();
    }
    int m_whole = 0;  ///< width with captions
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

void popUpMenu(Form& form, QWidget& widget, const QPoint& at, const std::function<void()>& explain) {
    auto* menu = new QMenu(&widget);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (Control* control : form.controls())
        if (auto* entry = dynamic_cast<MenuEntry*>(control); entry && entry->name() == u"popzeile") {
            auto* action = new EntryAction(*entry, menu);
            action->setShownKeys(shownKeys(plainCaption(entry->caption())));
            menu->addAction(action);
        }
    assignLetters(*menu);
    if (explain) {
        menu->addSeparator();
        QObject::connect(menu->addAction(QStringLiteral("&Zahl herleiten\tF2")), &QAction::triggered, menu, explain);
    }
    if (menu->isEmpty())
        delete menu;
    else
        menu->popup(at);
}

}  // namespace koben::ui
