#pragma once
// The manual's content: contents, parts and chapters of the help with the pictures of their windows, index.
#include "tools/handbuch/Block.h"

namespace koben::handbuch {

/// Pictures of windows in a folder of koben-bilder's: light, at 100 percent.
class Pictures {
public:
    explicit Pictures(const QString& folder) : m_folder(folder) {}
    /// A null picture where there is none of a form of that name.
    QImage of(const QString& form) const;

private:
    QString m_folder;
};

/// Where a chapter stands, "3.12".
struct Place {
    QString number, anchor;
};

class Book {
public:
    Book(const Hilfedatei& help, const Pictures& pictures);
    /// The blocks with the pages as they are known so far; 0 stands for those that are not.
    std::vector<Block> blocks(const PageNumbers& pages) const;
    /// Forms that have a chapter and no picture.
    QStringList withoutPicture() const;

private:
    void addContents(std::vector<Block>& out) const;
    void addChapter(std::vector<Block>& out, size_t index, const PageNumbers& pages) const;
    void addIndex(std::vector<Block>& out) const;
    Block blockOf(const Kapitel& chapter, const Kapitel::Line& line, qsizetype place, const PageNumbers& pages) const;
    QString anchorOf(const QString& chapter) const;

    const Hilfedatei& m_help;
    std::vector<Place> m_places;  ///< of each chapter
    std::vector<QImage> m_pictures;
};

/// The help's text as it is printed: an ellipsis for three dots, numbers that stay with their units.
QString forPrint(QString text);

/// The words of a title under which one looks for it, as the index does: its nouns.
QStringList keywords(const QString& title);

}  // namespace koben::handbuch
