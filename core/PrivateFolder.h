#pragma once
// A folder of a running program in the user's own one, which goes when it is done with. Its lock tells it from one that
// a killed program has left.
#include <QTemporaryDir>

#include "core/Ordnersperre.h"

namespace koben {

class PrivateFolder {
public:
    /// Makes one whose name begins with `stem`. Throws DatabaseError where it cannot be made.
    PrivateFolder(const QString& userFolder, const QString& stem);
    QString file(const QString& name) const { return m_folder.filePath(name); }
    QString path() const { return m_folder.path(); }

    /// Removes those of this stem that killed programs have left; those of other running programs stay.
    static void removeLeft(const QString& userFolder, const QString& stem);

private:
    QTemporaryDir m_folder;
    Ordnersperre m_lock;
};

}  // namespace koben
