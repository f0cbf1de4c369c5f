#pragma once
// The catalogue of all forms by name.
#include "forms/Koben.h"

namespace koben {

const Catalogue& katalog();
QStringList formNames();

}  // namespace koben
