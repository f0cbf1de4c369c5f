#pragma once
// Animals that may not go to slaughter today, with the last day of their block.
#include "forms/Zurueck.h"
#include "output/Bericht.h"

namespace koben {

class PB_Wartezeiten final : public Bericht, public ReadsAnew {
public:
    explicit PB_Wartezeiten(Koben& koben);

    Label Label1{
        *this, "Label1",
        "Alle Tiere, die aufgrund von Medizingaben/Behandlungen eine Schlachtsperre bzw. Fleischverkaufssperre haben"};
    Grid gridli{*this, "gridli"};
    Button ok{*this, "ok", "&Listen"};
    Button beenden{*this, "beenden", "&Schließen"};

private:
    void Load() override;
    void FirstShown() override;
    void readAnew() override;
};

}  // namespace koben
