#pragma once
// The cycle engine told animal by animal, with a query for every value: slow and plain, to hold the real one against.
#include "core/Variablen.h"

namespace koben {

void naivWerteBerechnen(const Database& db, const Variablen& v);
void naivStatussetzen(const Database& db);

}  // namespace koben
