// Facts that are only read, in a quiet block above what is entered.
#include <QFrame>
#include <QGridLayout>

#include "ui/Layout.h"
#include "ui/Simple.h"

namespace koben::ui {

namespace {

/// Captions and values in a quiet block.
Piece factBlock(ControlArray<Label>& values, const std::vector<QWidget*>& captions, int pairsPerLine) {
    auto* block = new QFrame;
    block->setAutoFillBackground(true);
    block->setBackgroundRole(QPalette::AlternateBase);
    auto* grid = new QGridLayout(block);
    grid->setVerticalSpacing(2);
    grid->setHorizontalSpacing(block->fontMetrics().averageCharWidth());
    for (int i = 0; i < values.count(); ++i) {
        auto* value = new LabelView(values[i]);
        QFont bold = value->font();
        bold.setBold(true);
        value->setFont(bold);
        QWidget* const said = captions[static_cast<size_t>(i)];
        said->setMinimumWidth(said->sizeHint().width());  // whole where the window scrolls
        const int line = i / pairsPerLine, at = i % pairsPerLine * 3;
        grid->addWidget(captions[static_cast<size_t>(i)], line, at);
        grid->addWidget(value, line, at + 1);
        grid->setColumnMinimumWidth(at + 1, block->fontMetrics().horizontalAdvance(QStringLiteral("00.00.0000")));
        if (at + 3 < pairsPerLine * 3) grid->setColumnMinimumWidth(at + 2, block->fontMetrics().averageCharWidth() * 2);
    }
    grid->setColumnStretch(pairsPerLine * 3, 1);
    return {.widget = block};
}

}  // namespace

Piece facts(ControlArray<Label>& values, const QStringList& captions, int pairsPerLine) {
    std::vector<QWidget*> labels;
    for (int i = 0; i < values.count(); ++i) labels.push_back(caption(captions.value(i)).widget);
    return factBlock(values, labels, pairsPerLine);
}

Piece facts(ControlArray<Label>& values, ControlArray<Label>& captions, int firstCaption, int pairsPerLine) {
    std::vector<QWidget*> labels;
    for (int i = 0; i < values.count(); ++i) {
        labels.push_back(new LabelView(captions[firstCaption + i]));
        labels.back()->setForegroundRole(QPalette::PlaceholderText);
    }
    return factBlock(values, labels, pairsPerLine);
}

}  // namespace koben::ui
