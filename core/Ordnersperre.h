#pragma once
// The data folder belongs to one running program at a time: two would write over each other's settings and lists.
#include <QString>

#include "store/System.h"

namespace koben {

/// A lock of the system on the file koben.lock in the folder.
class Ordnersperre {
public:
    /// Takes the folder until the program ends or another folder is taken; true also where this one has it already.
    /// False where a living process holds it, and where nothing can be written there.
    bool nehmen(const QString& folder);
    void loslassen() { m_lock.release(); }

    /// Whether somebody holds the folder now; false also where nothing can be written there.
    static bool held(const QString& folder);

    /// Why the lock file of a folder cannot be taken, although no running program holds it: a whole German sentence
    /// with what to do. "" where it can, or where a program holds it.
    static QString hindernis(const QString& folder);

private:
    system::FileLock m_lock;
};

}  // namespace koben
