#pragma once
// Entry of one appointment: what, when, how often.
#include "forms/Stammdaten.h"

namespace koben {

class PV_Termine_Eingabe final : public Stammdateneingabe {
public:
    explicit PV_Termine_Eingabe(Koben& koben);

    ControlArray<Label> bez{*this, "bez", {"Datum:", "Wiederholung:"}};
    TextBox tdat{*this, "tdat"};
    Button calender{*this, "calender", "Kalender"};
    Calendar calend{*this, "calend"};
    ComboBox kom{*this, "kom"};

private:
    void check(Findings& found) override;
};

}  // namespace koben
