#pragma once
// Entry of losses of piglets at a sow.
#include "bookings/Buchungseingabe.h"
#include "bookings/Ferkelbestand.h"

namespace koben {

class PE_Bewegungsdaten_Verluste final : public Buchungseingabe {
public:
    explicit PE_Bewegungsdaten_Verluste(Koben& koben);

    ControlArray<TextBox> tz{*this, "tz", 2};
    SpinButton UpDown{*this, "UpDown", 0};
    ControlArray<ComboBox> kom{*this, "kom", 3};
    OptionGroup optiverkauf{*this, "optiverkauf", Verbleibarten};
    Grid gridli{*this, "gridli", true};
    Label gridlisumme{*this, "gridlisumme"};

private:
    void Load() override;
    void Activate() override;
    void finish(const Action& action) override;

    Ferkelbestand m_ferkel{gridli, optiverkauf, gridlisumme, tz[0], "Aufgrund des Ferkelverkaufs..."};
};

}  // namespace koben
