#include "ui/help/HelpView.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <algorithm>
#include <utility>

#include "ui/Application.h"

namespace koben::ui {

namespace {

using Kind = Kapitel::Kind;

constexpr qreal SmallestPoints = 8, PointsOfStep = 2;
constexpr int IndentOfExplanation = 24;

/// How large the letters of a line are, as a share of the text's.
qreal shareOf(Kind kind) {
    switch (kind) {
        case Kind::Title:
            return 1.5;
        case Kind::Heading:
            return 1.15;
        case Kind::Blank:
            return 0.5;
        default:
            return 1;
    }
}

bool isBold(Kind kind) { return kind == Kind::Title || kind == Kind::Heading || kind == Kind::Field; }

}  // namespace

HelpView::HelpView(PH_Hilfe& form) : Bound(form.t), m_form(form) {
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard | Qt::LinksAccessibleByMouse);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
        guarded([&] {
            const QString target = m_form.chapter()->links.at(link.toString().toUInt()).target;
            m_form.act([&] { m_form.open(target); });
        });
    });
    form.shown = [this] { refresh(Aspect::Text); };
    start();
}

QSize HelpView::sizeHint() const { return {fontMetrics().averageCharWidth() * 84, fontMetrics().height() * 28}; }

void HelpView::refresh(Aspect) {
    const Kapitel* now = m_form.chapter();
    const qreal points = std::max(QApplication::font().pointSizeF() + PointsOfStep * m_form.fontStep(), SmallestPoints);
    if (!now) return;
    if (now != m_built || !qFuzzyCompare(points, m_points)) {
        m_points = points;
        m_built = now;
        build();
    }
    markHits();
}

/// Line for line the chapter's text, so that a place in one is the same place in the other.
void HelpView::build() {
    document()->clear();
    document()->setDocumentMargin(fontMetrics().height() / 2.0);
    QTextCursor cursor(document());
    bool first = true;
    for (const Kapitel::Line& line : m_built->lines) {
        if (!std::exchange(first, false)) cursor.insertBlock();
        addLine(cursor, line, m_points);
    }
    addLinks(*m_built);
    setTextCursor(QTextCursor(document()));  // else it stays where the last line was added, and in view
    verticalScrollBar()->setValue(0);
}

void HelpView::addLine(QTextCursor& cursor, const Kapitel::Line& line, qreal points) const {
    QTextCharFormat letters;
    QFont font = QApplication::font();
    font.setPointSizeF(points * shareOf(line.kind));
    font.setBold(isBold(line.kind));
    letters.setFont(font);
    QTextBlockFormat block;
    if (line.kind == Kind::Explanation) block.setLeftMargin(IndentOfExplanation);
    if (line.kind == Kind::Item) {
        const int mark = QFontMetrics(font).horizontalAdvance(line.text.left(line.text.indexOf(u' ') + 1));
        block.setLeftMargin(mark + IndentOfExplanation / 2);
        block.setTextIndent(-mark);
    }
    cursor.setBlockFormat(block);
    cursor.setBlockCharFormat(letters);
    cursor.insertText(line.text, letters);
}

void HelpView::addLinks(const Kapitel& chapter) {
    for (size_t i = 0; i < chapter.links.size(); ++i) {
        const Kapitel::Link& link = chapter.links[i];
        QTextCursor cursor(document());
        cursor.setPosition(static_cast<int>(link.place));
        cursor.setPosition(static_cast<int>(link.place + link.length), QTextCursor::KeepAnchor);
        QTextCharFormat format;
        format.setAnchor(true);
        format.setAnchorHref(QString::number(i));
        format.setFontUnderline(true);
        format.setForeground(palette().link());
        cursor.mergeCharFormat(format);
    }
}

/// All are filled; the current one is underlined too, and in view.
void HelpView::markHits() {
    QList<ExtraSelection> marks;
    for (size_t i = 0; i < m_form.hits().size(); ++i) {
        const Fundstelle& hit = m_form.hits()[i];
        ExtraSelection mark;
        mark.cursor = QTextCursor(document());
        mark.cursor.setPosition(static_cast<int>(hit.place));
        mark.cursor.setPosition(static_cast<int>(hit.place + hit.length), QTextCursor::KeepAnchor);
        mark.format.setBackground(palette().brush(QPalette::Active, QPalette::Highlight));
        mark.format.setForeground(palette().brush(QPalette::Active, QPalette::HighlightedText));
        mark.format.setFontUnderline(static_cast<int>(i) == m_form.currentHit());
        marks.append(mark);
    }
    setExtraSelections(marks);
    if (m_form.currentHit() < 0) return;
    QTextCursor there(document());
    there.setPosition(static_cast<int>(m_form.hits()[static_cast<size_t>(m_form.currentHit())].place));
    setTextCursor(there);
    ensureCursorVisible();
}

void HelpView::copyToClipboard() const {
    QApplication::clipboard()->setText(textCursor().hasSelection() ? textCursor().selection().toPlainText()
                                                                   : toPlainText());
}

/// Enter is the window's.
void HelpView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->ignore();
    else
        QTextBrowser::keyPressEvent(event);
}

void HelpView::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || !m_built) return;
    build();
    markHits();
}

}  // namespace koben::ui
