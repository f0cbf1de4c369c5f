#include "plans/PV_Termine.h"

namespace koben {

PV_Termine::PV_Termine(Koben& koben_)
    : Stammdatenliste(koben_, "PV_Termine", "Termine (für tierunabhängige Termine)",
                      {.noun = "Termin",
                       .table = "Termine",
                       .order = "Terminart",
                       .entry = "PV_Termine_Eingabe",
                       .fields = {"Terminart", "Datum", "Wiederholung"}},
                      {"Terminart", "Datum", "Wiederholung"}) {}

}  // namespace koben
