#include "ui/TextViews.h"

#include <QAction>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <climits>

#include "core/PZ_Koben_Subs.h"
#include "forms/Form.h"
#include "forms/Koben.h"
#include "ui/Application.h"
#include "ui/Look.h"
#include "ui/QuietLine.h"
#include "ui/Simple.h"

namespace koben::ui {

namespace {

bool isWord(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.text().at(0).isPrint() &&
           !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

/// Characters that both texts share at the front, and then at the end.
int sharedFront(const QString& a, const QString& b, int limit) {
    int n = 0;
    while (n < limit && n < a.size() && n < b.size() && a[n] == b[n]) ++n;
    return n;
}
int sharedBack(const QString& a, const QString& b, int front) {
    int n = 0;
    while (n < a.size() - front && n < b.size() - front && a[a.size() - 1 - n] == b[b.size() - 1 - n]) ++n;
    return n;
}

QString passed(const TextBox& model, const QString& text) {
    QString result;
    for (const QChar c : text)
        if (const int code = model.filter(c.unicode())) result += QChar(code);
    return result;
}

/// A field whose entry a rule refused bears a sign at its end until the next check; so does one whose date went.
void showWrong(QLineEdit& edit, const TextBox& model, const QString& refused = {}) {
    const QString name = QStringLiteral("falsch");
    auto* sign = edit.findChild<QAction*>(name, Qt::FindDirectChildrenOnly);
    if (!model.wrong() && refused.isEmpty()) {
        delete sign;
        edit.setAccessibleDescription(QString());
        return;
    }
    if (!sign) sign = edit.addAction(iconOf(name, edit.palette()), QLineEdit::TrailingPosition);
    sign->setObjectName(name);
    sign->setToolTip(refused.isEmpty() ? QStringLiteral("Diese Eingabe kann so nicht übernommen werden") : refused);
    edit.setAccessibleDescription(sign->toolTip());
}

QString withLineFeeds(QString text) { return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

}  // namespace

QValidator::State KeyFilter::validate(QString& text, int& cursor) const {
    if (m_program) return Acceptable;
    const QString& before = m_model.text();
    const int front = sharedFront(before, text, std::max(cursor, 0));
    const int back = sharedBack(before, text, front);
    const QString brought = text.mid(front, text.size() - front - back);
    if (brought.isEmpty()) return Acceptable;  // only removed
    QString kept = passed(m_model, brought);
    if (m_model.maxLength > 0) {
        const auto room = m_model.maxLength - (front + back);
        kept = kept.left(std::max<qsizetype>(room, 0));
    }
    if (kept == brought) return Acceptable;
    const QString result = text.left(front) + kept + text.right(back);
    if (result == before) return Invalid;  // the key was swallowed
    text = result;
    cursor = front + static_cast<int>(kept.size());
    return Acceptable;
}

void KeyFilter::setText(const QString& text) {
    m_program = true;
    const int cursor = m_edit.cursorPosition();
    m_edit.setText(text);
    m_edit.setCursorPosition(std::min<int>(cursor, static_cast<int>(text.size())));
    m_program = false;
}

constexpr int noStep = INT_MIN;

/// Days that a key goes on, 0 for today; noStep where the key is the field's own.
int FieldHand::dayStep(const QKeyEvent& event) const {
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return noStep;
    if (event.key() == Qt::Key_Up) return 1;
    if (event.key() == Qt::Key_Down) return -1;
    if (!isWord(event)) return noStep;
    switch (event.text().at(0).toLower().unicode()) {
        case u't':
            return 0;
        case u'+':
            return 1;
        case u'-':  // part of a date that is being typed, but not of a whole one
            return m_model.text().isEmpty() || Datum_aus_Text(m_model.text()).isValid() ? -1 : noStep;
        default:
            return noStep;
    }
}

bool FieldHand::dayKey(const QKeyEvent& event) {
    const int step = isDate && !m_model.readOnly ? dayStep(event) : noStep;
    if (step == noStep) return false;
    const QString today = m_model.form().koben.Heute;
    const QDate day = Datum_aus_Text(Datum_ergaenzen(m_model.text().trimmed(), today));
    m_model.edited(step == 0 || !day.isValid() ? today : Datum_als_Anzeige(day.addDays(step)));
    return true;
}

/// By the button beside the field, or else by the form's.
bool FieldHand::openCalendar(const QWidget& field) const {
    for (QObject* sibling : field.parentWidget()->children())
        if (auto* button = dynamic_cast<ButtonView*>(sibling); button && button->isEnabled()) {
            button->click();
            return true;
        }
    auto* button = dynamic_cast<Button*>(m_model.form().find(u"calender", m_model.index()));
    if (button && button->enabled()) button->click();
    return button;
}

bool FieldHand::key(QWidget& widget, QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (m_model.multiLine && !m_model.readOnly && !(event.modifiers() & Qt::ControlModifier)) return false;
            if (!m_model.key(Key::Enter)) event.ignore();  // the window's
            return true;
        case Qt::Key_F4:
            return isDate && openCalendar(widget);
        case Qt::Key_Up:
        case Qt::Key_Down:
            if (isDate && event.key() == Qt::Key_Down && event.modifiers() & Qt::AltModifier)
                return openCalendar(widget);
            if (!arrows || !arrows->enabled()) return dayKey(event);
            event.key() == Qt::Key_Up ? arrows->up() : arrows->down();
            return true;
        default:
            return dayKey(event);
    }
}

bool FieldHand::focusIn(const QFocusEvent& event) {
    if (m_inside || event.reason() == Qt::PopupFocusReason) return false;
    m_inside = true;
    guarded([this] { m_model.enter(); });
    return true;
}

void FieldHand::focusOut(const QFocusEvent& event) {
    // A message box or another program in front is no leaving.
    if (!m_inside || event.reason() == Qt::PopupFocusReason || event.reason() == Qt::ActiveWindowFocusReason) return;
    m_inside = false;
    const QString typed = m_model.text().trimmed();
    guarded([this] { m_model.leave(); });
    if (isDate && !typed.isEmpty() && m_model.text().isEmpty())
        refused = QStringLiteral("„%1“ ist kein Datum und wurde aus dem Feld genommen.").arg(typed);
}

LineView::LineView(TextBox& model) : Bound(model), hand(model), m_filter(model, *this) {
    hand.isDate = model.name().startsWith(u"tdat");
    setValidator(&m_filter);
    connect(this, &QLineEdit::textEdited, this,
            [this](const QString& text) { guarded([&] { this->model().edited(text); }); });
    start();
}

void LineView::refresh(Aspect) {
    setReadOnly(model().readOnly);
    if (model().fixedPitch) setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    if (text() != model().text()) m_filter.setText(model().text());
    if (!model().text().isEmpty()) hand.refused.clear();
    showWrong(*this, model(), hand.refused);
}

void LineView::keyPressEvent(QKeyEvent* event) {
    if (!hand.key(*this, *event)) QLineEdit::keyPressEvent(event);
}

void LineView::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    const bool entered = hand.focusIn(*event);
    m_markOnRelease = entered && model().marksAllOnFocus && event->reason() == Qt::MouseFocusReason;
    if (entered && model().marksAllOnFocus) selectAll();
}

void LineView::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    hand.focusOut(*event);
    showWrong(*this, model(), hand.refused);
    if (!hand.refused.isEmpty()) say(*this, hand.refused);
}

void LineView::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (m_markOnRelease && !hasSelectedText()) selectAll();
    m_markOnRelease = false;
}

TextView::TextView(TextBox& model) : Bound(model), hand(model) {
    setTabChangesFocus(true);
    setLineWrapMode(model.fixedPitch ? NoWrap : WidgetWidth);
    setUndoRedoEnabled(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] { told(); });
    start();
}

void TextView::refresh(Aspect) {
    setReadOnly(model().readOnly);
    if (model().readOnly) setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    if (model().fixedPitch) {
        QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        fixed.setPointSizeF(font().pointSizeF());
        setFont(fixed);
    }
    const QString text = withLineFeeds(model().text());
    if (toPlainText() == text) return;
    m_program = true;
    setPlainText(text);
    m_program = false;
}

void TextView::told() {
    if (m_program) return;
    const QString text = toPlainText().replace(u'\n', QStringLiteral("\r\n"));
    guarded([&] { model().edited(text); });
}

QString TextView::filtered(const QString& text) const {
    QString result;
    for (const QChar c : withLineFeeds(text))
        if (const int code = c == u'\n' ? c.unicode() : model().filter(c.unicode())) result += QChar(code);
    if (model().maxLength <= 0) return result;
    const auto room = model().maxLength - model().text().size() + textCursor().selectedText().size();
    return result.left(std::max<qsizetype>(room, 0));
}

void TextView::keyPressEvent(QKeyEvent* event) {
    if (hand.key(*this, *event)) return;
    if (!isWord(*event)) return QPlainTextEdit::keyPressEvent(event);
    if (isReadOnly()) return;
    if (const QString typed = filtered(event->text()); !typed.isEmpty()) {
        textCursor().insertText(typed);
        ensureCursorVisible();
    }
}

void TextView::insertFromMimeData(const QMimeData* source) {
    if (source->hasText() && !isReadOnly()) textCursor().insertText(filtered(source->text()));
}

void TextView::focusInEvent(QFocusEvent* event) {
    QPlainTextEdit::focusInEvent(event);
    hand.focusIn(*event);
}

void TextView::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    hand.focusOut(*event);
}

ComboView::ComboView(ComboBox& model) : Bound(model), hand(model) {
    setInsertPolicy(NoInsert);
    setMaxVisibleItems(20);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
    if (!model.fixed) {
        setEditable(true);
        setCompleter(nullptr);
        m_filter = std::make_unique<KeyFilter>(model, *lineEdit());
        lineEdit()->setValidator(m_filter.get());
        connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) { typed(text); });
    }
    connect(this, &QComboBox::activated, this, [this](int index) { guarded([&] { this->model().choose(index); }); });
    start();
}

/// Takes what was typed, and completes it to the first entry that begins so; the completed end is marked, so that the
/// next key writes over it.
void ComboView::typed(const QString& text) {
    const bool added = text.size() > m_typed.size() && lineEdit()->cursorPosition() == text.size();
    m_typed = text;
    const QStringList& items = model().items();
    const auto entry = std::find_if(items.begin(), items.end(), [&](const QString& item) {
        return item.size() > text.size() && item.startsWith(text, Qt::CaseInsensitive);
    });
    // a number is never completed to a longer one
    const bool longerNumber =
        entry != items.end() && !text.isEmpty() && text.back().isDigit() && entry->at(text.size()).isDigit();
    const bool completes = added && entry != items.end() && !items.contains(text) && !longerNumber;
    guarded([&] { model().edited(completes ? *entry : text); });
    if (lineEdit()->text() != model().text())
        m_filter->setText(model().text());  // completed to what stood there before
    if (completes && lineEdit()->text() == *entry)
        lineEdit()->setSelection(static_cast<int>(entry->size()), static_cast<int>(text.size() - entry->size()));
}

void ComboView::fill() {
    if (m_shown == model().items()) return;
    m_shown = model().items();
    clear();
    addItems(m_shown);
}

void ComboView::refresh(Aspect) {
    const QSignalBlocker quiet(this);
    fill();
    if (currentIndex() != model().current()) {
        const int cursor = m_filter ? lineEdit()->cursorPosition() : 0;
        setCurrentIndex(model().current());  // which empties the text where none is current
        if (m_filter) {
            m_filter->setText(model().text());
            lineEdit()->setCursorPosition(cursor);
        }
    }
    if (m_filter && lineEdit()->text() != model().text()) m_filter->setText(model().text());
    if (m_filter) {
        lineEdit()->setReadOnly(model().readOnly);
        showWrong(*lineEdit(), model());
    }
}

void ComboView::keyPressEvent(QKeyEvent* event) {
    if (!hand.key(*this, *event)) QComboBox::keyPressEvent(event);
}

void ComboView::wheelEvent(QWheelEvent* event) {
    event->ignore();  // turning the wheel over a closed list must not change a booking
}

void ComboView::focusInEvent(QFocusEvent* event) {
    QComboBox::focusInEvent(event);
    m_typed.clear();
    if (hand.focusIn(*event) && m_filter && model().marksAllOnFocus) lineEdit()->selectAll();
}

void ComboView::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    hand.focusOut(*event);
}

}  // namespace koben::ui
