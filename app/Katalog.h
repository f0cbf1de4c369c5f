#pragma once
// The catalogue of all forms by name.
#include "forms/Koben.h"

namespace koben {

const Catalogue& katalog();
/// All forms but these.
Catalogue katalogOhne(const QStringList& names);
QStringList formNames();

}  // namespace koben
