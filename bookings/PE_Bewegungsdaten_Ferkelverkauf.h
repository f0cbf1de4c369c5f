#pragma once
// Entry of a sale of piglets from a sow: figures kept in step, her balance, and the piglets that go.
#include "bookings/Buchungseingabe.h"
#include "bookings/Ferkelbestand.h"

namespace koben {

class PE_Bewegungsdaten_Ferkelverkauf final : public Buchungseingabe {
public:
    explicit PE_Bewegungsdaten_Ferkelverkauf(Koben& koben);

    ControlArray<TextBox> tz{*this, "tz", 5};
    SpinButton UpDown{*this, "UpDown", 0};
    ControlArray<ComboBox> kom{*this, "kom", 2};
    OptionGroup optiverkauf{*this, "optiverkauf", Verbleibarten};
    Grid gridli{*this, "gridli", true};
    Label gridlisumme{*this, "gridlisumme"};

private:
    void Load() override;
    void Activate() override;
    std::optional<std::vector<int>> animals() override;
    QString hintOnSeveral() const override;
    void finish(const Action& action) override;
    void tz_LostFocus(int index);
    void UpDown_Change(int by);
    bool balanceAccepted() const;

    Ferkelbestand m_ferkel{gridli, optiverkauf, gridlisumme, tz[0], "Aufgrund des Ferkelverkaufs..."};
};

}  // namespace koben
