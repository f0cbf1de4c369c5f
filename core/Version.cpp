#include "core/Version.h"

namespace koben {

const QString Version = QStringLiteral(KOBEN_VERSION);

}  // namespace koben
