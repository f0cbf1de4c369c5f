// The list of versions from the server: any bytes are read or refused, and nothing passes for up to date that is not.
#include "exchange/Versionsliste.h"
#include "tests/fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben;
    using namespace koben::fuzz;
    const QString own = QStringLiteral("2.0.59"), upToDate = QStringLiteral("Sie haben die aktuellste Version!");
    const Versionsliste list = Versionsliste::lesen(raw(data, size), own);
    if (!list.whole) return 0;
    require(!list.newest.isEmpty() && list.newest.front().isDigit(), "no version", list.newest);
    require(list.all.contains(list.newest), "a version that is not there", list.newest);
    require((list.newest == own) == (list.missing == upToDate), "up to date", list.missing);
    if (list.newest != own) require(list.all.contains(list.missing), "changes that are not there", list.missing);
    return 0;
}
