#include "core/Umfang.h"

#include <algorithm>

namespace koben {

const QString derivedRows = QStringLiteral(
    "Anz_Belegungen <> 0 or Anz_Belegungen IS NULL or Anz_Ferkelungen <> 0 or Anz_Ferkelungen IS NULL "
    "or Anz_Ferkel_Gesamt IS NOT NULL or Anz_Ferkel_Lebend IS NOT NULL or L_Belegung IS NOT NULL "
    "or L_Ferkelung IS NOT NULL or L_Trächtigkeit IS NOT NULL or L_Absetzung IS NOT NULL "
    "or N_Belegung IS NOT NULL or N_Ferkelung IS NOT NULL");

Umfang::Umfang(std::span<const qint64> ids) {
    m_ids.assign(ids.begin(), ids.end());
    m_ids.resize(ids.size() == 1 ? 1 : GroupSize, ids.back());  // one twice is once
}

QString Umfang::condition(const QString& joint, const QString& field) const {
    if (all()) return {};
    return u' ' + joint + u' ' + field + QStringLiteral(" in (?") +
           QStringLiteral(", ?").repeated(static_cast<qsizetype>(m_ids.size()) - 1) + u')';
}

std::vector<std::span<const qint64>> groups(const std::vector<qint64>& ids) {
    std::vector<std::span<const qint64>> result;
    for (std::span<const qint64> left(ids); !left.empty();) {
        const size_t size = std::min(left.size(), Umfang::GroupSize);
        result.push_back(left.first(size));
        left = left.subspan(size);
    }
    return result;
}

std::vector<std::pair<qint64, qint64>> consecutive(std::vector<qint64> ids, qint64 most) {
    std::sort(ids.begin(), ids.end());
    std::vector<std::pair<qint64, qint64>> runs;
    for (const qint64 id : ids) {
        if (!runs.empty() && id <= runs.back().second + 1 && id - runs.back().first < most)
            runs.back().second = id;
        else
            runs.emplace_back(id, id);
    }
    return runs;
}

std::optional<std::vector<qint64>> changedAnimals(const ChangeLog& log, const QString& basis) {
    constexpr int most = 2000;
    if (log.everything(basis)) return std::nullopt;
    auto ids = log.animals(most);
    if (ids.size() > most) return std::nullopt;
    return ids;
}

}  // namespace koben
