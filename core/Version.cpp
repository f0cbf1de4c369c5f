#include "core/Version.h"

namespace koben {

const QString Version = QStringLiteral(KOBEN_VERSION);

namespace Update {
const QString Server = QStringLiteral(KOBEN_UPDATE_SERVER);
const QString List = QStringLiteral("/Sauenplaner/daten.txt");
const QString Setup = QStringLiteral("/Sauenplaner/koben20_setup.exe");
const QString Site = QStringLiteral(KOBEN_WEBSITE);
}  // namespace Update

}  // namespace koben
