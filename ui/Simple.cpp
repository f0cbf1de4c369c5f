#include "ui/Simple.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

#include "ui/Application.h"
#include "ui/Effect.h"
#include "ui/EnterKey.h"
#include "ui/Look.h"
#include "ui/Window.h"

namespace koben::ui {

namespace {

QString lines(QString text) { return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

/// A long caption in several lines; Qt does not break those of buttons.
QString broken(QString caption) {
    constexpr qsizetype longest = 75;  // characters in a line
    for (qsizetype from = 0; caption.size() - from > longest;) {
        const qsizetype blank = caption.lastIndexOf(u' ', from + longest);
        if (blank <= from) break;
        caption[blank] = u'\n';
        from = blank + 1;
    }
    return caption;
}

/// Sets a caption unless it stands there already, perhaps without its key, which another control of the window has.
void showCaption(QAbstractButton& button, const QString& caption) {
    const QString text = broken(caption);
    if (plainCaption(button.text()) != plainCaption(text)) button.setText(text);
}

}  // namespace

LabelView::LabelView(Label& model) : Bound(model) {
    setTextFormat(Qt::PlainText);
    setWordWrap(false);
    start();
}

void LabelView::refresh(Aspect) {
    const QString text = lines(model().text());
    if (buddy() && plainCaption(this->text()) == plainCaption(text)) return;  // with a letter of the window's
    setText(text);
}

CaptionView::CaptionView(Control& control, const QString& text, QWidget* buddy)
    : QLabel(text), View(control), m_model(control) {
    setTextFormat(Qt::PlainText);
    setBuddy(buddy);
    if (buddy && !text.isEmpty()) buddy->setAccessibleName(plainCaption(text).remove(u':'));
    setEnabled(control.enabled());
    if (!control.visible()) setVisible(false);
}

void CaptionView::changed(Aspect aspect) {
    if (aspect == Aspect::Enabled) setEnabled(m_model.enabled());
    if (aspect == Aspect::Visible) setVisible(m_model.visible());
}

ButtonView::ButtonView(Button& model, bool iconOnly) : Bound(model), m_iconOnly(iconOnly) {
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, [this] {
        // A mnemonic presses without moving the focus; the field that was being typed in must be left first.
        if (!hasFocus()) setFocus(Qt::ShortcutFocusReason);
        guarded([this] {
            if (!this->model().enabled()) return;
            auto* form = dynamic_cast<Window*>(window());
            form ? form->press(this->model()) : this->model().click();
        });
    });
    if (iconOnly && model.icon == u"kalender") {
        setFocusPolicy(Qt::NoFocus);  // the field opens it by F4
        setToolTip(QStringLiteral("Kalender (F4)"));
    }
    start();
    review();
}

bool ButtonView::usable() const { return model().enabled() && hasEffect(model()); }

void ButtonView::refresh(Aspect) {
    if (!m_iconOnly) showCaption(*this, model().caption());
    if (!model().icon.isEmpty()) setIcon(iconOf(model().icon, palette()));
}

QSize ButtonView::sizeHint() const {
    const QSize size = QPushButton::sizeHint();
    return m_iconOnly ? size : size.grownBy(QMargins(fontMetrics().averageCharWidth(), 0, 0, 0));
}

void ButtonView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QPushButton::keyPressEvent(event);
}

void ButtonView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && !model().icon.isEmpty()) setIcon(iconOf(model().icon, palette()));
    QPushButton::changeEvent(event);
}

CheckBoxView::CheckBoxView(CheckBox& model) : Bound(model) {
    connect(this, &QCheckBox::clicked, this, [this] {
        guarded([this] { this->model().click(); });
        setChecked(this->model().checked());
    });
    start();
}

void CheckBoxView::refresh(Aspect) {
    showCaption(*this, model().caption());
    setChecked(model().checked());
}

OptionView::OptionView(Option& model, bool segment) : Bound(model), m_segment(segment) {
    connect(this, &QRadioButton::clicked, this, [this] { guarded([this] { this->model().click(); }); });
    start();
}

void OptionView::refresh(Aspect) {
    showCaption(*this, model().caption());
    if (isChecked() == model().selected()) return;
    // A group whose program selected nothing has no checked button, which exclusive buttons do not allow.
    QButtonGroup* buttons = group();
    if (buttons && !model().selected()) buttons->setExclusive(false);
    setChecked(model().selected());
    if (buttons) buttons->setExclusive(true);
}

bool OptionView::hitButton(const QPoint& position) const {
    return m_segment ? rect().contains(position) : QRadioButton::hitButton(position);
}

QSize OptionView::sizeHint() const {
    if (!m_segment) return QRadioButton::sizeHint();
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(plainCaption(text())) + metrics.averageCharWidth() * 3,
            metrics.height() + metrics.height() / 2};
}

/// Qt lets Tab enter a group at its first button, whichever is chosen.
void OptionView::focusInEvent(QFocusEvent* event) {
    const bool byTab = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byTab && group() && !standsForGroup(model()))
        for (QAbstractButton* other : group()->buttons())
            if (auto* view = dynamic_cast<OptionView*>(other); view && standsForGroup(view->model()))
                return view->setFocus(event->reason());
    QRadioButton::focusInEvent(event);
}

void OptionView::paintEvent(QPaintEvent* event) {
    if (!m_segment) return QRadioButton::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const bool on = isChecked();
    const QPalette::ColorGroup state = isEnabled() ? QPalette::Active : QPalette::Disabled;
    painter.setPen(palette().color(state, on ? QPalette::Highlight : QPalette::Mid));
    painter.setBrush(palette().color(state, on                            ? QPalette::Highlight
                                            : underMouse() && isEnabled() ? QPalette::AlternateBase
                                                                          : QPalette::Button));
    painter.drawRoundedRect(frame, 3, 3);
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().color(on ? QPalette::HighlightedText : QPalette::Highlight), 1, Qt::DotLine));
        painter.drawRoundedRect(frame.adjusted(2, 2, -2, -2), 2, 2);
    }
    painter.setPen(palette().color(state, on ? QPalette::HighlightedText : QPalette::ButtonText));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

ArrowsView::ArrowsView(SpinButton& model) : Bound(model) {
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(0);
    for (const bool up : {true, false}) {
        auto* arrow = new QToolButton(this);
        arrow->setArrowType(up ? Qt::UpArrow : Qt::DownArrow);
        arrow->setAutoRepeat(true);
        arrow->setFocusPolicy(Qt::NoFocus);
        arrow->setAccessibleName(up ? QStringLiteral("Erhöhen") : QStringLiteral("Verringern"));
        arrow->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
        arrow->setFixedWidth(fontMetrics().height());
        connect(arrow, &QToolButton::clicked, this,
                [this, up] { guarded([&] { up ? this->model().up() : this->model().down(); }); });
        box->addWidget(arrow, 1);
    }
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    start();
}

ProgressView::ProgressView(ProgressBar& model) : Bound(model) {
    QSizePolicy policy = sizePolicy();
    policy.setRetainSizeWhenHidden(true);  // the window must not jump when work begins
    setSizePolicy(policy);
    start();
}

void ProgressView::refresh(Aspect) {
    setMaximum(model().maximum());
    setValue(model().value());
}

}  // namespace koben::ui
