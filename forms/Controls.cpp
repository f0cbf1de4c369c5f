#include "forms/Controls.h"

#include <algorithm>

#include "forms/Form.h"

namespace koben {

void Label::setText(const QString& text) {
    if (text == m_text) return;
    m_text = text;
    notify(Aspect::Text);
}

void Button::setCaption(const QString& caption) {
    if (caption == m_caption) return;
    m_caption = caption;
    notify(Aspect::Text);
}

void Button::click() { act(onClick); }

void CheckBox::setChecked(bool on) {
    if (on == m_checked) return;
    m_checked = on;
    notify(Aspect::Text);
}

void CheckBox::click() {
    setChecked(!m_checked);
    act(onClick);
}

Option::Option(OptionGroup& group, Form& form, const QString& name, const QString& caption, int index)
    : Control(form, name, index), m_group(group), m_caption(caption) {}

void Option::setCaption(const QString& caption) {
    m_caption = caption;
    notify(Aspect::Text);
}

bool Option::selected() const { return m_group.selected() == index(); }

void Option::click() {
    m_group.select(index());
    act([this] {
        if (m_group.onClick) m_group.onClick(index());
    });
}

OptionGroup::OptionGroup(Form& form, const QString& name, std::initializer_list<const char*> captions) {
    for (const char* caption : captions)
        m_options.push_back(std::make_unique<Option>(*this, form, name, QString::fromUtf8(caption), count()));
}

void OptionGroup::select(int index) {
    if (index == m_selected || index >= count()) return;
    const int before = m_selected;
    m_selected = std::max(index, -1);
    if (before >= 0) (*this)[before].notify(Aspect::Text);
    if (m_selected >= 0) (*this)[m_selected].notify(Aspect::Text);
}

void OptionGroup::setVisible(bool on) {
    for (auto& option : m_options) option->setVisible(on);
}

void OptionGroup::setEnabled(bool on) {
    for (auto& option : m_options) option->setEnabled(on);
}

void TextBox::setText(const QString& text) {
    if (text == m_text) return;
    m_text = text;
    notify(Aspect::Text);
}

void TextBox::enter() { act(onGotFocus); }

int TextBox::filter(int code) const {
    if (readOnly) return 0;
    return onKeyPress ? onKeyPress(code) : code;
}

void TextBox::type(const QString& text) {
    if (readOnly) return;
    QString typed;
    bool replaced = false;
    for (const QChar c : text) {
        const QString before = m_text;
        const int code = multiLine && (c == u'\r' || c == u'\n') ? c.unicode() : filter(c.unicode());
        if (m_text != before) typed = m_text, replaced = true;  // the filter wrote the field itself
        if (code == 0 || (maxLength > 0 && typed.size() >= maxLength)) continue;
        replaced = true;
        edited(typed + QChar(code));
        typed = m_text;  // a change handler may have corrected it
    }
    if (!replaced) edited(QString());  // the old text was replaced by nothing
}

void TextBox::edited(const QString& text) {
    if (text == m_text) return;
    m_text = text;
    notify(Aspect::Text);
    act(onChange);
}

void TextBox::leave() { act(onLostFocus); }

int ComboBox::current() const {
    // The text may have been typed since an entry was picked.
    const bool picked = m_current >= 0 && m_current < m_items.size() && m_items.at(m_current) == text();
    return picked ? m_current : static_cast<int>(m_items.indexOf(text()));
}

void ComboBox::setItems(const QStringList& items) {
    m_items = items;
    m_current = static_cast<int>(m_items.indexOf(text()));
    notify(Aspect::Items);
}

void ComboBox::addItem(const QString& item) {
    m_items.append(item);
    notify(Aspect::Items);
}

void ComboBox::setCurrent(int index) {
    m_current = index >= 0 && index < m_items.size() ? index : -1;
    TextBox::setText(m_current < 0 ? QString() : m_items.at(m_current));
    notify(Aspect::Row);
}

void ComboBox::setText(const QString& text) {
    m_current = static_cast<int>(m_items.indexOf(text));
    if (fixed && m_current < 0 && !text.isEmpty()) return;
    TextBox::setText(text);
    notify(Aspect::Row);
}

void ComboBox::choose(int index) {
    setCurrent(index);
    act(onClick);
}

void ListBox::setItems(const QStringList& items) {
    m_items = items;
    m_marks.assign(static_cast<size_t>(items.size()), false);
    m_current = -1;
    notify(Aspect::Items);
}

void ListBox::addItem(const QString& item) {
    m_items.append(item);
    m_marks.push_back(false);
    notify(Aspect::Items);
}

void ListBox::setCurrent(int row) {
    m_current = row >= 0 && row < m_items.size() ? row : -1;
    notify(Aspect::Row);
}

bool ListBox::marked(int row) const { return row >= 0 && row < m_items.size() && m_marks[static_cast<size_t>(row)]; }

void ListBox::setMarked(int row, bool on) {
    if (row < 0 || row >= m_items.size() || m_marks[static_cast<size_t>(row)] == on) return;
    m_marks[static_cast<size_t>(row)] = on;
    notify(Aspect::Marks);
}

int ListBox::markedCount() const { return static_cast<int>(std::count(m_marks.begin(), m_marks.end(), true)); }

void ListBox::choose(int row) {
    setCurrent(row);
    if (multi) mark({row});
    act(onClick);
}

void ListBox::mark(const std::vector<int>& rows) {
    m_marks.assign(m_marks.size(), false);
    for (int row : rows)
        if (row >= 0 && row < m_items.size()) m_marks[static_cast<size_t>(row)] = true;
    notify(Aspect::Marks);
}

void ListBox::click() { act(onClick); }
void ListBox::doubleClick() { act(onDoubleClick); }

void SpinButton::up() { act(onUp); }
void SpinButton::down() { act(onDown); }

void ProgressBar::setRange(int maximum) {
    m_maximum = maximum;
    m_value = 0;
    notify(Aspect::Range);
}

void ProgressBar::setValue(int value) {
    m_value = std::min(value, m_maximum);
    notify(Aspect::Range);
}

void Calendar::setDate(QDate date) {
    m_date = date;
    notify(Aspect::Text);
}

void Calendar::pick(QDate date) {
    setDate(date);
    act([&] {
        if (onPick) onPick(date);
    });
}

Tabs::Tabs(Form& form, const QString& name, const QStringList& captions) : Control(form, name), m_captions(captions) {}

void Tabs::setFront(int page) {
    if (page == m_front || page < 0 || page >= m_captions.size()) return;
    m_front = page;
    notify(Aspect::Row);
}

void Tabs::choose(int page) {
    setFront(page);
    act([&] {
        if (onClick) onClick(page);
    });
}

}  // namespace koben
