#pragma once
// Purchases and sales of piglets of the whole farm.
#include "bookings/Ferkelliste.h"

namespace koben {

class PB_Verkauf_Ferkel final : public Ferkelliste {
public:
    explicit PB_Verkauf_Ferkel(Koben& context)
        : Ferkelliste(context, QStringLiteral("PB_Verkauf_Ferkel"), QStringLiteral("Einkauf und Verkauf von Ferkel"),
                      Buchungsart::Ferkelverkauf, QStringLiteral("PB_Verkauf_Ferkel_Eingabe")) {}
};

}  // namespace koben
