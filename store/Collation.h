#pragma once
// The one order of texts: comparing, grouping and sorting, in the database and in lists.
#include <QByteArray>
#include <QString>

namespace koben {

/// Below 0, 0, above 0. Case and trailing blanks never count, accents only where all else is equal,
/// ß equals ss; 255 characters count.
int compareTexts(QStringView a, QStringView b);
inline bool equalTexts(QStringView a, QStringView b) { return compareTexts(a, b) == 0; }
/// A key whose byte order is the order of the texts.
QByteArray sortKey(QStringView text);
/// The dialect's LIKE: * ? # [abc] [!abc] [a-f]; case never counts.
bool likeText(QStringView text, QStringView pattern);

}  // namespace koben
