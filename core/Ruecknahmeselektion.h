#pragma once
// The marks of selection when actions are taken back: nothing rests on them, and several actions may have set the same
// one. Each is what the last action that counts has made it.
#include "store/Journal.h"

namespace koben {

class Selektionsmarken {
public:
    using Counts = std::function<bool(const Journal::Entry& entry)>;

    /// For actions that count no more, or again.
    Selektionsmarken(const Journal& journal, const std::vector<qint64>& deeds);
    /// Within the caller's action, once the animals are there. `counts` says of every action whether it does now.
    void restore(const Database& db, const Counts& counts);

private:
    void read(qint64 number, const Counts& counts);

    const Journal& m_journal;
    qint64 m_first = 0;
    std::map<qint64, std::optional<Value>> m_marks;  ///< by animal, once one is known
};

}  // namespace koben
