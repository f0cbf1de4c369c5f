#pragma once
// Files that are worked on beside their places, and several files that change together.
#include <QString>

namespace koben {

/// A folder for working files within another one, empty at first; it goes with the object. What a killed program left
/// of one goes with the next, with clear(), or with FileExchange::recover(). Throws where it cannot be made.
class WorkFolder {
public:
    explicit WorkFolder(const QString& folder);
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    /// The path of a file in it, or in a folder within it, which is made. The name's parts are divided by '/'.
    QString file(const QString& name) const;
    /// Removes what a killed program left of one.
    static void clear(const QString& folder);

private:
    friend class FileExchange;
    QString m_path;  // with a separator at the end
};

/// Several files take their places in a folder in one step, however the program ends: all of them or none. They gather
/// in a working folder; its change of name decides that they shall take their places, and after it that is made up for
/// at the next start where it was cut off.
class FileExchange {
public:
    explicit FileExchange(const QString& folder) : m_folder(folder), m_gathered(folder) {}

    /// Where a new file is made, under the name of its place, which may lie in a folder within.
    QString file(const QString& name) const { return m_gathered.file(name); }
    /// "" where it is decided, otherwise the reason (as fileReason() words it), and nothing has changed.
    QString decide();
    /// Once decided, and with no database of them open: the files take their places, and with those of a database go
    /// its logs. "" or the reason why some could not; the next start tries again.
    QString finish() const { return carryOut(m_folder); }

    /// Whether an exchange that was decided and cut off still has this file to put in its place.
    static bool isPending(const QString& folder, const QString& name);
    /// At a start, before anything of the folder is opened: finishes what was decided and removes what was not.
    /// "" or the reason why it cannot be finished.
    static QString recover(const QString& folder);

private:
    static QString carryOut(const QString& folder);

    QString m_folder;  // with a separator at the end
    WorkFolder m_gathered;
};

}  // namespace koben
