#pragma once
// Appointments that belong to no animal.
#include "forms/Stammdaten.h"

namespace koben {

class PV_Termine final : public Stammdatenliste {
public:
    explicit PV_Termine(Koben& koben);
};

}  // namespace koben
