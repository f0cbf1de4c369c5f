#pragma once
// The floor: the same results by hand-written SQLite statements on a copy of the file, with indexes made for them.
#include "bench/Messung.h"

namespace koben {

/// Works on the file `path`, and changes it.
Messung Boden_messen(const QString& path, QDate heute, const Vorlage& vorlage);

}  // namespace koben
