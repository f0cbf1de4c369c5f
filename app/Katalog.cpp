#include "app/Katalog.h"

#include "analytics/PB_Statistiken.h"
#include "bookings/PB_Verkauf_Ferkel.h"
#include "bookings/PB_Verkauf_Ferkel_Eingabe.h"
#include "bookings/PB_Verkauf_Schweine.h"
#include "bookings/PB_Verluste_Ferkel.h"
#include "bookings/PB_Verluste_Ferkel_Eingabe.h"
#include "bookings/PE_Bewegungsdaten.h"
#include "bookings/PE_Bewegungsdaten_Absetzung.h"
#include "bookings/PE_Bewegungsdaten_Behandlung.h"
#include "bookings/PE_Bewegungsdaten_Belegung.h"
#include "bookings/PE_Bewegungsdaten_Ferkelung.h"
#include "bookings/PE_Bewegungsdaten_Ferkelverkauf.h"
#include "bookings/PE_Bewegungsdaten_Traechtigkeit.h"
#include "bookings/PE_Bewegungsdaten_Verluste.h"
#include "bookings/PE_Bewegungsdaten_Verschiebung.h"
#include "bookings/PV_Medizin.h"
#include "bookings/PV_Medizin_Eingabe.h"
#include "cycle/PO_Einstellungen.h"
#include "cycle/PV_Stichworte.h"
#include "exchange/S_Importtabelle.h"
#include "herd/PA_Koben.h"
#include "herd/PB_Neues_Schwein.h"
#include "herd/PB_Selektieren.h"
#include "output/PA_Erklaerung.h"
#include "output/PA_Textausgabe.h"
#include "output/PA_Zwischenliste.h"
#include "plans/PB_Arbeitsplan.h"
#include "plans/PB_Sauenkarte.h"
#include "plans/PB_Statusplan.h"
#include "plans/PB_Tierinformation_Buchungen.h"
#include "plans/PB_Tierinformation_Schweine.h"
#include "plans/PB_Wartezeiten.h"
#include "plans/PV_Arbeitsplandaten.h"
#include "plans/PV_Arbeitsplandaten_Eingabe.h"
#include "plans/PV_Termine.h"
#include "plans/PV_Termine_Eingabe.h"
#include "stock/PB_Bestand.h"
#include "stock/PB_Bestandsregister.h"
#include "stock/PV_Bestandsdaten.h"
#include "stock/PV_Bestandsdaten_Eingabe.h"

namespace koben {

namespace {

Catalogue all() {
    Catalogue forms;
    forms.add<PA_Koben>(QStringLiteral("PA_Koben"));
    forms.add<PB_Selektieren>(QStringLiteral("PB_Selektieren"));
    forms.add<PB_Neues_Schwein>(QStringLiteral("PB_Neues_Schwein"));
    forms.add<PA_Erklärung>(QStringLiteral("PA_Erklärung"));
    forms.add<PA_Textausgabe>(QStringLiteral("PA_Textausgabe"));
    forms.add<PA_Zwischenliste>(QStringLiteral("PA_Zwischenliste"));
    forms.add<PE_Bewegungsdaten>(QStringLiteral("PE_Bewegungsdaten"));
    forms.add<PE_Bewegungsdaten_Belegung>(QStringLiteral("PE_Bewegungsdaten_Belegung"));
    forms.add<PE_Bewegungsdaten_Ferkelung>(QStringLiteral("PE_Bewegungsdaten_Ferkelung"));
    forms.add<PE_Bewegungsdaten_Verschiebung>(QStringLiteral("PE_Bewegungsdaten_Verschiebung"));
    forms.add<PE_Bewegungsdaten_Absetzung>(QStringLiteral("PE_Bewegungsdaten_Absetzung"));
    forms.add<PE_Bewegungsdaten_Behandlung>(QStringLiteral("PE_Bewegungsdaten_Behandlung"));
    forms.add<PB_Verkauf_Schweine>(QStringLiteral("PB_Verkauf_Schweine"));
    forms.add<PV_Medizin>(QStringLiteral("PV_Medizin"));
    forms.add<PV_Medizin_Eingabe>(QStringLiteral("PV_Medizin_Eingabe"));
    forms.add<PE_Bewegungsdaten_Trächtigkeit>(QStringLiteral("PE_Bewegungsdaten_Trächtigkeit"));
    forms.add<PE_Bewegungsdaten_Verluste>(QStringLiteral("PE_Bewegungsdaten_Verluste"));
    forms.add<PE_Bewegungsdaten_Ferkelverkauf>(QStringLiteral("PE_Bewegungsdaten_Ferkelverkauf"));
    forms.add<PB_Verluste_Ferkel>(QStringLiteral("PB_Verluste_Ferkel"));
    forms.add<PB_Verluste_Ferkel_Eingabe>(QStringLiteral("PB_Verluste_Ferkel_Eingabe"));
    forms.add<PB_Verkauf_Ferkel>(QStringLiteral("PB_Verkauf_Ferkel"));
    forms.add<PB_Verkauf_Ferkel_Eingabe>(QStringLiteral("PB_Verkauf_Ferkel_Eingabe"));
    forms.add<PV_Stichworte>(QStringLiteral("PV_Stichworte"));
    forms.add<PO_Einstellungen>(QStringLiteral("PO_Einstellungen"));
    forms.add<PV_Arbeitsplandaten>(QStringLiteral("PV_Arbeitsplandaten"));
    forms.add<PV_Arbeitsplandaten_Eingabe>(QStringLiteral("PV_Arbeitsplandaten_Eingabe"));
    forms.add<PB_Arbeitsplan>(QStringLiteral("PB_Arbeitsplan"));
    forms.add<PB_Wartezeiten>(QStringLiteral("PB_Wartezeiten"));
    forms.add<PV_Termine>(QStringLiteral("PV_Termine"));
    forms.add<PV_Termine_Eingabe>(QStringLiteral("PV_Termine_Eingabe"));
    forms.add<PB_Statusplan>(QStringLiteral("PB_Statusplan"));
    forms.add<PB_Sauenkarte>(QStringLiteral("PB_Sauenkarte"));
    forms.add<PB_Tierinformation_Schweine>(QStringLiteral("PB_Tierinformation_Schweine"));
    forms.add<PB_Tierinformation_Buchungen>(QStringLiteral("PB_Tierinformation_Buchungen"));
    forms.add<PB_Bestand>(QStringLiteral("PB_Bestand"));
    forms.add<PB_Bestandsregister>(QStringLiteral("PB_Bestandsregister"));
    forms.add<PV_Bestandsdaten>(QStringLiteral("PV_Bestandsdaten"));
    forms.add<PV_Bestandsdaten_Eingabe>(QStringLiteral("PV_Bestandsdaten_Eingabe"));
    forms.add<PB_Statistiken>(QStringLiteral("PB_Statistiken"));
    forms.add<S_Importtabelle>(QStringLiteral("S_Importtabelle"));
    return forms;
}

}  // namespace

const Catalogue& katalog() {
    static const Catalogue forms = all();
    return forms;
}

}  // namespace koben
