#pragma once
// Entry of a purchase or a sale of the farm: figures kept in step, piglets that go, and bought ones taken into stock.
#include "bookings/Ferkelbestand.h"
#include "bookings/Ferkeleingabe.h"

namespace koben {

class PB_Verkauf_Ferkel_Eingabe final : public Ferkeleingabe {
public:
    explicit PB_Verkauf_Ferkel_Eingabe(Koben& koben);

    ControlArray<TextBox> tz{*this, "tz", 7};
    ControlArray<SpinButton> UpDown{*this, "UpDown", 2};
    ControlArray<ComboBox> kom{*this, "kom", 4};
    OptionGroup optiverkauf{*this, "optiverkauf", Verbleibarten};
    Grid gridli{*this, "gridli", true};
    Label gridlisumme{*this, "gridlisumme"};

private:
    void Load() override;
    void Activate() override;
    QString actionName() const override;
    void tz_LostFocus(int index);
    void check(Findings& found) override;
    std::optional<qint64> sow() override;
    void finish(const Action& action) override;
    QString mother() const override;
    void Ferkel_einstallen(const Action& action);

    Ferkelbestand m_ferkel{gridli, optiverkauf, gridlisumme, tz[1], "Aufgrund des Ferkelverkaufs..."};
};

}  // namespace koben
