#pragma once
// Rows of a list for the clipboard: text for an editor, and a typed table for a spreadsheet.
#include <QStringList>
#include <vector>

class QMimeData;

namespace koben {
class Grid;
}

namespace koben::ui {

/// A cell that a spreadsheet would take for a formula begins with an apostrophe, which keeps it a text. Numbers stay
/// numbers, negative ones too.
QString harmless(const QString& cell);

/// `isText` says of each column whether it stays a text even where it looks like a number (animals' numbers with
/// leading zeros). The caller owns the result.
QMimeData* clipboardRows(const std::vector<QStringList>& rows, const std::vector<bool>& isText);

/// A whole list with its titles.
QMimeData* clipboardList(const Grid& list);

}  // namespace koben::ui
