#pragma once
// A chapter of the help as it is read: headings, fields, steps, links, and what the search has found in it.
#include <QTextBrowser>

#include "help/PH_Hilfe.h"
#include "ui/Bound.h"

namespace koben::ui {

class HelpView final : public Bound<QTextBrowser, TextBox> {
public:
    explicit HelpView(PH_Hilfe& form);
    QSize sizeHint() const override;
    /// What is marked, or the whole chapter.
    void copyToClipboard() const;

protected:
    void refresh(Aspect aspect) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    /// Links are reached by the list of them; Tab goes on to the next widget.
    bool focusNextPrevChild(bool next) override { return QTextEdit::focusNextPrevChild(next); }

private:
    void build();
    void addLine(QTextCursor& cursor, const Kapitel::Line& line, qreal points) const;
    void addLinks(const Kapitel& chapter);
    void markHits();

    PH_Hilfe& m_form;
    const Kapitel* m_built = nullptr;  ///< what the document shows
    qreal m_points = 0;
};

}  // namespace koben::ui
