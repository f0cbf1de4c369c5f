#pragma once
// What leads about in a PDF: links within it, and the list of chapters that a viewer shows beside the pages.
#include <QByteArray>
#include <QHash>
#include <QString>
#include <vector>

namespace koben::handbuch {

/// A place to which links lead.
struct Target {
    int page;    ///< from 1
    double top;  ///< points above the lower edge
};

struct Bookmark {
    QString title, anchor;
    bool inner;  ///< below the one before that is not
};

/// Gives a PDF of QPdfWriter's its navigation: addresses "#anchor" become links to the anchor's target; the bookmarks
/// and the language come as an update behind the file's end. False, with the file spoilt, where it is not built as
/// expected or a link has no target.
bool addNavigation(QByteArray& pdf, const std::vector<Bookmark>& bookmarks, const QHash<QString, Target>& targets);

}  // namespace koben::handbuch
