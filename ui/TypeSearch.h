#pragma once
// A number, or in a list of choices a word, typed anywhere in a list goes to its row. What was typed stands in the
// corner of the list while it counts; a number that the list does not have is said there too.
#include <QLabel>
#include <QTimer>
#include <functional>

class QAbstractItemView;
class QKeyEvent;

namespace koben::ui {

class TypeSearch final : public QObject {
public:
    /// `cell` gives the text that is looked for in a row (rows count from 0), `go` moves there.
    TypeSearch(QAbstractItemView& view, std::function<int()> rows, std::function<QString(int)> cell,
               std::function<void(int)> go);

    /// Looks for any word of the row that begins so where none begins with it.
    void searchWords() { m_words = true; }
    /// Takes letters, digits, Backspace and Escape; false where the key has nothing to do with a search.
    bool key(const QKeyEvent& event);
    /// Puts the focus into the list and says that it waits for a number.
    void begin();
    /// Forgets what was typed so far.
    void end();
    /// Whether the current row is what was just typed.
    bool hit() const { return m_hit && !m_typed.isEmpty(); }
    /// What the corner says; "" where it is hidden.
    QString said() const { return m_note.isHidden() ? QString() : m_note.text(); }

private:
    int find() const;
    void look();
    void say(const QString& text, bool miss);

    QAbstractItemView& m_view;
    std::function<int()> m_rows;
    std::function<QString(int)> m_cell;
    std::function<void(int)> m_go;
    QString m_typed;
    bool m_hit = false, m_words = false;
    QLabel& m_note;
    QTimer m_pause;
};

/// Puts the focus into the window's search field or, where it has none, begins a search in its list. False in a window
/// that has neither.
bool toSearch(QWidget& window);

/// Marks a field as the one that toSearch() leads to.
void makeSearchField(QWidget& field);

}  // namespace koben::ui
