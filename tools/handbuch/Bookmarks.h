#pragma once
// The list of chapters that a PDF viewer shows beside the pages.
#include <QByteArray>
#include <QString>
#include <vector>

namespace koben::handbuch {

struct Bookmark {
    QString title;
    int page;    ///< from 1
    bool inner;  ///< below the one before that is not
};

/// Adds the bookmarks to a PDF of QPdfWriter's, as an update behind its end, and tells it its language. Nothing is
/// added, and false returned, where the file is not built as expected.
bool addBookmarks(QByteArray& pdf, const std::vector<Bookmark>& bookmarks);

}  // namespace koben::handbuch
