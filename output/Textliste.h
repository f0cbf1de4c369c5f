#pragma once
// The text list: a grid as fixed-width lines for the text viewer and the printer.
#include "output/Listenzeilen.h"

namespace koben {

/// Columns that the text list shows and the spreadsheet formats; further ones are left out without a word.
inline constexpr int hoechsteSpalte = 52;

struct Textlistenform {
    QString trenner = QStringLiteral(" | ");  ///< between two columns
    QString datum = {};                       ///< head line "Datum: ...", none where empty
    QString kopf = {};                        ///< further head line, none where empty
    Progress* progress = nullptr;             ///< of two steps a row
};

/// The whole list with CR LF behind each line; "" where cancelled. Every column is as wide as its longest text or
/// title.
QString Textliste(const Grid& grid, const Textlistenform& form);

}  // namespace koben
