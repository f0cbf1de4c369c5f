#include "app/Musterbetrieb.h"

#include "app/Katalog.h"
#include "tools/herdengenerator/Output.h"

namespace koben {

const Catalogue& musterkatalog() {
    static const Catalogue forms =
        katalogOhne({QStringLiteral("S_Datensicherung_neu"), QStringLiteral("S_Importtabelle"),
                     QStringLiteral("PO_Pocketexport"), QStringLiteral("PO_Pocketimport"),
                     QStringLiteral("PO_Hausnetz"), QStringLiteral("PO_Update"), QStringLiteral("HV_Updatemanager")});
    return forms;
}

void Musterbetrieb_anlegen(const QString& path, QDate today) {
    Vorgaben farm;
    farm.sauen = 80;
    farm.seed = 2026;
    farm.ferkelAnteil = 13;
    farm.ende = today;
    writeDatabase(makeHerde(farm), path);
}

}  // namespace koben
