#pragma once
// What the user calls the fields of the herd's tables, and how what stands in them reads.
#include "store/Value.h"

namespace koben {

/// "Box-Zuordnung" for BoxDatum of Sauen; of other tables the field's own name in words.
QString fieldLabel(const QString& table, const QString& field);

/// A value in the type of its field: days as dd.mm.yyyy, amounts with "€", weights with "kg", ticks as "ja" or "nein",
/// "leer" for nothing and for a weight or an amount of 0.
QString fieldText(const QString& table, const QString& field, const Value& value);

}  // namespace koben
