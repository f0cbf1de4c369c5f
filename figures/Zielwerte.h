#pragma once
// What the farm wants to reach: a target for each figure that has one, in a small file of the data folder, so that
// backups carry it.
#include <QMap>
#include <QString>
#include <optional>

namespace koben {

struct Kennzahl;

class Zielwerte {
public:
    Zielwerte() = default;
    /// As they stand in the folder; a line that says nothing is passed over, a missing file is none.
    explicit Zielwerte(const QString& folder);
    /// With the figure's decimals and a comma; "" for none.
    QString text(const Kennzahl& figure) const;
    std::optional<double> value(const Kennzahl& figure) const;

    /// What a typed target means: nothing for a text that is no number above 0.
    static std::optional<double> read(const QString& text);
    /// Sets a target, or none for an empty one. False, with all as it was, where the file cannot be written.
    bool set(const QString& folder, const Kennzahl& figure, std::optional<double> target);

private:
    QMap<QString, double> m_targets;  // by id of the figure; those of other versions too
};

}  // namespace koben
