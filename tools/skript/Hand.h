#pragma once
// The user's hand: works controls through the verbs that a window uses too, and knows which one holds the focus.
#include <map>

#include "tools/skript/Addressing.h"

namespace koben::skript {

/// Every verb demands a control that can be worked (shown, enabled, its page in front) and throws a Failure where it
/// cannot. The focus moves first: a text field that held it is left, and where that closes the form nothing follows.
class Hand {
public:
    void click(const Target& target);
    void doubleClick(const Target& target);
    void text(const Target& target, const QString& value);
    void type(const Target& target, const QString& value);
    void leave(const Target& target);
    void pick(const Target& target, const QString& entry);
    void check(const Target& target, bool on);
    void spin(const Target& target, bool up);
    void row(const Target& target, const QString& row);
    void mark(const Target& target, const QString& rows);
    void edit(const Target& target, const QString& row, const QString& column, const QString& value);
    void sort(const Target& target, const QString& column, bool ascending);
    void resize(const Target& target, const QString& column, const QString& pixels);
    void key(const Target& target, const QString& key);
    /// An entry of the menu bar; menus take no focus.
    void menu(const Target& target);
    /// The close box.
    void close(Form& form);

    void forget(Form& form) { m_focus.erase(&form); }

private:
    bool reach(const Target& target);
    void leaveFocus(Form& form);
    void enterKey(const Target& target);
    void help(Form& form);

    std::map<Form*, Control*> m_focus;
};

}  // namespace koben::skript
