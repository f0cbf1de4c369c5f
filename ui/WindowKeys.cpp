#include "ui/WindowKeys.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>

#include "forms/Zurueck.h"
#include "ui/Application.h"
#include "ui/Bound.h"
#include "ui/Mnemonics.h"
#include "ui/TypeSearch.h"
#include "ui/Window.h"

namespace koben::ui {

namespace {

struct EntryKey {
    const char* entry;    ///< of the main window's menus
    const char* caption;  ///< the same in context menus, "" where it is in none
    const char* keys;
};
const EntryKey EntryKeys[] = {{"XB_neueschweine", "Neu", "Ctrl+N"},
                              {"XB_schweinändern", "Ändern", "F2"},
                              {"XE_belegung", "Belegung", "Ctrl+1"},
                              {"XE_trächtigkeit", "Trächtigkeitsfeststellung", "Ctrl+2"},
                              {"XE_ferkelung", "Ferkelung", "Ctrl+3"},
                              {"XE_absetzung", "Absetzung", "Ctrl+4"},
                              {"XE_Verschiebung", "Verschiebung", "Ctrl+5"},
                              {"XE_verluste", "Verluste", "Ctrl+6"},
                              {"XE_Ferkelverkauf", "Ferkelverkauf", "Ctrl+7"},
                              {"XE_behandlung", "Behandlung", "Ctrl+8"},
                              {"", "Löschen", "Del"}};

/// Buttons of the other windows and the keys that press them; the first that can be pressed counts.
struct ButtonKey {
    const char* button;
    const char* keys;
};
const ButtonKey ButtonKeys[] = {{"neu", "Ctrl+N"},       {"ändern", "F2"},      {"listen", "Ctrl+P"},
                                {"comlisten", "Ctrl+P"}, {"drucken", "Ctrl+P"}, {"comtext", "Ctrl+P"}};

constexpr const char* BackKeys = "Ctrl+Z";
constexpr const char* AgainKeys = "Ctrl+Shift+Z";

bool isMain(const Window& window) { return dynamic_cast<const HerdList*>(&window.form()); }

QKeySequence sequence(const char* keys) { return QKeySequence(QString::fromLatin1(keys)); }

QAbstractButton* buttonNamed(const Window& window, const char* name) {
    const Control* control = window.form().find(QString::fromUtf8(name));
    return control ? qobject_cast<QAbstractButton*>(window.widgetOf(*control)) : nullptr;
}

QAction* addAction(Window& window, QMenu& menu, QAction* before, const char* caption, const char* keys,
                   const std::function<void()>& act) {
    QSet<QChar> taken;
    for (const QAction* other : menu.actions()) taken.insert(mnemonicOf(other->text()));
    const QString text = QString::fromUtf8(caption);
    auto* action = new QAction(withLetter(text, freeLetter(text, taken)), &menu);
    action->setShortcut(sequence(keys));
    QObject::connect(action, &QAction::triggered, &window, [act] { guarded(act); });
    menu.insertAction(before, action);
    return action;
}

void takeBack(Window& window, Ruecknahmerichtung richtung) {
    Form& form = window.form();
    form.act([&form, richtung] { showAgain(form.koben, zuruecknehmen(form.koben, richtung)); });
}

/// Says in the menu, as it opens, which action it is; without one the entry still answers its keys.
void addTakingBack(Window& window, QMenu& menu, QAction* before, Ruecknahmerichtung richtung, const char* caption,
                   const char* keys) {
    QAction* action =
        addAction(window, menu, before, caption, keys, [&window, richtung] { takeBack(window, richtung); });
    const QString plain = action->text();
    QObject::connect(&menu, &QMenu::aboutToShow, action, [&window, action, plain, richtung] {
        constexpr int most = 60;
        QString name;
        guarded([&] { name = naechsteAktion(window.form().koben, richtung); });
        if (name.size() > most) name = name.left(most) + QStringLiteral("...");
        action->setText(name.isEmpty() ? plain
                                       : plain + QStringLiteral(": ") + name.replace(u'&', QStringLiteral("&&")));
    });
}

/// Strg+Z and Strg+Umschalt+Z where the herd's bookings are in view; a text field in edit takes them itself.
bool takingBackKey(Window& window, const QKeySequence& pressed) {
    const QString& form = window.form().name();
    if (form != u"PE_Bewegungsdaten" && form != u"PA_Verlauf") return false;
    if (pressed == sequence(BackKeys)) return takeBack(window, Ruecknahmerichtung::Zurueck), true;
    if (pressed == sequence(AgainKeys)) return takeBack(window, Ruecknahmerichtung::Wieder), true;
    return false;
}

/// Strg+1 to 8 bring a kind of booking to the front.
bool kindKey(Window& window, int key) {
    if (key < Qt::Key_1 || key > Qt::Key_8 || window.form().name() != u"PE_Bewegungsdaten") return false;
    if (auto* kind = dynamic_cast<Option*>(window.form().find(u"opti", key - Qt::Key_1))) kind->click();
    return true;
}

}  // namespace

QString menuKeys(const QString& entry) {
    for (const EntryKey& key : EntryKeys)
        if (*key.entry && entry == QString::fromUtf8(key.entry)) return QString::fromLatin1(key.keys);
    return {};
}

QString shownKeys(const QString& plainCaption) {
    for (const EntryKey& key : EntryKeys)
        if (plainCaption == QString::fromUtf8(key.caption))
            return sequence(key.keys).toString(QKeySequence::NativeText);
    return {};
}

void prepareKeys(Window& window) {
    if (auto* menu = window.findChild<QMenu*>(QStringLiteral("XB_Bestand")); menu && isMain(window)) {
        QAction* end = menu->findChild<QAction*>(QStringLiteral("XB_beenden"));
        menu->insertSeparator(end);
        addTakingBack(window, *menu, end, Ruecknahmerichtung::Zurueck, "Rückgängig", BackKeys);
        addTakingBack(window, *menu, end, Ruecknahmerichtung::Wieder, "Wiederholen", AgainKeys);
        menu->insertSeparator(end);
        addAction(window, *menu, end, "Tier suchen", "Ctrl+F", [&window] { toSearch(window); });
        addAction(window, *menu, end, "Schnelleingabe", "Ctrl+K", [&window] {
            const Control* line = window.form().find(u"schnell");
            if (QWidget* field = line ? window.widgetOf(*line) : nullptr) field->setFocus(Qt::ShortcutFocusReason);
        });
        addAction(window, *menu, end, "Liste neu lesen", "F5", [&window] {
            const Koben& koben = window.form().koben;
            if (koben.herdList) window.form().act([&koben] { koben.herdList->datenschweinelesen(); });
        });
        addAction(window, *menu, end, "Tierdaten drucken", "Ctrl+P", [&window] {
            if (auto* button = buttonNamed(window, "comdrucken")) button->click();
        });
        menu->insertSeparator(end);
        return;
    }
    for (const ButtonKey& key : ButtonKeys)
        if (QAbstractButton* button = buttonNamed(window, key.button); button && button->toolTip().isEmpty())
            button->setToolTip(plainCaption(button->text()) +
                               QStringLiteral(" (%1)").arg(sequence(key.keys).toString(QKeySequence::NativeText)));
}

bool windowKey(Window& window, const QKeyEvent& event) {
    const QKeySequence pressed(event.keyCombination());
    if (isMain(window)) return false;
    if (event.modifiers() == Qt::ControlModifier && kindKey(window, event.key())) return true;
    if (takingBackKey(window, pressed)) return true;
    if (pressed == sequence("Ctrl+F")) return toSearch(window), true;
    for (const ButtonKey& key : ButtonKeys) {
        if (pressed != sequence(key.keys)) continue;
        QAbstractButton* button = buttonNamed(window, key.button);
        if (!button || !button->isVisibleTo(&window) || !button->isEnabledTo(&window)) continue;
        button->click();
        return true;
    }
    return false;
}

}  // namespace koben::ui
