#pragma once
// A new animal: the one place of what its fields hold unless something else is said.
#include "core/RowWriter.h"
#include "store/Action.h"

namespace koben {

/// New animals of one action, prepared once. Without another word an animal's texts are empty, its counters, weights
/// and prices 0, its dates and its mark of change without a value, and it is no artificial nurse.
class NeueTiere {
public:
    /// `fields` get their values with each animal; `fixed` are the same in all and stand over the defaults, Null too.
    NeueTiere(const Action& action, const QStringList& fields, const FieldValues& fixed = {});
    void add(const std::vector<Value>& values) { m_rows.insert(values); }

private:
    RowWriter m_rows;
};

}  // namespace koben
