#pragma once
// Text files that people may write with any editor: shipped texts and lists.
#include <QByteArray>
#include <QString>

namespace koben {

/// The text of such a file: UTF-8, or else the code page of the program's other files. Lines end with a line feed;
/// other control characters are blanks.
QString textOfAnyEditor(const QByteArray& bytes);

/// The text of a shipped file. Where it is missing, larger than such a file can be, or cannot be read: "", and
/// `trouble` says why, as the end of a sentence.
QString readShippedText(const QString& path, qint64 largest, QString& trouble);

}  // namespace koben
