#pragma once
// Entry of one medicine. A new one may be followed by the next without closing the screen.
#include "forms/Stammdaten.h"

namespace koben {

class PV_Medizin_Eingabe final : public Stammdateneingabe {
public:
    explicit PV_Medizin_Eingabe(Koben& koben);

    ControlArray<Label> bez{
        *this,
        "bez",
        {"Menge je Verabreichung:", "Mengen-Einheit (ml, mg...):", "Wartezeit (Tage ab Verabreichung):",
         "Kosten je Einheit:", "Behandlungsart:", "Verabreichungsart:"}};
    ControlArray<TextBox> tz{*this, "tz", 3};     ///< dose, days, cost
    ControlArray<ComboBox> kom{*this, "kom", 3};  ///< unit, kind of treatment, way of giving
    SpinButton UpDown{*this, "UpDown", 1};

private:
    void Load() override;
    void check(Findings& found) override;
};

}  // namespace koben
