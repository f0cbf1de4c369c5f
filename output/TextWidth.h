#pragma once
// How wide a text of a drawing is, where nothing can measure it: by the widths of the face that charts and cards are
// set in.
#include <QString>

namespace koben {

/// The face of charts and cards; other machines' own faces of the kind are no wider.
inline const QString chartFace = QStringLiteral("Liberation Sans");

/// Millimetres.
double textWidth(QStringView text, double points);
double lineHeight(double points);
/// As much of the text as fits, with "..." where it is cut.
QString cutText(const QString& text, double points, double room);
/// Lines of whole words, none wider than the room where a word is not.
QStringList wrapText(const QString& text, double points, double room);

}  // namespace koben
