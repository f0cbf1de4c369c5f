#include "plans/PV_Arbeitsplandaten.h"

namespace koben {

PV_Arbeitsplandaten::PV_Arbeitsplandaten(Koben& koben_)
    : Stammdatenliste(koben_, "PV_Arbeitsplandaten", "Arbeitsplandaten",
                      {.noun = "Arbeitsplan",
                       .table = "Arbeitsplanoptionen",
                       .order = "Arbeitsart",
                       .entry = "PV_Arbeitsplandaten_Eingabe",
                       .fields = {"Arbeitsart", "Tage_von", "Tage_bis", "Bezugstermin", "Aktiv_gross", "Aktiv_klein",
                                  "Erledigt_gross", "Erledigt_klein"},
                       .frame = "Arbeitsplanoptionen listen"},
                      {"Arbeitsart", "Tage von...", "Tage bis...", "Bezugstermin", "Aktiv (groß)", "Aktiv (klein)",
                       "Erledigt (groß)", "Erledigt (klein)"}) {}

}  // namespace koben
