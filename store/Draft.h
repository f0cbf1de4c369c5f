#pragma once
#include <QString>

namespace koben {

/// A database file in the making, under a working name beside its place. It takes its place only once it is finished:
/// what a cut-off program leaves behind is never taken for a database.
class Draft {
public:
    /// What an earlier draft of this file left behind goes.
    explicit Draft(const QString& target);
    /// Removes the draft unless it is finished.
    ~Draft();
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    const QString& path() const { return m_path; }
    /// Puts the closed draft in its place, also over a file that is there, after its last page is on the disk and read
    /// back. Throws, and there all is as before.
    void finish();
    /// The same for a draft whose pages have just been checked.
    void finishChecked();
    /// The same for a working copy that need not outlive a power cut.
    void finishUnflushed();

    /// Removes what drafts of this file have left behind, those of the draft included.
    static void removeLeftovers(const QString& target);

private:
    void flush() const;
    void putInPlace(bool flush = true) const;
    void require(const QString& reason) const;

    QString m_target, m_path;
};

/// Removes a database file with what SQLite put beside it.
void removeDatabaseFile(const QString& path);

/// A file that was put in its place before its content had left its draft's log, as earlier versions did on a full
/// disk, never held an entry: moves it aside (".unfertig") and removes the draft's leftovers. False where it is none.
bool setUnfinishedAside(const QString& path);

}  // namespace koben
