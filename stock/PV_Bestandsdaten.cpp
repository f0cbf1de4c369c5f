#include "stock/PV_Bestandsdaten.h"

namespace koben {

PV_Bestandsdaten::PV_Bestandsdaten(Koben& koben_)
    : Stammdatenliste(koben_, "PV_Bestandsdaten", "Bestandsdaten",
                      {.table = "Bestandsoptionen",
                       .order = "Tiergruppe",
                       .entry = "PV_Bestandsdaten_Eingabe",
                       .fields = {"Tiergruppe", "Alter_von", "Alter_bis", "Zeit", "Geschlecht", "Wert",
                                  "Mindestferkelung", "Tierart", "Belegt"},
                       .frame = "Bestandsoptionen listen",
                       .nothingToDelete = "Bitte markieren Sie zuerst den Datensatz, den Sie löschen möchten."},
                      {"Tiergruppe", "Alter von...", "Alter bis...", "Zeiteinteilung", "Geschlecht", "Wert",
                       "Mindestferkelungen", "Tierart", "Belegung erforderlich"}) {}

}  // namespace koben
