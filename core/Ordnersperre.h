#pragma once
// The data folder belongs to one running program at a time: two would write over each other's settings and lists.
#include <QByteArray>
#include <QString>

namespace koben {

/// A lock of the system on the file koben.lock in the folder. The system lets go of it when the process ends, however
/// it ends: what a dead one left behind holds nothing, and there is no moment at which two could both have it.
class Ordnersperre {
public:
    Ordnersperre() = default;
    ~Ordnersperre() { loslassen(); }
    Ordnersperre(const Ordnersperre&) = delete;
    Ordnersperre& operator=(const Ordnersperre&) = delete;

    /// Takes the folder until the program ends or another folder is taken; true also where this one has it already.
    /// False where a living process holds it, and where nothing can be written there.
    bool nehmen(const QString& folder);
    void loslassen();

    /// Why the lock file of a folder cannot be taken, although no running program holds it: a whole German sentence
    /// with what to do. "" where it can, or where a program holds it.
    static QString hindernis(const QString& folder);

private:
    int m_file = -1;
    QByteArray m_path;
};

}  // namespace koben
