#pragma once
// The technical side of errors, in a small file for who helps on the telephone. The user reads none of it on screen.
#include <QDateTime>
#include <QString>

namespace koben {

class ErrorLog {
public:
    /// `folder` is one of the user's own, not the data folder, whose files go into backups.
    explicit ErrorLog(const QString& folder);

    QString path() const { return m_path; }
    /// Adds an error as one line. Only the newest 200 lines are kept; where the file cannot be written nothing happens.
    void write(const QDateTime& when, const QString& detail) const;

private:
    QString m_path;
};

/// A technical text without what a statement or message holds of the farm's data: texts, numbers and dates become "?".
/// The numbers of errors and places stay.
QString withoutValues(const QString& detail);

}  // namespace koben
