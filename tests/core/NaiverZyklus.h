#pragma once
// The cycle engine told animal by animal, with a query for every value: slow and plain, to hold the real one against.
#include "core/Variablen.h"

namespace koben {

void naiveValues(const Database& db, const Variablen& v);
void naiveStatus(const Database& db);

}  // namespace koben
