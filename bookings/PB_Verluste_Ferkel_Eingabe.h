#pragma once
// Entry of a loss of the farm, with or without a sow.
#include "bookings/Ferkelbestand.h"
#include "bookings/Ferkeleingabe.h"

namespace koben {

class PB_Verluste_Ferkel_Eingabe final : public Ferkeleingabe {
public:
    explicit PB_Verluste_Ferkel_Eingabe(Koben& koben);

    ControlArray<TextBox> tz{*this, "tz", 2};
    SpinButton UpDown{*this, "UpDown", 0};
    ControlArray<ComboBox> kom{*this, "kom", 4};
    OptionGroup optiverkauf{*this, "optiverkauf", Verbleibarten};
    Grid gridli{*this, "gridli", true};
    Label gridlisumme{*this, "gridlisumme"};

private:
    void Load() override;
    void Activate() override;
    void check(Findings& found) override;
    std::optional<qint64> sow() override;
    void finish(const Action& action) override;
    QString mother() const override;

    Ferkelbestand m_ferkel{gridli, optiverkauf, gridlisumme, tz[0], "Aufgrund des Ferkelverlustes..."};
};

}  // namespace koben
