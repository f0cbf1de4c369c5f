#pragma once
// The groups of animals that the stock report counts.
#include "forms/Stammdaten.h"

namespace koben {

class PV_Bestandsdaten final : public Stammdatenliste {
public:
    explicit PV_Bestandsdaten(Koben& koben);
};

}  // namespace koben
