#include "ui/TypeSearch.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QKeyEvent>
#include <QLineEdit>

namespace koben::ui {

namespace {

constexpr int forgets = 3000;  // milliseconds after the last key
const char* const searchField = "suchfeld";

QString withoutZeros(QString text) {
    while (text.size() > 1 && text.startsWith(u'0')) text.remove(0, 1);
    return text;
}

bool holdsWord(const QString& text, const QString& begin) {
    for (qsizetype at = 0; (at = text.indexOf(begin, at, Qt::CaseInsensitive)) >= 0; ++at)
        if (at == 0 || !text[at - 1].isLetterOrNumber()) return true;
    return false;
}

}  // namespace

TypeSearch::TypeSearch(QAbstractItemView& view, std::function<int()> rows, std::function<QString(int)> cell,
                       std::function<void(int)> go)
    : QObject(&view),
      m_view(view),
      m_rows(std::move(rows)),
      m_cell(std::move(cell)),
      m_go(std::move(go)),
      m_note(*new QLabel(&view)) {
    m_note.hide();
    m_note.setTextFormat(Qt::PlainText);
    m_note.setAutoFillBackground(true);
    m_note.setBackgroundRole(QPalette::ToolTipBase);
    m_note.setForegroundRole(QPalette::ToolTipText);
    m_note.setFrameStyle(QFrame::Box | QFrame::Plain);
    m_note.setContentsMargins(6, 3, 6, 3);
    m_pause.setSingleShot(true);
    m_pause.setInterval(forgets);
    m_pause.callOnTimeout(this, [this] { end(); });
}

void TypeSearch::end() {
    m_typed.clear();
    m_pause.stop();
    m_note.hide();
}

void TypeSearch::begin() {
    m_view.setFocus(Qt::ShortcutFocusReason);
    m_typed.clear();
    say(m_words ? QStringLiteral("Anfang eines Wortes tippen ...") : QStringLiteral("Nummer tippen ..."), false);
}

bool TypeSearch::key(const QKeyEvent& event) {
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
    if (event.key() == Qt::Key_Escape) {
        const bool open = !m_note.isHidden();
        end();
        return open;
    }
    if (event.key() == Qt::Key_Backspace) {
        if (m_typed.isEmpty()) return false;
        m_typed.chop(1);
        m_typed.isEmpty() ? end() : look();
        return true;
    }
    const QString text = event.text();
    if (text.isEmpty() || !text.at(0).isPrint() || text.at(0).isSpace() || m_rows() == 0) {
        if (!m_note.isHidden()) end();
        return false;
    }
    const bool inside = !m_typed.isEmpty() && QStringView(u"-/.").contains(text.at(0));
    if (!inside && !text.at(0).isLetterOrNumber()) return false;
    m_typed += text;
    look();
    return true;
}

/// The row that bears the text; else the first that begins with it, or does so without leading zeros, or holds such a
/// word.
int TypeSearch::find() const {
    int begins = -1, beginsPlain = -1, word = -1;
    const QString plain = withoutZeros(m_typed);
    for (int row = 0; row < m_rows(); ++row) {
        const QString cell = m_cell(row).trimmed();
        if (cell.compare(m_typed, Qt::CaseInsensitive) == 0) return row;
        if (begins < 0 && cell.startsWith(m_typed, Qt::CaseInsensitive)) begins = row;
        if (beginsPlain < 0 && withoutZeros(cell).startsWith(plain, Qt::CaseInsensitive)) beginsPlain = row;
        if (m_words && word < 0 && holdsWord(cell, m_typed)) word = row;
    }
    return begins >= 0 ? begins : beginsPlain >= 0 ? beginsPlain : word;
}

void TypeSearch::look() {
    const QString typed = m_typed;
    const int row = find();
    if (row >= 0) m_go(row);
    m_typed = typed;
    m_hit = row >= 0;
    if (m_hit)
        say(QStringLiteral("Suche: %1").arg(typed), false);
    else
        say(QStringLiteral("„%1“ steht nicht in dieser Liste").arg(typed), true);
}

void TypeSearch::say(const QString& text, bool miss) {
    QFont font = m_view.font();
    font.setBold(miss);
    m_note.setFont(font);
    m_note.setText(text);
    m_note.setAccessibleName(text);
    m_note.adjustSize();
    const QRect inner = m_view.viewport()->geometry();
    m_note.move(std::max(inner.right() - m_note.width() - 4, inner.left()), inner.bottom() - m_note.height() - 4);
    m_note.raise();
    m_note.show();
    m_pause.start();
    QAccessibleEvent alert(&m_note, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void makeSearchField(QWidget& field) { field.setProperty(searchField, true); }

bool toSearch(QWidget& window) {
    for (QLineEdit* field : window.findChildren<QLineEdit*>())
        if (field->property(searchField).toBool() && field->isVisible() && field->isEnabled()) {
            field->setFocus(Qt::ShortcutFocusReason);
            field->selectAll();
            return true;
        }
    for (QAbstractItemView* view : window.findChildren<QAbstractItemView*>()) {
        if (!view->isVisible() || !view->isEnabled()) continue;
        for (QObject* child : view->children())
            if (auto* search = dynamic_cast<TypeSearch*>(child)) return search->begin(), true;
    }
    return false;
}

}  // namespace koben::ui
