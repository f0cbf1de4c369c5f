#pragma once
// The program's version, and where newer ones are found, as the build names them (CMakeLists.txt, the only place where
// they are written).
#include <QString>

namespace koben {

extern const QString Version;  ///< three numbers, as 2.1.0

namespace Update {
extern const QString Server;  ///< "https://host", without a slash at the end
extern const QString List;    ///< path there of the text that names all versions
extern const QString Setup;   ///< path there of the setup of the newest one
extern const QString Site;    ///< the address that a user is told
}  // namespace Update

}  // namespace koben
