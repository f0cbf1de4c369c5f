#pragma once
// The life of the herd list's current animal, in the order of time.
#include "forms/Zurueck.h"
#include "output/Bericht.h"

namespace koben {

class PB_Lebenslauf final : public Bericht, public ReadsAnew {
public:
    explicit PB_Lebenslauf(Koben& koben);

    Label Label1{*this, "Label1"};  ///< which animal
    Grid li{*this, "li"};
    ControlArray<Button> nextschwein{*this, "nextschwein", {"&Voriges Tier", "&Nächstes Tier"}};
    Button ok{*this, "ok", "&Listen"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};

private:
    void Load() override;
    void FirstShown() override;
    void readAnew() override { showAnimal(); }
    void showAnimal();
    void nextschwein_Click(int direction);
};

}  // namespace koben
