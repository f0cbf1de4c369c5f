#pragma once
// The list of medicines: usual dose, cost, waiting time. Bookings hold copies of its values.
#include "forms/Stammdaten.h"

namespace koben {

class PV_Medizin final : public Stammdatenliste {
public:
    explicit PV_Medizin(Koben& koben);
};

}  // namespace koben
