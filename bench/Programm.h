#pragma once
// The program's side: the forms, worked as a user's hand works them.
#include "bench/Messung.h"

namespace koben {

/// Works on the database koben2.mdb in the folder `ordner`, and changes it.
Messung Programm_messen(const QString& ordner, QDate heute, const Vorlage& vorlage);

}  // namespace koben
