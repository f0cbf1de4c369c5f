#pragma once
// The help text file: its chapters, as lines of what they are. The file's form is told in docs/dateiformate.md.
#include <QString>
#include <QStringList>
#include <vector>

namespace koben {

/// A chapter. Its text is its lines, joined by line feeds; places in the text count from 0.
struct Kapitel {
    enum class Kind { Title, Heading, Field, Text, Explanation, Item, Blank };
    struct Line {
        Kind kind;
        QString text;
    };
    /// Words of the text that lead to another chapter.
    struct Link {
        qsizetype place = 0, length = 0;
        QString target;  ///< name of a chapter that the file has
    };

    QString name;   ///< of a form or a menu entry, or a name of the help's own
    QString title;  ///< as the contents show it
    QString group;  ///< the heading that it stands under in the contents
    std::vector<Line> lines;
    std::vector<Link> links;  ///< in the order of the text

    QString text() const;
    /// The fields that the chapter explains, by their captions on the screen.
    QStringList fields() const;
};

class Hilfedatei {
public:
    /// Reads the file. Where it cannot be read or has no chapter there are none, and `trouble` says why.
    static Hilfedatei read(const QString& path, QString& trouble);
    /// Of a text; for one that is no help text there are no chapters.
    explicit Hilfedatei(const QString& text);

    const std::vector<Kapitel>& chapters() const { return m_chapters; }
    const Kapitel& chapter(int index) const { return m_chapters.at(static_cast<size_t>(index)); }
    /// Position of a chapter by its name, -1 where there is none.
    int find(const QString& name) const;

private:
    void parse(const QString& text);
    void resolve(Kapitel& chapter) const;
    QString resolved(const Kapitel::Line& line, qsizetype place, std::vector<Kapitel::Link>& links) const;

    std::vector<Kapitel> m_chapters;
};

}  // namespace koben
