#include "bookings/PV_Medizin.h"

namespace koben {

PV_Medizin::PV_Medizin(Koben& koben_)
    : Stammdatenliste(koben_, "PV_Medizin", "Medizinverwaltung und Wartezeiten",
                      {.noun = "Medizin",
                       .table = "Medikamente",
                       .order = "Medikament",
                       .entry = "PV_Medizin_Eingabe",
                       .fields = {"Medikament", "Menge", "Einheit", "Wartezeit_Tage", "Kosten_je_Gabe",
                                  "Behandlungsart", "Verabreichungsart"},
                       .frame = "Medizinoptionen listen",
                       .lastRowCurrent = true},
                      {"Medikament", "Behandlungsmenge", "Behandlungseinheit", "Wartezeit (Tage)", "Kosten je Einheit",
                       "Behandlungsart", "Verabreichungsart"}) {}

}  // namespace koben
