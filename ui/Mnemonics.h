#pragma once
// The letters that are pressed with Alt: each once in a window and once in a menu. A caption's own letter comes first;
// captions without one get a free one, for display only.
#include <QSet>
#include <QString>

class QWidget;

namespace koben::ui {

/// The letter behind a single "&", in lower case; null where a caption has none.
QChar mnemonicOf(const QString& caption);
/// A letter of the caption that is not taken, the beginnings of words first; null where none is left.
QChar freeLetter(const QString& caption, const QSet<QChar>& taken);
/// The caption with "&" before the letter's first place.
QString withLetter(const QString& caption, QChar letter);
/// Gives the buttons, captions and choices of a window their letters.
void assignMnemonics(QWidget& window);

}  // namespace koben::ui
