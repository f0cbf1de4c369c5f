#pragma once
// The control models that forms are made of. Verbs named for the user's hand (click, type, leave, choose) raise
// events; setters are the program's and raise none.
#include <QDate>
#include <QStringList>
#include <initializer_list>
#include <memory>
#include <vector>

#include "forms/Control.h"

namespace koben {

/// Text that the user reads: captions, counters, hints.
class Label : public Control {
public:
    Label(ControlHost& form, const QString& name, const QString& text = {}, int index = -1)
        : Control(form, name, index), m_text(text) {}
    const QString& text() const { return m_text; }
    void setText(const QString& text);

private:
    QString m_text;
};

/// A titled frame around other controls.
class Frame : public Label {
public:
    using Label::Label;
};

class Button : public Control {
public:
    Button(ControlHost& form, const QString& name, const QString& caption, int index = -1)
        : Control(form, name, index), m_caption(caption) {}
    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption);
    /// Name of an icon of the program (resource ":/icons/NAME.svg"), "" for none.
    QString icon;
    virtual void click();
    std::function<void()> onClick;

private:
    QString m_caption;
};

/// An entry of the menu bar, of a sub-menu or of a context menu. A caption of "-" is a separator.
class MenuEntry : public Button {
public:
    MenuEntry(ControlHost& form, const QString& name, const QString& caption, MenuEntry* above = nullptr)
        : Button(form, name, caption), parent(above) {}
    MenuEntry(ControlHost& form, const QString& name, const QString& caption, int index)
        : Button(form, name, caption, index), parent(nullptr) {}
    MenuEntry* const parent;
    bool reachable() const { return enabled() && (!parent || parent->reachable()); }
};

class CheckBox : public Control {
public:
    CheckBox(ControlHost& form, const QString& name, const QString& caption, int index = -1)
        : Control(form, name, index), m_caption(caption) {}
    const QString& caption() const { return m_caption; }
    bool checked() const { return m_checked; }
    void setChecked(bool on);
    void click();  ///< toggles, then the click event
    std::function<void()> onClick;

private:
    QString m_caption;
    bool m_checked = false;
};

class OptionGroup;

/// One choice of an option group.
class Option : public Control {
public:
    Option(OptionGroup& group, ControlHost& form, const QString& name, const QString& caption, int index);
    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption);
    bool selected() const;
    void click();

private:
    friend class OptionGroup;
    OptionGroup& m_group;
    QString m_caption;
};

/// A group of choices of which one is selected; -1 is none.
class OptionGroup {
public:
    OptionGroup(ControlHost& form, const QString& name, std::initializer_list<const char*> captions);
    Option& operator[](int i) { return *m_options.at(static_cast<size_t>(i)); }
    int count() const { return static_cast<int>(m_options.size()); }
    int selected() const { return m_selected; }
    void select(int index);
    void setVisible(bool on);
    void setEnabled(bool on);
    QString frame;  ///< caption of the frame around the group
    std::function<void(int)> onClick;

private:
    friend class Option;
    std::vector<std::unique_ptr<Option>> m_options;
    int m_selected = -1;
};

/// A text field. Keys run through `onKeyPress`, which gets the character's code and gives the code to insert or 0.
/// A control character never gets in: a tab and, in a field of one line, a line break and each other one is a blank.
class TextBox : public Control {
public:
    TextBox(ControlHost& form, const QString& name, int index = -1) : Control(form, name, index) {}
    const QString& text() const { return m_text; }
    void setText(const QString& text);
    /// Whether a text can be read at all. One that cannot stays as it was typed when the field is left, and is marked.
    std::function<bool(const QString&)> readable;

    int maxLength = 0;  ///< characters that can be typed; 0 without limit
    bool multiLine = false;
    bool readOnly = false;
    bool fixedPitch = false;
    bool enterIsTab = true;
    bool marksAllOnFocus = true;

    // the user's hand
    void enter();
    /// Replaces the text as typed, character by character through the key filter.
    void type(const QString& text);
    /// The text as an input widget holds it after an edit (its keys were filtered before).
    void edited(const QString& text);
    /// The character's code after the key filter; 0 where it is swallowed.
    int filter(int code) const;
    void leave();

    std::function<int(int)> onKeyPress;
    std::function<void()> onGotFocus, onChange, onLostFocus;

private:
    QString clean(const QString& text) const;
    QString m_text;
    bool m_unreadable = false;  // found so as it was left
};

/// A text field with a list. Without `fixed` any text may be typed.
class ComboBox : public TextBox {
public:
    ComboBox(ControlHost& form, const QString& name, int index = -1) : TextBox(form, name, index) {}
    bool fixed = false;
    const QStringList& items() const { return m_items; }
    void setItems(const QStringList& items);
    void addItem(const QString& item);
    /// Position of the text in the list, -1 for a text that is none of the entries.
    int current() const;
    void setCurrent(int index);  ///< -1 clears the text
    void setText(const QString& text);
    /// The user picks an entry.
    void choose(int index);
    std::function<void()> onClick;

private:
    QStringList m_items;
    int m_current = -1;
};

/// A list of texts with a current row or, if `multi`, with marked rows. Rows count from 0.
class ListBox : public Control {
public:
    ListBox(ControlHost& form, const QString& name, bool multi = false, int index = -1)
        : Control(form, name, index), multi(multi) {}
    const bool multi;
    const QStringList& items() const { return m_items; }
    void setItems(const QStringList& items);
    void addItem(const QString& item);
    int current() const { return m_current; }
    void setCurrent(int row);
    bool marked(int row) const;
    void setMarked(int row, bool on);
    int markedCount() const;

    /// What the window shows for a row; the entry itself where empty.
    std::function<QString(int row)> rowTitle;

    void choose(int row);  ///< the user makes a row current (in a multi list it is then the one marked row)
    void mark(const std::vector<int>& rows);
    void click();
    void doubleClick();
    std::function<void()> onClick, onDoubleClick;

private:
    QStringList m_items;
    int m_current = -1;
    std::vector<bool> m_marks;
};

/// Up and down arrows beside a field.
class SpinButton : public Control {
public:
    SpinButton(ControlHost& form, const QString& name, int index = -1) : Control(form, name, index) {}
    void up();
    void down();
    std::function<void()> onUp, onDown;
};

class ProgressBar : public Control {
public:
    ProgressBar(ControlHost& form, const QString& name) : Control(form, name) { setVisible(false); }
    void setRange(int maximum);
    void setValue(int value);
    int maximum() const { return m_maximum; }
    int value() const { return m_value; }

private:
    int m_maximum = 0, m_value = 0;
};

/// A month calendar that drops down for a date field.
class Calendar : public Control {
public:
    Calendar(ControlHost& form, const QString& name) : Control(form, name) { setVisible(false); }
    QDate date() const { return m_date; }
    void setDate(QDate date);
    void pick(QDate date);  ///< the user picks a day
    std::function<void(QDate)> onPick;

private:
    QDate m_date;
};

/// Pages of which one is in front.
class Tabs : public Control {
public:
    Tabs(ControlHost& form, const QString& name, const QStringList& captions);
    int front() const { return m_front; }
    bool showsPage(int page) const override { return page == m_front; }
    void setFront(int page);
    void choose(int page);  ///< the user brings a page to the front
    const QStringList& captions() const { return m_captions; }
    std::function<void(int)> onClick;

private:
    QStringList m_captions;
    int m_front = 0;
};

/// An array of controls under one name: ok[0], tz[2].
template <class C>
class ControlArray {
public:
    /// One member for each caption.
    ControlArray(ControlHost& form, const QString& name, std::initializer_list<const char*> captions) {
        for (const char* caption : captions)
            m_members.push_back(std::make_unique<C>(form, name, QString::fromUtf8(caption), count()));
    }
    /// `count` members without captions.
    ControlArray(ControlHost& form, const QString& name, int count) {
        for (int i = 0; i < count; ++i) m_members.push_back(std::make_unique<C>(form, name, i));
    }
    C& operator[](int i) { return *m_members.at(static_cast<size_t>(i)); }
    const C& operator[](int i) const { return *m_members.at(static_cast<size_t>(i)); }
    int count() const { return static_cast<int>(m_members.size()); }
    auto begin() { return m_members.begin(); }
    auto end() { return m_members.end(); }

private:
    std::vector<std::unique_ptr<C>> m_members;
};

}  // namespace koben
