#pragma once
// What the manual is made of before it is set: blocks of text and pictures in the order of reading.
#include <QHash>
#include <QImage>
#include <vector>

#include "help/Hilfedatei.h"

namespace koben::handbuch {

enum class Style {
    Part,   ///< opens a page
    Front,  ///< as a part, but none: contents, index
    Chapter,
    Heading,
    Field,
    Text,
    Explanation,
    Item,
    Picture,
    ContentsPart,
    ContentsChapter,
    Keyword,
    Entry,  ///< of the index
    Count
};

struct Block {
    Style style;
    QString text = {};                      ///< a picture's caption
    QString mark = {};                      ///< number or dash, left of the text
    std::vector<Kapitel::Link> links = {};  ///< by anchors
    QString anchor = {};                    ///< by which links find it
    QString pageOf = {};                    ///< anchor whose page stands at the right edge, behind a line of dots
    int columns = 1;                        ///< of a front block and all that follows it
    QImage picture = {};
};

/// Page by anchor; the cover is page 1.
using PageNumbers = QHash<QString, int>;

}  // namespace koben::handbuch
