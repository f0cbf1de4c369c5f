#pragma once
// Losses of piglets of the whole farm.
#include "bookings/Ferkelliste.h"

namespace koben {

class PB_Verluste_Ferkel final : public Ferkelliste {
public:
    explicit PB_Verluste_Ferkel(Koben& context)
        : Ferkelliste(context, QStringLiteral("PB_Verluste_Ferkel"), QStringLiteral("Verluste Ferkel"),
                      Buchungsart::Verluste, QStringLiteral("PB_Verluste_Ferkel_Eingabe")) {}
};

}  // namespace koben
