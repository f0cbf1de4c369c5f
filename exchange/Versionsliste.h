#pragma once
// The list of versions that the update server keeps: what each one brought, the newest first.
#include <QByteArray>
#include <QString>

namespace koben {

struct Versionsliste {
    QString newest;      ///< the newest version; "" where the text does not say
    bool whole = false;  ///< the text could be read to its end; otherwise only `newest` counts
    QString all;         ///< every line of the text
    QString missing;     ///< the lines of the versions that come after one's own

    /// Line 3 is the newest version, older ones follow: the version, ":" or a blank, the change; a line that begins
    /// with one of these goes on with the version above it. Versions are compared as plain texts.
    static Versionsliste lesen(const QByteArray& bytes, const QString& own);
};

}  // namespace koben
