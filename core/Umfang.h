#pragma once
// Which animals a statement is about: all, some by ID, or runs of IDs.
#include <limits>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "store/ChangeLog.h"

namespace koben {

/// Which animals a pass is about: all of them, or some by ID.
class Umfang {
public:
    static constexpr size_t GroupSize = 50;  ///< one text, one plan, for up to so many

    Umfang() = default;
    explicit Umfang(std::span<const qint64> ids);
    bool all() const { return m_ids.empty(); }
    /// A condition on the field, behind `joint` ("where"), for the values of values(); nothing for all.
    QString condition(const QString& joint, const QString& field) const;
    const std::vector<Value>& values() const { return m_ids; }

private:
    std::vector<Value> m_ids;
};

/// Parts of at most Umfang::GroupSize.
std::vector<std::span<const qint64>> groups(const std::vector<qint64>& ids);

/// The runs of consecutive IDs among these, first and last, none longer than `most`: a statement for a run is far
/// quicker than one an animal.
std::vector<std::pair<qint64, qint64>> consecutive(std::vector<qint64> ids,
                                                   qint64 most = std::numeric_limits<qint64>::max());

/// The animals with changes; nothing where the whole herd is to be derived, which is quicker for very many.
std::optional<std::vector<qint64>> changedAnimals(const ChangeLog& log, const QString& basis);

/// Rows of Sauen whose derived fields are not the empty ones. Worded as the index that serves it.
extern const QString derivedRows;

}  // namespace koben
