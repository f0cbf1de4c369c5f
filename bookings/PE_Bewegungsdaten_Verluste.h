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
    void vorbereiten(const std::vector<int>& rows) override;
    void ergaenzen(Recordset& booking, int row) const override;
    void gespeichert(Recordset& bookings, int row) override;

    Ferkelbestand m_ferkel{gridli, optiverkauf, gridlisumme, tz[0], "Aufgrund des Ferkelverkaufs..."};
    int m_erstesTier = 0;  // whose row takes the marked piglets with it
};

}  // namespace koben
