#pragma once
// The kinds of work that the work plan computes.
#include "forms/Stammdaten.h"

namespace koben {

class PV_Arbeitsplandaten final : public Stammdatenliste {
public:
    explicit PV_Arbeitsplandaten(Koben& koben);
};

}  // namespace koben
