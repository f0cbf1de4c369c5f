#include "app/Katalog.h"

#include "bookings/PE_Bewegungsdaten.h"
#include "bookings/PE_Bewegungsdaten_Absetzung.h"
#include "bookings/PE_Bewegungsdaten_Belegung.h"
#include "bookings/PE_Bewegungsdaten_Ferkelung.h"
#include "bookings/PE_Bewegungsdaten_Traechtigkeit.h"
#include "bookings/PE_Bewegungsdaten_Verschiebung.h"
#include "cycle/PO_Einstellungen.h"
#include "cycle/PV_Stichworte.h"
#include "exchange/S_Importtabelle.h"
#include "herd/PA_Koben.h"
#include "herd/PB_Neues_Schwein.h"
#include "herd/PB_Selektieren.h"
#include "output/PA_Textausgabe.h"
#include "output/PA_Zwischenliste.h"
#include "plans/PB_Arbeitsplan.h"
#include "plans/PV_Arbeitsplandaten.h"
#include "plans/PV_Arbeitsplandaten_Eingabe.h"

namespace koben {

namespace {

Catalogue all() {
    Catalogue forms;
    forms.add<PA_Koben>(QStringLiteral("PA_Koben"));
    forms.add<PB_Selektieren>(QStringLiteral("PB_Selektieren"));
    forms.add<PB_Neues_Schwein>(QStringLiteral("PB_Neues_Schwein"));
    forms.add<PA_Textausgabe>(QStringLiteral("PA_Textausgabe"));
    forms.add<PA_Zwischenliste>(QStringLiteral("PA_Zwischenliste"));
    forms.add<PE_Bewegungsdaten>(QStringLiteral("PE_Bewegungsdaten"));
    forms.add<PE_Bewegungsdaten_Belegung>(QStringLiteral("PE_Bewegungsdaten_Belegung"));
    forms.add<PE_Bewegungsdaten_Ferkelung>(QStringLiteral("PE_Bewegungsdaten_Ferkelung"));
    forms.add<PE_Bewegungsdaten_Verschiebung>(QStringLiteral("PE_Bewegungsdaten_Verschiebung"));
    forms.add<PE_Bewegungsdaten_Absetzung>(QStringLiteral("PE_Bewegungsdaten_Absetzung"));
    forms.add<PE_Bewegungsdaten_Trächtigkeit>(QStringLiteral("PE_Bewegungsdaten_Trächtigkeit"));
    forms.add<PV_Stichworte>(QStringLiteral("PV_Stichworte"));
    forms.add<PO_Einstellungen>(QStringLiteral("PO_Einstellungen"));
    forms.add<PV_Arbeitsplandaten>(QStringLiteral("PV_Arbeitsplandaten"));
    forms.add<PV_Arbeitsplandaten_Eingabe>(QStringLiteral("PV_Arbeitsplandaten_Eingabe"));
    forms.add<PB_Arbeitsplan>(QStringLiteral("PB_Arbeitsplan"));
    forms.add<S_Importtabelle>(QStringLiteral("S_Importtabelle"));
    return forms;
}

}  // namespace

const Catalogue& katalog() {
    static const Catalogue forms = all();
    return forms;
}

}  // namespace koben
