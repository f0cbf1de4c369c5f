#pragma once
// Folders as a list shows them: those above one, that one, and those in it.
#include <QStringList>

namespace koben {

class Ordnerliste {
public:
    Ordnerliste() = default;
    /// A folder that cannot be read has none in it.
    explicit Ordnerliste(const QString& folder);

    /// One entry a folder, indented by its depth.
    const QStringList& items() const { return m_items; }
    QString path(int row) const { return m_paths.value(row); }
    /// The row of the folder itself.
    int current() const { return m_current; }

private:
    QStringList m_items, m_paths;
    int m_current = -1;
};

/// The file of this name in a folder, however its letters are written; "" for none.
QString dateiIn(const QString& folder, const QString& name);

}  // namespace koben
