#pragma once
// The program's version, as the build names it (CMakeLists.txt, the only place where it is written).
#include <QString>

namespace koben {

extern const QString Version;  ///< three numbers, as 2.1.0

}  // namespace koben
